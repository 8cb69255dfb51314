#include "words/CommandHints.h"

#include "base/Utf8.h"
#include "input/Controllers.h"
#include "words/BindingLabels.h"
#include "words/Localization.h"
#include "words/SharedTexts.h"

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

// The short labels of what a device is bound to.
class BindingNames {
public:
    BindingNames(const InputSettings& settings, InputDevice device)
        : Settings(settings), Device(device) {}

    std::string Of(InputAction action) const {
        const std::size_t index = ActionIndex(action);
        switch (Device) {
        case InputDevice::Gamepad:
            return ShortPadLabel(Settings.GamepadBindings[index]);
        case InputDevice::Joystick:
            return ShortJoyLabel(Settings.JoystickBindings[index]);
        case InputDevice::Keyboard:
            break;
        }
        // Of the two actions that a keyboard cannot rebind, only MenuBack is ever shown.
        const std::uint32_t fixedKey = SDL_SCANCODE_ESCAPE;
        return ShortKeyLabel(index < KeyboardActionCount ? Settings.KeyboardBindings[index]
                                                         : fixedKey);
    }

private:
    const InputSettings& Settings;
    InputDevice Device;
};

bool HasFactoryCursorButtons(const GamepadTable& bindings) {
    constexpr auto CursorActions = ActionIndex(InputAction::CursorRight) + 1;
    return std::equal(bindings.begin(), bindings.begin() + CursorActions,
                      FactoryBindings::Gamepad.begin());
}

std::string MoveKeys(const InputSettings& settings, InputDevice device, const BindingNames& names) {
    if (device == InputDevice::Joystick) {
        return LocalizedText("Hud.Control.StickHat", "STICK/HAT");
    }
    if (device == InputDevice::Gamepad && HasFactoryCursorButtons(settings.GamepadBindings)) {
        return LocalizedText("Hud.Control.DPadStick", "D-PAD/STICK");
    }
    return names.Of(InputAction::CursorUp) + "/" + names.Of(InputAction::CursorDown) + "/" +
           names.Of(InputAction::CursorLeft) + "/" + names.Of(InputAction::CursorRight);
}

std::string PlaceKeys(const InputSettings& settings, InputDevice device,
                      const BindingNames& names) {
    std::string keys = names.Of(InputAction::Place);
    if (device == InputDevice::Keyboard &&
        !IsEnterKey(settings.KeyboardBindings[ActionIndex(InputAction::Place)])) {
        keys += "/ENT";
    }
    return keys;
}

constexpr auto DefaultHintLines = TableBy<HudHint, std::string_view>({
    "MOVE D-PAD/STICK",
    "ROTATE LEFT/RIGHT",
    "PLACE TILE",
    "FAST FORWARD SHIFT/RT",
    "ESC MENU",
});

using HintLines = EnumTable<HudHint, std::string>;

HintLines WithDefaults(const EnumTable<HudHint, std::string_view>& lines) {
    HintLines stored;
    std::ranges::transform(lines, DefaultHintLines, stored.begin(),
                           [](std::string_view line, std::string_view defaultLine) {
                               return std::string(line.empty() ? defaultLine : line);
                           });
    return stored;
}

HintLines StoredLines = WithDefaults(DefaultHintLines);

} // namespace

CommandHints BuildCommandHints(const InputState& input, const ControllerSet& controllers) {
    const InputDevice device = DeviceInHand(input, controllers);
    const BindingNames names(input, device);
    return {
        .Move = LocalizedText(Texts::MoveCommand) + " " + MoveKeys(input, device, names),
        .Rotate = LocalizedText(Texts::RotateCommand) + " " + names.Of(InputAction::RotateLeft) +
                  "/" + names.Of(InputAction::RotateRight),
        .Place = LocalizedText(Texts::PlaceCommand) + " " + PlaceKeys(input, device, names),
        .FastForward =
            LocalizedText(Texts::FastForwardCommand) + " " + names.Of(InputAction::FastForward),
        .Menu =
            names.Of(InputAction::MenuBack) + " " + LocalizedText("Controller.Hint.Menu", "MENU"),
    };
}

void StoreHudHintLines(std::string_view move, std::string_view rotate, std::string_view place,
                       std::string_view fastForward, std::string_view menu) {
    StoredLines =
        WithDefaults(TableBy<HudHint, std::string_view>({move, rotate, place, fastForward, menu}));
}

const EnumTable<HudHint, std::string>& HudHintLines() { return StoredLines; }

std::string StripLabelPrefix(std::string_view text, std::string_view label) {
    if (text.starts_with(label)) {
        text.remove_prefix(label.size());
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    return std::string(text);
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
