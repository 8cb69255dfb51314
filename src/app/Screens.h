#pragma once

// All screens in one table: how each is drawn and what a press does on it.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

namespace Wirefall {

/// Draws the screen that is shown, on a canvas of LogicalWidth.
void DrawScreen(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers);

/// The one entry for discrete input: does on the current screen what the press means there, and
/// queues its sound. Ignored during the quit fade, and for Press::None or a code above 511. Window
/// and renderer are for the Graphics page, which changes them.
void DispatchPress(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code);

} // namespace Wirefall
