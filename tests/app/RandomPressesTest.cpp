// Long random sessions on all screens: keys, buttons and sticks, with controllers that come and go.
// Whatever is pressed, the record stays sound, nothing of the Options reaches the game before it is
// applied, every screen can be drawn, and Escape leads out. A sequence is its seed, so one that
// fails can be run again by itself.

#include "app/Game.h"
#include "app/InputPump.h"
#include "app/Screens.h"
#include "base/Clock.h"
#include "display/DisplayModes.h"
#include "game/ScreenFlow.h"
#include "input/Controllers.h"
#include "input/InputSampling.h"
#include "input/PressMeaning.h"
#include "options/BindingRows.h"
#include "sim/Simulation.h"
#include "support/SoftwareCanvas.h"
#include "support/TestHome.h"
#include "support/VideoFixture.h"
#include "support/VirtualControllers.h"
#include "words/LanguageFiles.h"

#include <SDL3/SDL.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Wirefall {
namespace {

constexpr std::uint32_t Sequences = 10000;
constexpr int PressesPerSequence = 200;

// Of many sequences one ends with a whole frame: that saves, plays sounds and draws.
constexpr std::uint32_t FrameEvery = 8;

constexpr std::array<AppScreen, 8> AllScreens = {
    AppScreen::MainMenu,      AppScreen::Options, AppScreen::Help,    AppScreen::Playing,
    AppScreen::LevelComplete, AppScreen::Pause,   AppScreen::Credits, AppScreen::GameOver,
};

// A number generator that is the same with every standard library.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : State(seed * 0x9e3779b97f4a7c15U + 1) {}

    // 0 to `sides` - 1.
    std::uint32_t Roll(std::uint32_t sides) {
        State = State * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::uint32_t>((State >> 33U) % sides);
    }

private:
    std::uint64_t State;
};

// The keys that mean something on some screen come most often, or random walks would not get far.
constexpr std::array<PressCode, 20> LikelyKeys = {
    Press::Up,      Press::Down,        Press::Down,          Press::Down,
    Press::Down,    Press::Left,        Press::Right,         Press::Right,
    Press::Confirm, Press::Confirm,     Press::Confirm,       Press::Confirm,
    Press::Confirm, Press::Back,        Press::KeypadConfirm, SDL_SCANCODE_DELETE,
    Press::Up,      SDL_SCANCODE_SPACE, Press::RotateLeft,    SDL_SCANCODE_BACKSPACE,
};

// Moves something on the controller.
void PlayWith(VirtualDevice& device, Dice& dice) {
    switch (dice.Roll(4)) {
    case 0: {
        const int axis = static_cast<int>(dice.Roll(3));
        device.MoveAxis(axis, static_cast<int>(dice.Roll(65536)) - 32768);
        break;
    }
    case 1:
        device.MoveHat(0, static_cast<std::uint8_t>(dice.Roll(16)));
        break;
    default: {
        const int button = static_cast<int>(dice.Roll(SDL_GAMEPAD_BUTTON_COUNT));
        device.IsPressed(button) ? device.ReleaseButton(button) : device.PressButton(button);
        break;
    }
    }
}

// What the player has applied, in the words of the Options pages.
struct AppliedControls {
    KeyboardTable Keyboard;
    GamepadTable Gamepad;
    JoystickTable Joystick;
    ControlsDevice Device;

    bool operator==(const AppliedControls&) const = default;
};

struct AppliedGraphics {
    Resolution Size;
    AspectMode Aspect;
    std::int32_t RefreshRate;
    bool Fullscreen;
    bool VSync;

    bool operator==(const AppliedGraphics&) const = default;
};

struct AppliedAudio {
    std::int32_t Master;
    std::int32_t Music;
    std::int32_t Sfx;
    bool MusicEnabled;
    bool SfxEnabled;
    std::string Language;

    bool operator==(const AppliedAudio&) const = default;
};

struct Applied {
    AppliedControls Controls;
    AppliedGraphics Graphics;
    AppliedAudio Audio;

    bool operator==(const Applied&) const = default;
};

AppliedControls LiveControls(const GameApp& app) {
    return {app.KeyboardBindings, app.GamepadBindings, app.JoystickBindings, app.ControlsDevice};
}

AppliedControls PendingOf(const PendingControls& edit) {
    return {edit.PendingKeyboard, edit.PendingGamepad, edit.PendingJoystick, edit.PendingDevice};
}

AppliedGraphics LiveGraphics(const GameApp& app) {
    return {CurrentResolution(app), app.AspectMode, app.RefreshRate, app.Fullscreen, app.VSync};
}

AppliedGraphics SnapshotOf(const GraphicsSnapshot& edit) {
    return {
        {edit.Width, edit.Height}, edit.AspectMode, edit.RefreshRate, edit.Fullscreen, edit.VSync};
}

AppliedAudio LiveAudio(const GameApp& app) {
    return {app.MasterVolume, app.MusicVolume, app.SfxVolume,
            app.MusicEnabled, app.SfxEnabled,  app.Language};
}

AppliedAudio PendingOf(const PendingAudio& edit) {
    return {edit.MasterVolume, edit.MusicVolume, edit.SfxVolume,
            edit.MusicEnabled, edit.SfxEnabled,  edit.Language};
}

Applied AppliedIn(const GameApp& app) {
    return {LiveControls(app), LiveGraphics(app), LiveAudio(app)};
}

// Which page the next confirming press would apply.
OptionsPage PageToApply(const GameApp& app) {
    if (app.Screen != AppScreen::Options || app.Capture.CaptureActive) {
        return OptionsPage::Root;
    }
    switch (app.OptionsPage) {
    case OptionsPage::Controls:
        return app.Rows.ControlsRow == ShownRowCount(app.ControlsEdit.PendingDevice) + 2
                   ? OptionsPage::Controls
                   : OptionsPage::Root;
    case OptionsPage::Graphics:
        return app.Rows.GraphicsRow == 6 ? OptionsPage::Graphics : OptionsPage::Root;
    case OptionsPage::Audio:
        return app.Rows.AudioRow == 7 ? OptionsPage::Audio : OptionsPage::Root;
    case OptionsPage::Root:
        break;
    }
    return OptionsPage::Root;
}

bool IsWithin(std::int32_t value, std::int32_t count) { return value >= 0 && value < count; }

// What must hold after each press, whatever it was; null when it does.
const char* BrokenRule(const GameApp& app) {
    if (!IsWithin(app.MenuSelection, 6) || !IsWithin(app.PauseSelection, 4)) {
        return "a menu's selection is out of range";
    }
    if (!IsWithin(app.Rows.OptionsRootRow, 4) || !IsWithin(app.Rows.ControlsRow, 15) ||
        !IsWithin(app.Rows.GraphicsRow, 9) || !IsWithin(app.Rows.AudioRow, 10)) {
        return "a page's selection is out of range";
    }
    const bool onPages = app.Screen == AppScreen::Options;
    if (app.Capture.CaptureActive != (app.Capture.CaptureDevice != CaptureDevice::None)) {
        return "the capture has no device, or the device no capture";
    }
    if (app.Capture.CaptureActive) {
        if (!onPages || app.OptionsPage != OptionsPage::Controls ||
            !app.ControlsEdit.PendingValid) {
            return "a capture has outlived its page";
        }
        const std::int32_t row =
            app.Capture.CaptureDevice == CaptureDevice::Keyboard  ? app.Capture.CaptureKeyboardRow
            : app.Capture.CaptureDevice == CaptureDevice::Gamepad ? app.Capture.CaptureGamepadRow
                                                                  : app.Capture.CaptureJoystickRow;
        if (static_cast<std::int32_t>(app.Capture.CaptureDevice) !=
                static_cast<std::int32_t>(app.ControlsEdit.PendingDevice) + 1 ||
            !IsWithin(row, ShownRowCount(app.ControlsEdit.PendingDevice))) {
            return "the capture waits for a row that is not there";
        }
    }
    if (onPages && (app.ControlsEdit.PendingValid != (app.OptionsPage == OptionsPage::Controls) ||
                    app.GraphicsEdit.Valid != (app.OptionsPage == OptionsPage::Graphics) ||
                    app.AudioEdit.Valid != (app.OptionsPage == OptionsPage::Audio))) {
        return "an edit is open beside its page";
    }
    for (const std::int32_t volume :
         {app.AudioEdit.MasterVolume, app.AudioEdit.MusicVolume, app.AudioEdit.SfxVolume}) {
        if (!IsWithin(volume, 101)) {
            return "a volume is out of range";
        }
    }
    if (app.Resolutions.empty() ||
        !IsWithin(app.ResolutionIndex, static_cast<std::int32_t>(app.Resolutions.size()))) {
        return "the resolution is not in its list";
    }
    return nullptr;
}

// What the player has applied stays in force until he applies something else, whatever the pages
// show: the live options are that, or, while the Graphics page edits them, its snapshot is.
bool KeepsWhatIsApplied(const GameApp& app, const Applied& applied) {
    const AppliedGraphics graphics =
        app.GraphicsEdit.Valid ? SnapshotOf(app.GraphicsEdit) : LiveGraphics(app);
    return LiveControls(app) == applied.Controls && LiveAudio(app) == applied.Audio &&
           graphics == applied.Graphics;
}

class RandomPresses : public testing::Test {
public:
    RandomPresses(const RandomPresses&) = delete;
    RandomPresses(RandomPresses&&) = delete;
    RandomPresses& operator=(const RandomPresses&) = delete;
    RandomPresses& operator=(RandomPresses&&) = delete;
    ~RandomPresses() override {
        CloseControllers(G.Controllers);
        Pad.reset();
        Stick.reset();
        Canvas.reset();
        Window.reset();
        SDL_Quit();
        ResumeClock();
    }

protected:
    RandomPresses() {
        SDL_Init(SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMEPAD);
        SDL_SetLogPriorities(SDL_LOG_PRIORITY_WARN);
        FreezeClock(Now);
        Window = MakeWindow(1280, 720);
        Canvas.emplace(Testing::CanvasSize{.SurfaceWidth = 320, .SurfaceHeight = 180});
        G.Window = Window.get();
        G.Renderer = Canvas->Renderer();
    }
    // A fresh record on some screen, with the game in a state that belongs to it.
    void Begin(Dice& dice) {
        GameApp& app = G.App;
        app = GameApp{};
        RefreshDisplayModes(app, G.Window);
        app.Screen = AllScreens.at(dice.Roll(AllScreens.size()));
        app.HasSavedRun = app.Screen != AppScreen::GameOver && dice.Roll(2) == 0;
        app.OptionsReturnScreen = dice.Roll(2) == 0 ? AppScreen::MainMenu : AppScreen::Pause;
        app.HelpReturnScreen = app.OptionsReturnScreen;
        CaptureRunSnapshot(app);
        app.LastSavedRevision = GetRevision();
        InForce = AppliedIn(app);
    }

    // A frame that neither the pacing nor SDL draws out.
    void DrawFrame() {
        G.App.VSyncActive = true;
        SDL_SetRenderVSync(G.Renderer, 0);
        RunFrame(G);
    }

    void PlugInOrPullOut(std::optional<VirtualDevice>& device, SDL_JoystickType type) {
        if (device) {
            device.reset();
        } else {
            device.emplace(type);
        }
        Poll();
    }

    void Poll() { PollInput(G.App, G.Controllers, G.Window, G.Renderer); }

    void PressKey(PressCode key) {
        SDL_Event event{};
        event.key.type = SDL_EVENT_KEY_DOWN;
        event.key.scancode = static_cast<SDL_Scancode>(key);
        event.key.down = true;
        DispatchPress(G.App, G.Window, G.Renderer, PressFromEvent(G.App, G.Controllers, event));
    }

    // One press of some device; now and then a device comes or goes instead.
    void Step(Dice& dice) {
        const std::uint32_t what = dice.Roll(400);
        if (what == 0) {
            PlugInOrPullOut(Pad, SDL_JOYSTICK_TYPE_GAMEPAD);
        } else if (what == 1) {
            PlugInOrPullOut(Stick, SDL_JOYSTICK_TYPE_FLIGHT_STICK);
        } else if (what < 40 && Pad) {
            PlayWith(*Pad, dice);
            Poll();
        } else if (what < 80 && Stick) {
            PlayWith(*Stick, dice);
            Poll();
        } else if (what < 100) {
            PressKey(1 + dice.Roll(MaxScancode));
        } else {
            PressKey(LikelyKeys.at(dice.Roll(LikelyKeys.size())));
        }
    }

    // Takes note of a press that has applied a page: exactly what the page held is in force then.
    void NoteApply(OptionsPage page, const GameApp& before) {
        ++Applies.at(static_cast<std::size_t>(page));
        if (page == OptionsPage::Controls) {
            InForce.Controls = PendingOf(before.ControlsEdit);
        } else if (page == OptionsPage::Graphics) {
            InForce.Graphics = LiveGraphics(before);
        } else {
            InForce.Audio = PendingOf(before.AudioEdit);
        }
    }

    void StepAndCheck(Dice& dice) {
        const bool wasDirty = G.App.OptionsDirty;
        G.App.OptionsDirty = false;
        const OptionsPage applies = PageToApply(G.App);
        if (applies == OptionsPage::Root) {
            Step(dice);
        } else {
            const GameApp before = G.App;
            Step(dice);
            if (G.App.OptionsDirty) {
                NoteApply(applies, before);
            }
        }
        G.App.OptionsDirty = G.App.OptionsDirty || wasDirty;
        ++ScreensSeen.at(static_cast<std::size_t>(G.App.Screen));
        CapturesSeen += G.App.Capture.CaptureActive ? 1 : 0;
        ASSERT_TRUE(KeepsWhatIsApplied(G.App, InForce)) << "something is live without Apply";
        const char* const broken = BrokenRule(G.App);
        ASSERT_EQ(broken, nullptr) << broken;
        G.App.SoundQueueCount = 0;
        if (G.App.QuitRequested) {
            G.App.QuitRequested = false;
        }
    }

    // Escape, by the fixed key: a capture, a page and the root page each take one.
    void CheckEscape() {
        constexpr int MostEscapes = 3;
        GameApp& app = G.App;
        AppScreen opener = app.Screen;
        if (app.Screen == AppScreen::Options) {
            opener = app.OptionsReturnScreen;
        } else if (app.Screen == AppScreen::Help) {
            opener = app.HelpReturnScreen;
        } else if (app.Screen == AppScreen::Credits) {
            opener = AppScreen::MainMenu;
        }
        for (int i = 0; i < MostEscapes && app.Screen != opener; ++i) {
            PressKey(Press::Back);
        }
        ASSERT_EQ(app.Screen, opener);
        ASSERT_EQ(AppliedIn(app), InForce) << "what was not applied is dropped";
    }

    static constexpr std::uint64_t Now = 100000;

    Testing::TestHome Home;
    Game G;
    WindowPointer Window;
    std::optional<Testing::SoftwareCanvas> Canvas;
    std::optional<VirtualDevice> Pad;
    std::optional<VirtualDevice> Stick;
    Applied InForce;
    std::array<int, AllScreens.size()> ScreensSeen{};
    std::array<int, 4> Applies{}; // By OptionsPage.
    int CapturesSeen = 0;
};

TEST_F(RandomPresses, KeepTheGameSound) {
    for (std::uint32_t seed = 0; seed < Sequences; ++seed) {
        SCOPED_TRACE("sequence " + std::to_string(seed));
        Dice dice(seed);
        Begin(dice);
        for (int i = 0; i < PressesPerSequence; ++i) {
            StepAndCheck(dice);
            ASSERT_FALSE(HasFatalFailure()) << "after " << i + 1 << " presses";
        }
        if (seed % FrameEvery == 0) {
            DrawFrame();
            ASSERT_TRUE(KeepsWhatIsApplied(G.App, InForce));
        }
        CheckEscape();
        ASSERT_FALSE(HasFatalFailure());
    }
    // Random walks that got nowhere would show nothing.
    for (const int seen : ScreensSeen) {
        EXPECT_GT(seen, 1000);
    }
    for (const OptionsPage page :
         {OptionsPage::Controls, OptionsPage::Graphics, OptionsPage::Audio}) {
        EXPECT_GT(Applies.at(static_cast<std::size_t>(page)), 50);
    }
    EXPECT_GT(CapturesSeen, 1000);
}

} // namespace
} // namespace Wirefall
