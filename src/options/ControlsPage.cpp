#include "options/ControlsPage.h"

#include "audio/SoundQueue.h"
#include "base/EnumTable.h"
#include "input/PressMeaning.h"
#include "options/BindingRows.h"
#include "words/Localization.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace Wirefall {

namespace {

constexpr std::int32_t FirstBindingRow = 1; // Behind the row of the device.

// --- The working copy

PendingControls CopyOfLive(const InputSettings& settings) {
    return {
        .PendingKeyboard = settings.KeyboardBindings,
        .PendingGamepad = settings.GamepadBindings,
        .PendingJoystick = settings.JoystickBindings,
        .PendingDevice = settings.ControlsDevice,
        .PendingValid = true,
    };
}

PendingControls ShownControls(const GameApp& app) {
    return app.ControlsEdit.PendingValid ? app.ControlsEdit : CopyOfLive(app);
}

// The table that a capture changes.

KeyboardTable& EditedKeyboard(GameApp& app) {
    return app.ControlsEdit.PendingValid ? app.ControlsEdit.PendingKeyboard : app.KeyboardBindings;
}

GamepadTable& EditedGamepad(GameApp& app) {
    return app.ControlsEdit.PendingValid ? app.ControlsEdit.PendingGamepad : app.GamepadBindings;
}

JoystickTable& EditedJoystick(GameApp& app) {
    return app.ControlsEdit.PendingValid ? app.ControlsEdit.PendingJoystick : app.JoystickBindings;
}

// --- Capture

struct Capturing {
    std::int32_t BindingCapture::*Row;
    void (*Clear)(GameApp& app, std::int32_t row);
    GameText Prompt;
};

// By device.
constexpr auto Captures = TableBy<ControlsDevice, Capturing>({
    {&BindingCapture::CaptureKeyboardRow,
     [](GameApp& app, std::int32_t row) { ClearKeyboardBinding(EditedKeyboard(app), row); },
     {"Options.Controls.BindPrompt.Keyboard", "PRESS A KEY FOR "}},
    {&BindingCapture::CaptureGamepadRow,
     [](GameApp& app, std::int32_t row) { ClearGamepadBinding(EditedGamepad(app), row); },
     {"Options.Controls.BindPrompt.Gamepad", "PRESS A GAMEPAD BUTTON FOR "}},
    {&BindingCapture::CaptureJoystickRow,
     [](GameApp& app, std::int32_t row) { ClearJoystickBinding(EditedJoystick(app), row); },
     {"Options.Controls.BindPrompt.Joystick", "PRESS A JOYSTICK BUTTON FOR "}},
});

// The two enumerations differ by the none that a capture may wait for.

constexpr CaptureDevice CaptureOf(ControlsDevice device) {
    return static_cast<CaptureDevice>(static_cast<std::int32_t>(device) + 1);
}

constexpr ControlsDevice DeviceOf(CaptureDevice capture) {
    return static_cast<ControlsDevice>(static_cast<std::int32_t>(capture) - 1);
}

bool ClearsBinding(PressCode code) {
    return code == SDL_SCANCODE_DELETE || code == SDL_SCANCODE_BACKSPACE;
}

void StartCapture(const PageContext& context, std::int32_t row) {
    GameApp& app = context.App;
    const ControlsDevice device = app.ControlsEdit.PendingDevice;
    app.Capture.CaptureActive = true;
    if (const Capturing* const capturing = Captures.Find(device)) {
        app.Capture.CaptureDevice = CaptureOf(device);
        app.Capture.*capturing->Row = row - FirstBindingRow;
    }
}

std::string CapturePrompt(const BindingCapture& capture) {
    const ControlsDevice device = DeviceOf(capture.CaptureDevice);
    if (const Capturing* const capturing = Captures.Find(device)) {
        return LocalizedText(capturing->Prompt) + ActionLabel(device, capture.*capturing->Row);
    }
    return LocalizedText("Options.Controls.BindPrompt.Any", "PRESS AN INPUT FOR ");
}

// --- Rows

// A controller's name tells whether there is one.
std::string DeviceText(const PageView& view, std::int32_t /*row*/) {
    const auto controller = [](const GameText& name, bool open) {
        return LocalizedText(name) + " (" + OnOffText(open) + ")";
    };
    switch (ShownControls(view.App).PendingDevice) {
    case ControlsDevice::Keyboard:
        return LocalizedText("Device.Keyboard", "KEYBOARD");
    case ControlsDevice::Gamepad:
        return controller({"Device.Gamepad", "GAMEPAD"}, view.Controllers.Gamepad != nullptr);
    case ControlsDevice::Joystick:
        return controller({"Device.Joystick", "JOYSTICK"}, view.Controllers.Joystick != nullptr);
    }
    return LocalizedText("Device.Unknown", "UNKNOWN");
}

void ChangeDevice(const PageContext& context, std::int32_t direction) {
    constexpr auto Count = static_cast<std::int32_t>(EnumCount<ControlsDevice>);
    ControlsDevice& device = context.App.ControlsEdit.PendingDevice;
    device = static_cast<ControlsDevice>((static_cast<std::int32_t>(device) + direction + Count) %
                                         Count);
}

std::string BindingValue(const PageView& view, std::int32_t row) {
    return BindingText(ShownControls(view.App), row - FirstBindingRow);
}

void Reset(const PageContext& context) { ResetControlsEdit(context.App); }
void Apply(const PageContext& context) { ApplyControlsEdit(context.App); }
void Revert(const PageContext& context) { BeginControlsEdit(context.App); }

void Leave(const PageContext& context) {
    GameApp& app = context.App;
    if (ControlsEditIsDirty(app)) {
        BeginControlsEdit(app);
    }
    app.ControlsEdit.PendingValid = false;
    app.OptionsPage = OptionsPage::Root;
}

// The device, a row for each binding that is shown, and the closing ones.
template <ControlsDevice Device>
constexpr auto MakeRows() {
    std::array<PageRow, static_cast<std::size_t>(ShownRowCount(Device))> bindings{};
    for (std::size_t row = 0; row < bindings.size(); ++row) {
        const ActionRow& action = Actions[RowsOf(Device)[row]];
        bindings[row] = {
            .Label = {action.TextKey, action.Name}, .Value = BindingValue, .Confirm = StartCapture};
    }
    return JoinRows(std::to_array<PageRow>({{.Label = {"Options.Controls.Device", "DEVICE"},
                                             .Value = DeviceText,
                                             .Adjust = ChangeDevice}}),
                    JoinRows(bindings, ClosingRows(Do<Reset>, Do<Apply>, Do<Revert>, Do<Leave>)));
}

constexpr auto KeyboardPage = MakeRows<ControlsDevice::Keyboard>();
constexpr auto GamepadPage = MakeRows<ControlsDevice::Gamepad>();
constexpr auto JoystickPage = MakeRows<ControlsDevice::Joystick>();

std::span<const PageRow> Rows(const GameApp& app) {
    switch (ShownControls(app).PendingDevice) {
    case ControlsDevice::Keyboard:
        return KeyboardPage;
    case ControlsDevice::Gamepad:
        return GamepadPage;
    case ControlsDevice::Joystick:
        break;
    }
    return JoystickPage;
}

PageHints Hints(const PageView& view) {
    if (view.App.Capture.CaptureActive) {
        return {.Upper = CapturePrompt(view.App.Capture),
                .Lower = LocalizedText("Options.Controls.Hint.EscCancelDelClear",
                                       "ESC CANCEL   DEL CLEAR")};
    }
    return {.Upper = LocalizedText("Options.Controls.Hint.RebindDevice",
                                   "ENTER REBIND   LEFT / RIGHT DEVICE"),
            .Lower = SelectBackHint(view, {"Options.Controls.Hint.EscBack", "ESC BACK"})};
}

void Prepare(const PageContext& context) {
    GameApp& app = context.App;
    if (!app.ControlsEdit.PendingValid) {
        BeginControlsEdit(app);
    }
    // A device with fewer rows than the one before keeps the selection on the last.
    const auto last = static_cast<std::int32_t>(Rows(app).size()) - 1;
    app.Rows.ControlsRow = std::min(app.Rows.ControlsRow, last);
}

} // namespace

constinit const PageTable ControlsPage = {
    .Heading = {"Options.Section.Controls", "CONTROLS"},
    .Row = &OptionsRows::ControlsRow,
    .Rows = Rows,
    .Hints = Hints,
    .Prepare = Prepare,
    .Back = Leave,
    .FitHints = true,
};

void BeginControlsEdit(GameApp& app) {
    app.ControlsEdit = CopyOfLive(app);
    EndCapture(app.Capture);
}

bool ControlsEditIsDirty(const GameApp& app) {
    return app.ControlsEdit.PendingValid && app.ControlsEdit != CopyOfLive(app);
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

bool IsCapturing(const GameApp& app, InputDevice device) {
    return app.Screen == AppScreen::Options && app.Capture.CaptureActive &&
           app.Capture.CaptureDevice == CaptureOf(static_cast<ControlsDevice>(device));
}

void CaptureButton(GameApp& app, InputDevice device, std::int32_t button) {
    if (device == InputDevice::Gamepad) {
        SetGamepadBinding(EditedGamepad(app), app.Capture.CaptureGamepadRow, button);
    } else {
        SetJoystickBinding(EditedJoystick(app), app.Capture.CaptureJoystickRow, button);
    }
    EndCapture(app.Capture);
}

void PressDuringCapture(GameApp& app, PressCode code) {
    BindingCapture& capture = app.Capture;
    if (IsBack(code)) {
        EndCapture(capture);
    } else if (ClearsBinding(code)) {
        if (const Capturing* const capturing = Captures.Find(DeviceOf(capture.CaptureDevice))) {
            capturing->Clear(app, capture.*capturing->Row);
        }
        EnqueueSound(app, SoundEvent::UiConfirm);
        EndCapture(capture);
    } else if (capture.CaptureDevice == CaptureDevice::Keyboard) {
        SetKeyboardBinding(EditedKeyboard(app), capture.CaptureKeyboardRow, code);
        EndCapture(capture);
    }
}

} // namespace Wirefall
