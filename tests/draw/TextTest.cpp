#include "draw/Text.h"

#include "draw/Glyphs.h"
#include "support/SoftwareCanvas.h"
#include "words/CommandHints.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace Wirefall {

namespace {

using Testing::CanvasSize;
using Testing::Picture;
using Testing::Rgb;
using Testing::SoftwareCanvas;

using Lines = std::vector<std::string>;

TEST(TextWidth, IsSevenPixelsForEachCharacter) {
    EXPECT_EQ(TextWidth("", 3), 0);
    EXPECT_EQ(TextWidth("a", 1), 7);
    EXPECT_EQ(TextWidth("a b", 2), 42);
}

TEST(TextWidth, GivesTheCopyrightSignAnEighth) {
    EXPECT_EQ(TextWidth("©", 2), 16);
    EXPECT_EQ(TextWidth("a©", 2), 30);
}

TEST(TextWidth, CountsALetterOfTwoBytesOnceAndABadByteLikeALetter) {
    EXPECT_EQ(TextWidth("ä", 2), 14);
    EXPECT_EQ(TextWidth("\xa4", 2), 14);
    EXPECT_EQ(TextWidth("\xe2\x82", 1), 14);
}

TEST(TextWidth, StaysInRangeWhateverTheScale) {
    EXPECT_EQ(TextWidth("ab", std::numeric_limits<std::int32_t>::max()),
              std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(TextWidth("ab", std::numeric_limits<std::int32_t>::min()),
              std::numeric_limits<std::int32_t>::min());
}

TEST(FittingAScale, TakesTheLargestThatFits) {
    EXPECT_EQ(FitScaleToWidth("abcd", 84.0F, 5), 3);
    EXPECT_EQ(FitScaleToWidth("abcd", 83.9F, 5), 2);
    EXPECT_EQ(FitScaleToWidth("abcd", 1000.0F, 5), 5);
    EXPECT_EQ(FitScaleToLength(4, 84.0F, 5), 3);
    EXPECT_EQ(FitScaleToLength(4, 83.9F, 5), 2);
}

TEST(FittingAScale, NeverGoesBelowOne) {
    EXPECT_EQ(FitScaleToWidth("abcd", 1.0F, 4), 1);
    EXPECT_EQ(FitScaleToLength(4, -5.0F, 4), 1);
}

TEST(FittingAScale, TakesAWantedScaleOfZeroOrLessAsOne) {
    EXPECT_EQ(FitScaleToWidth("a", 1000.0F, 0), 1);
    EXPECT_EQ(FitScaleToWidth("a", 1000.0F, -3), 1);
    EXPECT_EQ(FitScaleToLength(1, 1000.0F, 0), 1);
    EXPECT_EQ(FitScaleToLength(1, 1000.0F, -3), 1);
}

TEST(FittingAScale, CountsAnUmlautOnceByWidthAndTwiceByLength) {
    const std::string text = "Ü";
    EXPECT_EQ(FitScaleToWidth(text, 21.0F, 3), 3);
    EXPECT_EQ(FitScaleToLength(text.size(), 21.0F, 3), 1);
}

TEST(FittingAScale, KeepsTheWantedScaleOfAnEmptyText) {
    EXPECT_EQ(FitScaleToWidth("", 0.0F, 6), 6);
    EXPECT_EQ(FitScaleToLength(0, 0.0F, 6), 6);
}

TEST(WrappingWords, FillsLinesUpToTheLimit) {
    EXPECT_EQ(WrapWords(1, "one two three", 49.0F), (Lines{"one two", "three"}));
    EXPECT_EQ(WrapWords(1, "one two three", 48.0F), (Lines{"one", "two", "three"}));
    EXPECT_EQ(WrapWords(2, "one two", 98.0F), (Lines{"one two"}));
}

TEST(WrappingWords, CountsOnlyWholePixelsOfTheLimit) {
    EXPECT_EQ(WrapWords(1, "ab cd", 35.9F), (Lines{"ab cd"}));
    EXPECT_EQ(WrapWords(1, "ab cd", 34.9F), (Lines{"ab", "cd"}));
}

TEST(WrappingWords, CountsCharactersRatherThanBytes) {
    EXPECT_EQ(WrapWords(1, "ÄÄ ÖÖ", 35.0F), (Lines{"ÄÄ ÖÖ"}));
}

TEST(WrappingWords, TakesAnyWhiteSpaceAsOneBlank) {
    EXPECT_EQ(WrapWords(1, "  a \t\n\v\f\r b ", 100.0F), (Lines{"a b"}));
}

TEST(WrappingWords, LeavesATextWithoutWordsAsItsSingleLine) {
    EXPECT_EQ(WrapWords(1, "", 100.0F), (Lines{""}));
    EXPECT_EQ(WrapWords(1, "   ", 100.0F), (Lines{"   "}));
}

TEST(WrappingWords, LetsALongFirstWordOverflowAndGoesOnAfresh) {
    EXPECT_EQ(WrapWords(1, "overlong a b", 21.0F), (Lines{"overlong", "a b"}));
}

TEST(WrappingWords, LetsALongLaterWordOverflowOnALineOfItsOwn) {
    // The word starts the next line before it is known to be too long, so what follows is measured
    // behind it.
    EXPECT_EQ(WrapWords(1, "a overlong b", 21.0F), (Lines{"a", "overlong", "b"}));
}

TEST(Ellipsizing, LeavesATextThatFitsExactly) {
    EXPECT_EQ(Ellipsize("abcdef", 42.0F, 1), "abcdef");
    EXPECT_EQ(Ellipsize("  abcdef  ", 42.0F, 1), "abcdef");
}

TEST(Ellipsizing, CutsOneBytePastTheLimit) {
    EXPECT_EQ(Ellipsize("abcdefg", 42.0F, 1), "abc...");
    EXPECT_EQ(Ellipsize("abcdefg", 48.9F, 1), "abc...");
}

TEST(Ellipsizing, DropsBlanksBeforeTheDots) {
    EXPECT_EQ(Ellipsize("ab  cdefgh", 49.0F, 1), "ab...");
}

TEST(Ellipsizing, GivesNothingWhereNotEvenTheDotsFit) {
    EXPECT_EQ(Ellipsize("abcdef", 20.9F, 1), "");
    EXPECT_EQ(Ellipsize("abcdef", 41.9F, 2), "");
    EXPECT_EQ(Ellipsize("abcdef", 21.0F, 1), "...");
}

TEST(Ellipsizing, TakesALimitBelowOneAsOne) { EXPECT_EQ(Ellipsize("a", -10.0F, 1), ""); }

TEST(Ellipsizing, MayCutALetterInHalf) { EXPECT_EQ(Ellipsize("aäbcdef", 35.0F, 1), "a\xc3..."); }

TEST(TrimmingBlanks, TakesOnlyTheBlank) {
    EXPECT_EQ(TrimBlanks("  a b  "), "a b");
    EXPECT_EQ(TrimBlanks("\ta\n"), "\ta\n");
    EXPECT_EQ(TrimBlanks("   "), "");
    EXPECT_EQ(TrimBlanks(""), "");
}

TEST(StrippingALabel, RemovesItWithTheBlanksAfterIt) {
    EXPECT_EQ(StripLabelPrefix("MOVE   UP/DN", "MOVE"), "UP/DN");
    EXPECT_EQ(StripLabelPrefix("MOVE", "MOVE"), "");
    EXPECT_EQ(StripLabelPrefix("MOVE  ", "MOVE"), "");
    EXPECT_EQ(StripLabelPrefix("MOVEMENT", "MOVE"), "MENT");
}

TEST(StrippingALabel, LeavesEveryOtherTextWhole) {
    EXPECT_EQ(StripLabelPrefix(" MOVE UP", "MOVE"), " MOVE UP");
    EXPECT_EQ(StripLabelPrefix("MOV", "MOVE"), "MOV");
}

TEST(CenteringInk, PutsCapitalsInTheMiddleOfWhatIsSeen) {
    // Capitals have ink in the rows 0 to 6.
    EXPECT_FLOAT_EQ(InkCenteredY("AB", 2, 10.0F, 30.0F), 18.0F);
}

TEST(CenteringInk, SkipsTheEmptyRowsAbove) {
    // A full stop has ink in the rows 5 and 6 alone.
    EXPECT_FLOAT_EQ(InkCenteredY(".", 1, 0.0F, 10.0F), -1.0F);
}

TEST(CenteringInk, CentersATextWithoutInkByItsCell) {
    EXPECT_FLOAT_EQ(InkCenteredY("", 2, 10.0F, 30.0F), 17.0F);
    EXPECT_FLOAT_EQ(InkCenteredY("  \t", 2, 10.0F, 30.0F), 17.0F);
}

TEST(CenteringInk, TakesAnUnknownCharacterAsAQuestionMark) {
    EXPECT_FLOAT_EQ(InkCenteredY("ñ", 3, 0.0F, 50.0F), InkCenteredY("?", 3, 0.0F, 50.0F));
}

TEST(ExtremeScales, OverflowNothing) {
    constexpr std::int32_t Greatest = std::numeric_limits<std::int32_t>::max();
    EXPECT_FLOAT_EQ(TextHeight(Greatest), 8.0F * 2147483648.0F);
    EXPECT_FLOAT_EQ(InkCenteredY("A", Greatest, 0.0F, 0.0F), -3.5F * 2147483648.0F);
    EXPECT_FLOAT_EQ(InkCenteredY("", Greatest, 0.0F, 0.0F), -4.0F * 2147483648.0F);
    EXPECT_FLOAT_EQ(ByteWidth(1000, Greatest), 7000.0F * 2147483648.0F);
    SoftwareCanvas canvas(
        {.LogicalWidth = 96, .LogicalHeight = 24, .SurfaceWidth = 96, .SurfaceHeight = 24});
    DrawText(canvas.Renderer(), "AB", 0.0F, 0.0F, Greatest, Rgba(0xffffffff));
}

constexpr CanvasSize SmallCanvas = {
    .LogicalWidth = 96, .LogicalHeight = 24, .SurfaceWidth = 96, .SurfaceHeight = 24};
constexpr Rgb White = {255, 255, 255};
constexpr Rgb Black = {0, 0, 0};

Picture Drawn(std::string_view text, float x, float y, std::int32_t scale) {
    SoftwareCanvas canvas(SmallCanvas);
    DrawText(canvas.Renderer(), text, x, y, scale, Rgba(0xffffffff));
    return canvas.Read();
}

TEST(DrawingText, LightsTheSquaresOfTheFont) {
    const Picture picture = Drawn("!", 4.0F, 2.0F, 2);
    const Glyph& glyph = *FindGlyph('!');
    for (std::int32_t y = 0; y < 24; ++y) {
        for (std::int32_t x = 0; x < 96; ++x) {
            const std::int32_t column = (x - 4) / 2;
            const std::int32_t row = (y - 2) / 2;
            const bool inCell = x >= 4 && y >= 2 && column < GlyphColumns && row < GlyphRows;
            const bool lit = inCell && (glyph[static_cast<std::size_t>(row)] >>
                                            static_cast<unsigned>(GlyphColumns - 1 - column) &
                                        1U) != 0;
            EXPECT_EQ(picture.At(x, y), lit ? White : Black) << x << ", " << y;
        }
    }
}

TEST(DrawingText, AdvancesByTheWidthOfEachCharacter) {
    for (const std::string_view before : {"a", "©", "ñ", "\xff", "\t", " "}) {
        const Picture whole = Drawn(std::string(before) + "H", 1.0F, 1.0F, 1);
        const Picture alone = Drawn("H", 1.0F + static_cast<float>(TextWidth(before, 1)), 1.0F, 1);
        for (std::int32_t y = 0; y < 24; ++y) {
            for (std::int32_t x = 1 + TextWidth(before, 1); x < 96; ++x) {
                EXPECT_EQ(whole.At(x, y), alone.At(x, y));
            }
        }
    }
}

TEST(DrawingText, ShowsAQuestionMarkForWhatTheFontLacks) {
    const Picture questionMark = Drawn("?", 0.0F, 0.0F, 1);
    EXPECT_EQ(Drawn("ñ", 0.0F, 0.0F, 1), questionMark);
    EXPECT_EQ(Drawn("\xe9", 0.0F, 0.0F, 1), questionMark);
    EXPECT_NE(Drawn("é", 0.0F, 0.0F, 1), questionMark);
}

TEST(DrawingText, ShowsNothingForBlanksAndControlCharacters) {
    const Picture empty = Drawn("", 0.0F, 0.0F, 1);
    EXPECT_EQ(Drawn(" \t\n", 0.0F, 0.0F, 2), empty);
}

TEST(DrawingText, DrawsNothingWithoutAQuestionMarkInTheFont) {
    const auto node = GlyphTable.extract(U'?');
    const Picture picture = Drawn("A", 0.0F, 0.0F, 1);
    const float inkless = InkCenteredY("A", 1, 0.0F, 20.0F);
    GlyphTable.emplace(node.key(), node.mapped());
    EXPECT_EQ(picture, Drawn("", 0.0F, 0.0F, 1));
    EXPECT_FLOAT_EQ(inkless, 6.0F);
}

TEST(DrawingText, CentersByTheWidth) {
    SoftwareCanvas canvas(SmallCanvas);
    DrawTextCentered(canvas.Renderer(), "ABC", 48.0F, 3.0F, 2, Rgba(0xffffffff));
    EXPECT_EQ(canvas.Read(), Drawn("ABC", 27.0F, 3.0F, 2));
}

} // namespace

} // namespace Wirefall
