#include "ui/CommandHints.h"

#include "ui/BindingLabels.h"
#include "ui/Localization.h"
#include "ui/SharedTexts.h"
#include "ui/Utf8.h"

#include <SDL3/SDL_gamepad.h>
#include <SDL3/SDL_scancode.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace Wirefall {

namespace {

constexpr const char* UnboundLabel = "UNB";
constexpr std::size_t LongestLabel = 6;

struct KeyLabel {
    std::uint32_t Scancode;
    const char* Label;
};

constexpr std::array<KeyLabel, 8> KeyLabels = {{
    {SDL_SCANCODE_RETURN, "ENT"},
    {SDL_SCANCODE_KP_ENTER, "ENT"},
    {SDL_SCANCODE_ESCAPE, "ESC"},
    {SDL_SCANCODE_SPACE, "SPC"},
    {SDL_SCANCODE_RIGHT, "RT"},
    {SDL_SCANCODE_LEFT, "LT"},
    {SDL_SCANCODE_DOWN, "DN"},
    {SDL_SCANCODE_UP, "UP"},
}};

// By SDL_GamepadButton. The guide button and those beyond the table go by SDL's name.
constexpr std::array<const char*, SDL_GAMEPAD_BUTTON_DPAD_RIGHT + 1> PadLabels = {
    "A",  "B",  "X",  "Y",   "BACK", nullptr, "START", "L3",
    "R3", "LB", "RB", "DUP", "DDN",  "DLT",   "DRT",
};

bool IsEnterKey(std::uint32_t scancode) {
    return scancode == SDL_SCANCODE_RETURN || scancode == SDL_SCANCODE_KP_ENTER;
}

InputDevice DeviceInHand(const GameApp& app, const ControllerSet& controllers) {
    if (app.LastInputDevice == InputDevice::Gamepad && controllers.Gamepad != nullptr) {
        return InputDevice::Gamepad;
    }
    if (app.LastInputDevice == InputDevice::Joystick && controllers.Joystick != nullptr) {
        return InputDevice::Joystick;
    }
    return InputDevice::Keyboard;
}

// The short labels of what a device is bound to.
class BindingNames {
public:
    BindingNames(const GameOptions& options, InputDevice device)
        : Options(options), Device(device) {}

    std::string Of(InputAction action) const {
        const std::size_t index = ActionIndex(action);
        switch (Device) {
        case InputDevice::Gamepad:
            return ShortPadLabel(Options.GamepadBindings[index]);
        case InputDevice::Joystick:
            return ShortJoyLabel(Options.JoystickBindings[index]);
        case InputDevice::Keyboard:
            break;
        }
        // Of the two actions that a keyboard cannot rebind, only MenuBack is ever shown.
        const std::uint32_t fixedKey = SDL_SCANCODE_ESCAPE;
        return ShortKeyLabel(index < KeyboardActionCount ? Options.KeyboardBindings[index]
                                                         : fixedKey);
    }

private:
    const GameOptions& Options;
    InputDevice Device;
};

bool HasFactoryCursorButtons(const GamepadTable& bindings) {
    constexpr auto CursorActions = ActionIndex(InputAction::CursorRight) + 1;
    return std::equal(bindings.begin(), bindings.begin() + CursorActions,
                      FactoryBindings::Gamepad.begin());
}

std::string MoveKeys(const GameOptions& options, InputDevice device, const BindingNames& names) {
    if (device == InputDevice::Joystick) {
        return LocalizedText("Hud.Control.StickHat", "STICK/HAT");
    }
    if (device == InputDevice::Gamepad && HasFactoryCursorButtons(options.GamepadBindings)) {
        return LocalizedText("Hud.Control.DPadStick", "D-PAD/STICK");
    }
    return names.Of(InputAction::CursorUp) + "/" + names.Of(InputAction::CursorDown) + "/" +
           names.Of(InputAction::CursorLeft) + "/" + names.Of(InputAction::CursorRight);
}

std::string PlaceKeys(const GameOptions& options, InputDevice device, const BindingNames& names) {
    std::string keys = names.Of(InputAction::Place);
    if (device == InputDevice::Keyboard &&
        !IsEnterKey(options.KeyboardBindings[ActionIndex(InputAction::Place)])) {
        keys += "/ENT";
    }
    return keys;
}

} // namespace

CommandHints BuildCommandHints(const GameApp& app, const ControllerSet& controllers) {
    const InputDevice device = DeviceInHand(app, controllers);
    const BindingNames names(app, device);
    return {
        .Move = LocalizedText(Texts::MoveCommand) + " " + MoveKeys(app, device, names),
        .Rotate = LocalizedText(Texts::RotateCommand) + " " + names.Of(InputAction::RotateLeft) +
                  "/" + names.Of(InputAction::RotateRight),
        .Place = LocalizedText(Texts::PlaceCommand) + " " + PlaceKeys(app, device, names),
        .FastForward =
            LocalizedText(Texts::FastForwardCommand) + " " + names.Of(InputAction::FastForward),
        .Menu =
            names.Of(InputAction::MenuBack) + " " + LocalizedText("Controller.Hint.Menu", "MENU"),
    };
}

std::string ShortKeyLabel(std::uint32_t scancode) {
    if (scancode == UnboundKey || scancode > MaxScancode) {
        return UnboundLabel;
    }
    const auto row = std::find_if(KeyLabels.begin(), KeyLabels.end(),
                                  [scancode](const KeyLabel& r) { return r.Scancode == scancode; });
    return row == KeyLabels.end() ? CompressLabel(KeyboardBindingText(scancode)) : row->Label;
}

std::string ShortPadLabel(std::int32_t button) {
    if (button < 0 || button > MaxGamepadButton) {
        return UnboundLabel;
    }
    const auto index = static_cast<std::size_t>(button);
    if (index < PadLabels.size() && PadLabels[index] != nullptr) {
        return PadLabels[index];
    }
    return CompressLabel(GamepadBindingText(button));
}

std::string ShortJoyLabel(std::int32_t button) {
    return button < 0 ? UnboundLabel : std::string("B") + std::to_string(button);
}

std::string CompressLabel(std::string_view text) {
    std::string label(text);
    std::erase(label, ' ');
    label = Utf8ToUpper(label).substr(0, LongestLabel);
    return label.empty() ? UnboundLabel : label;
}

} // namespace Wirefall
