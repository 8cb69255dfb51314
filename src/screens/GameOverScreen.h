#pragma once

// What a run ends with: its final score.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// The score comes from app.PreviousSnapshot, or from the live run while that is not valid.
void DrawGameOverScreen(SDL_Renderer* renderer, const GameApp& app,
                        const ControllerSet& controllers);

void PressOnGameOver(GameApp& app, PressCode code);

} // namespace Wirefall
