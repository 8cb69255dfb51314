#pragma once

// From SDL's events to the screens: what input/ says that the player has done with a device becomes
// a press of the screen that is shown, or the binding that the Options wait for.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

namespace Wirefall {

/// Does all that an event of the keyboard or of a controller asks for, short of the screens: notes
/// the device that pressed last, opens and closes controllers, stores a button that a capture waits
/// for. Returns the press to hand on, or Press::None; events of other kinds give none. Allocates
/// nothing.
PressCode PressFromEvent(GameApp& app, ControllerSet& controllers, const SDL_Event& event);

/// Whether fast forward is held on any device; always false off the Playing screen. Asks SDL for
/// the state of now, so the events must have been drained.
bool SampleFastForward(const GameApp& app, const ControllerSet& controllers);

/// Drains SDL's events, once a frame, and dispatches the presses that come of them. The event that
/// asks the game to quit ends it early; what is queued behind that waits for the next frame.
void PollInput(GameApp& app, ControllerSet& controllers, SDL_Window* window,
               SDL_Renderer* renderer);

} // namespace Wirefall
