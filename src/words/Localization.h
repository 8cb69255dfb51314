#pragma once

// Every text that a screen shows goes through one lookup, by a key and the built-in English text.
// So the game needs no language file: a missing key and an empty value both end at the built-in
// text.

#include "words/LanguageCode.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Wirefall {

struct LanguageEntry {
    std::string Code; ///< Normalised: lower case, without white space.
    std::string Name; ///< As shown to the player.
    std::string File; ///< The catalog's path among the installed data.
};

/// Lets the texts be looked up by any kind of string, without making one for it.
struct TextKeyHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const {
        return std::hash<std::string_view>{}(key);
    }
};

struct LocalizationCatalogRecord {
    std::vector<LanguageEntry> Languages; ///< In the order in which they are offered.
    /// What the catalog files say and, as the game runs, each built-in text that was asked for.
    std::unordered_map<std::string, std::string, TextKeyHash, std::equal_to<>> Texts;
    std::string DefaultLanguage = DefaultLanguageCode;
    std::string FallbackLanguage = DefaultLanguageCode;
    std::string ActiveLanguage = DefaultLanguageCode;
    bool Loaded = false; ///< At least one catalog file was read.
};

extern LocalizationCatalogRecord LocalizationCatalog;

/// The text of the key, or `defaultText` if the catalog has none or an empty one; an empty text for
/// a null or empty key. The reference holds until the catalog is loaded anew; screens fetch their
/// texts each frame and keep none.
const std::string& LocalizedText(const char* key, const char* defaultText);

/// A text of the game: its key, and what it says in English.
struct GameText {
    const char* Key;
    const char* DefaultText;
};

inline const std::string& LocalizedText(const GameText& text) {
    return LocalizedText(text.Key, text.DefaultText);
}

/// The language of exactly that code, or null. It lives until the catalog is loaded anew.
const LanguageEntry* FindLanguage(std::string_view code);

/// Sets `field`, a language code, to the language `direction` (1 or -1) places on in the list,
/// which goes around. A code that is not in the list counts as the default language. When that
/// leads back to the same language, the field stays as it is written.
void CycleLanguage(std::string& field, std::int32_t direction);

/// The name of the language as it is drawn; the code itself for one that is not in the list.
std::string LanguageDisplayName(std::string_view code);

/// Upper case for names that come from outside the tables of texts: keys, buttons, languages.
std::string ToDisplayUpper(std::string_view text);

} // namespace Wirefall
