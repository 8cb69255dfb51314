#include "base/TextValues.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <span>

namespace Wirefall {

namespace {

// The first word of each is the one that is written.
constexpr std::array<std::string_view, 4> TrueWords = {"1", "true", "yes", "on"};
constexpr std::array<std::string_view, 4> FalseWords = {"0", "false", "no", "off"};

bool Contains(std::span<const std::string_view> words, std::string_view text) {
    return std::ranges::find(words, text) != words.end();
}

} // namespace

bool ParseStrictInt(std::string_view text, std::int32_t& out) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc{} || result.ptr != end) {
        return false;
    }
    out = number;
    return true;
}

bool ParseBool(std::string_view text, bool defaultValue) {
    const std::string word = ToLowerCopy(text);
    if (Contains(TrueWords, word)) {
        return true;
    }
    return !Contains(FalseWords, word) && defaultValue;
}

std::string_view BoolText(bool flag) { return flag ? TrueWords.front() : FalseWords.front(); }

std::string ToLowerCopy(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

} // namespace Wirefall
