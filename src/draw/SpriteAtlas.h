#pragma once

// The four little pictures of the commands, in one texture that is built once at start. Each has a
// gutter of one pixel that repeats its outermost pixels, so that no neighbour bleeds in when it is
// drawn at a fractional size.

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_render.h>

#include <array>
#include <cstdint>

namespace Wirefall {

inline constexpr std::int32_t SpriteMove = 0;
inline constexpr std::int32_t SpriteRotate = 1;
inline constexpr std::int32_t SpritePlace = 2;
inline constexpr std::int32_t SpriteFastForward = 3;
inline constexpr std::int32_t SpriteCount = 4;

struct SpriteAtlasRecord {
    SDL_Texture* Texture = nullptr; ///< Owned; null until built.
    std::array<SDL_FRect, SpriteCount> Sources{};
};

extern SpriteAtlasRecord SpriteAtlas;

/// Builds the atlas, unless it exists. On failure it returns false, nothing is kept, and
/// SDL_GetError tells why.
bool BuildTextureAtlas(SDL_Renderer* renderer);

/// Destroys the texture, before its renderer is destroyed. Does nothing when there is none.
void ReleaseTextureAtlas();

/// Draws a sprite into the square (x, y, size, size). Does nothing without a renderer, an atlas or
/// a positive size. `sprite` is 0 to SpriteCount - 1.
void DrawSprite(SDL_Renderer* renderer, std::int32_t sprite, float x, float y, float size);

} // namespace Wirefall
