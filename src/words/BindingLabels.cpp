#include "words/BindingLabels.h"

#include "words/Localization.h"

#include <SDL3/SDL_gamepad.h>
#include <SDL3/SDL_keyboard.h>

namespace Wirefall {

namespace {

std::string UnboundText() { return LocalizedText("Controls.Unbound", "UNBOUND"); }

std::string Numbered(const std::string& prefix, std::int64_t number) {
    return prefix + " " + std::to_string(number);
}

std::string NumberedButton(std::int32_t button) {
    return Numbered(LocalizedText("Controls.ButtonPrefix", "BUTTON"), button);
}

bool IsNamed(const char* name) { return name != nullptr && *name != '\0'; }

} // namespace

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
