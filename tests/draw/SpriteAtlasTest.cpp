#include "draw/SpriteAtlas.h"

#include "draw/Primitives.h"
#include "support/SdlAllocationLimit.h"
#include "support/SoftwareCanvas.h"
#include "support/TargetTexture.h"

#include <SDL3/SDL_error.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

namespace Wirefall {

namespace {

using Testing::CanvasSize;
using Testing::Picture;
using Testing::Rgb;
using Testing::SdlAllocationLimit;
using Testing::SoftwareCanvas;
using Testing::TargetTexture;

constexpr CanvasSize AtlasCanvas = {
    .LogicalWidth = 90, .LogicalHeight = 18, .SurfaceWidth = 90, .SurfaceHeight = 18};
constexpr Rgb Black = {0, 0, 0};

Picture WholeAtlas() {
    SoftwareCanvas canvas(AtlasCanvas);
    const SDL_FRect whole = {0.0F, 0.0F, 90.0F, 18.0F};
    SDL_RenderTexture(canvas.Renderer(), SpriteAtlas.Texture, nullptr, &whole);
    return canvas.Read();
}

TEST(SpriteAtlas, IsNinetyByEighteenWithHardPixels) {
    const SoftwareCanvas canvas(AtlasCanvas);
    float width = 0.0F;
    float height = 0.0F;
    SDL_ScaleMode scaleMode = SDL_SCALEMODE_LINEAR;
    SDL_BlendMode blendMode = SDL_BLENDMODE_NONE;
    SDL_GetTextureSize(SpriteAtlas.Texture, &width, &height);
    SDL_GetTextureScaleMode(SpriteAtlas.Texture, &scaleMode);
    SDL_GetTextureBlendMode(SpriteAtlas.Texture, &blendMode);
    EXPECT_EQ(width, 90.0F);
    EXPECT_EQ(height, 18.0F);
    EXPECT_EQ(scaleMode, SDL_SCALEMODE_NEAREST);
    EXPECT_EQ(blendMode, SDL_BLENDMODE_BLEND);
}

TEST(SpriteAtlas, HasTheSpritesSideBySideInGutters) {
    const SoftwareCanvas canvas(AtlasCanvas);
    for (std::size_t i = 0; i < SpriteAtlas.Sources.size(); ++i) {
        const SDL_FRect& source = SpriteAtlas.Sources[i];
        EXPECT_EQ(source.x, static_cast<float>(18 * i + 1));
        EXPECT_EQ(source.y, 1.0F);
        EXPECT_EQ(source.w, 16.0F);
        EXPECT_EQ(source.h, 16.0F);
    }
}

TEST(SpriteAtlas, ShowsThePictures) {
    const Picture atlas = WholeAtlas();
    constexpr std::int32_t Move = 1;
    constexpr std::int32_t Rotate = 19;
    constexpr std::int32_t Place = 37;
    constexpr std::int32_t Forward = 55;
    EXPECT_EQ(atlas.At(Move + 7, 1 + 1), (Rgb{0x7a, 0xa8, 0xe6}));
    EXPECT_EQ(atlas.At(Move + 1, 1 + 7), (Rgb{0x7a, 0xa8, 0xe6}));
    EXPECT_EQ(atlas.At(Move + 8, 1 + 8), (Rgb{0xb0, 0xd2, 0xfc}));
    EXPECT_EQ(atlas.At(Move + 9, 1 + 6), Black);
    EXPECT_EQ(atlas.At(Rotate + 10, 1 + 1), (Rgb{0xe0, 0xc6, 0xff}));
    EXPECT_EQ(atlas.At(Rotate + 3, 1 + 8), (Rgb{0xc4, 0x9a, 0xff}));
    EXPECT_EQ(atlas.At(Place + 3, 1 + 3), (Rgb{0x5e, 0xb0, 0x82}));
    EXPECT_EQ(atlas.At(Place + 5, 1 + 7), (Rgb{0xa0, 0xee, 0xba}));
    EXPECT_EQ(atlas.At(Place + 8, 1 + 8), (Rgb{0xc6, 0xfc, 0xd6}));
    EXPECT_EQ(atlas.At(Forward + 4, 1 + 6), (Rgb{0xff, 0xe4, 0xa6}));
    EXPECT_EQ(atlas.At(Forward + 12, 1 + 8), (Rgb{0xff, 0xd0, 0x78}));
    for (std::int32_t x = 72; x < 90; ++x) {
        EXPECT_EQ(atlas.At(x, 9), Black) << "the fifth cell is spare";
    }
}

TEST(SpriteAtlas, RepeatsTheOutermostPixelsInTheGutters) {
    const Picture atlas = WholeAtlas();
    for (std::int32_t cell = 0; cell < SpriteCount; ++cell) {
        const std::int32_t left = 18 * cell + 1;
        for (std::int32_t i = 0; i < 16; ++i) {
            EXPECT_EQ(atlas.At(left + i, 0), atlas.At(left + i, 1));
            EXPECT_EQ(atlas.At(left + i, 17), atlas.At(left + i, 16));
            EXPECT_EQ(atlas.At(left - 1, 1 + i), atlas.At(left, 1 + i));
            EXPECT_EQ(atlas.At(left + 16, 1 + i), atlas.At(left + 15, 1 + i));
        }
        EXPECT_EQ(atlas.At(left - 1, 0), atlas.At(left, 1));
        EXPECT_EQ(atlas.At(left + 16, 0), atlas.At(left + 15, 1));
        EXPECT_EQ(atlas.At(left - 1, 17), atlas.At(left, 16));
        EXPECT_EQ(atlas.At(left + 16, 17), atlas.At(left + 15, 16));
    }
}

TEST(SpriteAtlas, LeavesTargetAndClipAsTheyWere) {
    const SoftwareCanvas canvas(AtlasCanvas);
    const TargetTexture target(canvas.Renderer());
    for (SDL_Texture* const former : {target.Get(), static_cast<SDL_Texture*>(nullptr)}) {
        ReleaseTextureAtlas();
        SDL_SetRenderTarget(canvas.Renderer(), former);
        const SDL_Rect clip = {3, 4, 5, 6};
        SDL_SetRenderClipRect(canvas.Renderer(), &clip);
        ASSERT_TRUE(BuildTextureAtlas(canvas.Renderer()));
        SDL_Rect now = {};
        SDL_GetRenderClipRect(canvas.Renderer(), &now);
        EXPECT_EQ(SDL_GetRenderTarget(canvas.Renderer()), former);
        EXPECT_TRUE(SDL_RectsEqual(&now, &clip));
    }
}

TEST(SpriteAtlas, IsBuiltOnlyOnce) {
    const SoftwareCanvas canvas(AtlasCanvas);
    SDL_Texture* const texture = SpriteAtlas.Texture;
    EXPECT_TRUE(BuildTextureAtlas(canvas.Renderer()));
    EXPECT_EQ(SpriteAtlas.Texture, texture);
}

TEST(SpriteAtlas, IsForgottenWhenReleased) {
    const SoftwareCanvas canvas(AtlasCanvas);
    ReleaseTextureAtlas();
    EXPECT_EQ(SpriteAtlas.Texture, nullptr);
    ReleaseTextureAtlas();
}

TEST(SpriteAtlas, FailsWithoutMemoryAndKeepsNothing) {
    const SoftwareCanvas canvas(AtlasCanvas);
    ReleaseTextureAtlas();
    {
        const SdlAllocationLimit outOfMemory(5000);
        EXPECT_FALSE(BuildTextureAtlas(canvas.Renderer()));
    }
    EXPECT_EQ(SpriteAtlas.Texture, nullptr);
    EXPECT_TRUE(BuildTextureAtlas(canvas.Renderer()));
}

TEST(SpriteAtlas, FailsWithoutARenderer) {
    EXPECT_FALSE(BuildTextureAtlas(nullptr));
    EXPECT_EQ(SpriteAtlas.Texture, nullptr);
}

TEST(Sprites, AreNotDrawnWithoutASize) {
    SoftwareCanvas canvas(AtlasCanvas);
    for (const float size : {0.0F, -16.0F, std::numeric_limits<float>::quiet_NaN()}) {
        DrawSprite(canvas.Renderer(), SpritePlace, 20.0F, 16.0F, size);
    }
    const Picture picture = canvas.Read();
    EXPECT_EQ(std::count(picture.Pixels.begin(), picture.Pixels.end(), Black),
              std::ssize(picture.Pixels));
}

// SDL would complain of the one and the other.
TEST(Sprites, AreNotDrawnWithoutARendererOrAnAtlas) {
    const SoftwareCanvas canvas(AtlasCanvas);
    SDL_ClearError();
    DrawSprite(nullptr, SpriteMove, 0.0F, 0.0F, 16.0F);
    EXPECT_STREQ(SDL_GetError(), "");
    ReleaseTextureAtlas();
    DrawSprite(canvas.Renderer(), SpriteMove, 0.0F, 0.0F, 16.0F);
    EXPECT_STREQ(SDL_GetError(), "");
}

TEST(Sprites, AreDrawnPixelByPixelAtTheirOwnSize) {
    const Picture atlas = WholeAtlas();
    SoftwareCanvas canvas(AtlasCanvas);
    DrawSprite(canvas.Renderer(), SpritePlace, 20.0F, 1.0F, 16.0F);
    const Picture drawn = canvas.Read();
    for (std::int32_t y = 0; y < 16; ++y) {
        for (std::int32_t x = 0; x < 16; ++x) {
            EXPECT_EQ(drawn.At(20 + x, 1 + y), atlas.At(37 + x, 1 + y));
        }
    }
}

} // namespace

} // namespace Wirefall
