#pragma once

// The main menu: title, version and entries on a panel over the rain of digits.

#include "game/GameApp.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// Draws the menu on a canvas of LogicalWidth. The entry that continues a run is there only while
/// one is saved; a selection outside the rows shows as the nearest row.
void DrawMainMenu(SDL_Renderer* renderer, const GameApp& app);

void PressOnMainMenu(GameApp& app, PressCode code);

} // namespace Wirefall
