#pragma once

// The text of a value as a value of another type.

#include <array>
#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace velINI {

template <class Type>
concept Number = (std::integral<Type> && !std::same_as<Type, bool>) || std::floating_point<Type>;

/// The number that the whole text is, in decimal and whatever the locale; nothing for any other
/// text and for a number that the type has no room for.
template <Number Type>
[[nodiscard]] std::optional<Type> ValueAs(std::string_view text) {
    Type value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end ? std::optional<Type>(value) : std::nullopt;
}

/// True, yes, on and 1; false, no, off and 0; in capitals or not. Nothing for any other text.
template <std::same_as<bool> Type>
[[nodiscard]] std::optional<Type> ValueAs(std::string_view text) {
    constexpr std::array<std::pair<std::string_view, bool>, 8> Words = {{{"true", true},
                                                                         {"yes", true},
                                                                         {"on", true},
                                                                         {"1", true},
                                                                         {"false", false},
                                                                         {"no", false},
                                                                         {"off", false},
                                                                         {"0", false}}};
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    for (const auto& [word, value] : Words) {
        if (lower == word) {
            return value;
        }
    }
    return std::nullopt;
}

template <std::same_as<std::string> Type>
[[nodiscard]] std::optional<Type> ValueAs(std::string_view text) {
    return std::string(text);
}

} // namespace velINI
