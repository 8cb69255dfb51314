#include "input/BindingTables.h"

#include <cstddef>

namespace Wirefall {

namespace {

/// The table element that a row stands for, or null when there is no such row.
template <typename Table, std::size_t RowCount>
auto* ElementOfRow(Table& table, const std::array<InputAction, RowCount>& rows, std::int32_t row) {
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < RowCount ? &table[ActionIndex(rows[index])] : nullptr;
}

template <typename Table, std::size_t RowCount, typename Value>
void SetRow(Table& table, const std::array<InputAction, RowCount>& rows, std::int32_t row,
            Value value) {
    if (auto* const element = ElementOfRow(table, rows, row)) {
        *element = value;
    }
}

/// For a device that answers an unknown row with its first.
template <typename Table>
std::int32_t RowValueOrFirst(const Table& table, const std::array<InputAction, ActionCount>& rows,
                             std::int32_t row) {
    const auto* const element = ElementOfRow(table, rows, row);
    return element != nullptr ? *element : *ElementOfRow(table, rows, 0);
}

constexpr std::int32_t ShownJoystickRows = 6;

} // namespace

std::int32_t ShownRowCount(ControlsDevice device) {
    switch (device) {
    case ControlsDevice::Gamepad:
        return static_cast<std::int32_t>(GamepadRows.size());
    case ControlsDevice::Joystick:
        return ShownJoystickRows;
    case ControlsDevice::Keyboard:
        break;
    }
    return static_cast<std::int32_t>(KeyboardRows.size());
}

void SetKeyboardBinding(KeyboardTable& table, std::int32_t row, std::uint32_t scancode) {
    if (scancode != UnboundKey && scancode <= MaxScancode) {
        SetRow(table, KeyboardRows, row, scancode);
    }
}

void ClearKeyboardBinding(KeyboardTable& table, std::int32_t row) {
    SetRow(table, KeyboardRows, row, UnboundKey);
}

void SetGamepadBinding(GamepadTable& table, std::int32_t row, std::int32_t button) {
    if (button <= MaxGamepadButton) {
        SetRow(table, GamepadRows, row, button);
    }
}

void ClearGamepadBinding(GamepadTable& table, std::int32_t row) {
    SetRow(table, GamepadRows, row, UnboundButton);
}

void SetJoystickBinding(JoystickTable& table, std::int32_t row, std::int32_t button) {
    SetRow(table, JoystickRows, row, button);
}

void ClearJoystickBinding(JoystickTable& table, std::int32_t row) {
    SetRow(table, JoystickRows, row, UnboundButton);
}

std::uint32_t KeyboardRowValue(const KeyboardTable& table, std::int32_t row) {
    const std::uint32_t* const element = ElementOfRow(table, KeyboardRows, row);
    return element != nullptr ? *element : UnboundKey;
}

std::int32_t GamepadRowValue(const GamepadTable& table, std::int32_t row) {
    return RowValueOrFirst(table, GamepadRows, row);
}

std::int32_t JoystickRowValue(const JoystickTable& table, std::int32_t row) {
    return RowValueOrFirst(table, JoystickRows, row);
}

} // namespace Wirefall
