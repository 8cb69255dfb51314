#include "draw/Glyphs.h"

#include <array>
#include <cstddef>

namespace Wirefall {

std::unordered_map<std::uint32_t, Glyph> GlyphTable;

namespace {

// The eight rows of a glyph from the highest byte (the top row) to the lowest.
struct GlyphSource {
    std::uint32_t CodePoint;
    std::uint64_t Rows;
};

constexpr auto GlyphSources = std::to_array<GlyphSource>({
    {0x0021, 0x0808080808000800}, // !
    {0x0022, 0x1414140000000000}, // "
    {0x0023, 0x143e143e14000000}, // #
    {0x0024, 0x081e281c0a3c0800}, // $
    {0x0025, 0x3333060c18333300}, // %
    {0x0026, 0x182428102a241a00}, // &
    {0x0027, 0x0808040000000000}, // '
    {0x0028, 0x0408101010080400}, // (
    {0x0029, 0x1008040404081000}, // )
    {0x002a, 0x00082a1c2a080000}, // *
    {0x002b, 0x0008083e08080000}, // +
    {0x002c, 0x0000000018181000}, // ,
    {0x002d, 0x0000003e00000000}, // -
    {0x002e, 0x0000000000181800}, // .
    {0x002f, 0x0102040810204000}, // /
    {0x0030, 0x1c22262a32221c00}, // 0
    {0x0031, 0x0818280808083e00}, // 1
    {0x0032, 0x1c22020408103e00}, // 2
    {0x0033, 0x3c02020c02023c00}, // 3
    {0x0034, 0x040c14243e040400}, // 4
    {0x0035, 0x3e20203c02023c00}, // 5
    {0x0036, 0x1c20203c22221c00}, // 6
    {0x0037, 0x3e02040810101000}, // 7
    {0x0038, 0x1c22221c22221c00}, // 8
    {0x0039, 0x1c22221e02021c00}, // 9
    {0x003a, 0x0018180018180000}, // :
    {0x003b, 0x0018180018181000}, // ;
    {0x003c, 0x0408102010080400}, // <
    {0x003d, 0x00003e003e000000}, // =
    {0x003e, 0x2010080408102000}, // >
    {0x003f, 0x1c22020408000800}, // ?
    {0x0040, 0x1c222e2a2e201c00}, // @
    {0x0041, 0x1c22223e22222200}, // A
    {0x0042, 0x3c22223c22223c00}, // B
    {0x0043, 0x1c22202020221c00}, // C
    {0x0044, 0x3c22222222223c00}, // D
    {0x0045, 0x3e20203c20203e00}, // E
    {0x0046, 0x3e20203c20202000}, // F
    {0x0047, 0x1c22202e22221c00}, // G
    {0x0048, 0x2222223e22222200}, // H
    {0x0049, 0x3e08080808083e00}, // I
    {0x004a, 0x3e04040424241800}, // J
    {0x004b, 0x2224283028242200}, // K
    {0x004c, 0x2020202020203e00}, // L
    {0x004d, 0x22362a2a22222200}, // M
    {0x004e, 0x2222322a26222200}, // N
    {0x004f, 0x1c22222222221c00}, // O
    {0x0050, 0x3c22223c20202000}, // P
    {0x0051, 0x1c2222222a241a00}, // Q
    {0x0052, 0x3c22223c28242200}, // R
    {0x0053, 0x1e20201c02023c00}, // S
    {0x0054, 0x3e08080808080800}, // T
    {0x0055, 0x2222222222221c00}, // U
    {0x0056, 0x2222222214140800}, // V
    {0x0057, 0x2222222a2a362200}, // W
    {0x0058, 0x2222140814222200}, // X
    {0x0059, 0x2222140808080800}, // Y
    {0x005a, 0x3e02040810203e00}, // Z
    {0x005b, 0x1c10101010101c00}, // [
    {0x005c, 0x2010080402000000}, // backslash
    {0x005d, 0x1c04040404041c00}, // ]
    {0x005e, 0x0814220000000000}, // ^
    {0x005f, 0x0000000000003e00}, // _
    {0x0060, 0x1008040000000000}, // `
    {0x0061, 0x00001c021e221e00}, // a
    {0x0062, 0x20202c3222223c00}, // b
    {0x0063, 0x00001c2220221c00}, // c
    {0x0064, 0x02021a2622221e00}, // d
    {0x0065, 0x00001c223e201c00}, // e
    {0x0066, 0x0c12103c10101000}, // f
    {0x0067, 0x00001e221e021c00}, // g
    {0x0068, 0x20202c3222222200}, // h
    {0x0069, 0x0800180808081c00}, // i
    {0x006a, 0x04000c0404241800}, // j
    {0x006b, 0x2020242830282400}, // k
    {0x006c, 0x1808080808081c00}, // l
    {0x006d, 0x0000342a2a2a2a00}, // m
    {0x006e, 0x00002c3222222200}, // n
    {0x006f, 0x00001c2222221c00}, // o
    {0x0070, 0x00003c223c202000}, // p
    {0x0071, 0x00001a261e020200}, // q
    {0x0072, 0x00002c3220202000}, // r
    {0x0073, 0x00001e201c023c00}, // s
    {0x0074, 0x10103c1010120c00}, // t
    {0x0075, 0x0000222222261a00}, // u
    {0x0076, 0x0000222222140800}, // v
    {0x0077, 0x0000222a2a2a1400}, // w
    {0x0078, 0x0000221408142200}, // x
    {0x0079, 0x000022221e021c00}, // y
    {0x007a, 0x00003e0408103e00}, // z
    {0x007b, 0x0408081008080400}, // {
    {0x007c, 0x0808080808080800}, // |
    {0x007d, 0x1008080408081000}, // }
    {0x007e, 0x0000122c00000000}, // ~
    {0x00a9, 0x3e415d51515d413e}, // ©
    {0x00c4, 0x221c223e22222200}, // Ä
    {0x00c9, 0x04083e203c203e00}, // É
    {0x00d6, 0x221c222222221c00}, // Ö
    {0x00dc, 0x2200222222221c00}, // Ü
    {0x00df, 0x3c42427c42427c40}, // ß
    {0x00e4, 0x14001c021e221e00}, // ä
    {0x00e9, 0x04081c223e201c00}, // é
    {0x00f6, 0x14001c2222221c00}, // ö
    {0x00fc, 0x1400222222261a00}, // ü
    {0x1e9e, 0x3c42427c42427c40}, // ẞ
});

constexpr std::uint8_t ColumnBits = 0x7f;
constexpr std::uint32_t AsciiCodePoints = 128;
constexpr std::size_t ExpectedGlyphs = 160;

Glyph GlyphOf(std::uint64_t rows) {
    Glyph glyph{};
    for (std::size_t row = 0; row < glyph.size(); ++row) {
        const std::size_t shift = 8 * (glyph.size() - 1 - row);
        glyph[row] = static_cast<std::uint8_t>(rows >> shift) & ColumnBits;
    }
    return glyph;
}

// In this file, after the table itself, so that the table is complete before anything of the
// program can read it.
[[maybe_unused]] const bool GlyphTableBuilt = (BuildGlyphTable(), true);

} // namespace

void BuildGlyphTable() {
    GlyphTable.max_load_factor(1.0F);
    GlyphTable.reserve(ExpectedGlyphs);
    for (std::uint32_t codePoint = 0; codePoint < AsciiCodePoints; ++codePoint) {
        GlyphTable.emplace(codePoint, Glyph{});
    }
    for (const GlyphSource& source : GlyphSources) {
        GlyphTable.insert_or_assign(source.CodePoint, GlyphOf(source.Rows));
    }
}

const Glyph* FindGlyph(std::uint32_t codePoint) {
    const auto found = GlyphTable.find(codePoint);
    return found == GlyphTable.end() ? nullptr : &found->second;
}

} // namespace Wirefall
