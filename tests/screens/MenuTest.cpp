#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "draw/BinaryRain.h"
#include "draw/NoteBox.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "screens/MainMenu.h"
#include "support/SdlAllocationLimit.h"
#include "support/SoftwareCanvas.h"
#include "support/TargetTexture.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace Wirefall {

namespace {

using Testing::CanvasSize;
using Testing::Picture;
using Testing::Rgb;
using Testing::SdlAllocationLimit;
using Testing::SoftwareCanvas;
using Testing::TargetTexture;

class Rain : public testing::Test {
protected:
    Rain() { FreezeClock(5000); }
    void TearDown() override { ResumeClock(); }

    Picture Shown(bool animated) {
        Canvas.Clear();
        DrawBinaryRain(Canvas.Renderer(), 1280.0F, animated);
        return Canvas.Read();
    }

    SoftwareCanvas Canvas;
};

TEST_F(Rain, KeepsATextureOfAThirdOfTheCanvas) {
    constexpr std::array<std::array<std::int32_t, 2>, 8> Widths = {{
        {1280, 427},
        {960, 320},
        {2560, 854},
        {4, 2},
        {3, 1},
        {2, 1},
        {1, 1},
        {1727, 576},
    }};
    for (const auto& [width, textureWidth] : Widths) {
        DrawBinaryRain(Canvas.Renderer(), static_cast<float>(width), true);
        ASSERT_NE(RainCache.Texture, nullptr);
        EXPECT_EQ(RainCache.TextureWidth, textureWidth);
        EXPECT_EQ(RainCache.TextureHeight, 240);
    }
}

TEST_F(Rain, RoundsAFractionalWidth) {
    DrawBinaryRain(Canvas.Renderer(), 0.25F, true);
    EXPECT_EQ(RainCache.TextureWidth, 1);
    DrawBinaryRain(Canvas.Renderer(), 6.5F, true);
    EXPECT_EQ(RainCache.TextureWidth, 3);
}

TEST_F(Rain, IsDrawnAnewOnlyWhenATickMoves) {
    FreezeClock(std::uint64_t{230} * 7);
    const Picture first = Shown(true);
    EXPECT_EQ(RainCache.TickA, 7U);
    EXPECT_EQ(RainCache.TickB, 3U);
    // Spoil the texture: what is shown tells whether it was drawn anew.
    const auto spoil = [&] {
        SDL_SetRenderTarget(Canvas.Renderer(), RainCache.Texture);
        FillRect(Canvas.Renderer(), 0.0F, 0.0F, 427.0F, 240.0F, Rgba(0xff0000ff));
        SDL_SetRenderTarget(Canvas.Renderer(), nullptr);
    };
    spoil();
    FreezeClock(std::uint64_t{230} * 8 - 1);
    EXPECT_EQ(Shown(true).At(0, 0), (Rgb{255, 0, 0}));
    FreezeClock(std::uint64_t{230} * 8);
    EXPECT_NE(Shown(true).At(0, 0), (Rgb{255, 0, 0}));
    spoil();
    FreezeClock(std::uint64_t{520} * 4);
    EXPECT_NE(Shown(true).At(0, 0), (Rgb{255, 0, 0}));
    EXPECT_EQ(RainCache.TickB, 4U);
}

TEST_F(Rain, LosesItsDigitsOnceWhenItStops) {
    Shown(true);
    const Picture still = Shown(false);
    EXPECT_FALSE(RainCache.Animated);
    EXPECT_EQ(RainCache.TickA, 0U);
    for (const Rgb& pixel : still.Pixels) {
        ASSERT_EQ(pixel, still.Pixels[0]);
    }
    FreezeClock(99999);
    EXPECT_EQ(Shown(false), still);
    EXPECT_EQ(RainCache.TickA, 0U);
}

TEST_F(Rain, HasDigitsOfTwoColoursOnADarkGround) {
    const Picture picture = Shown(true);
    const Rgb ground = Shown(false).At(0, 0);
    int lit = 0;
    for (const Rgb& pixel : picture.Pixels) {
        lit += pixel != ground ? 1 : 0;
        ASSERT_GE(pixel.G, ground.G);
        ASSERT_LT(pixel.G, 80);
    }
    EXPECT_GT(lit, 50000);
}

TEST_F(Rain, DoesNothingWithoutARendererOrAWidth) {
    DrawBinaryRain(nullptr, 1280.0F, true);
    DrawBinaryRain(Canvas.Renderer(), 0.0F, true);
    DrawBinaryRain(Canvas.Renderer(), -5.0F, true);
    EXPECT_EQ(RainCache.Texture, nullptr);
}

TEST_F(Rain, ForgetsItsTextureWhenReleased) {
    Shown(true);
    ReleaseRainCache();
    EXPECT_EQ(RainCache.Texture, nullptr);
    EXPECT_FALSE(RainCache.Valid);
    ReleaseRainCache();
}

TEST_F(Rain, FallsBackToAPlainGroundWithoutATexture) {
    {
        const SdlAllocationLimit outOfMemory(100000);
        DrawBinaryRain(Canvas.Renderer(), 1280.0F, true);
    }
    EXPECT_EQ(Canvas.Read().At(640, 360), (Rgb{2, 5, 8}));
    EXPECT_EQ(RainCache.Texture, nullptr);
    EXPECT_EQ(RainCache.TextureWidth, 0);
    EXPECT_EQ(RainCache.TextureHeight, 0);
    EXPECT_FALSE(RainCache.Valid);
    Shown(true);
    EXPECT_TRUE(RainCache.Valid) << "the next frame tries again";
}

TEST_F(Rain, LeavesTheRenderTargetAsItWas) {
    Shown(true);
    EXPECT_EQ(SDL_GetRenderTarget(Canvas.Renderer()), nullptr);
    const TargetTexture target(Canvas.Renderer());
    SDL_SetRenderTarget(Canvas.Renderer(), target.Get());
    RainCache.Valid = false;
    DrawBinaryRain(Canvas.Renderer(), 1280.0F, true);
    EXPECT_TRUE(RainCache.Valid) << "it was drawn";
    EXPECT_EQ(SDL_GetRenderTarget(Canvas.Renderer()), target.Get());
    SDL_SetRenderTarget(Canvas.Renderer(), nullptr);
}

TEST_F(Rain, FallsBackToAPlainGroundOnACanvasOfNoSizeThatThereIs) {
    const SdlAllocationLimit noTextureOfThatSize(100000);
    for (const float width : {3.0e9F, 1.0e30F, std::numeric_limits<float>::infinity()}) {
        DrawBinaryRain(Canvas.Renderer(), width, true);
        EXPECT_EQ(RainCache.Texture, nullptr) << width;
    }
}

// Worked out by another program from the formula of the digits.
constexpr std::array<std::string_view, 15> DigitsAt12345 = {
    "010101110101", "101011100110", "100111011111", "100001101100", "000100100011",
    "111010000011", "111000011100", "011001010110", "010111010101", "011111101011",
    "111100011011", "100110100000", "101100111110", "000110111111", "110111111010",
};

TEST_F(Rain, ShowsTheDigitsOfTheMoment) {
    FreezeClock(12345);
    const Picture picture = Shown(true);
    const Rgb ground = Shown(false).At(0, 0);
    // A font pixel is two texels, and a texel three pixels of the canvas, so a digit stands every
    // 42 pixels across and every 48 down, the first 6 to the left of the edge. Only a zero has the
    // second pixel from the right in its second row.
    for (std::int32_t row = 0; row < 15; ++row) {
        for (std::int32_t column = 0; column < 12; ++column) {
            const bool zero = picture.At(42 * column - 6 + 5 * 6 + 2, 48 * row + 6 + 2) != ground;
            const char digit =
                DigitsAt12345[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            EXPECT_EQ(zero, digit == '0') << row << ' ' << column;
        }
    }
}

class Menu : public testing::Test {
protected:
    Menu() {
        FreezeClock(5000);
        LogicalWidth = 1280;
        LocalizationCatalog = {};
    }
    void TearDown() override { ResumeClock(); }

    Picture Shown() {
        SoftwareCanvas canvas;
        DrawMainMenu(canvas.Renderer(), App);
        return canvas.Read();
    }

    GameApp App;
};

TEST_F(Menu, OffersToContinueOnlyASavedRun) {
    Shown();
    EXPECT_FALSE(LocalizationCatalog.Texts.contains("MainMenu.ContinueGame"));
    App.HasSavedRun = true;
    Shown();
    EXPECT_EQ(LocalizationCatalog.Texts.at("MainMenu.ContinueGame"), "CONTINUE GAME");
}

TEST_F(Menu, ShowsASelectionBeyondTheRowsAsTheNearestRow) {
    App.MenuSelection = 4;
    const Picture last = Shown();
    App.MenuSelection = 5;
    EXPECT_EQ(Shown(), last);
    App.MenuSelection = 2000000000;
    EXPECT_EQ(Shown(), last);
    App.MenuSelection = 0;
    const Picture first = Shown();
    EXPECT_NE(first, last);
    App.MenuSelection = -1;
    EXPECT_EQ(Shown(), first);
}

TEST_F(Menu, HasTheSamePanelWhateverTheLanguage) {
    const Picture english = Shown();
    LocalizationCatalog.Texts["MainMenu.Options"] = "A VERY LONG ENTRY THAT GOES ON AND ON";
    const Picture other = Shown();
    for (std::int32_t x = 0; x < 1280; ++x) {
        EXPECT_EQ(other.At(x, 154), english.At(x, 154));
        EXPECT_EQ(other.At(x, 575), english.At(x, 575));
    }
}

TEST_F(Menu, LosesItsDigitsWhileTheGameQuits) {
    App.QuitRequested = true;
    const Picture picture = Shown();
    EXPECT_FALSE(RainCache.Animated);
    for (std::int32_t x = 0; x < 1280; ++x) {
        EXPECT_EQ(picture.At(x, 10), picture.At(0, 0));
    }
}

TEST_F(Menu, PutsTheTwoWordsOfTheTitleApart) {
    // Ten pixels a font pixel: nine characters of 70, centred on 640, the title's top at 181.
    const Picture picture = Shown();
    constexpr Rgb Green = {0x70, 0xf6, 0x9e};
    constexpr Rgb Teal = {0x54, 0xe6, 0xc3};
    bool greenLeft = false;
    bool tealRight = false;
    for (std::int32_t y = 181; y < 261; ++y) {
        for (std::int32_t x = 0; x < 1280; ++x) {
            const bool isGreen = picture.At(x, y) == Green;
            const bool isTeal = picture.At(x, y) == Teal;
            greenLeft = greenLeft || isGreen;
            tealRight = tealRight || isTeal;
            EXPECT_TRUE(!isGreen || (x >= 325 && x < 605)) << x;
            EXPECT_TRUE(!isTeal || (x >= 675 && x < 955)) << x;
        }
    }
    EXPECT_TRUE(greenLeft);
    EXPECT_TRUE(tealRight);
}

constexpr CanvasSize BoxCanvas = {
    .LogicalWidth = 300, .LogicalHeight = 150, .SurfaceWidth = 300, .SurfaceHeight = 150};
constexpr PackedColor BoxAccent = Rgba(0xffff00ff);
constexpr Rgb BoxAccentPixel = {255, 255, 0};

Picture DrawnBox(std::string_view heading, std::span<const std::string> paragraphs) {
    SoftwareCanvas canvas(BoxCanvas);
    const UiMetrics metrics;
    DrawNoteBox({.Renderer = canvas.Renderer(),
                 .Metrics = metrics,
                 .HeadingScale = 1,
                 .BodyScale = 1,
                 .LinePitch = 14.0F},
                10.0F, 10.0F, 200.0F, 120.0F, heading, BoxAccent, paragraphs);
    return canvas.Read();
}

TEST(NoteBoxes, AreFramedWithTheAccentOnTop) {
    const Picture picture = DrawnBox("", {});
    constexpr Rgb Line = {0x2c, 0x60, 0x58};
    for (const std::int32_t x : {10, 100, 209}) {
        EXPECT_EQ(picture.At(x, 10), BoxAccentPixel);
        EXPECT_EQ(picture.At(x, 11), BoxAccentPixel);
        EXPECT_EQ(picture.At(x, 128), Line);
        EXPECT_EQ(picture.At(x, 129), Line);
    }
    EXPECT_EQ(picture.At(10, 60), Line);
    EXPECT_EQ(picture.At(11, 60), Line);
    EXPECT_EQ(picture.At(208, 60), Line);
    EXPECT_EQ(picture.At(209, 60), Line);
    EXPECT_NE(picture.At(12, 60), Line);
    EXPECT_EQ(picture.At(210, 60), (Rgb{0, 0, 0}));
}

TEST(NoteBoxes, MarkOnlyTheFirstLineOfAParagraph) {
    // 150 pixels for text, 21 letters: two lines, then one.
    const std::array<std::string, 2> paragraphs = {"ABCDEFGHIJ KLMNOPQRS TUVWXYZ", "ABC"};
    const Picture picture = DrawnBox("", paragraphs);
    // The body begins at 36; bullets stand around x 30, in the middle of their line.
    const auto hasBullet = [&](std::int32_t y) { return picture.At(30, y) == BoxAccentPixel; };
    EXPECT_TRUE(hasBullet(36 + 4));
    EXPECT_FALSE(hasBullet(50 + 4));
    EXPECT_TRUE(hasBullet(64 + 4));
}

TEST(NoteBoxes, HaveRoundBullets) {
    const std::array<std::string, 1> paragraphs = {"A"};
    const Picture picture = DrawnBox("", paragraphs);
    const auto width = [&](std::int32_t y) {
        std::int32_t lit = 0;
        for (std::int32_t x = 20; x < 40; ++x) {
            lit += picture.At(x, y) == BoxAccentPixel ? 1 : 0;
        }
        return lit;
    };
    const std::array<std::int32_t, 9> expected = {0, 1, 4, 5, 6, 5, 4, 1, 0};
    for (std::int32_t i = 0; i < 9; ++i) {
        EXPECT_EQ(width(36 + i), expected[static_cast<std::size_t>(i)]) << i;
    }
}

} // namespace

} // namespace Wirefall
