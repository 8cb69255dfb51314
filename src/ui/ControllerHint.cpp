#include "ui/ControllerHint.h"

#include "ui/BindingLabels.h"
#include "ui/Localization.h"
#include "ui/SharedTexts.h"

#include <cstddef>

namespace Wirefall {

namespace {

struct ButtonWords {
    std::string Prefix;
    std::string Confirm;
    std::string Back;
};

// Empty words without a controller in hand.
ButtonWords WordsOfDevice(const GameApp& app, const ControllerSet& controllers) {
    constexpr std::size_t Confirm = ActionIndex(InputAction::MenuConfirm);
    constexpr std::size_t Back = ActionIndex(InputAction::MenuBack);
    if (app.LastInputDevice == InputDevice::Gamepad && controllers.Gamepad != nullptr) {
        return {LocalizedText("Controller.Hint.PadPrefix", "PAD"),
                GamepadBindingText(app.GamepadBindings[Confirm]),
                GamepadBindingText(app.GamepadBindings[Back])};
    }
    if (app.LastInputDevice == InputDevice::Joystick && controllers.Joystick != nullptr) {
        return {LocalizedText("Controller.Hint.JoyPrefix", "JOY"),
                JoystickBindingText(app.JoystickBindings[Confirm]),
                JoystickBindingText(app.JoystickBindings[Back])};
    }
    return {};
}

} // namespace

std::string BuildControllerHint(const GameApp& app, const ControllerSet& controllers,
                                std::string_view selectLabel, std::string_view backLabel) {
    const ButtonWords words = WordsOfDevice(app, controllers);
    if (words.Prefix.empty()) {
        return {};
    }
    const std::string select(selectLabel.empty() ? LocalizedText(Texts::Select) : selectLabel);
    const std::string back(backLabel.empty() ? LocalizedText(Texts::Back) : backLabel);
    const std::string between = select == back ? LocalizedText("Controller.Hint.Or", "OR") : select;
    return words.Prefix + " " + words.Confirm + " " + between + " " + words.Back + " " + back;
}

} // namespace Wirefall
