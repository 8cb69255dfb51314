#pragma once

// The open controllers, at most one gamepad and one joystick, and what sampling remembers of their
// sticks between frames.

#include <SDL3/SDL_gamepad.h>
#include <SDL3/SDL_joystick.h>

namespace Wirefall {

/// Which way a stick was last pressed. A latched side does not press again before the stick has
/// been let go; closing the device clears all four.
struct StickLatches {
    bool Left = false;
    bool Right = false;
    bool Up = false;
    bool Down = false;
};

/// Owns the open devices. A device that SDL knows as a gamepad is never held as the joystick.
struct ControllerSet {
    SDL_Gamepad* Gamepad = nullptr;
    SDL_JoystickID GamepadId = 0; ///< 0 when none is held.
    SDL_Joystick* Joystick = nullptr;
    SDL_JoystickID JoystickId = 0; ///< 0 when none is held.
    StickLatches GamepadLatches;
    StickLatches JoystickLatches;
};

} // namespace Wirefall
