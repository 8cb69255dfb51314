#pragma once

// Makes the window match the player's options. Fullscreen is always borderless on the desktop: the
// display's mode is never switched, so there the resolution only chooses the shape of the logical
// canvas, and the refresh rate has no effect at all.

#include "display/DisplayState.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

namespace Wirefall {

/// Applies resolution, fullscreen, window size and position, vertical sync and the logical canvas.
/// A step that fails is logged and the others still happen. VSyncActive then tells what the
/// renderer reports, and ResetFrameClock is set. Does nothing with a null window.
void ApplyDisplaySettings(DisplayState& state, SDL_Window* window, SDL_Renderer* renderer);

/// Gives the renderer the logical canvas, letterboxed into the window. Does nothing with a null
/// window; a failure is logged.
void ApplyLogicalPresentation(SDL_Window* window, SDL_Renderer* renderer);

} // namespace Wirefall
