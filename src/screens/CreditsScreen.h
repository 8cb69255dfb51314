#pragma once

// The credits, rolling up a panel over the rain of digits.

#include "game/GameApp.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// Draws on a canvas of LogicalWidth. At a CreditsScroll of 0 the first line stands just below the
/// part of the panel that shows.
void DrawCreditsScreen(SDL_Renderer* renderer, const GameApp& app);

/// Rolls on for that many seconds, and at the end back to the main menu.
void RollCredits(GameApp& app, SDL_Renderer* renderer, float seconds);

void PressOnCredits(GameApp& app, PressCode code);

} // namespace Wirefall
