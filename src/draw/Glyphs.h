#pragma once

// The font: bitmaps of 7 columns by 8 rows that the program carries as numbers. Every ASCII code
// point has an entry, blank where nothing is to be seen; beyond ASCII only what the game's
// languages need, and whoever draws takes the bitmap of "?" for the rest.

#include <array>
#include <cstdint>
#include <unordered_map>

namespace Wirefall {

inline constexpr std::int32_t GlyphColumns = 7;
inline constexpr std::int32_t GlyphRows = 8;

/// One byte per row, top row first; bit 6 is the leftmost column, bit 0 the rightmost, and bit 7 is
/// always clear.
using Glyph = std::array<std::uint8_t, GlyphRows>;

/// By code point. Filled before main starts and only read after that.
extern std::unordered_map<std::uint32_t, Glyph> GlyphTable;

/// Fills GlyphTable. It has run before main starts; running it again changes nothing.
void BuildGlyphTable();

/// The glyph of exactly that code point, or null.
const Glyph* FindGlyph(std::uint32_t codePoint);

} // namespace Wirefall
