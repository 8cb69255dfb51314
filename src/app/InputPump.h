#pragma once

#include "input/ControllerSet.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

namespace Wirefall {

struct GameApp;

/// Drains SDL's events, once a frame, and dispatches the presses that come of them. The event that
/// asks the game to quit ends it early; what is queued behind that waits for the next frame.
void PollInput(GameApp& app, ControllerSet& controllers, SDL_Window* window,
               SDL_Renderer* renderer);

} // namespace Wirefall
