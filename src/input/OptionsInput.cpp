#include "input/OptionsInput.h"

#include "app/GameApp.h"
#include "audio/SoundQueue.h"
#include "input/AudioEdit.h"
#include "input/BindingTables.h"
#include "input/ControlsEdit.h"
#include "input/GraphicsEdit.h"
#include "input/PressMeaning.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace Wirefall {

namespace {

enum class Meaning : std::uint8_t { Other, Up, Down, Left, Right, Confirm, Back };

Meaning MeaningOf(const KeyboardTable& bindings, PressCode code) {
    if (IsUp(bindings, code)) {
        return Meaning::Up;
    }
    if (IsDown(bindings, code)) {
        return Meaning::Down;
    }
    if (IsLeft(bindings, code)) {
        return Meaning::Left;
    }
    if (IsRight(bindings, code)) {
        return Meaning::Right;
    }
    if (IsConfirm(code)) {
        return Meaning::Confirm;
    }
    return IsBack(code) ? Meaning::Back : Meaning::Other;
}

void QueueSoundOf(GameApp& app, Meaning meaning) {
    switch (meaning) {
    case Meaning::Up:
    case Meaning::Down:
    case Meaning::Left:
    case Meaning::Right:
        EnqueueSound(app, SoundEvent::UiMove);
        break;
    case Meaning::Confirm:
        EnqueueSound(app, SoundEvent::UiConfirm);
        break;
    case Meaning::Back:
        EnqueueSound(app, SoundEvent::UiBack);
        break;
    case Meaning::Other:
        break;
    }
}

// What a page works on. The window and the renderer are the Graphics page's.
struct Context {
    GameApp& App;
    SDL_Window* Window;
    SDL_Renderer* Renderer;
};

using Action = void (*)(const Context& context);

void DoNothing(const Context& /*context*/) {}

// --- Capture

bool ClearsBinding(PressCode code) {
    return code == SDL_SCANCODE_DELETE || code == SDL_SCANCODE_BACKSPACE;
}

void ClearCapturedRow(GameApp& app) {
    const BindingCapture& capture = app.Capture;
    switch (capture.CaptureDevice) {
    case CaptureDevice::Keyboard:
        ClearKeyboardBinding(EditedKeyboardTable(app), capture.CaptureKeyboardRow);
        break;
    case CaptureDevice::Gamepad:
        ClearGamepadBinding(EditedGamepadTable(app), capture.CaptureGamepadRow);
        break;
    case CaptureDevice::Joystick:
        ClearJoystickBinding(EditedJoystickTable(app), capture.CaptureJoystickRow);
        break;
    case CaptureDevice::None:
        break;
    }
}

void PressDuringCapture(GameApp& app, PressCode code) {
    BindingCapture& capture = app.Capture;
    if (IsBack(code)) {
        EndCapture(capture);
    } else if (ClearsBinding(code)) {
        ClearCapturedRow(app);
        EnqueueSound(app, SoundEvent::UiConfirm);
        EndCapture(capture);
    } else if (capture.CaptureDevice == CaptureDevice::Keyboard) {
        SetKeyboardBinding(EditedKeyboardTable(app), capture.CaptureKeyboardRow, code);
        EndCapture(capture);
    }
}

void StartCapture(GameApp& app, std::int32_t row) {
    BindingCapture& capture = app.Capture;
    capture.CaptureActive = true;
    switch (app.ControlsEdit.PendingDevice) {
    case ControlsDevice::Keyboard:
        capture.CaptureDevice = CaptureDevice::Keyboard;
        capture.CaptureKeyboardRow = row;
        break;
    case ControlsDevice::Gamepad:
        capture.CaptureDevice = CaptureDevice::Gamepad;
        capture.CaptureGamepadRow = row;
        break;
    case ControlsDevice::Joystick:
        capture.CaptureDevice = CaptureDevice::Joystick;
        capture.CaptureJoystickRow = row;
        break;
    }
}

// --- Root page

void LeaveOptions(const Context& context) { context.App.Screen = context.App.OptionsReturnScreen; }

void OpenControls(const Context& context) {
    context.App.OptionsPage = OptionsPage::Controls;
    BeginControlsEdit(context.App);
}

void OpenGraphics(const Context& context) {
    context.App.OptionsPage = OptionsPage::Graphics;
    BeginGraphicsEdit(context.App, context.Window);
}

void OpenAudio(const Context& context) {
    context.App.OptionsPage = OptionsPage::Audio;
    BeginAudioEdit(context.App);
}

constexpr std::array<Action, 4> RootActions = {
    OpenControls,
    OpenGraphics,
    OpenAudio,
    LeaveOptions,
};

// --- Controls page: the device, a row for each binding, and four more

constexpr std::int32_t DeviceRow = 0;
constexpr std::int32_t FirstBindingRow = 1;

void LeaveControls(const Context& context) {
    GameApp& app = context.App;
    if (ControlsEditIsDirty(app)) {
        BeginControlsEdit(app);
    }
    app.ControlsEdit.PendingValid = false;
    app.OptionsPage = OptionsPage::Root;
}

constexpr std::array<Action, 4> LastControlsActions = {
    [](const Context& context) { ResetControlsEdit(context.App); },
    [](const Context& context) { ApplyControlsEdit(context.App); },
    [](const Context& context) { BeginControlsEdit(context.App); },
    LeaveControls,
};

std::int32_t ShownBindings(const GameApp& app) {
    return ShownRowCount(app.ControlsEdit.PendingDevice);
}

std::int32_t ControlsRowCount(const GameApp& app) {
    return FirstBindingRow + ShownBindings(app) +
           static_cast<std::int32_t>(LastControlsActions.size());
}

void PrepareControls(const Context& context) {
    GameApp& app = context.App;
    if (!app.ControlsEdit.PendingValid) {
        BeginControlsEdit(app);
    }
    // A device with fewer rows than the one before keeps the selection on the last.
    app.Rows.ControlsRow = std::min(app.Rows.ControlsRow, ControlsRowCount(app) - 1);
}

void AdjustControls(const Context& context, std::int32_t direction) {
    GameApp& app = context.App;
    if (app.Rows.ControlsRow == DeviceRow) {
        constexpr std::int32_t DeviceCount = 3;
        const auto device = static_cast<std::int32_t>(app.ControlsEdit.PendingDevice);
        app.ControlsEdit.PendingDevice =
            static_cast<ControlsDevice>((device + direction + DeviceCount) % DeviceCount);
    }
}

void ConfirmControls(const Context& context) {
    GameApp& app = context.App;
    if (app.Rows.ControlsRow == DeviceRow) {
        return;
    }
    const std::int32_t binding = app.Rows.ControlsRow - FirstBindingRow;
    if (binding < ShownBindings(app)) {
        StartCapture(app, binding);
        return;
    }
    LastControlsActions[static_cast<std::size_t>(binding - ShownBindings(app))](context);
}

// --- Graphics page

void PrepareGraphics(const Context& context) {
    if (!context.App.GraphicsEdit.Valid) {
        BeginGraphicsEdit(context.App, context.Window);
    }
}

void AdjustGraphics(const Context& context, std::int32_t direction) {
    AdjustGraphicsRow(context.App, context.Window, direction);
}

void StepGraphics(const Context& context) { AdjustGraphics(context, 1); }

void LeaveGraphics(const Context& context) {
    GameApp& app = context.App;
    if (GraphicsEditIsDirty(app)) {
        RevertGraphicsEdit(app, context.Window);
    }
    app.GraphicsEdit.Valid = false;
    app.OptionsPage = OptionsPage::Root;
}

constexpr std::array<Action, 9> GraphicsActions = {
    DoNothing,    // resolution
    DoNothing,    // aspect mode
    DoNothing,    // refresh rate
    StepGraphics, // display mode
    StepGraphics, // vertical sync
    [](const Context& context) { ResetGraphicsEdit(context.App, context.Window); },
    [](const Context& context) {
        ApplyGraphicsEdit(context.App, context.Window, context.Renderer);
    },
    [](const Context& context) { RevertGraphicsEdit(context.App, context.Window); },
    LeaveGraphics,
};

// --- Audio page

void PrepareAudio(const Context& context) {
    if (!context.App.AudioEdit.Valid) {
        BeginAudioEdit(context.App);
    }
}

void AdjustAudio(const Context& context, std::int32_t direction) {
    AdjustAudioRow(context.App, direction);
}

void StepAudio(const Context& context) { AdjustAudio(context, 1); }

void LeaveAudio(const Context& context) {
    GameApp& app = context.App;
    if (AudioEditIsDirty(app)) {
        BeginAudioEdit(app);
    }
    app.AudioEdit.Valid = false;
    app.OptionsPage = OptionsPage::Root;
}

constexpr std::array<Action, 10> AudioActions = {
    DoNothing, // master volume
    DoNothing, // music volume
    DoNothing, // effects volume
    StepAudio, // music
    StepAudio, // effects
    StepAudio, // language
    [](const Context& context) { ResetAudioEdit(context.App); },
    [](const Context& context) { ApplyAudioEdit(context.App); },
    [](const Context& context) { BeginAudioEdit(context.App); },
    LeaveAudio,
};

// --- What the four pages have in common

template <const auto& Actions, std::int32_t OptionsRows::*Row>
void ConfirmRow(const Context& context) {
    Actions[static_cast<std::size_t>(context.App.Rows.*Row)](context);
}

template <const auto& Actions>
std::int32_t CountOf(const GameApp& /*app*/) {
    return static_cast<std::int32_t>(Actions.size());
}

struct Page {
    std::int32_t OptionsRows::*Row;
    std::int32_t (*RowCount)(const GameApp& app);
    Action Prepare; ///< Before each press, so that there is an edit and the row is one of its rows.
    void (*Adjust)(const Context& context, std::int32_t direction);
    Action Confirm;
    Action Back;
};

// By OptionsPage.
constexpr std::array<Page, 4> Pages = {{
    {
        .Row = &OptionsRows::OptionsRootRow,
        .RowCount = CountOf<RootActions>,
        .Prepare = DoNothing,
        .Adjust = [](const Context& /*context*/, std::int32_t /*direction*/) {},
        .Confirm = ConfirmRow<RootActions, &OptionsRows::OptionsRootRow>,
        .Back = LeaveOptions,
    },
    {
        .Row = &OptionsRows::ControlsRow,
        .RowCount = ControlsRowCount,
        .Prepare = PrepareControls,
        .Adjust = AdjustControls,
        .Confirm = ConfirmControls,
        .Back = LeaveControls,
    },
    {
        .Row = &OptionsRows::GraphicsRow,
        .RowCount = CountOf<GraphicsActions>,
        .Prepare = PrepareGraphics,
        .Adjust = AdjustGraphics,
        .Confirm = ConfirmRow<GraphicsActions, &OptionsRows::GraphicsRow>,
        .Back = LeaveGraphics,
    },
    {
        .Row = &OptionsRows::AudioRow,
        .RowCount = CountOf<AudioActions>,
        .Prepare = PrepareAudio,
        .Adjust = AdjustAudio,
        .Confirm = ConfirmRow<AudioActions, &OptionsRows::AudioRow>,
        .Back = LeaveAudio,
    },
}};

void PressOnPage(const Context& context, const Page& page, Meaning meaning) {
    page.Prepare(context);
    std::int32_t& row = context.App.Rows.*page.Row;
    const std::int32_t count = page.RowCount(context.App);
    switch (meaning) {
    case Meaning::Up:
        row = (row + count - 1) % count;
        break;
    case Meaning::Down:
        row = (row + 1) % count;
        break;
    case Meaning::Left:
        page.Adjust(context, -1);
        break;
    case Meaning::Right:
        page.Adjust(context, 1);
        break;
    case Meaning::Confirm:
        page.Confirm(context);
        break;
    case Meaning::Back:
        page.Back(context);
        break;
    case Meaning::Other:
        break;
    }
}

} // namespace

void PressOnOptions(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code) {
    const Meaning meaning = MeaningOf(app.KeyboardBindings, code);
    QueueSoundOf(app, meaning);
    if (app.Capture.CaptureActive) {
        PressDuringCapture(app, code);
        return;
    }
    PressOnPage({app, window, renderer}, Pages[static_cast<std::size_t>(app.OptionsPage)], meaning);
}

} // namespace Wirefall
