#include "draw/CenteredPanel.h"

#include "display/LogicalCanvas.h"

#include <algorithm>

namespace Wirefall {

namespace {

constexpr float CanvasMargin = 96.0F; // Of both sides together.
constexpr float TallestPanel = 624.0F;

} // namespace

SDL_FRect PlaceCenteredPanel(float canvasWidth, const PanelWish& wish) {
    constexpr auto CanvasHeight = static_cast<float>(LogicalHeight);
    const float w = std::min(canvasWidth - CanvasMargin, std::max(wish.Narrowest, wish.Width));
    const float h = wish.Height < wish.Lowest ? wish.Lowest : std::min(wish.Height, TallestPanel);
    return {(canvasWidth - w) / 2.0F, (CanvasHeight - h) / 2.0F, w, h};
}

float HintsTop(const SDL_FRect& panel, const PanelColumn& column) {
    return panel.y + panel.h - column.BottomMargin - column.Hints;
}

float ContentTop(const SDL_FRect& panel, const PanelColumn& column) {
    const float spare = std::max(0.0F, panel.h - column.TopMargin - column.BottomMargin -
                                           column.Content - column.Hints);
    const float top = panel.y + column.TopMargin;
    const float bottom = HintsTop(panel, column) - std::min(spare, column.Slack);
    const float room = std::max(0.0F, bottom - top);
    return top + std::max(0.0F, (room - column.Content) / 2.0F);
}

} // namespace Wirefall
