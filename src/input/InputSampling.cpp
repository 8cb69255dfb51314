#include "input/InputSampling.h"

#include "app/GameApp.h"
#include "input/BindingTables.h"
#include "input/Controllers.h"
#include "input/ControlsEdit.h"

#include <SDL3/SDL_keyboard.h>

#include <array>
#include <cstdint>
#include <cstdlib>

namespace Wirefall {

namespace {

// Keyboard

struct FixedKey {
    PressCode Key;
    InputAction Action;
};

/// Keys that work only while their own action is bound to them. The screens take some of these
/// codes for what they mean by default, so a key that the player has taken away from its action
/// must not reach them.
constexpr std::array<FixedKey, 7> FixedKeys = {{
    {Press::Up, InputAction::CursorUp},
    {Press::Down, InputAction::CursorDown},
    {Press::Left, InputAction::CursorLeft},
    {Press::Right, InputAction::CursorRight},
    {Press::RotateLeft, InputAction::RotateLeft},
    {Press::RotateRight, InputAction::RotateRight},
    {SDL_SCANCODE_SPACE, InputAction::Place},
}};

PressCode FilterFixedKey(PressCode key, const KeyboardTable& bindings) {
    for (const FixedKey& fixed : FixedKeys) {
        if (key == fixed.Key && bindings[ActionIndex(fixed.Action)] != key) {
            return Press::None;
        }
    }
    return key;
}

bool IsCapturing(const GameApp& app, CaptureDevice device) {
    return app.Screen == AppScreen::Options && app.Capture.CaptureActive &&
           app.Capture.CaptureDevice == device;
}

PressCode OnKeyDown(GameApp& app, const SDL_KeyboardEvent& event) {
    if (event.repeat) {
        return Press::None;
    }
    app.LastInputDevice = InputDevice::Keyboard;
    const PressCode key = event.scancode;
    return IsCapturing(app, CaptureDevice::Keyboard) ? key
                                                     : FilterFixedKey(key, app.KeyboardBindings);
}

// Sticks and hats

// A stick presses beyond the one and lets go within the other; between them nothing changes.
constexpr int StickPress = 19000;
constexpr int StickRelease = 9000;

struct StickAxis {
    bool StickLatches::*NegativeLatch;
    bool StickLatches::*PositiveLatch;
    PressCode NegativePress;
    PressCode PositivePress;
};

/// By axis number; on a gamepad these two are those of the left stick. Further axes are not read.
constexpr std::array<StickAxis, 2> StickAxes = {{
    {&StickLatches::Left, &StickLatches::Right, Press::Left, Press::Right},
    {&StickLatches::Up, &StickLatches::Down, Press::Up, Press::Down},
}};

/// Latches the one side and lets go of the other. Returns whether that is a press.
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

/// The first bit that is set decides, so a diagonal is up or down.
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

/// A stick or a hat counts as the last device only when it presses: a resting stick trembles.
PressCode NotePress(GameApp& app, InputDevice device, PressCode press) {
    if (press != Press::None) {
        app.LastInputDevice = device;
    }
    return press;
}

// Buttons

struct ButtonPress {
    InputAction Action;
    PressCode Code;
};

/// What a button means on every screen, before the actions that depend on more than the button.
constexpr std::array<ButtonPress, 6> ButtonPresses = {{
    {InputAction::CursorUp, Press::Up},
    {InputAction::CursorDown, Press::Down},
    {InputAction::CursorLeft, Press::Left},
    {InputAction::CursorRight, Press::Right},
    {InputAction::RotateLeft, Press::RotateLeft},
    {InputAction::RotateRight, Press::RotateRight},
}};

/// `bindings` is a GamepadTable or a JoystickTable, which are the same to this function.
PressCode PressFromButton(const GameApp& app, const std::array<std::int32_t, ActionCount>& bindings,
                          std::int32_t button) {
    const auto isBound = [&bindings, button](InputAction action) {
        return bindings[ActionIndex(action)] == button;
    };
    for (const ButtonPress& row : ButtonPresses) {
        if (isBound(row.Action)) {
            return row.Code;
        }
    }
    if (app.Screen == AppScreen::Playing && isBound(InputAction::Place)) {
        // The board knows placing by the player's own key only.
        return app.KeyboardBindings[ActionIndex(InputAction::Place)];
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

PressCode OnGamepadButton(GameApp& app, std::int32_t button) {
    app.LastInputDevice = InputDevice::Gamepad;
    if (IsCapturing(app, CaptureDevice::Gamepad)) {
        SetGamepadBinding(EditedGamepadTable(app), app.Capture.CaptureGamepadRow, button);
        EndCapture(app.Capture);
        return Press::None;
    }
    return PressFromButton(app, app.GamepadBindings, button);
}

PressCode OnJoystickButton(GameApp& app, std::int32_t button) {
    app.LastInputDevice = InputDevice::Joystick;
    if (IsCapturing(app, CaptureDevice::Joystick)) {
        SetJoystickBinding(EditedJoystickTable(app), app.Capture.CaptureJoystickRow, button);
        EndCapture(app.Capture);
        return Press::None;
    }
    return PressFromButton(app, app.JoystickBindings, button);
}

// Devices that come and go

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

/// Comes for gamepads too, and looks for controllers whichever device has gone.
void OnJoystickRemoved(ControllerSet& controllers, SDL_JoystickID id) {
    if (IsHeldJoystick(controllers, id)) {
        CloseJoystick(controllers);
    }
    if (IsHeldGamepad(controllers, id)) {
        CloseGamepad(controllers);
    }
    OpenAvailableControllers(controllers);
}

// Fast forward

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

PressCode PressFromEvent(GameApp& app, ControllerSet& controllers, const SDL_Event& event) {
    switch (event.type) {
    case SDL_EVENT_KEY_DOWN:
        return OnKeyDown(app, event.key);

    case SDL_EVENT_GAMEPAD_AXIS_MOTION:
        if (IsHeldGamepad(controllers, event.gaxis.which)) {
            return NotePress(
                app, InputDevice::Gamepad,
                PressFromAxis(controllers.GamepadLatches, event.gaxis.axis, event.gaxis.value));
        }
        break;
    case SDL_EVENT_JOYSTICK_AXIS_MOTION:
        if (IsHeldJoystick(controllers, event.jaxis.which)) {
            return NotePress(
                app, InputDevice::Joystick,
                PressFromAxis(controllers.JoystickLatches, event.jaxis.axis, event.jaxis.value));
        }
        break;
    case SDL_EVENT_JOYSTICK_HAT_MOTION:
        if (IsHeldJoystick(controllers, event.jhat.which)) {
            return NotePress(app, InputDevice::Joystick, PressFromHat(event.jhat.value));
        }
        break;

    case SDL_EVENT_GAMEPAD_BUTTON_DOWN:
        if (IsHeldGamepad(controllers, event.gbutton.which)) {
            return OnGamepadButton(app, event.gbutton.button);
        }
        break;
    case SDL_EVENT_JOYSTICK_BUTTON_DOWN:
        if (IsHeldJoystick(controllers, event.jbutton.which)) {
            return OnJoystickButton(app, event.jbutton.button);
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
    return Press::None;
}

bool SampleFastForward(const GameApp& app, const ControllerSet& controllers) {
    if (app.Screen != AppScreen::Playing) {
        return false;
    }
    constexpr std::size_t Action = ActionIndex(InputAction::FastForward);
    return IsFastForwardKeyDown(app.KeyboardBindings[Action]) ||
           IsFastForwardButtonDown(controllers.Gamepad, app.GamepadBindings[Action]) ||
           IsFastForwardButtonDown(controllers.Joystick, app.JoystickBindings[Action]);
}

} // namespace Wirefall
