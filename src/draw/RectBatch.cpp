#include "draw/RectBatch.h"

#include "draw/Primitives.h"

namespace Wirefall {

void RectBatch::Flush(SDL_Renderer* renderer, PackedColor color) {
    if (Rects.empty()) {
        return;
    }
    SetDrawColor(renderer, color);
    SDL_RenderFillRects(renderer, Rects.data(), static_cast<int>(Rects.size()));
    Rects.clear();
}

} // namespace Wirefall
