#include "ui/Primitives.h"

namespace Wirefall {

namespace {

constexpr PackedColor PanelBar = Rgba(0x2c6058dc);
constexpr float PanelBarThickness = 2.0F;

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

void FillOutlinedRect(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor fill,
                      PackedColor line) {
    FillRect(renderer, x, y, w, h, fill);
    OutlineRect(renderer, x, y, w, h, line);
}

void DrawPanel(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor accent,
               std::uint8_t bodyAlpha) {
    // The negated form also refuses a size that is not a number.
    if (renderer == nullptr || !(w > 0.0F) || !(h > 0.0F)) {
        return;
    }
    constexpr float T = PanelBarThickness;
    FillRect(renderer, x, y, w, h, WithAlpha(Palette::PanelBody, bodyAlpha));
    FillRect(renderer, x, y, w, T, accent);
    FillRect(renderer, x, y + h - T, w, T, PanelBar);
    FillRect(renderer, x, y, T, h, PanelBar);
    FillRect(renderer, x + w - T, y, T, h, PanelBar);
}

ClipRestorer::ClipRestorer(SDL_Renderer* renderer)
    : Renderer(renderer), WasEnabled(SDL_RenderClipEnabled(renderer)) {
    SDL_GetRenderClipRect(renderer, &Rect);
}

ClipRestorer::~ClipRestorer() { SDL_SetRenderClipRect(Renderer, WasEnabled ? &Rect : nullptr); }

} // namespace Wirefall
