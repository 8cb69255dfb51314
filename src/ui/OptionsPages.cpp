#include "ui/OptionsPages.h"

#include "display/DisplayModes.h"
#include "input/BindingRows.h"
#include "ui/BindingLabels.h"
#include "ui/ControllerHint.h"
#include "ui/Metrics.h"
#include "ui/SharedTexts.h"

#include <utility>

namespace Wirefall {

namespace {

constexpr GameText OnText = {"Common.On", "ON"};
constexpr GameText OffText = {"Common.Off", "OFF"};
constexpr GameText BackRow = {"Common.Back", "BACK"};

const std::string& OnOff(bool on) { return LocalizedText(on ? OnText : OffText); }

OptionRow Row(const GameText& label, std::string value = {}) {
    return {.Label = LocalizedText(label), .Value = std::move(value)};
}

void AddClosingRows(std::vector<OptionRow>& rows) {
    rows.push_back(Row({"Options.DefaultSettings", "DEFAULT SETTINGS"}));
    rows.push_back(Row({"Common.Apply", "APPLY"}));
    rows.push_back(Row({"Common.Revert", "REVERT"}));
    rows.push_back(Row(BackRow));
}

// For players with a controller in hand, otherwise for those with a keyboard.
std::string SelectBackHint(const GameApp& app, const ControllerSet& controllers,
                           const GameText& keyboardHint) {
    std::string hint = BuildControllerHint(app, controllers, LocalizedText(Texts::Select),
                                           LocalizedText(Texts::Back));
    return hint.empty() ? LocalizedText(keyboardHint) : hint;
}

// --- Root ----------------------------------------------------------------------------------------

OptionsPageTexts RootPage(const GameApp& app, const ControllerSet& controllers) {
    const bool toPause = app.OptionsReturnScreen == AppScreen::Pause;
    return {
        .Heading = {"Options.Section.Menu", "MENU"},
        .Rows = {Row({"Options.Main.Controls", "CONTROLS"}),
                 Row({"Options.Main.Graphics", "GRAPHICS"}), Row({"Options.Main.Audio", "AUDIO"}),
                 Row(BackRow)},
        .SelectedRow = app.Rows.OptionsRootRow,
        .UpperHint = toPause ? LocalizedText("Options.Hint.MainBackToPauseMenu",
                                             "ENTER SELECT   ESC BACK TO PAUSE MENU")
                             : LocalizedText("Options.Hint.MainBackToMainMenu",
                                             "ENTER SELECT   ESC BACK TO MAIN MENU"),
        .LowerHint =
            BuildControllerHint(app, controllers, LocalizedText(Texts::Select),
                                LocalizedText(toPause ? Texts::PauseMenu : Texts::MainMenu)),
    };
}

// --- Controls ------------------------------------------------------------------------------------

// The bindings that the page shows: the working copy, or the live ones while there is none.
struct ShownBindings {
    ControlsDevice Device;
    const KeyboardTable& Keyboard;
    const GamepadTable& Gamepad;
    const JoystickTable& Joystick;
};

ShownBindings BindingsShownBy(const GameApp& app) {
    const PendingControls& pending = app.ControlsEdit;
    if (pending.PendingValid) {
        return {pending.PendingDevice, pending.PendingKeyboard, pending.PendingGamepad,
                pending.PendingJoystick};
    }
    return {app.ControlsDevice, app.KeyboardBindings, app.GamepadBindings, app.JoystickBindings};
}

std::string BindingText(const ShownBindings& bindings, std::int32_t row) {
    switch (bindings.Device) {
    case ControlsDevice::Keyboard:
        return KeyboardBindingText(KeyboardRowValue(bindings.Keyboard, row));
    case ControlsDevice::Gamepad:
        return GamepadBindingText(GamepadRowValue(bindings.Gamepad, row));
    case ControlsDevice::Joystick:
        break;
    }
    return JoystickBindingText(JoystickRowValue(bindings.Joystick, row));
}

// A controller's name tells whether there is one.
std::string DeviceText(ControlsDevice device, const ControllerSet& controllers) {
    const auto controller = [](const GameText& name, bool open) {
        return LocalizedText(name) + " (" + OnOff(open) + ")";
    };
    switch (device) {
    case ControlsDevice::Keyboard:
        return LocalizedText("Device.Keyboard", "KEYBOARD");
    case ControlsDevice::Gamepad:
        return controller({"Device.Gamepad", "GAMEPAD"}, controllers.Gamepad != nullptr);
    case ControlsDevice::Joystick:
        return controller({"Device.Joystick", "JOYSTICK"}, controllers.Joystick != nullptr);
    }
    return LocalizedText("Device.Unknown", "UNKNOWN");
}

std::string CapturePrompt(const BindingCapture& capture) {
    switch (capture.CaptureDevice) {
    case CaptureDevice::Keyboard:
        return LocalizedText("Options.Controls.BindPrompt.Keyboard", "PRESS A KEY FOR ") +
               ActionLabel(ControlsDevice::Keyboard, capture.CaptureKeyboardRow);
    case CaptureDevice::Gamepad:
        return LocalizedText("Options.Controls.BindPrompt.Gamepad", "PRESS A GAMEPAD BUTTON FOR ") +
               ActionLabel(ControlsDevice::Gamepad, capture.CaptureGamepadRow);
    case CaptureDevice::Joystick:
        return LocalizedText("Options.Controls.BindPrompt.Joystick",
                             "PRESS A JOYSTICK BUTTON FOR ") +
               ActionLabel(ControlsDevice::Joystick, capture.CaptureJoystickRow);
    case CaptureDevice::None:
        break;
    }
    return LocalizedText("Options.Controls.BindPrompt.Any", "PRESS AN INPUT FOR ");
}

OptionsPageTexts ControlsPage(const GameApp& app, const ControllerSet& controllers) {
    const ShownBindings bindings = BindingsShownBy(app);
    OptionsPageTexts page = {
        .Heading = {"Options.Section.Controls", "CONTROLS"},
        .SelectedRow = app.Rows.ControlsRow,
        .FitHints = true,
    };
    page.Rows.push_back(
        Row({"Options.Controls.Device", "DEVICE"}, DeviceText(bindings.Device, controllers)));
    for (std::int32_t row = 0; row < ShownRowCount(bindings.Device); ++row) {
        page.Rows.push_back({ActionLabel(bindings.Device, row), BindingText(bindings, row)});
    }
    AddClosingRows(page.Rows);
    if (app.Capture.CaptureActive) {
        page.UpperHint = CapturePrompt(app.Capture);
        page.LowerHint =
            LocalizedText("Options.Controls.Hint.EscCancelDelClear", "ESC CANCEL   DEL CLEAR");
    } else {
        page.UpperHint = LocalizedText("Options.Controls.Hint.RebindDevice",
                                       "ENTER REBIND   LEFT / RIGHT DEVICE");
        page.LowerHint =
            SelectBackHint(app, controllers, {"Options.Controls.Hint.EscBack", "ESC BACK"});
    }
    return page;
}

// --- Graphics and Audio --------------------------------------------------------------------------

// The two pages whose rows are values to be changed.
OptionsPageTexts ValuePage(const GameApp& app, const ControllerSet& controllers,
                           const GameText& heading, std::vector<OptionRow> rows,
                           std::int32_t selectedRow) {
    AddClosingRows(rows);
    return {
        .Heading = heading,
        .Rows = std::move(rows),
        .SelectedRow = selectedRow,
        .UpperHint = LocalizedText("Options.Hint.LeftRightChange", "LEFT / RIGHT CHANGE VALUE"),
        .LowerHint = SelectBackHint(
            app, controllers, {"Options.Hint.EnterSelectEscBack", "ENTER SELECT     ESC BACK"}),
    };
}

std::string AspectModeText(AspectMode mode) {
    return mode == AspectMode::Classic4x3
               ? LocalizedText("Options.Graphics.AspectMode.Classic4x3", "4:3")
               : LocalizedText("Options.Graphics.AspectMode.Widescreen", "WIDESCREEN");
}

std::string RefreshRateText(std::int32_t rate) {
    return rate < 1 ? LocalizedText("Options.Graphics.AutoRefresh", "AUTO")
                    : std::to_string(rate) + " HZ";
}

std::string DisplayModeText(bool fullscreen) {
    return fullscreen ? LocalizedText("Options.Graphics.DisplayMode.Fullscreen", "FULLSCREEN")
                      : LocalizedText("Options.Graphics.DisplayMode.Windowed", "WINDOWED");
}

OptionsPageTexts GraphicsPage(const GameApp& app, const ControllerSet& controllers) {
    const Resolution resolution = CurrentResolution(app);
    return ValuePage(
        app, controllers, {"Options.Section.Graphics", "GRAPHICS"},
        {
            Row({"Options.Graphics.Resolution", "RESOLUTION"},
                std::to_string(resolution.Width) + "X" + std::to_string(resolution.Height)),
            Row({"Options.Graphics.AspectMode", "ASPECT MODE"}, AspectModeText(app.AspectMode)),
            Row({"Options.Graphics.RefreshRate", "REFRESH RATE"}, RefreshRateText(app.RefreshRate)),
            Row({"Options.Graphics.DisplayMode", "DISPLAY MODE"}, DisplayModeText(app.Fullscreen)),
            Row({"Options.Graphics.Vsync", "VSYNC"}, OnOff(app.VSync)),
        },
        app.Rows.GraphicsRow);
}

// The working copy, or the live options while there is none.
PendingAudio AudioShownBy(const GameApp& app) {
    if (app.AudioEdit.Valid) {
        return app.AudioEdit;
    }
    return {.MasterVolume = app.MasterVolume,
            .MusicVolume = app.MusicVolume,
            .SfxVolume = app.SfxVolume,
            .MusicEnabled = app.MusicEnabled,
            .SfxEnabled = app.SfxEnabled,
            .Language = app.Language};
}

std::string VolumeText(std::int32_t percent) {
    return PercentText(static_cast<float>(percent) / 100.0F);
}

OptionsPageTexts AudioPage(const GameApp& app, const ControllerSet& controllers) {
    const PendingAudio audio = AudioShownBy(app);
    return ValuePage(
        app, controllers, {"Options.Section.Audio", "AUDIO"},
        {
            Row({"Options.Audio.MasterVolume", "MASTER VOLUME"}, VolumeText(audio.MasterVolume)),
            Row({"Options.Audio.MusicVolume", "MUSIC VOLUME"}, VolumeText(audio.MusicVolume)),
            Row({"Options.Audio.SfxVolume", "SFX VOLUME"}, VolumeText(audio.SfxVolume)),
            Row({"Options.Audio.Music", "MUSIC"}, OnOff(audio.MusicEnabled)),
            Row({"Options.Audio.Sfx", "SFX"}, OnOff(audio.SfxEnabled)),
            Row({"Options.Audio.Language", "LANGUAGE"}, LanguageDisplayName(audio.Language)),
        },
        app.Rows.AudioRow);
}

} // namespace

OptionsPageTexts CollectOptionsPage(const GameApp& app, const ControllerSet& controllers) {
    switch (app.OptionsPage) {
    case OptionsPage::Root:
        return RootPage(app, controllers);
    case OptionsPage::Controls:
        return ControlsPage(app, controllers);
    case OptionsPage::Graphics:
        return GraphicsPage(app, controllers);
    case OptionsPage::Audio:
        break;
    }
    return AudioPage(app, controllers);
}

} // namespace Wirefall
