#include "draw/Primitives.h"

#include "draw/RectBatch.h"
#include "support/SoftwareCanvas.h"

#include <SDL3/SDL_error.h>
#include <gtest/gtest.h>

#include <limits>

namespace Wirefall {

namespace {

using Testing::CanvasSize;
using Testing::Picture;
using Testing::Rgb;
using Testing::SoftwareCanvas;

constexpr CanvasSize SmallCanvas = {
    .LogicalWidth = 40, .LogicalHeight = 30, .SurfaceWidth = 40, .SurfaceHeight = 30};
constexpr Rgb Black = {0, 0, 0};
constexpr PackedColor Yellow = Rgba(0xffff00ff);
constexpr Rgb YellowPixel = {255, 255, 0};

TEST(Colors, KeepRedInTheLowestByte) {
    EXPECT_EQ(Rgba(0x2c6058ff), 0xff58602cU);
    EXPECT_EQ(RedOf(Rgba(0x01020304)), 1);
    EXPECT_EQ(GreenOf(Rgba(0x01020304)), 2);
    EXPECT_EQ(BlueOf(Rgba(0x01020304)), 3);
    EXPECT_EQ(AlphaOf(Rgba(0x01020304)), 4);
    EXPECT_EQ(WithAlpha(Rgba(0x01020304), 0xfe), Rgba(0x010203fe));
}

TEST(Rectangles, FillTheirPixels) {
    SoftwareCanvas canvas(SmallCanvas);
    FillRect(canvas.Renderer(), 5.0F, 6.0F, 3.0F, 2.0F, Yellow);
    const Picture picture = canvas.Read();
    for (std::int32_t y = 0; y < 30; ++y) {
        for (std::int32_t x = 0; x < 40; ++x) {
            const bool inside = x >= 5 && x < 8 && y >= 6 && y < 8;
            EXPECT_EQ(picture.At(x, y), inside ? YellowPixel : Black);
        }
    }
}

TEST(Rectangles, BlendATranslucentColour) {
    SoftwareCanvas canvas(SmallCanvas);
    FillRect(canvas.Renderer(), 0.0F, 0.0F, 4.0F, 4.0F, Rgba(0xffffff80));
    EXPECT_NEAR(canvas.Read().At(1, 1).R, 128, 1);
}

TEST(Rectangles, HaveAnOutlineOfOnePixel) {
    SoftwareCanvas canvas(SmallCanvas);
    FillOutlinedRect(canvas.Renderer(), 5.0F, 6.0F, 10.0F, 8.0F, Rgba(0x102030ff), Yellow);
    const Picture picture = canvas.Read();
    EXPECT_EQ(picture.At(5, 6), YellowPixel);
    EXPECT_EQ(picture.At(14, 13), YellowPixel);
    EXPECT_EQ(picture.At(6, 7), (Rgb{0x10, 0x20, 0x30}));
    EXPECT_EQ(picture.At(13, 12), (Rgb{0x10, 0x20, 0x30}));
    EXPECT_EQ(picture.At(15, 14), Black);
    EXPECT_EQ(picture.At(4, 6), Black);
}

TEST(Batches, LookLikeSingleRectanglesEvenWhereTheyOverlap) {
    constexpr PackedColor Glass = Rgba(0x80c0ff60);
    SoftwareCanvas single(SmallCanvas);
    FillRect(single.Renderer(), 1.0F, 1.0F, 10.0F, 10.0F, Glass);
    FillRect(single.Renderer(), 5.0F, 5.0F, 10.0F, 10.0F, Glass);
    const Picture expected = single.Read();

    SoftwareCanvas batched(SmallCanvas);
    RectBatch batch;
    batch.Add(1.0F, 1.0F, 10.0F, 10.0F);
    batch.Add(5.0F, 5.0F, 10.0F, 10.0F);
    batch.Flush(batched.Renderer(), Glass);
    EXPECT_EQ(batched.Read(), expected);
}

TEST(Batches, AreEmptyAfterTheyWereDrawn) {
    SoftwareCanvas canvas(SmallCanvas);
    RectBatch batch;
    batch.Add(1.0F, 1.0F, 2.0F, 2.0F);
    batch.Flush(canvas.Renderer(), Yellow);
    canvas.Clear();
    batch.Flush(canvas.Renderer(), Yellow);
    EXPECT_EQ(canvas.Read().At(1, 1), Black);
}

TEST(Panels, HaveABodyAnAccentAndThreeBars) {
    SoftwareCanvas canvas(SmallCanvas);
    DrawPanel(canvas.Renderer(), 5.0F, 5.0F, 20.0F, 15.0F, Yellow, 255);
    const Picture picture = canvas.Read();
    EXPECT_EQ(picture.At(15, 12), (Rgb{0x08, 0x16, 0x14}));
    EXPECT_EQ(picture.At(7, 5), YellowPixel);
    EXPECT_EQ(picture.At(22, 6), YellowPixel);
    EXPECT_EQ(picture.At(15, 7), (Rgb{0x08, 0x16, 0x14}));
    const Rgb bar = picture.At(5, 12);
    EXPECT_NEAR(bar.G, 0x56, 2);
    EXPECT_EQ(picture.At(6, 12), bar);
    EXPECT_EQ(picture.At(7, 12), (Rgb{0x08, 0x16, 0x14}));
    EXPECT_EQ(picture.At(24, 12), bar);
    EXPECT_EQ(picture.At(23, 12), bar);
    EXPECT_EQ(picture.At(15, 18), bar);
    EXPECT_EQ(picture.At(15, 19), bar);
    EXPECT_EQ(picture.At(15, 20), Black);
}

TEST(Panels, LetTheSideBarsCrossTheStripe) {
    SoftwareCanvas canvas(SmallCanvas);
    DrawPanel(canvas.Renderer(), 5.0F, 5.0F, 20.0F, 15.0F, Yellow, 255);
    const Picture picture = canvas.Read();
    for (const std::int32_t x : {5, 6, 23, 24}) {
        EXPECT_NE(picture.At(x, 5), YellowPixel);
        EXPECT_NE(picture.At(x, 5), picture.At(x, 12));
    }
}

TEST(Panels, TakeTheAlphaOfTheirBody) {
    SoftwareCanvas canvas(SmallCanvas);
    FillRect(canvas.Renderer(), 0.0F, 0.0F, 40.0F, 30.0F, Yellow);
    DrawPanel(canvas.Renderer(), 5.0F, 5.0F, 20.0F, 15.0F, Yellow, 0);
    EXPECT_EQ(canvas.Read().At(15, 12), YellowPixel);
}

TEST(Panels, AreNotDrawnWithoutASizeOrARenderer) {
    SoftwareCanvas canvas(SmallCanvas);
    // Without the bars, which a box without a width or a height would still have.
    DrawPanel(canvas.Renderer(), 5.0F, 5.0F, 0.0F, 15.0F, Yellow, 255);
    DrawPanel(canvas.Renderer(), 5.0F, 5.0F, 20.0F, 0.0F, Yellow, 255);
    DrawPanel(canvas.Renderer(), 5.0F, 5.0F, 20.0F, -1.0F, Yellow, 255);
    DrawPanel(canvas.Renderer(), 5.0F, 5.0F, 20.0F, std::numeric_limits<float>::quiet_NaN(), Yellow,
              255);
    EXPECT_EQ(canvas.Read(), SoftwareCanvas(SmallCanvas).Read());
    SDL_ClearError();
    DrawPanel(nullptr, 5.0F, 5.0F, 20.0F, 15.0F, Yellow, 255);
    EXPECT_STREQ(SDL_GetError(), "") << "SDL would complain";
}

TEST(ClipRestorers, PutBackTheRectangleThatWas) {
    SoftwareCanvas canvas(SmallCanvas);
    const SDL_Rect outer = {1, 2, 30, 20};
    const SDL_Rect inner = {5, 5, 1, 1};
    SDL_SetRenderClipRect(canvas.Renderer(), &outer);
    {
        const ClipRestorer restorer(canvas.Renderer());
        SDL_SetRenderClipRect(canvas.Renderer(), &inner);
    }
    SDL_Rect now = {};
    EXPECT_TRUE(SDL_RenderClipEnabled(canvas.Renderer()));
    SDL_GetRenderClipRect(canvas.Renderer(), &now);
    EXPECT_TRUE(SDL_RectsEqual(&now, &outer));
}

TEST(ClipRestorers, PutBackThatThereWasNone) {
    SoftwareCanvas canvas(SmallCanvas);
    const SDL_Rect inner = {5, 5, 1, 1};
    {
        const ClipRestorer restorer(canvas.Renderer());
        SDL_SetRenderClipRect(canvas.Renderer(), &inner);
    }
    EXPECT_FALSE(SDL_RenderClipEnabled(canvas.Renderer()));
}

} // namespace

} // namespace Wirefall
