#pragma once

// What a level and a run end with: the board under a dim, and on a panel a title, lines with the
// numbers, and how to go on.

#include "draw/CenteredPanel.h"
#include "draw/Color.h"
#include "draw/Metrics.h"
#include "game/GameApp.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_render.h>

#include <string>
#include <vector>

namespace Wirefall {

struct ResultTexts {
    std::string Title;
    std::vector<std::string> Lines;
    std::string Hint;
    std::string ControllerHint; ///< Empty without a controller.
};

struct ResultColors {
    PackedColor Title;
    PackedColor Line;
    PackedColor Hint;
};

/// Where the texts stand on their panel.
struct ResultLayout {
    SDL_FRect Panel{};
    float TitleY = 0.0F;
    float LinesY = 0.0F;
    float LinePitch = 0.0F;
};

/// The run's last status, or that of the live run while there is none.
RunSnapshot FinalSnapshot(const GameApp& app);

/// The width that the texts would like their panel to have.
float WantedResultWidth(const ResultTexts& texts, const UiMetrics& metrics);

/// The height of the hints, with the gap between them, at the foot of the panel.
float ResultHintsHeight(const ResultTexts& texts, const UiMetrics& metrics);

void DrawDimmedBoard(SDL_Renderer* renderer, PackedColor dim);

/// Draws the texts on their panel, the hints at its foot.
void DrawResultTexts(SDL_Renderer* renderer, const ResultTexts& texts, const ResultLayout& layout,
                     const UiMetrics& metrics, const ResultColors& colors);

} // namespace Wirefall
