#include "draw/BinaryRain.h"

#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "draw/Color.h"
#include "draw/Primitives.h"
#include "draw/RectBatch.h"
#include "draw/Text.h"

#include <algorithm>
#include <cmath>

namespace Wirefall {

RainCacheRecord RainCache;

namespace {

constexpr PackedColor Ground = Rgba(0x020508ff);
constexpr PackedColor Dim = Rgba(0x00000048);
constexpr PackedColor OneColor = Rgba(0x48bc7656);
constexpr PackedColor ZeroColor = Rgba(0x347c5652);

// What can still be counted; no texture is as wide as that.
constexpr float WidestCanvas = 2147483520.0F;

constexpr std::int32_t CanvasPerTexel = 3;
constexpr std::int32_t RainHeight = LogicalHeight / CanvasPerTexel;

constexpr std::int32_t DigitScale = 2;
constexpr std::int32_t ColumnPitch = 14;
constexpr std::int32_t RowPitch = 16;
constexpr std::uint32_t RowCount = 16; // the last one lies just below the texture

struct RainTicks {
    std::uint32_t A;
    std::uint32_t B;
};

RainTicks TicksNow(bool animated) {
    if (!animated) {
        return {0, 0};
    }
    const std::uint64_t now = ClockMs();
    return {static_cast<std::uint32_t>(now / 230), static_cast<std::uint32_t>(now / 520)};
}

// A 32-bit finaliser: every bit of the input sways every bit of the result.
constexpr std::uint32_t Mix(std::uint32_t z) {
    z = (z ^ (z >> 16U)) * 0x7feb352dU;
    z = (z ^ (z >> 15U)) * 0x846ca68bU;
    return z ^ (z >> 16U);
}

bool IsOne(std::uint32_t column, std::uint32_t rowSeed, std::uint32_t flipSeed) {
    const std::uint32_t base = Mix((column * 0x9e3779b9U) ^ rowSeed ^ 0xa5a5a5a5U);
    const bool flipped = (Mix(flipSeed ^ base) & 15U) == 0;
    return ((base & 1U) != 0) != flipped;
}

void DrawDigits(SDL_Renderer* renderer, std::int32_t textureWidth, RainTicks ticks) {
    static RectBatch ones;
    static RectBatch zeros;
    const auto lastColumn =
        static_cast<std::uint32_t>((textureWidth + ColumnPitch - 1) / ColumnPitch);
    const std::uint32_t flipSeed = ticks.B * 0xc2b2ae3dU;
    std::uint32_t rowSeed = ticks.A * 0x7a143589U;
    for (std::uint32_t row = 0; row < RowCount; ++row) {
        const auto y = static_cast<float>(row * RowPitch);
        for (std::uint32_t column = 0; column <= lastColumn; ++column) {
            const float x = static_cast<float>(column * ColumnPitch) - 2.0F;
            const bool one = IsOne(column, rowSeed, flipSeed);
            AddText(one ? ones : zeros, one ? "1" : "0", x, y, DigitScale);
        }
        rowSeed += 0x85ebca77U;
    }
    ones.Flush(renderer, OneColor);
    zeros.Flush(renderer, ZeroColor);
}

void DrawFallback(SDL_Renderer* renderer, float width) {
    FillRect(renderer, 0.0F, 0.0F, width, static_cast<float>(LogicalHeight), Ground);
}

// Sees to a texture of that width, with nothing in it yet if it is a new one.
bool PrepareTexture(SDL_Renderer* renderer, std::int32_t textureWidth) {
    RainCacheRecord& cache = RainCache;
    if (cache.Texture != nullptr &&
        (cache.TextureWidth != textureWidth || cache.TextureHeight != RainHeight)) {
        ReleaseRainCache();
    }
    if (cache.Texture != nullptr) {
        return true;
    }
    cache = RainCacheRecord{};
    cache.Texture = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA8888, SDL_TEXTUREACCESS_TARGET,
                                      textureWidth, RainHeight);
    if (cache.Texture == nullptr) {
        return false;
    }
    SDL_SetTextureBlendMode(cache.Texture, SDL_BLENDMODE_BLEND);
    SDL_SetTextureScaleMode(cache.Texture, SDL_SCALEMODE_NEAREST);
    cache.TextureWidth = textureWidth;
    cache.TextureHeight = RainHeight;
    return true;
}

bool HoldsPicture(RainTicks ticks, bool animated) {
    const RainCacheRecord& cache = RainCache;
    return cache.Valid && cache.Animated == animated && cache.TickA == ticks.A &&
           cache.TickB == ticks.B;
}

bool Redraw(SDL_Renderer* renderer, RainTicks ticks, bool animated) {
    RainCacheRecord& cache = RainCache;
    SDL_Texture* const formerTarget = SDL_GetRenderTarget(renderer);
    if (!SDL_SetRenderTarget(renderer, cache.Texture)) {
        return false;
    }
    const auto width = static_cast<float>(cache.TextureWidth);
    const auto height = static_cast<float>(cache.TextureHeight);
    FillRect(renderer, 0.0F, 0.0F, width, height, Ground);
    if (animated) {
        DrawDigits(renderer, cache.TextureWidth, ticks);
    }
    FillRect(renderer, 0.0F, 0.0F, width, height, Dim);
    SDL_SetRenderTarget(renderer, formerTarget);
    cache.TickA = ticks.A;
    cache.TickB = ticks.B;
    cache.Animated = animated;
    cache.Valid = true;
    return true;
}

} // namespace

void DrawBinaryRain(SDL_Renderer* renderer, float width, bool animated) {
    if (renderer == nullptr || !(width > 0.0F)) {
        return;
    }
    const auto canvasWidth = static_cast<std::int32_t>(std::round(std::min(width, WidestCanvas)));
    const std::int32_t textureWidth =
        canvasWidth > CanvasPerTexel ? (canvasWidth + CanvasPerTexel - 1) / CanvasPerTexel : 1;
    const RainTicks ticks = TicksNow(animated);
    if (!PrepareTexture(renderer, textureWidth) ||
        (!HoldsPicture(ticks, animated) && !Redraw(renderer, ticks, animated))) {
        DrawFallback(renderer, width);
        return;
    }
    const SDL_FRect canvas = {0.0F, 0.0F, width, static_cast<float>(LogicalHeight)};
    if (!SDL_RenderTexture(renderer, RainCache.Texture, nullptr, &canvas)) {
        DrawFallback(renderer, width);
    }
}

void ReleaseRainCache() {
    SDL_DestroyTexture(RainCache.Texture);
    RainCache.Texture = nullptr;
    RainCache.Valid = false;
}

} // namespace Wirefall
