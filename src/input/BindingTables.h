#pragma once

// Reading and editing the binding tables by the rows of the Controls page. On the keyboard and the
// gamepad a row is the action of the same number; on the joystick the rows begin with RotateLeft,
// so that the four cursor actions, which a joystick has no buttons for, come last and are never
// shown. An edit with a row that is not in the table does nothing.

#include "input/Bindings.h"

#include <array>
#include <cstdint>

namespace Wirefall {

/// The action of each row.
inline constexpr std::array<InputAction, KeyboardActionCount> KeyboardRows = {
    InputAction::CursorUp,    InputAction::CursorDown,  InputAction::CursorLeft,
    InputAction::CursorRight, InputAction::RotateLeft,  InputAction::RotateRight,
    InputAction::Place,       InputAction::FastForward,
};
inline constexpr std::array<InputAction, ActionCount> GamepadRows = {
    InputAction::CursorUp,    InputAction::CursorDown,  InputAction::CursorLeft,
    InputAction::CursorRight, InputAction::RotateLeft,  InputAction::RotateRight,
    InputAction::Place,       InputAction::FastForward, InputAction::MenuConfirm,
    InputAction::MenuBack,
};
inline constexpr std::array<InputAction, ActionCount> JoystickRows = {
    InputAction::RotateLeft,  InputAction::RotateRight, InputAction::Place,
    InputAction::FastForward, InputAction::MenuConfirm, InputAction::MenuBack,
    InputAction::CursorUp,    InputAction::CursorDown,  InputAction::CursorLeft,
    InputAction::CursorRight,
};

/// How many binding rows the Controls page shows for the device: 8, 10 or 6.
std::int32_t ShownRowCount(ControlsDevice device);

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

/// The scancode of the row, or 0 when there is no such row.
std::uint32_t KeyboardRowValue(const KeyboardTable& table, std::int32_t row);
/// The button of the row, or that of row 0 when there is no such row. The same for the joystick.
std::int32_t GamepadRowValue(const GamepadTable& table, std::int32_t row);
std::int32_t JoystickRowValue(const JoystickTable& table, std::int32_t row);

} // namespace Wirefall
