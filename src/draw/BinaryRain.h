#pragma once

// The background of all menu screens: rows of binary digits that change a few times a second. They
// are drawn small into a texture, only when one of their two clocks moves, and the texture is
// stretched over the canvas every frame.

#include <SDL3/SDL_render.h>

#include <cstdint>

namespace Wirefall {

struct RainCacheRecord {
    SDL_Texture* Texture = nullptr; ///< Owned; null until the first menu frame.
    std::int32_t TextureWidth = 0;
    std::int32_t TextureHeight = 0;
    std::uint32_t TickA = 0; ///< The last 230 ms tick drawn: it renews all digits.
    std::uint32_t TickB = 0; ///< The last 520 ms tick drawn: it flips some of them.
    bool Animated = true;    ///< The mode of the picture in the texture.
    bool Valid = false;      ///< The texture holds a finished picture.
};

extern RainCacheRecord RainCache;

/// Covers a canvas of that width, which is below 2^24. Not animated, the digits are gone and the
/// ground is dark. Any trouble with the texture ends in a plain ground for this frame. Does nothing
/// for a null renderer or a width that is not positive.
void DrawBinaryRain(SDL_Renderer* renderer, float width, bool animated);

/// Destroys the texture, before its renderer is destroyed. Does nothing when there is none.
void ReleaseRainCache();

} // namespace Wirefall
