#include "words/LanguageFiles.h"

#include "storage/Storage.h"
#include "velini/VelINIStream.h"
#include "words/Localization.h"

#include <SDL3/SDL_log.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace Wirefall {

namespace {

using velINI::IniKey;
using velINI::IniSection;
using velINI::velINIStream;

constexpr const char* ListFile = "Localization/Languages.ini";
constexpr std::string_view ListSection = "Languages";
constexpr std::string_view EntryPrefix = "Language.";
constexpr std::string_view GlobalSection = "VI_Global";

std::vector<LanguageEntry> BuiltInLanguages() {
    return {{.Code = DefaultLanguageCode, .Name = "English", .File = "Localization/En.ini"},
            {.Code = "de", .Name = "Deutsch", .File = "Localization/De.ini"}};
}

std::vector<LanguageEntry> ListedLanguages(const velINIStream& list) {
    std::vector<LanguageEntry> languages;
    for (const IniSection& section : list.Sections) {
        const std::string& name = section.Name;
        if (!name.starts_with(EntryPrefix)) {
            continue;
        }
        const std::string code = NormalizeLanguageCode(name.substr(EntryPrefix.size()));
        LanguageEntry entry = {.Code = code,
                               .Name = list.GetValue(name, "Name", code),
                               .File = list.GetValue(name, "File", "")};
        if (entry.File.empty()) {
            continue;
        }
        const bool known =
            std::any_of(languages.begin(), languages.end(),
                        [&code](const LanguageEntry& other) { return other.Code == code; });
        if (known) {
            SDL_Log("Duplicate language code '%s' in %s", code.c_str(), ListFile);
        } else {
            languages.push_back(std::move(entry));
        }
    }
    return languages;
}

std::string ListedCode(const velINIStream& list, std::string_view key,
                       const std::string& defaultCode) {
    return NormalizeLanguageCode(list.GetValue(ListSection, key, defaultCode));
}

// False when the file names no language.
bool ReadLanguageList(LocalizationCatalogRecord& catalog) {
    velINIStream list;
    if (!LoadIniFromInstall(ListFile, list)) {
        return false;
    }
    std::vector<LanguageEntry> languages = ListedLanguages(list);
    if (languages.empty()) {
        return false;
    }
    catalog.Languages = std::move(languages);
    catalog.DefaultLanguage = ListedCode(list, "Default", catalog.DefaultLanguage);
    catalog.FallbackLanguage = ListedCode(list, "Fallback", catalog.FallbackLanguage);
    if (FindLanguage(catalog.DefaultLanguage) == nullptr) {
        catalog.DefaultLanguage = catalog.Languages.front().Code;
    }
    if (FindLanguage(catalog.FallbackLanguage) == nullptr) {
        catalog.FallbackLanguage = catalog.DefaultLanguage;
    }
    return true;
}

} // namespace

void LoadLocalization(LanguageSetting& setting) {
    LocalizationCatalogRecord& catalog = LocalizationCatalog;
    catalog = {};
    catalog.Languages = BuiltInLanguages();
    if (!ReadLanguageList(catalog)) {
        SDL_Log("Localization catalog '%s' could not be loaded; using built-in defaults", ListFile);
    }
    std::string requested = NormalizeLanguageCode(setting.Language);
    if (FindLanguage(requested) == nullptr) {
        requested = catalog.DefaultLanguage;
    }
    // Both are in the list by now.
    const LanguageEntry& fallback = *FindLanguage(catalog.FallbackLanguage);
    const LanguageEntry& active = *FindLanguage(requested);
    catalog.Loaded = LoadCatalogFile(fallback.File);
    if (active.Code != fallback.Code) {
        catalog.Loaded = LoadCatalogFile(active.File) || catalog.Loaded;
    }
    catalog.ActiveLanguage = active.Code;
    setting.Language = active.Code;
}

bool LoadCatalogFile(const std::string& path) {
    velINIStream document;
    if (!LoadIniFromInstall(path, document)) {
        return false;
    }
    for (const IniSection& section : document.Sections) {
        if (section.Name == GlobalSection) {
            continue;
        }
        for (const IniKey& entry : section.Keys) {
            if (entry.Kind == velINI::KeyKind::Value && !entry.Name.empty()) {
                LocalizationCatalog.Texts[entry.Name] = entry.Value;
            }
        }
    }
    return true;
}

} // namespace Wirefall
