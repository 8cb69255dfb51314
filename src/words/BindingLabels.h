#pragma once

// The words for keys and buttons, as the Controls page shows them and as the short labels
// of the HUD are made from.

#include "input/Bindings.h"

#include <cstdint>
#include <string>

namespace Wirefall {

/// The upper-case name of the key, or its number where SDL has no name; "UNBOUND" outside 1 to 511.
std::string KeyboardBindingText(std::uint32_t scancode);

/// The upper-case name of the SDL_GamepadButton, or its number where SDL has no name; "UNBOUND"
/// outside 0 to 25.
std::string GamepadBindingText(std::int32_t button);

/// The number of the button; "UNBOUND" below 0.
std::string JoystickBindingText(std::int32_t button);

} // namespace Wirefall
