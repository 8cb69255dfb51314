#pragma once

// The pause menu, on a panel over the board.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// Draws the board and the menu on a canvas of LogicalWidth.
void DrawPauseScreen(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers);

void PressOnPause(GameApp& app, PressCode code);

} // namespace Wirefall
