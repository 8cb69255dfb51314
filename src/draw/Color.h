#pragma once

// Colours as the game keeps them, and the few that carry its look on every screen. What a single
// screen alone uses stands beside that screen.

#include <cstdint>

namespace Wirefall {

/// Red in the lowest byte, then green, blue, and alpha in the highest.
using PackedColor = std::uint32_t;

/// The colour written as RRGGBBAA in hexadecimal, the way a person reads it: Rgba(0x2c6058ff).
constexpr PackedColor Rgba(std::uint32_t rrggbbaa) {
    return (rrggbbaa >> 24U) | ((rrggbbaa >> 8U) & 0xff00U) | ((rrggbbaa << 8U) & 0xff0000U) |
           (rrggbbaa << 24U);
}

/// The same colour with another alpha.
constexpr PackedColor WithAlpha(PackedColor color, std::uint8_t alpha) {
    return (color & 0x00ffffffU) | (PackedColor{alpha} << 24U);
}

constexpr std::uint8_t RedOf(PackedColor color) { return static_cast<std::uint8_t>(color); }
constexpr std::uint8_t GreenOf(PackedColor color) { return static_cast<std::uint8_t>(color >> 8U); }
constexpr std::uint8_t BlueOf(PackedColor color) { return static_cast<std::uint8_t>(color >> 16U); }
constexpr std::uint8_t AlphaOf(PackedColor color) {
    return static_cast<std::uint8_t>(color >> 24U);
}

namespace Palette {

inline constexpr PackedColor BrightText = Rgba(0xcaece0ff); ///< Also the selection and its mark.
inline constexpr PackedColor NormalText = Rgba(0xaaccc0ff);
inline constexpr PackedColor HintText = Rgba(0x70968aff);
inline constexpr PackedColor Cyan = Rgba(0x54cee0ff);  ///< Headings, sources, the common pipe.
inline constexpr PackedColor Green = Rgba(0x70f69eff); ///< The title, good values, sinks.
inline constexpr PackedColor Red =
    Rgba(0xe67e66ff); ///< Infection, the end of a run, what cannot be.
inline constexpr PackedColor FrameLine = Rgba(0x2c6058ff);
inline constexpr PackedColor Accent = Rgba(0x46847aff); ///< The stripe on top of panels.
inline constexpr PackedColor PanelBody = Rgba(0x081614e6);

} // namespace Palette

} // namespace Wirefall
