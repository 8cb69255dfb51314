#pragma once

// The binding tables as the Controls page shows and edits them, row by row. On the keyboard and the
// gamepad a row is the action of the same number; on the joystick the rows begin with RotateLeft,
// so that the four cursor actions, which a joystick has no buttons for, come last and are never
// shown.

#include "game/OptionsState.h"
#include "input/Bindings.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace Wirefall {

/// The `Count` actions from `first` on, going around.
template <std::size_t Count>
constexpr std::array<InputAction, Count> ActionsFrom(InputAction first) {
    std::array<InputAction, Count> actions{};
    for (std::size_t row = 0; row < Count; ++row) {
        actions[row] = static_cast<InputAction>((ActionIndex(first) + row) % ActionCount);
    }
    return actions;
}

/// The action of each row.
inline constexpr auto KeyboardRows = ActionsFrom<KeyboardActionCount>(InputAction::CursorUp);
inline constexpr auto GamepadRows = ActionsFrom<ActionCount>(InputAction::CursorUp);
inline constexpr auto JoystickRows = ActionsFrom<ActionCount>(InputAction::RotateLeft);
inline constexpr std::int32_t ShownJoystickRows =
    static_cast<std::int32_t>(ActionCount - ActionIndex(InputAction::RotateLeft));

/// The rows of the device. A value that is no device counts as the joystick, here and below.
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

// Editing a table by rows. An edit with a row that is not in the table does nothing.

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

/// The name of the row's action; empty for a row that the device's table does not have.
std::string ActionLabel(ControlsDevice device, std::int32_t row);

/// The keys or the button of a row, in words.
std::string BindingText(const PendingControls& bindings, std::int32_t row);

} // namespace Wirefall
