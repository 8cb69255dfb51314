#pragma once

// What a level ends with: its number, the score, and the next level.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// The numbers come from app.PreviousSnapshot, or from the live run while that is not valid.
void DrawLevelCompleteScreen(SDL_Renderer* renderer, const GameApp& app,
                             const ControllerSet& controllers);

void PressOnLevelComplete(GameApp& app, PressCode code);

} // namespace Wirefall
