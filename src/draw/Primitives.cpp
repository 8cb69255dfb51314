#include "draw/Primitives.h"

namespace Wirefall {

namespace {

constexpr PackedColor PanelBar = Rgba(0x2c6058dc);

} // namespace

void SetDrawColor(SDL_Renderer* renderer, PackedColor color) {
    SDL_SetRenderDrawColor(renderer, RedOf(color), GreenOf(color), BlueOf(color), AlphaOf(color));
}

void FillRect(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor color) {
    SetDrawColor(renderer, color);
    const SDL_FRect rect = {x, y, w, h};
    SDL_RenderFillRect(renderer, &rect);
}

void OutlineRect(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor color) {
    SetDrawColor(renderer, color);
    const SDL_FRect rect = {x, y, w, h};
    SDL_RenderRect(renderer, &rect);
}

// A rectangle as its callers have it, and colours. NOLINTNEXTLINE(readability-function-size)
void FillOutlinedRect(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor fill,
                      PackedColor line) {
    FillRect(renderer, x, y, w, h, fill);
    OutlineRect(renderer, x, y, w, h, line);
}

void DrawBarredBox(SDL_Renderer* renderer, const SDL_FRect& box, PackedColor body, PackedColor top,
                   PackedColor bars) {
    constexpr float T = BarThickness;
    const auto& [x, y, w, h] = box;
    FillRect(renderer, x, y, w, h, body);
    FillRect(renderer, x, y, w, T, top);
    FillRect(renderer, x, y + h - T, w, T, bars);
    FillRect(renderer, x, y, T, h, bars);
    FillRect(renderer, x + w - T, y, T, h, bars);
}

// A rectangle as its callers have it, and colours. NOLINTNEXTLINE(readability-function-size)
void DrawPanel(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor accent,
               std::uint8_t bodyAlpha) {
    // The negated form also refuses a size that is not a number.
    if (renderer == nullptr || !(w > 0.0F) || !(h > 0.0F)) {
        return;
    }
    DrawBarredBox(renderer, {x, y, w, h}, WithAlpha(Palette::PanelBody, bodyAlpha), accent,
                  PanelBar);
}

ClipRestorer::ClipRestorer(SDL_Renderer* renderer)
    : Renderer(renderer), WasEnabled(SDL_RenderClipEnabled(renderer)) {
    SDL_GetRenderClipRect(renderer, &Rect);
}

ClipRestorer::~ClipRestorer() { SDL_SetRenderClipRect(Renderer, WasEnabled ? &Rect : nullptr); }

} // namespace Wirefall
