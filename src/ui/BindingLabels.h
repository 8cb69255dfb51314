#pragma once

// The words for actions, keys and buttons, as the Controls page shows them and as the short labels
// of the HUD are made from.

#include "input/Bindings.h"

#include <cstdint>
#include <string>

namespace Wirefall {

/// The name of the action in entry `index` of the device's label table: keyboard 0 to 7, gamepad 0
/// to 9, joystick 0 to 9 in the order of that page's rows, which begins with RotateLeft. Empty
/// outside that range.
std::string ActionLabel(ControlsDevice device, std::int32_t index);

/// The upper-case name of the key, or its number where SDL has no name; "UNBOUND" outside 1 to 511.
std::string KeyboardBindingText(std::uint32_t scancode);

/// The upper-case name of the SDL_GamepadButton, or its number where SDL has no name; "UNBOUND"
/// outside 0 to 25.
std::string GamepadBindingText(std::int32_t button);

/// The number of the button; "UNBOUND" below 0.
std::string JoystickBindingText(std::int32_t button);

} // namespace Wirefall
