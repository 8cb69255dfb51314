#include "words/ControllerHint.h"

#include "input/Controllers.h"
#include "words/BindingLabels.h"
#include "words/Localization.h"
#include "words/SharedTexts.h"

#include <cstddef>

namespace Wirefall {

namespace {

struct ButtonWords {
    std::string Prefix;
    std::string Confirm;
    std::string Back;
};

// Empty words without a controller in hand.
ButtonWords WordsOfDevice(const InputState& input, const ControllerSet& controllers) {
    constexpr std::size_t Confirm = ActionIndex(InputAction::MenuConfirm);
    constexpr std::size_t Back = ActionIndex(InputAction::MenuBack);
    switch (DeviceInHand(input, controllers)) {
    case InputDevice::Gamepad:
        return {LocalizedText("Controller.Hint.PadPrefix", "PAD"),
                GamepadBindingText(input.GamepadBindings[Confirm]),
                GamepadBindingText(input.GamepadBindings[Back])};
    case InputDevice::Joystick:
        return {LocalizedText("Controller.Hint.JoyPrefix", "JOY"),
                JoystickBindingText(input.JoystickBindings[Confirm]),
                JoystickBindingText(input.JoystickBindings[Back])};
    case InputDevice::Keyboard:
        break;
    }
    return {};
}

} // namespace

std::string BuildControllerHint(const InputState& input, const ControllerSet& controllers,
                                std::string_view selectLabel, std::string_view backLabel) {
    const ButtonWords words = WordsOfDevice(input, controllers);
    if (words.Prefix.empty()) {
        return {};
    }
    const std::string select(selectLabel.empty() ? LocalizedText(Texts::Select) : selectLabel);
    const std::string back(backLabel.empty() ? LocalizedText(Texts::Back) : backLabel);
    const std::string between = select == back ? LocalizedText("Controller.Hint.Or", "OR") : select;
    return words.Prefix + " " + words.Confirm + " " + between + " " + words.Back + " " + back;
}

} // namespace Wirefall
