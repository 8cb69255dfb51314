#pragma once

// Where the player is on the Options pages, and what the pages hold until it is applied. Rows stay
// where they were when the screen is left, so that a page opens on the row last used. What the
// pages do with it is in options/.

#include "audio/Volumes.h"
#include "display/DisplayState.h"
#include "input/Bindings.h"
#include "words/LanguageCode.h"

#include <cstdint>

namespace Wirefall {

enum class OptionsPage : std::int32_t { Root = 0, Controls = 1, Graphics = 2, Audio = 3 };

struct OptionsRows {
    std::int32_t OptionsRootRow = 0;
    std::int32_t ControlsRow = 0;
    std::int32_t GraphicsRow = 0;
    std::int32_t AudioRow = 0;

    bool operator==(const OptionsRows&) const = default;
};

/// The working copy that the Controls page edits.
struct PendingControls {
    KeyboardTable PendingKeyboard = FactoryBindings::Keyboard;
    GamepadTable PendingGamepad = FactoryBindings::Gamepad;
    JoystickTable PendingJoystick = FactoryBindings::Joystick;
    Wirefall::ControlsDevice PendingDevice = Wirefall::ControlsDevice::Keyboard;
    bool PendingValid = false;

    bool operator==(const PendingControls&) const = default;
};

/// Which class of device a capture waits for.
enum class CaptureDevice : std::int32_t { None = 0, Keyboard = 1, Gamepad = 2, Joystick = 3 };

/// The state of waiting for a press to bind. Rows are those of the Controls page.
struct BindingCapture {
    bool CaptureActive = false;
    Wirefall::CaptureDevice CaptureDevice = Wirefall::CaptureDevice::None;
    std::int32_t CaptureKeyboardRow = 0;
    std::int32_t CaptureGamepadRow = 0;
    std::int32_t CaptureJoystickRow = 0;

    bool operator==(const BindingCapture&) const = default;
};

/// What the Graphics page returns to. That page edits the live options.
struct GraphicsSnapshot : DisplayChoice {
    bool Valid = false;

    bool operator==(const GraphicsSnapshot&) const = default;
};

/// The working copy that the Audio page edits.
struct PendingAudio : AudioSettings, LanguageSetting {
    bool Valid = false;

    bool operator==(const PendingAudio&) const = default;
};

struct OptionsState {
    Wirefall::OptionsPage OptionsPage = Wirefall::OptionsPage::Root;
    OptionsRows Rows;
    BindingCapture Capture;
    PendingControls ControlsEdit;
    GraphicsSnapshot GraphicsEdit;
    PendingAudio AudioEdit = {{.MusicEnabled = false, .SfxEnabled = false}, {}, false};

    bool operator==(const OptionsState&) const = default;
};

/// Stops waiting for a press to bind.
void EndCapture(BindingCapture& capture);

/// Begins at the root page, with no edit and no capture left over. The rows stay.
void ResetOptionsPages(OptionsState& options);

} // namespace Wirefall
