#pragma once

// Editing the binding tables by the rows of the Controls page. An edit with a row that is not in
// the table does nothing.

#include "input/BindingRows.h"
#include "input/Bindings.h"

#include <cstdint>

namespace Wirefall {

/// Stores a scancode of 1 to 511; any other leaves the row as it is.
void SetKeyboardBinding(KeyboardTable& table, std::int32_t row, std::uint32_t scancode);
void ClearKeyboardBinding(KeyboardTable& table, std::int32_t row);

/// Stores a button of at most 25, negative ones too, which no button matches; a greater one leaves
/// the row as it is.
void SetGamepadBinding(GamepadTable& table, std::int32_t row, std::int32_t button);
void ClearGamepadBinding(GamepadTable& table, std::int32_t row);

/// Stores any button.
void SetJoystickBinding(JoystickTable& table, std::int32_t row, std::int32_t button);
void ClearJoystickBinding(JoystickTable& table, std::int32_t row);

} // namespace Wirefall
