#include "base/Utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall {

namespace {

using namespace std::string_literals;

std::vector<std::uint32_t> CodePointsOf(std::string_view text) {
    std::vector<std::uint32_t> codePoints;
    for (std::size_t at = 0; at < text.size();) {
        const auto [codePoint, length] = DecodeUtf8(text, at);
        codePoints.push_back(codePoint);
        at += length;
    }
    return codePoints;
}

using CodePoints = std::vector<std::uint32_t>;

TEST(Utf8, ReadsTheFirstAndLastCharacterOfEachLength) {
    EXPECT_EQ(CodePointsOf("\0"s), (CodePoints{0x0}));
    EXPECT_EQ(CodePointsOf("\x7f"), (CodePoints{0x7f}));
    EXPECT_EQ(CodePointsOf("\xc2\x80"), (CodePoints{0x80}));
    EXPECT_EQ(CodePointsOf("\xdf\xbf"), (CodePoints{0x7ff}));
    EXPECT_EQ(CodePointsOf("\xe0\xa0\x80"), (CodePoints{0x800}));
    EXPECT_EQ(CodePointsOf("\xef\xbf\xbf"), (CodePoints{0xffff}));
    EXPECT_EQ(CodePointsOf("\xf0\x90\x80\x80"), (CodePoints{0x10000}));
    EXPECT_EQ(CodePointsOf("\xf4\x8f\xbf\xbf"), (CodePoints{0x10ffff}));
}

TEST(Utf8, AcceptsTheNeighboursOfTheSurrogates) {
    EXPECT_EQ(CodePointsOf("\xed\x9f\xbf"), (CodePoints{0xd7ff}));
    EXPECT_EQ(CodePointsOf("\xee\x80\x80"), (CodePoints{0xe000}));
}

TEST(Utf8, ReadsEachByteOfASurrogateAsAQuestionMark) {
    EXPECT_EQ(CodePointsOf("\xed\xa0\x80"), (CodePoints{'?', '?', '?'}));
    EXPECT_EQ(CodePointsOf("\xed\xbf\xbf"), (CodePoints{'?', '?', '?'}));
}

TEST(Utf8, ReadsEachByteOfAnOverlongFormAsAQuestionMark) {
    EXPECT_EQ(CodePointsOf("\xc0\x80"), (CodePoints{'?', '?'}));
    EXPECT_EQ(CodePointsOf("\xc1\xbf"), (CodePoints{'?', '?'}));
    EXPECT_EQ(CodePointsOf("\xe0\x9f\xbf"), (CodePoints{'?', '?', '?'}));
    EXPECT_EQ(CodePointsOf("\xf0\x8f\xbf\xbf"), (CodePoints{'?', '?', '?', '?'}));
}

TEST(Utf8, RefusesWhatLiesAboveTheLastCodePoint) {
    EXPECT_EQ(CodePointsOf("\xf4\x90\x80\x80"), (CodePoints{'?', '?', '?', '?'}));
    EXPECT_EQ(CodePointsOf("\xf7\xbf\xbf\xbf"), (CodePoints{'?', '?', '?', '?'}));
    EXPECT_EQ(CodePointsOf("\xf8\x88\x80\x80\x80"), (CodePoints{'?', '?', '?', '?', '?'}));
    EXPECT_EQ(CodePointsOf("\xff"), (CodePoints{'?'}));
}

TEST(Utf8, GoesOnAtTheByteAfterABadOne) {
    EXPECT_EQ(CodePointsOf("\x80"), (CodePoints{'?'}));
    EXPECT_EQ(CodePointsOf("\xe4"
                           "b"),
              (CodePoints{'?', 'b'}));
    EXPECT_EQ(CodePointsOf("\xe2\x82"
                           "A"),
              (CodePoints{'?', '?', 'A'}));
    EXPECT_EQ(CodePointsOf("\xe2\xc3\xa4"), (CodePoints{'?', 0xe4}));
}

TEST(Utf8, ReadsATextThatIsCutShortAsQuestionMarks) {
    EXPECT_EQ(CodePointsOf("a\xc3"), (CodePoints{'a', '?'}));
    EXPECT_EQ(CodePointsOf("\xe2\x82"), (CodePoints{'?', '?'}));
    EXPECT_EQ(CodePointsOf("\xf0\x9f\x98"), (CodePoints{'?', '?', '?'}));
}

TEST(UpperCase, CoversAsciiAndTheAccentedLettersOfTheFont) {
    EXPECT_EQ(Utf8ToUpper("azAZ09 @`{"), "AZAZ09 @`{");
    EXPECT_EQ(Utf8ToUpper("äöüé"), "ÄÖÜÉ");
    EXPECT_EQ(Utf8ToUpper("ÄÖÜÉ"), "ÄÖÜÉ");
}

TEST(UpperCase, KeepsTheSmallSharpSAndTurnsTheCapitalOneIntoIt) {
    EXPECT_EQ(Utf8ToUpper("ß"), "ß");
    EXPECT_EQ(Utf8ToUpper("\xe1\xba\x9e"), "ß");
}

TEST(UpperCase, KeepsEveryOtherCharacter) {
    EXPECT_EQ(Utf8ToUpper("ñ€😀"), "ñ€😀");
    EXPECT_EQ(Utf8ToUpper("\0\x1f\x7f"s), "\0\x1f\x7f"s);
}

TEST(UpperCase, MakesQuestionMarksOfBadBytes) {
    EXPECT_EQ(Utf8ToUpper("a\xe4"
                          "b"),
              "A?B");
    EXPECT_EQ(Utf8ToUpper("\xed\xa0\x80"), "???");
}

} // namespace

} // namespace Wirefall
