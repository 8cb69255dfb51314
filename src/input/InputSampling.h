#pragma once

// From SDL's events to presses. Each event goes through PressFromEvent, which keeps track of the
// devices and answers with at most one press; the caller hands that to the screen. One physical
// press makes one step: there is no repeat, and nothing happens when a key comes up. The one input
// that is held, fast forward, is sampled once the events are drained.

#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_events.h>

namespace Wirefall {

struct GameApp;

/// Does all that an event of the keyboard or of a controller asks for, short of the screens: notes
/// the device that pressed last, opens and closes controllers, stores a button that a capture waits
/// for. Returns the press to hand on, or Press::None; events of other kinds give none. Allocates
/// nothing.
PressCode PressFromEvent(GameApp& app, ControllerSet& controllers, const SDL_Event& event);

/// Whether fast forward is held on any device; always false off the Playing screen. Asks SDL for
/// the state of now, so the events must have been drained.
bool SampleFastForward(const GameApp& app, const ControllerSet& controllers);

} // namespace Wirefall
