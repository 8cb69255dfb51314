#pragma once

// How a language is named in the options and in the language files.

#include <string>
#include <string_view>

namespace Wirefall {

/// English, which the built-in texts are in.
inline constexpr const char* DefaultLanguageCode = "en";

/// The player's choice.
struct LanguageSetting {
    std::string Language = DefaultLanguageCode; ///< A normalised language code.

    bool operator==(const LanguageSetting&) const = default;
};

/// A language code as it is kept: in lower case and without white space, the default if nothing is
/// left.
std::string NormalizeLanguageCode(std::string_view code);

} // namespace Wirefall
