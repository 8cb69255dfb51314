#include "ui/Localization.h"

#include "ui/Utf8.h"

namespace Wirefall {

LocalizationCatalogRecord LocalizationCatalog;

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

std::string ToDisplayUpper(std::string_view text) { return Utf8ToUpper(text); }

} // namespace Wirefall
