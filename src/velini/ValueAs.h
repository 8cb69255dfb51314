#pragma once

// The text of a value as a value of another type.

#include <algorithm>
#include <array>
#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

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
    using namespace std::string_view_literals;
    constexpr std::array Words = {"false"sv, "true"sv, "no"sv, "yes"sv,
                                  "off"sv,   "on"sv,   "0"sv,  "1"sv};
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    const auto word = std::find(Words.begin(), Words.end(), lower);
    return word == Words.end() ? std::nullopt : std::optional((word - Words.begin()) % 2 == 1);
}

template <std::same_as<std::string> Type>
[[nodiscard]] std::optional<Type> ValueAs(std::string_view text) {
    return std::string(text);
}

} // namespace velINI
