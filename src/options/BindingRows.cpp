#include "options/BindingRows.h"

#include "words/BindingLabels.h"
#include "words/Localization.h"

namespace Wirefall {

namespace {

template <typename Table, typename Value>
void SetRow(Table& table, std::span<const InputAction> rows, std::int32_t row, Value value) {
    if (auto* const element = ElementOfRow(table, rows, row)) {
        *element = value;
    }
}

} // namespace

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

std::string ActionLabel(ControlsDevice device, std::int32_t row) {
    const ActionRow* const action = ElementOfRow(Actions.Rows(), RowsOf(device), row);
    return action == nullptr ? std::string() : LocalizedText(action->TextKey, action->Name);
}

std::string BindingText(const PendingControls& bindings, std::int32_t row) {
    switch (bindings.PendingDevice) {
    case ControlsDevice::Keyboard:
        return KeyboardBindingText(KeyboardRowValue(bindings.PendingKeyboard, row));
    case ControlsDevice::Gamepad:
        return GamepadBindingText(GamepadRowValue(bindings.PendingGamepad, row));
    case ControlsDevice::Joystick:
        break;
    }
    return JoystickBindingText(JoystickRowValue(bindings.PendingJoystick, row));
}

} // namespace Wirefall
