#pragma once

// Opening and closing gamepads and joysticks as they come and go. At most one of each is held. A
// device that cannot be opened is left alone without a word, until the next one comes or goes.

#include "input/Bindings.h"
#include "input/ControllerSet.h"

namespace Wirefall {

/// Fills the empty places of the set: the gamepad with the first that opens, the joystick with the
/// first that opens and is no gamepad.
void OpenAvailableControllers(ControllerSet& controllers);

/// Opens the gamepad if none is held.
void TryOpenGamepad(ControllerSet& controllers, SDL_JoystickID id);

/// Opens the joystick if none is held and SDL does not know the device as a gamepad. Returns
/// whether a joystick is held afterwards, this one or another.
bool TryOpenJoystick(ControllerSet& controllers, SDL_JoystickID id);

/// Closes the gamepad and lets go of its stick. Does nothing when none is held.
void CloseGamepad(ControllerSet& controllers);

/// Closes the joystick and lets go of its stick. Does nothing when none is held.
void CloseJoystick(ControllerSet& controllers);

/// Closes both, the gamepad first. Must come before SDL_Quit.
void CloseControllers(ControllerSet& controllers);

/// The device that pressed last, or the keyboard if that device is gone.
InputDevice DeviceInHand(const InputState& input, const ControllerSet& controllers);

} // namespace Wirefall
