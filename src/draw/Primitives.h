#pragma once

// What everything on screen is made of: filled rectangles, 1-pixel outlines and the framed panel.
// Coordinates are logical pixels. The renderer must be live, and its draw blend mode BLEND, so that
// the alpha of every colour counts. Results of SDL's draw calls are ignored: a frame that lacks a
// rectangle is better than no frame.

#include "draw/Color.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_render.h>

#include <cstdint>

namespace Wirefall {

void SetDrawColor(SDL_Renderer* renderer, PackedColor color);

void FillRect(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor color);

void OutlineRect(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor color);

void FillOutlinedRect(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor fill,
                      PackedColor line);

/// Of the bars along the sides of boxes and panels, in logical pixels.
inline constexpr float BarThickness = 2.0F;

/// A box with bars along its sides, of which the top one has a colour of its own.
void DrawBarredBox(SDL_Renderer* renderer, const SDL_FRect& box, PackedColor body, PackedColor top,
                   PackedColor bars);

/// The framed box that menus stand on. Draws nothing for a null renderer or an empty rectangle.
void DrawPanel(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor accent,
               std::uint8_t bodyAlpha);

/// Puts the renderer's clip rectangle (of its present target) back as it was, at the end of a scope
/// that sets its own.
class ClipRestorer {
public:
    explicit ClipRestorer(SDL_Renderer* renderer);
    ~ClipRestorer();
    ClipRestorer(const ClipRestorer&) = delete;
    ClipRestorer& operator=(const ClipRestorer&) = delete;
    ClipRestorer(ClipRestorer&&) = delete;
    ClipRestorer& operator=(ClipRestorer&&) = delete;

private:
    SDL_Renderer* Renderer;
    bool WasEnabled;
    SDL_Rect Rect{};
};

} // namespace Wirefall
