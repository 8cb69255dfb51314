#include "draw/Glyphs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

namespace Wirefall {

namespace {

// The font as its designer's list has it: code point and rows, in hexadecimal, top row first.
constexpr const char* DesignersList =
    "0021:0808080808000800 0022:1414140000000000 0023:143E143E14000000 0024:081E281C0A3C0800 "
    "0025:3333060C18333300 0026:182428102A241A00 0027:0808040000000000 0028:0408101010080400 "
    "0029:1008040404081000 002A:00082A1C2A080000 002B:0008083E08080000 002C:0000000018181000 "
    "002D:0000003E00000000 002E:0000000000181800 002F:0102040810204000 0030:1C22262A32221C00 "
    "0031:0818280808083E00 0032:1C22020408103E00 0033:3C02020C02023C00 0034:040C14243E040400 "
    "0035:3E20203C02023C00 0036:1C20203C22221C00 0037:3E02040810101000 0038:1C22221C22221C00 "
    "0039:1C22221E02021C00 003A:0018180018180000 003B:0018180018181000 003C:0408102010080400 "
    "003D:00003E003E000000 003E:2010080408102000 003F:1C22020408000800 0040:1C222E2A2E201C00 "
    "0041:1C22223E22222200 0042:3C22223C22223C00 0043:1C22202020221C00 0044:3C22222222223C00 "
    "0045:3E20203C20203E00 0046:3E20203C20202000 0047:1C22202E22221C00 0048:2222223E22222200 "
    "0049:3E08080808083E00 004A:3E04040424241800 004B:2224283028242200 004C:2020202020203E00 "
    "004D:22362A2A22222200 004E:2222322A26222200 004F:1C22222222221C00 0050:3C22223C20202000 "
    "0051:1C2222222A241A00 0052:3C22223C28242200 0053:1E20201C02023C00 0054:3E08080808080800 "
    "0055:2222222222221C00 0056:2222222214140800 0057:2222222A2A362200 0058:2222140814222200 "
    "0059:2222140808080800 005A:3E02040810203E00 005B:1C10101010101C00 005C:2010080402000000 "
    "005D:1C04040404041C00 005E:0814220000000000 005F:0000000000003E00 0060:1008040000000000 "
    "0061:00001C021E221E00 0062:20202C3222223C00 0063:00001C2220221C00 0064:02021A2622221E00 "
    "0065:00001C223E201C00 0066:0C12103C10101000 0067:00001E221E021C00 0068:20202C3222222200 "
    "0069:0800180808081C00 006A:04000C0404241800 006B:2020242830282400 006C:1808080808081C00 "
    "006D:0000342A2A2A2A00 006E:00002C3222222200 006F:00001C2222221C00 0070:00003C223C202000 "
    "0071:00001A261E020200 0072:00002C3220202000 0073:00001E201C023C00 0074:10103C1010120C00 "
    "0075:0000222222261A00 0076:0000222222140800 0077:0000222A2A2A1400 0078:0000221408142200 "
    "0079:000022221E021C00 007A:00003E0408103E00 007B:0408081008080400 007C:0808080808080800 "
    "007D:1008080408081000 007E:0000122C00000000 00A9:3E415D51515D413E 00C4:221C223E22222200 "
    "00C9:04083E203C203E00 00D6:221C222222221C00 00DC:2200222222221C00 00DF:3C42427C42427C40 "
    "00E4:14001C021E221E00 00E9:04081C223E201C00 00F6:14001C2222221C00 00FC:1400222222261A00 "
    "1E9E:3C42427C42427C40 ";

std::string RowsInHex(const Glyph& glyph) {
    constexpr const char* Digits = "0123456789ABCDEF";
    std::string hex;
    for (const std::uint8_t row : glyph) {
        hex += Digits[row >> 4U];
        hex += Digits[row & 15U];
    }
    return hex;
}

std::string PictureOf(std::uint32_t codePoint) {
    std::string picture;
    for (const std::uint8_t row : *FindGlyph(codePoint)) {
        for (int column = 0; column < GlyphColumns; ++column) {
            picture += (row & (0x40U >> static_cast<unsigned>(column))) != 0 ? '#' : '.';
        }
        picture += '\n';
    }
    return picture;
}

TEST(Glyphs, AreThoseOfTheDesignersList) {
    std::istringstream list(DesignersList);
    std::string entry;
    int count = 0;
    while (list >> entry) {
        const auto codePoint =
            static_cast<std::uint32_t>(std::stoul(entry.substr(0, 4), nullptr, 16));
        const Glyph* const glyph = FindGlyph(codePoint);
        ASSERT_NE(glyph, nullptr) << entry;
        EXPECT_EQ(RowsInHex(*glyph), entry.substr(5)) << entry;
        ++count;
    }
    EXPECT_EQ(count, 105);
}

TEST(Glyphs, LookLikeTheirLetters) {
    EXPECT_EQ(PictureOf('R'), ".####..\n"
                              ".#...#.\n"
                              ".#...#.\n"
                              ".####..\n"
                              ".#.#...\n"
                              ".#..#..\n"
                              ".#...#.\n"
                              ".......\n");
    EXPECT_EQ(PictureOf(0xa9), ".#####.\n"
                               "#.....#\n"
                               "#.###.#\n"
                               "#.#...#\n"
                               "#.#...#\n"
                               "#.###.#\n"
                               "#.....#\n"
                               ".#####.\n");
}

TEST(Glyphs, ExistForAllOfAsciiAndTenLettersBeyond) {
    for (std::uint32_t codePoint = 0; codePoint < 128; ++codePoint) {
        EXPECT_NE(FindGlyph(codePoint), nullptr) << codePoint;
    }
    EXPECT_EQ(GlyphTable.size(), 128U + 11U);
    EXPECT_EQ(FindGlyph(0xf1), nullptr);
}

TEST(Glyphs, OfControlCharactersAndTheBlankAreEmpty) {
    for (std::uint32_t codePoint = 0; codePoint <= 0x20; ++codePoint) {
        EXPECT_EQ(*FindGlyph(codePoint), Glyph{}) << codePoint;
    }
    EXPECT_EQ(*FindGlyph(0x7f), Glyph{});
}

TEST(Glyphs, NeverUseTheEighthColumn) {
    for (const auto& [codePoint, glyph] : GlyphTable) {
        for (const std::uint8_t row : glyph) {
            EXPECT_LT(row, 0x80) << codePoint;
        }
    }
}

TEST(Glyphs, OfBothSharpSAreTheSame) { EXPECT_EQ(*FindGlyph(0xdf), *FindGlyph(0x1e9e)); }

TEST(Glyphs, StayTheSameWhenTheTableIsBuiltAgain) {
    const auto before = GlyphTable;
    BuildGlyphTable();
    EXPECT_EQ(GlyphTable, before);
}

} // namespace

} // namespace Wirefall
