#include "draw/SpriteAtlas.h"

#include "draw/Color.h"
#include "draw/Primitives.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Wirefall {

SpriteAtlasRecord SpriteAtlas;

namespace {

constexpr std::int32_t SpriteSide = 16;
constexpr std::int32_t Gutter = 1;
constexpr std::int32_t CellStride = SpriteSide + 2 * Gutter;
// One stride more than the four cells need.
constexpr int AtlasWidth = CellStride * (SpriteCount + 1);
constexpr int AtlasHeight = CellStride;

// A letter of the picture is a colour, A the first; a dot stays transparent.
struct SpritePicture {
    std::array<PackedColor, 3> Colors;
    std::array<std::string_view, SpriteSide> Rows;
};

constexpr std::array<SpritePicture, SpriteCount> Pictures = {{
    // A four-way arrow.
    {{{Rgba(0x7aa8e6ff), Rgba(0xb0d2fcff)}},
     {
         "................",
         ".......AA.......",
         "......AAAA......",
         ".......AA.......",
         ".......AA.......",
         ".......AA.......",
         "..A....AA....A..",
         ".AAAAAABBAAAAAA.",
         ".AAAAAABBAAAAAA.",
         "..A....AA....A..",
         ".......AA.......",
         ".......AA.......",
         ".......AA.......",
         "......AAAA......",
         ".......AA.......",
         "................",
     }},
    // Two curved arrows.
    {{{Rgba(0xe0c6ffff), Rgba(0xc49affff)}},
     {
         "................",
         "..........A.....",
         "........BBAA....",
         ".....BBB..AA....",
         "....B.....A.....",
         "...B............",
         "...B............",
         "...B........B...",
         "...B........B...",
         "............B...",
         "............B...",
         ".....A.....B....",
         "....AA..BBB.....",
         "....AABB........",
         ".....A..........",
         "................",
     }},
    // A framed plus.
    {{{Rgba(0x5eb082ff), Rgba(0xa0eebaff), Rgba(0xc6fcd6ff)}},
     {
         "................",
         "................",
         "................",
         "...AAAAAAAAAA...",
         "...A........A...",
         "...A...BB...A...",
         "...A...BB...A...",
         "...A.BBCCBB.A...",
         "...A.BBCCBB.A...",
         "...A...BB...A...",
         "...A...BB...A...",
         "...A........A...",
         "...AAAAAAAAAA...",
         "................",
         "................",
         "................",
     }},
    // A double chevron.
    {{{Rgba(0xffd078ff), Rgba(0xffe4a6ff)}},
     {
         "................",
         "................",
         "................",
         "................",
         "................",
         "...AA....AA.....",
         "....BA....BA....",
         ".....AA....AA...",
         ".....AA....AA...",
         "....AA....AA....",
         "...AA....AA.....",
         "................",
         "................",
         "................",
         "................",
         "................",
     }},
}};

// What a gutter rectangle covers, and by how much the sprite is moved to fill it.
struct GutterStrip {
    SDL_Rect Clip; // from the sprite's top left pixel
    std::int32_t Dx;
    std::int32_t Dy;
};

constexpr std::array<GutterStrip, 8> GutterStrips = {{
    {{0, -1, SpriteSide, 1}, 0, -1},
    {{0, SpriteSide, SpriteSide, 1}, 0, +1},
    {{-1, 0, 1, SpriteSide}, -1, 0},
    {{SpriteSide, 0, 1, SpriteSide}, +1, 0},
    {{-1, -1, 1, 1}, -1, -1},
    {{SpriteSide, -1, 1, 1}, +1, -1},
    {{-1, SpriteSide, 1, 1}, -1, +1},
    {{SpriteSide, SpriteSide, 1, 1}, +1, +1},
}};

void DrawPicture(SDL_Renderer* renderer, const SpritePicture& picture, std::int32_t x,
                 std::int32_t y) {
    for (std::size_t row = 0; row < picture.Rows.size(); ++row) {
        const std::string_view pixels = picture.Rows[row];
        for (std::size_t column = pixels.find_first_not_of('.'); column < pixels.size();) {
            const char letter = pixels[column];
            const std::size_t end =
                std::min(pixels.find_first_not_of(letter, column), pixels.size());
            FillRect(renderer, static_cast<float>(x) + static_cast<float>(column),
                     static_cast<float>(y) + static_cast<float>(row),
                     static_cast<float>(end - column), 1.0F,
                     picture.Colors[static_cast<std::size_t>(letter - 'A')]);
            column = pixels.find_first_not_of('.', end);
        }
    }
}

void DrawCell(SDL_Renderer* renderer, const SpritePicture& picture, std::int32_t x,
              std::int32_t y) {
    DrawPicture(renderer, picture, x, y);
    const ClipRestorer restorer(renderer);
    for (const GutterStrip& strip : GutterStrips) {
        const SDL_Rect clip = {x + strip.Clip.x, y + strip.Clip.y, strip.Clip.w, strip.Clip.h};
        SDL_SetRenderClipRect(renderer, &clip);
        DrawPicture(renderer, picture, x + strip.Dx, y + strip.Dy);
    }
}

} // namespace

bool BuildTextureAtlas(SDL_Renderer* renderer) {
    if (SpriteAtlas.Texture != nullptr) {
        return true;
    }
    SDL_Texture* const texture = SDL_CreateTexture(
        renderer, SDL_PIXELFORMAT_RGBA8888, SDL_TEXTUREACCESS_TARGET, AtlasWidth, AtlasHeight);
    if (texture == nullptr) {
        return false;
    }
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_BLEND);
    SDL_SetTextureScaleMode(texture, SDL_SCALEMODE_NEAREST);
    SDL_Texture* const formerTarget = SDL_GetRenderTarget(renderer);
    if (!SDL_SetRenderTarget(renderer, texture)) {
        SDL_DestroyTexture(texture);
        return false;
    }
    SetDrawColor(renderer, Rgba(0x00000000));
    SDL_RenderClear(renderer);
    for (std::size_t sprite = 0; sprite < Pictures.size(); ++sprite) {
        const std::int32_t x = CellStride * static_cast<std::int32_t>(sprite) + Gutter;
        SpriteAtlas.Sources[sprite] = {static_cast<float>(x), static_cast<float>(Gutter),
                                       static_cast<float>(SpriteSide),
                                       static_cast<float>(SpriteSide)};
        DrawCell(renderer, Pictures[sprite], x, Gutter);
    }
    SDL_SetRenderTarget(renderer, formerTarget);
    SpriteAtlas.Texture = texture;
    return true;
}

void ReleaseTextureAtlas() {
    SDL_DestroyTexture(SpriteAtlas.Texture);
    SpriteAtlas.Texture = nullptr;
}

void DrawSprite(SDL_Renderer* renderer, std::int32_t sprite, float x, float y, float size) {
    if (renderer == nullptr || SpriteAtlas.Texture == nullptr || !(size > 0.0F)) {
        return;
    }
    const SDL_FRect& source = SpriteAtlas.Sources[static_cast<std::size_t>(sprite)];
    const SDL_FRect target = {x, y, size, size};
    SDL_RenderTexture(renderer, SpriteAtlas.Texture, &source, &target);
}

} // namespace Wirefall
