#include "input/InputSampling.h"

#include "input/Controllers.h"

#include <SDL3/SDL_keyboard.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace Wirefall {

namespace {

// --- Keys and buttons

struct ActionPress {
    InputAction Action;
    PressCode Code;
};

// What these actions mean on every screen, by a button or by the key of the code.
constexpr std::array<ActionPress, 6> SteeringPresses = {{
    {InputAction::CursorUp, Press::Up},
    {InputAction::CursorDown, Press::Down},
    {InputAction::CursorLeft, Press::Left},
    {InputAction::CursorRight, Press::Right},
    {InputAction::RotateLeft, Press::RotateLeft},
    {InputAction::RotateRight, Press::RotateRight},
}};

// One more key that works only while its own action is bound to it, though its code means nothing.
constexpr ActionPress PlaceKey = {InputAction::Place, SDL_SCANCODE_SPACE};

DevicePress KeyDown(InputState& input, const SDL_KeyboardEvent& event) {
    if (event.repeat) {
        return {};
    }
    input.LastInputDevice = InputDevice::Keyboard;
    return {.Kind = PressKind::Key, .Device = InputDevice::Keyboard, .Code = event.scancode};
}

DevicePress ButtonDown(InputState& input, InputDevice device, std::int32_t button) {
    input.LastInputDevice = device;
    return {.Kind = PressKind::Button, .Device = device, .ButtonNumber = button};
}

// --- Sticks and hats

// A stick presses beyond the one and lets go within the other; between them nothing changes.
constexpr int StickPress = 19000;
constexpr int StickRelease = 9000;

struct StickAxis {
    bool StickLatches::*NegativeLatch;
    bool StickLatches::*PositiveLatch;
    PressCode NegativePress;
    PressCode PositivePress;
};

// By axis number; on a gamepad these two are those of the left stick. Further axes are not read.
constexpr std::array<StickAxis, 2> StickAxes = {{
    {&StickLatches::Left, &StickLatches::Right, Press::Left, Press::Right},
    {&StickLatches::Up, &StickLatches::Down, Press::Up, Press::Down},
}};

// Latches the one side and lets go of the other. Returns whether that is a press.
bool PressSide(bool& side, bool& otherSide) {
    if (side) {
        return false;
    }
    side = true;
    otherSide = false;
    return true;
}

PressCode PressFromAxis(StickLatches& latches, std::uint8_t axis, int value) {
    if (axis >= StickAxes.size()) {
        return Press::None;
    }
    const StickAxis& stick = StickAxes[axis];
    bool& negative = latches.*stick.NegativeLatch;
    bool& positive = latches.*stick.PositiveLatch;
    if (value <= -StickPress) {
        return PressSide(negative, positive) ? stick.NegativePress : Press::None;
    }
    if (value >= StickPress) {
        return PressSide(positive, negative) ? stick.PositivePress : Press::None;
    }
    if (std::abs(value) <= StickRelease) {
        negative = false;
        positive = false;
    }
    return Press::None;
}

struct HatDirection {
    std::uint8_t Bit;
    PressCode Code;
};

// The first bit that is set decides, so a diagonal is up or down.
constexpr std::array<HatDirection, 4> HatDirections = {{
    {SDL_HAT_UP, Press::Up},
    {SDL_HAT_DOWN, Press::Down},
    {SDL_HAT_LEFT, Press::Left},
    {SDL_HAT_RIGHT, Press::Right},
}};

PressCode PressFromHat(std::uint8_t value) {
    for (const HatDirection& direction : HatDirections) {
        if ((value & direction.Bit) != 0) {
            return direction.Code;
        }
    }
    return Press::None;
}

// A stick or a hat counts as the last device only when it presses: a resting stick trembles.
DevicePress Step(InputState& input, InputDevice device, PressCode code) {
    if (code == Press::None) {
        return {};
    }
    input.LastInputDevice = device;
    return {.Kind = PressKind::Step, .Device = device, .Code = code};
}

// --- Devices that come and go

bool IsHeldGamepad(const ControllerSet& controllers, SDL_JoystickID id) {
    return controllers.Gamepad != nullptr && controllers.GamepadId == id;
}

bool IsHeldJoystick(const ControllerSet& controllers, SDL_JoystickID id) {
    return controllers.Joystick != nullptr && controllers.JoystickId == id;
}

void OnGamepadRemoved(ControllerSet& controllers, SDL_JoystickID id) {
    if (IsHeldGamepad(controllers, id)) {
        CloseGamepad(controllers);
        OpenAvailableControllers(controllers);
    }
}

// Comes for gamepads too, and looks for controllers whichever device has gone.
void OnJoystickRemoved(ControllerSet& controllers, SDL_JoystickID id) {
    if (IsHeldJoystick(controllers, id)) {
        CloseJoystick(controllers);
    }
    if (IsHeldGamepad(controllers, id)) {
        CloseGamepad(controllers);
    }
    OpenAvailableControllers(controllers);
}

// --- Fast forward

bool IsFastForwardKeyDown(PressCode key) {
    const bool* const keys = SDL_GetKeyboardState(nullptr);
    if (keys == nullptr || key == UnboundKey || key > MaxScancode) {
        return false;
    }
    if (key == SDL_SCANCODE_LSHIFT || key == SDL_SCANCODE_RSHIFT) {
        return keys[SDL_SCANCODE_LSHIFT] || keys[SDL_SCANCODE_RSHIFT];
    }
    return keys[key];
}

bool IsFastForwardButtonDown(SDL_Gamepad* gamepad, std::int32_t button) {
    return gamepad != nullptr && button >= 0 && button <= MaxGamepadButton &&
           SDL_GetGamepadButton(gamepad, static_cast<SDL_GamepadButton>(button));
}

bool IsFastForwardButtonDown(SDL_Joystick* joystick, std::int32_t button) {
    return joystick != nullptr && button >= 0 && SDL_GetJoystickButton(joystick, button);
}

} // namespace

DevicePress ReadDevicePress(InputState& input, ControllerSet& controllers, const SDL_Event& event) {
    switch (event.type) {
    case SDL_EVENT_KEY_DOWN:
        return KeyDown(input, event.key);

    case SDL_EVENT_GAMEPAD_AXIS_MOTION:
        if (IsHeldGamepad(controllers, event.gaxis.which)) {
            return Step(
                input, InputDevice::Gamepad,
                PressFromAxis(controllers.GamepadLatches, event.gaxis.axis, event.gaxis.value));
        }
        break;
    case SDL_EVENT_JOYSTICK_AXIS_MOTION:
        if (IsHeldJoystick(controllers, event.jaxis.which)) {
            return Step(
                input, InputDevice::Joystick,
                PressFromAxis(controllers.JoystickLatches, event.jaxis.axis, event.jaxis.value));
        }
        break;
    case SDL_EVENT_JOYSTICK_HAT_MOTION:
        if (IsHeldJoystick(controllers, event.jhat.which)) {
            return Step(input, InputDevice::Joystick, PressFromHat(event.jhat.value));
        }
        break;

    case SDL_EVENT_GAMEPAD_BUTTON_DOWN:
        if (IsHeldGamepad(controllers, event.gbutton.which)) {
            return ButtonDown(input, InputDevice::Gamepad, event.gbutton.button);
        }
        break;
    case SDL_EVENT_JOYSTICK_BUTTON_DOWN:
        if (IsHeldJoystick(controllers, event.jbutton.which)) {
            return ButtonDown(input, InputDevice::Joystick, event.jbutton.button);
        }
        break;

    case SDL_EVENT_GAMEPAD_ADDED:
        TryOpenGamepad(controllers, event.gdevice.which);
        break;
    case SDL_EVENT_JOYSTICK_ADDED:
        TryOpenJoystick(controllers, event.jdevice.which);
        break;
    case SDL_EVENT_GAMEPAD_REMOVED:
        OnGamepadRemoved(controllers, event.gdevice.which);
        break;
    case SDL_EVENT_JOYSTICK_REMOVED:
        OnJoystickRemoved(controllers, event.jdevice.which);
        break;
    default:
        break;
    }
    return {};
}

PressCode PressFromKey(const KeyboardTable& bindings, PressCode key) {
    const auto takenAway = [&bindings, key](const ActionPress& row) {
        return key == row.Code && bindings[ActionIndex(row.Action)] != key;
    };
    const bool filtered = takenAway(PlaceKey) || std::ranges::any_of(SteeringPresses, takenAway);
    return filtered ? Press::None : key;
}

PressCode PressFromButton(const InputSettings& settings, InputDevice device, std::int32_t button,
                          bool onBoard) {
    const auto& bindings =
        device == InputDevice::Gamepad ? settings.GamepadBindings : settings.JoystickBindings;
    const auto isBound = [&bindings, button](InputAction action) {
        return bindings[ActionIndex(action)] == button;
    };
    for (const ActionPress& row : SteeringPresses) {
        if (isBound(row.Action)) {
            return row.Code;
        }
    }
    if (onBoard && isBound(InputAction::Place)) {
        // The board knows placing by the player's own key only.
        return settings.KeyboardBindings[ActionIndex(InputAction::Place)];
    }
    if (isBound(InputAction::MenuConfirm)) {
        return Press::Confirm;
    }
    // A button that also acts on the board must not open the pause menu there.
    if (isBound(InputAction::MenuBack) && !isBound(InputAction::Place) &&
        !isBound(InputAction::FastForward)) {
        return Press::Back;
    }
    return Press::None;
}

bool IsFastForwardHeld(const InputSettings& settings, const ControllerSet& controllers) {
    constexpr std::size_t Action = ActionIndex(InputAction::FastForward);
    return IsFastForwardKeyDown(settings.KeyboardBindings[Action]) ||
           IsFastForwardButtonDown(controllers.Gamepad, settings.GamepadBindings[Action]) ||
           IsFastForwardButtonDown(controllers.Joystick, settings.JoystickBindings[Action]);
}

} // namespace Wirefall
