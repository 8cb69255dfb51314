#pragma once

// The Options screen: its root page and the pages for controls, graphics and audio, all on one kind
// of panel. What the pages hold is told in their tables; here is how any page looks, and how a
// press moves over it. Nothing scrolls; where there are many rows, they move together.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"
#include "words/Localization.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Wirefall {

struct OptionRow {
    std::string Label;
    std::string Value; ///< Empty on a row that only does something.
};

/// What a page says.
struct OptionsPageTexts {
    GameText Heading = {};
    std::vector<OptionRow> Rows = {};
    std::int32_t SelectedRow = 0; ///< May be none of the rows.
    std::string UpperHint = {};
    std::string LowerHint = {}; ///< Empty on the root page without a controller.
    bool IsMenu = false;        ///< The rows stand in the middle and have no values.
    bool FitHints = false;      ///< Hints that hold names of any length shrink to the panel.
};

/// The page of app.OptionsPage.
OptionsPageTexts CollectOptionsPage(const GameApp& app, const ControllerSet& controllers);

/// Draws the page of app.OptionsPage on a canvas of LogicalWidth.
void DrawOptionsScreen(SDL_Renderer* renderer, const GameApp& app,
                       const ControllerSet& controllers);

/// What the rows of a page have in common.
struct OptionRowContext {
    SDL_Renderer* Renderer;
    std::int32_t Density;
    std::int32_t RowScale;
    float LabelX;
    float ValueX;
};

/// One row of a page other than the root page, with its top at `y`. An empty value is not drawn.
void DrawOptionRow(const OptionRowContext& context, const std::string& label,
                   const std::string& value, float y, bool selected);

/// Does what the press means on the page that is open, and queues its sound; while a capture waits,
/// the press goes to that alone. Applying the Graphics page changes the window and the renderer,
/// which may be null. Leaving the root page shows app.OptionsReturnScreen.
void PressOnOptions(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code);

} // namespace Wirefall
