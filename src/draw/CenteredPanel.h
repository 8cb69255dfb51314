#pragma once

// The panels that stand in the middle of the canvas over the board, and where the texts on them
// stand: a block of content, and hints at the foot. All lengths are logical pixels.

#include <SDL3/SDL_rect.h>

namespace Wirefall {

/// What a panel is to hold, and how small it can be.
struct PanelWish {
    float Width = 0.0F; ///< As large as the content would like it.
    float Height = 0.0F;
    float Narrowest = 0.0F;
    float Lowest = 0.0F;
};

/// The panel in the middle of a canvas of that width. It leaves a margin to the sides of the
/// canvas, and is cut off at its tallest.
SDL_FRect PlaceCenteredPanel(float canvasWidth, const PanelWish& wish);

/// From the top of a panel to its foot.
struct PanelColumn {
    float TopMargin = 0.0F;
    float Content = 0.0F; ///< Height of what stands above the hints.
    float Slack = 0.0F;   ///< Between the two, given up first by a panel that is cut off.
    float Hints = 0.0F;   ///< Height of the hints.
    float BottomMargin = 0.0F;
};

/// y of the hints, which stand at the foot.
float HintsTop(const SDL_FRect& panel, const PanelColumn& column);

/// y of the content, in the middle of what is left above the hints.
float ContentTop(const SDL_FRect& panel, const PanelColumn& column);

} // namespace Wirefall
