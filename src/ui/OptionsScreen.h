#pragma once

// The Options screen: its root page and the pages for controls, graphics and audio, all on one kind
// of panel. Nothing scrolls; where there are many rows, they move together.

#include "app/GameApp.h"
#include "input/ControllerSet.h"

#include <SDL3/SDL_render.h>

#include <cstdint>
#include <string>

namespace Wirefall {

/// What the rows of a page have in common.
struct OptionRowContext {
    SDL_Renderer* Renderer;
    std::int32_t Density;
    std::int32_t RowScale;
    float LabelX;
    float ValueX;
};

/// Draws the page of app.OptionsPage on a canvas of LogicalWidth.
void DrawOptionsScreen(SDL_Renderer* renderer, const GameApp& app,
                       const ControllerSet& controllers);

/// One row of a page other than the root page, with its top at `y`. An empty value is not drawn.
void DrawOptionRow(const OptionRowContext& context, const std::string& label,
                   const std::string& value, float y, bool selected);

} // namespace Wirefall
