#pragma once

// The help page: what the game is about, what the tiles do, and the keys of the device in hand. One
// page that does not scroll.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// Draws on a canvas of LogicalWidth. The hint at the foot names app.HelpReturnScreen.
void DrawHelpScreen(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers);

void PressOnHelp(GameApp& app, PressCode code);

} // namespace Wirefall
