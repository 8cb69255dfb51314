#include "words/Localization.h"

#include "base/Utf8.h"

#include <algorithm>
#include <optional>

namespace Wirefall {

LocalizationCatalogRecord LocalizationCatalog;

namespace {

std::optional<std::int32_t> PlaceOf(std::string_view code) {
    const LanguageEntry* const entry = FindLanguage(code);
    if (entry == nullptr) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(entry - LocalizationCatalog.Languages.data());
}

} // namespace

const std::string& LocalizedText(const char* key, const char* defaultText) {
    static const std::string noText;
    if (key == nullptr || *key == '\0') {
        return noText;
    }
    auto& texts = LocalizationCatalog.Texts;
    const auto found = texts.find(std::string_view(key));
    if (found == texts.end()) {
        return texts.emplace(key, defaultText).first->second;
    }
    if (found->second.empty()) {
        found->second = defaultText;
    }
    return found->second;
}

const LanguageEntry* FindLanguage(std::string_view code) {
    const std::vector<LanguageEntry>& languages = LocalizationCatalog.Languages;
    const auto found =
        std::find_if(languages.begin(), languages.end(),
                     [code](const LanguageEntry& entry) { return entry.Code == code; });
    return found == languages.end() || code.empty() ? nullptr : &*found;
}

void CycleLanguage(std::string& field, std::int32_t direction) {
    const std::vector<LanguageEntry>& languages = LocalizationCatalog.Languages;
    if (languages.empty()) {
        return;
    }
    const std::string current = NormalizeLanguageCode(field);
    const auto count = static_cast<std::int32_t>(languages.size());
    const std::int32_t index = PlaceOf(current).value_or(
        PlaceOf(NormalizeLanguageCode(LocalizationCatalog.DefaultLanguage)).value_or(0));
    const std::string& next =
        languages[static_cast<std::size_t>((direction + index + count) % count)].Code;
    if (next != current) {
        field = next;
    }
}

std::string LanguageDisplayName(std::string_view code) {
    const std::string normal = NormalizeLanguageCode(code);
    const LanguageEntry* const entry = FindLanguage(normal);
    return ToDisplayUpper(entry != nullptr && !entry->Name.empty() ? entry->Name : normal);
}

std::string ToDisplayUpper(std::string_view text) { return Utf8ToUpper(text); }

} // namespace Wirefall
