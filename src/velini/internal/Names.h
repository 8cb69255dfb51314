#pragma once

// The names that mean something to the library itself.

#include <cstdint>
#include <string>
#include <string_view>

namespace velINI::Internal {

/// The section in front of the first header.
inline constexpr std::string_view GlobalSection = "VI_Global";

/// The prefixes of the generated names of blank lines and comments.
inline constexpr std::string_view EmptyLinePrefix = "VI_EL_";
inline constexpr std::string_view CommentPrefix = "VI_C_";

inline std::string GeneratedName(std::string_view prefix, std::uint32_t count) {
    return std::string(prefix) + std::to_string(count);
}

} // namespace velINI::Internal
