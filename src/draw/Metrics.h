#pragma once

// How roomy the presented picture is, and what follows from it: the text scales and spacings of
// every screen. Each screen measures anew at the start of its draw and keeps nothing.

#include <SDL3/SDL_render.h>

#include <cstdint>
#include <string>

namespace Wirefall {

/// The text scales are integer multiples of the font. The defaults are those of a roomy picture.
struct UiMetrics {
    float Scale = 1.0F;       ///< Presented pixels per logical pixel, the smaller of the two axes.
    std::int32_t Density = 0; ///< 0 roomy, 1 tight, 2 tightest.
    std::int32_t MenuTitleScale = 10;
    std::int32_t MenuItemScale = 4;
    std::int32_t MenuCursorScale = 3;
    std::int32_t MenuFooterScale = 3;
    std::int32_t ScreenTitleScale = 6;
    std::int32_t SectionScale = 4; ///< Section headings of the Options pages.
    std::int32_t RowScale = 3;     ///< Rows of the Options pages, lines of the result screens.
    std::int32_t BodyScale = 2;
    std::int32_t HintScale = 2;
    std::int32_t CursorScale = 3; ///< The ">" of the pause menu and the Options pages.
    // The two of the HUD rise as the picture shrinks, so that its small text stays readable.
    std::int32_t HudTitleScale = 2;
    std::int32_t HudTextScale = 1;
    bool HudCompact = false; ///< The HUD takes taller bars and wider gaps.
};

/// The metrics of a canvas of that logical size, by the scale at which the renderer presents it. A
/// null renderer, an empty canvas or one that is not presented counts as roomy.
UiMetrics MeasureUiMetrics(SDL_Renderer* renderer, std::int32_t logicalWidth,
                           std::int32_t logicalHeight);

/// A spacing of `k` logical pixels, drawn in by the density.
float DensityPx(std::int32_t density, float k);

/// The room for the rows of an Options page, between its section heading and its first hint line.
struct OptionListArea {
    float ListAreaTop = 0.0F; ///< y of the section heading.
    std::int32_t SectionScale = 1;
    std::int32_t RowScale = 1;
    float HintTop = 0.0F;
    float PreferredPitch = 0.0F;
    std::int32_t Density = 0;
};

/// From one row to the next: the preferred pitch, or as little as lets `rows` rows fit, but at
/// least 2 pixels between them. `rows` is at least 1; a single row has the preferred pitch.
float OptionRowPitch(const OptionListArea& area, std::int32_t rows);

/// y of the first row: a short list sits in the middle of the room.
float OptionListTop(const OptionListArea& area, std::int32_t rows, float pitch);

/// The fraction in whole percent, halves away from zero, with the percent sign.
std::string PercentText(float fraction);

} // namespace Wirefall
