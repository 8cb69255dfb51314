#include "input/ControlsEdit.h"

#include "app/GameApp.h"

namespace Wirefall {

void BeginControlsEdit(GameApp& app) {
    app.ControlsEdit = {
        .PendingKeyboard = app.KeyboardBindings,
        .PendingGamepad = app.GamepadBindings,
        .PendingJoystick = app.JoystickBindings,
        .PendingDevice = app.ControlsDevice,
        .PendingValid = true,
    };
    EndCapture(app.Capture);
}

bool ControlsEditIsDirty(const GameApp& app) {
    const PendingControls& edit = app.ControlsEdit;
    return edit.PendingValid && (edit.PendingKeyboard != app.KeyboardBindings ||
                                 edit.PendingGamepad != app.GamepadBindings ||
                                 edit.PendingJoystick != app.JoystickBindings ||
                                 edit.PendingDevice != app.ControlsDevice);
}

void ResetControlsEdit(GameApp& app) {
    app.ControlsEdit = PendingControls{.PendingValid = app.ControlsEdit.PendingValid};
}

void ApplyControlsEdit(GameApp& app) {
    if (ControlsEditIsDirty(app)) {
        const PendingControls& edit = app.ControlsEdit;
        app.KeyboardBindings = edit.PendingKeyboard;
        app.GamepadBindings = edit.PendingGamepad;
        app.JoystickBindings = edit.PendingJoystick;
        app.ControlsDevice = edit.PendingDevice;
        app.OptionsDirty = true;
    }
    BeginControlsEdit(app);
}

KeyboardTable& EditedKeyboardTable(GameApp& app) {
    return app.ControlsEdit.PendingValid ? app.ControlsEdit.PendingKeyboard : app.KeyboardBindings;
}

GamepadTable& EditedGamepadTable(GameApp& app) {
    return app.ControlsEdit.PendingValid ? app.ControlsEdit.PendingGamepad : app.GamepadBindings;
}

JoystickTable& EditedJoystickTable(GameApp& app) {
    return app.ControlsEdit.PendingValid ? app.ControlsEdit.PendingJoystick : app.JoystickBindings;
}

void EndCapture(BindingCapture& capture) {
    capture.CaptureActive = false;
    capture.CaptureDevice = CaptureDevice::None;
}

} // namespace Wirefall
