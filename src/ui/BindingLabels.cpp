#include "ui/BindingLabels.h"

#include "ui/Localization.h"

#include <SDL3/SDL_gamepad.h>
#include <SDL3/SDL_keyboard.h>

#include <array>
#include <cstddef>
#include <span>

namespace Wirefall {

namespace {

struct ActionName {
    const char* Key;
    const char* DefaultText;
};

constexpr std::array<ActionName, ActionCount> ActionNames = {{
    {"Action.CursorUp", "CURSOR UP"},
    {"Action.CursorDown", "CURSOR DOWN"},
    {"Action.CursorLeft", "CURSOR LEFT"},
    {"Action.CursorRight", "CURSOR RIGHT"},
    {"Action.RotateLeft", "ROTATE LEFT"},
    {"Action.RotateRight", "ROTATE RIGHT"},
    {"Action.Place", "PLACE TILE"},
    {"Action.FastForward", "FAST FORWARD"},
    {"Action.MenuConfirm", "MENU CONFIRM"},
    {"Action.MenuBack", "MENU BACK"},
}};

constexpr std::array<InputAction, ActionCount> ActionOrder = {
    InputAction::CursorUp,    InputAction::CursorDown,  InputAction::CursorLeft,
    InputAction::CursorRight, InputAction::RotateLeft,  InputAction::RotateRight,
    InputAction::Place,       InputAction::FastForward, InputAction::MenuConfirm,
    InputAction::MenuBack,
};

// A joystick's cursor actions have no rows, so its table ends with them.
constexpr std::array<InputAction, ActionCount> JoystickOrder = {
    InputAction::RotateLeft,  InputAction::RotateRight, InputAction::Place,
    InputAction::FastForward, InputAction::MenuConfirm, InputAction::MenuBack,
    InputAction::CursorUp,    InputAction::CursorDown,  InputAction::CursorLeft,
    InputAction::CursorRight,
};

std::span<const InputAction> LabelOrder(ControlsDevice device) {
    switch (device) {
    case ControlsDevice::Keyboard:
        return std::span(ActionOrder).first(KeyboardActionCount);
    case ControlsDevice::Gamepad:
        return ActionOrder;
    case ControlsDevice::Joystick:
        return JoystickOrder;
    }
    return {};
}

std::string UnboundText() { return LocalizedText("Controls.Unbound", "UNBOUND"); }

std::string Numbered(const std::string& prefix, std::int64_t number) {
    return prefix + " " + std::to_string(number);
}

std::string NumberedButton(std::int32_t button) {
    return Numbered(LocalizedText("Controls.ButtonPrefix", "BUTTON"), button);
}

bool IsNamed(const char* name) { return name != nullptr && *name != '\0'; }

} // namespace

std::string ActionLabel(ControlsDevice device, std::int32_t index) {
    const std::span<const InputAction> order = LabelOrder(device);
    if (index < 0 || static_cast<std::size_t>(index) >= order.size()) {
        return {};
    }
    const ActionName& name = ActionNames[ActionIndex(order[static_cast<std::size_t>(index)])];
    return LocalizedText(name.Key, name.DefaultText);
}

std::string KeyboardBindingText(std::uint32_t scancode) {
    if (scancode == UnboundKey || scancode > MaxScancode) {
        return UnboundText();
    }
    const char* const name = SDL_GetScancodeName(static_cast<SDL_Scancode>(scancode));
    if (IsNamed(name)) {
        return ToDisplayUpper(name);
    }
    return Numbered(LocalizedText("Controls.ScancodePrefix", "SCANCODE"), scancode);
}

std::string GamepadBindingText(std::int32_t button) {
    if (button < 0 || button > MaxGamepadButton) {
        return UnboundText();
    }
    const char* const name = SDL_GetGamepadStringForButton(static_cast<SDL_GamepadButton>(button));
    return IsNamed(name) ? ToDisplayUpper(name) : NumberedButton(button);
}

std::string JoystickBindingText(std::int32_t button) {
    return button < 0 ? UnboundText() : NumberedButton(button);
}

} // namespace Wirefall
