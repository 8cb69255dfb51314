#pragma once

// The second hint line of a screen, for players with a controller in hand: which of its buttons
// confirms and which goes back.

#include "input/Bindings.h"
#include "input/ControllerSet.h"

#include <string>
#include <string_view>

namespace Wirefall {

/// Empty unless the device that pressed last is an open gamepad or joystick. The labels say what
/// the two buttons do, "SELECT" and "BACK" where they are empty; when both do the same it is said
/// once.
std::string BuildControllerHint(const InputState& input, const ControllerSet& controllers,
                                std::string_view selectLabel, std::string_view backLabel);

} // namespace Wirefall
