#pragma once

// The binding tables as the Controls page shows them, row by row. On the keyboard and the gamepad a
// row is the action of the same number; on the joystick the rows begin with RotateLeft, so that the
// four cursor actions, which a joystick has no buttons for, come last and are never shown.

#include "input/Bindings.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

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
inline constexpr std::int32_t ShownJoystickRows = 6;

/// The rows of the device. One that there is no such thing as is treated as a joystick, here and
/// below.
constexpr std::span<const InputAction> RowsOf(ControlsDevice device) {
    switch (device) {
    case ControlsDevice::Keyboard:
        return KeyboardRows;
    case ControlsDevice::Gamepad:
        return GamepadRows;
    case ControlsDevice::Joystick:
        break;
    }
    return JoystickRows;
}

/// How many of them the Controls page shows: 8, 10 or 6.
constexpr std::int32_t ShownRowCount(ControlsDevice device) {
    const auto count = static_cast<std::int32_t>(RowsOf(device).size());
    const bool showsAll = device == ControlsDevice::Keyboard || device == ControlsDevice::Gamepad;
    return showsAll ? count : ShownJoystickRows;
}

/// The table element that a row stands for, or null when there is no such row.
template <typename Table>
constexpr auto* ElementOfRow(Table& table, std::span<const InputAction> rows, std::int32_t row) {
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < rows.size() ? &table[ActionIndex(rows[index])] : nullptr;
}

/// The scancode of the row, or 0 when there is no such row.
constexpr std::uint32_t KeyboardRowValue(const KeyboardTable& table, std::int32_t row) {
    const auto* const element = ElementOfRow(table, KeyboardRows, row);
    return element != nullptr ? *element : UnboundKey;
}

/// The button of the row, or that of row 0 when there is no such row. The same for the joystick.
constexpr std::int32_t GamepadRowValue(const GamepadTable& table, std::int32_t row) {
    const auto* const element = ElementOfRow(table, GamepadRows, row);
    return element != nullptr ? *element : table[ActionIndex(GamepadRows.front())];
}
constexpr std::int32_t JoystickRowValue(const JoystickTable& table, std::int32_t row) {
    const auto* const element = ElementOfRow(table, JoystickRows, row);
    return element != nullptr ? *element : table[ActionIndex(JoystickRows.front())];
}

} // namespace Wirefall
