#pragma once

// Rectangles of one colour, gathered and handed to SDL in one call. A picture has thousands of tiny
// ones (font pixels, grain, scan lines), and the cost of a call is many times that of the pixel. A
// batch is meant to be kept (as a static of its user) and used again each frame: after the first
// frames it allocates nothing more.

#include "draw/Color.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_render.h>

#include <vector>

namespace Wirefall {

class RectBatch {
public:
    void Add(float x, float y, float w, float h) { Rects.push_back({x, y, w, h}); }

    /// Fills what has been added, in that order, and is empty again. Rectangles of a translucent
    /// colour blend over each other exactly as single calls would.
    void Flush(SDL_Renderer* renderer, PackedColor color);

private:
    std::vector<SDL_FRect> Rects;
};

} // namespace Wirefall
