#pragma once

// What a level and a run end with: the board under a dim, and a panel with the numbers.

#include "app/GameApp.h"
#include "input/ControllerSet.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// The numbers come from app.PreviousSnapshot, or from the live run while that is not valid.
void DrawLevelCompleteScreen(SDL_Renderer* renderer, const GameApp& app,
                             const ControllerSet& controllers);

/// The same for the end of a run.
void DrawGameOverScreen(SDL_Renderer* renderer, const GameApp& app,
                        const ControllerSet& controllers);

} // namespace Wirefall
