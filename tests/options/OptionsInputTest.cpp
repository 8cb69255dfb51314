#include "display/DisplayModes.h"
#include "game/GameApp.h"
#include "options/AudioPage.h"
#include "options/BindingRows.h"
#include "options/ControlsPage.h"
#include "options/GraphicsPage.h"
#include "options/OptionsScreen.h"
#include "support/CapturedOutput.h"
#include "support/SameApp.h"
#include "words/LanguageFiles.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Wirefall {

namespace {

using Testing::QueuedSounds;
using Testing::SameApp;
using Testing::Sounds;

constexpr PressCode KeyX = SDL_SCANCODE_X;
constexpr PressCode KeyDelete = SDL_SCANCODE_DELETE;
constexpr PressCode KeyBackspace = SDL_SCANCODE_BACKSPACE;

const Sounds Move = {SoundEvent::UiMove};
const Sounds Confirm = {SoundEvent::UiConfirm};
const Sounds Back = {SoundEvent::UiBack};
const Sounds None = {};

constexpr std::array<ControlsDevice, 3> AllDevices = {
    ControlsDevice::Keyboard,
    ControlsDevice::Gamepad,
    ControlsDevice::Joystick,
};

constexpr std::array<OptionsPage, 4> AllPages = {
    OptionsPage::Root,
    OptionsPage::Controls,
    OptionsPage::Graphics,
    OptionsPage::Audio,
};

std::int32_t& RowOf(GameApp& app, OptionsPage page) {
    switch (page) {
    case OptionsPage::Controls:
        return app.Rows.ControlsRow;
    case OptionsPage::Graphics:
        return app.Rows.GraphicsRow;
    case OptionsPage::Audio:
        return app.Rows.AudioRow;
    case OptionsPage::Root:
        break;
    }
    return app.Rows.OptionsRootRow;
}

using Change = std::function<void(GameApp& expected)>;

void Nothing(GameApp& /*expected*/) {}

void LeavesThePage(GameApp& expected) { expected.OptionsPage = OptionsPage::Root; }

// No display and no language files: the built-in lists serve.
class OptionsInputTest : public testing::Test {
public:
    OptionsInputTest(const OptionsInputTest&) = delete;
    OptionsInputTest(OptionsInputTest&&) = delete;
    OptionsInputTest& operator=(const OptionsInputTest&) = delete;
    OptionsInputTest& operator=(OptionsInputTest&&) = delete;
    ~OptionsInputTest() override { LocalizationCatalog = {}; }

protected:
    OptionsInputTest() {
        Quietly([this] { LoadLocalization(App); });
        App.Screen = AppScreen::Options;
        App.OptionsReturnScreen = AppScreen::Pause;
        RefreshDisplayModes(App, nullptr);
    }

    // velINI tells on the standard output of files that are not there.
    static void Quietly(const std::function<void()>& run) {
        const Testing::CapturedOutput quiet;
        run();
    }

    Sounds Press(PressCode code) {
        App.SoundQueueCount = 0;
        Quietly([&] { PressOnOptions(App, nullptr, nullptr, code); });
        return QueuedSounds(App);
    }

    // Holds that the press sounds so, changes what `change` says and nothing else.
    void ExpectPress(PressCode code, const Sounds& sounds, const Change& change) {
        SCOPED_TRACE("press " + std::to_string(code));
        GameApp expected = App;
        change(expected);
        Testing::SetQueuedSounds(expected, sounds);
        Press(code);
        EXPECT_TRUE(SameApp(expected, App));
    }

    // Opens a page anew, as the player does, with nothing changed there yet.
    void Open(OptionsPage page, std::int32_t row = 0) {
        App.OptionsPage = OptionsPage::Root;
        if (page != OptionsPage::Root) {
            App.Rows.OptionsRootRow = static_cast<std::int32_t>(page) - 1;
            Press(Press::Confirm);
            ASSERT_EQ(App.OptionsPage, page);
        }
        RowOf(App, page) = row;
    }

    void OpenControls(ControlsDevice device, std::int32_t row) {
        App.ControlsDevice = device;
        Open(OptionsPage::Controls, row);
    }

    void Bind(InputAction action, PressCode code) {
        App.KeyboardBindings.at(ActionIndex(action)) = code;
    }

    GameApp App;
};

// --- What a press means, and its sound

TEST_F(OptionsInputTest, EveryPressHasItsSoundOnEveryPage) {
    Bind(InputAction::CursorLeft, SDL_SCANCODE_A);
    for (const OptionsPage page : AllPages) {
        for (PressCode code = 1; code <= MaxScancode; ++code) {
            const GameApp before = App;
            Open(page);
            const bool moves = (code >= 79 && code <= 82) || code == SDL_SCANCODE_A;
            const bool confirms = code == 40 || code == 88;
            EXPECT_EQ(Press(code), moves        ? Move
                                   : confirms   ? Confirm
                                   : code == 41 ? Back
                                                : None)
                << code;
            App = before;
        }
    }
}

// A key that is bound to a cursor action is that, whatever it is by default.
TEST_F(OptionsInputTest, TheFirstMeaningThatMatchesDecides) {
    Bind(InputAction::CursorDown, Press::Confirm);
    ExpectPress(Press::Confirm, Move, [](GameApp& e) { e.Rows.OptionsRootRow = 1; });
    ExpectPress(Press::KeypadConfirm, Confirm, [](GameApp& e) {
        BeginGraphicsEdit(e, nullptr);
        e.OptionsPage = OptionsPage::Graphics;
    });
    Open(OptionsPage::Root, 2);
    Bind(InputAction::CursorUp, SDL_SCANCODE_W);
    Bind(InputAction::CursorDown, SDL_SCANCODE_W);
    ExpectPress(SDL_SCANCODE_W, Move, [](GameApp& e) { e.Rows.OptionsRootRow = 1; });
}

// One key, bound by hand to several cursor actions, or to keys that mean something of their own.
TEST_F(OptionsInputTest, TheCursorActionsGoInTheirOrderAndBeforeConfirmAndBack) {
    constexpr std::array<InputAction, 4> Actions = {InputAction::CursorUp, InputAction::CursorDown,
                                                    InputAction::CursorLeft,
                                                    InputAction::CursorRight};
    const std::array<Change, Actions.size()> changes = {
        [](GameApp& e) { e.Rows.ControlsRow = 12; },
        [](GameApp& e) { e.Rows.ControlsRow = 1; },
        [](GameApp& e) { e.ControlsEdit.PendingDevice = ControlsDevice::Joystick; },
        [](GameApp& e) { e.ControlsEdit.PendingDevice = ControlsDevice::Gamepad; },
    };
    for (const PressCode code : {KeyX, Press::Confirm, Press::KeypadConfirm, Press::Back}) {
        for (std::size_t first = 0; first < Actions.size(); ++first) {
            SCOPED_TRACE(first);
            const GameApp before = App;
            OpenControls(ControlsDevice::Keyboard, 0);
            for (std::size_t i = first; i < Actions.size(); ++i) {
                Bind(Actions.at(i), code);
            }
            ExpectPress(code, Move, changes.at(first));
            App = before;
        }
    }
}

TEST_F(OptionsInputTest, ANewKeyMovesTheSelectionOnceItIsApplied) {
    OpenControls(ControlsDevice::Keyboard, 8 + 2);
    App.ControlsEdit.PendingKeyboard[ActionIndex(InputAction::CursorUp)] = KeyX;
    ExpectPress(KeyX, None, Nothing);
    Press(Press::Confirm);
    ExpectPress(KeyX, Move, [](GameApp& e) { e.Rows.ControlsRow = 8 + 1; });
}

TEST_F(OptionsInputTest, KeysThatMeanNothingChangeNothing) {
    for (const OptionsPage page : AllPages) {
        Open(page);
        for (const PressCode code : {KeyX, KeyDelete, KeyBackspace, PressCode{44}, PressCode{20}}) {
            ExpectPress(code, None, Nothing);
        }
    }
}

// --- Rows

struct PageRows {
    OptionsPage Page;
    ControlsDevice Device;
    std::int32_t Count;
};

TEST_F(OptionsInputTest, TheSelectionRunsInACircleOnEveryPage) {
    for (const PageRows& rows : std::vector<PageRows>{
             {OptionsPage::Root, ControlsDevice::Keyboard, 4},
             {OptionsPage::Controls, ControlsDevice::Keyboard, 13},
             {OptionsPage::Controls, ControlsDevice::Gamepad, 15},
             {OptionsPage::Controls, ControlsDevice::Joystick, 11},
             {OptionsPage::Graphics, ControlsDevice::Keyboard, 9},
             {OptionsPage::Audio, ControlsDevice::Keyboard, 10},
         }) {
        App.ControlsDevice = rows.Device;
        Bind(InputAction::CursorUp, SDL_SCANCODE_W);
        Bind(InputAction::CursorDown, SDL_SCANCODE_S);
        for (std::int32_t row = 0; row < rows.Count; ++row) {
            for (const PressCode down : {Press::Down, PressCode{SDL_SCANCODE_S}}) {
                Open(rows.Page, row);
                ExpectPress(down, Move, [&](GameApp& e) {
                    RowOf(e, rows.Page) = row + 1 < rows.Count ? row + 1 : 0;
                });
            }
            for (const PressCode up : {Press::Up, PressCode{SDL_SCANCODE_W}}) {
                Open(rows.Page, row);
                ExpectPress(up, Move, [&](GameApp& e) {
                    RowOf(e, rows.Page) = row > 0 ? row - 1 : rows.Count - 1;
                });
            }
        }
    }
}

// --- Root page

TEST_F(OptionsInputTest, EachRowOfTheRootPageLeadsSomewhere) {
    const std::vector<Change> changes = {
        [](GameApp& e) {
            e.OptionsPage = OptionsPage::Controls;
            BeginControlsEdit(e);
        },
        [](GameApp& e) {
            e.OptionsPage = OptionsPage::Graphics;
            BeginGraphicsEdit(e, nullptr);
        },
        [](GameApp& e) {
            e.OptionsPage = OptionsPage::Audio;
            BeginAudioEdit(e);
        },
        [](GameApp& e) { e.Screen = AppScreen::Pause; },
    };
    for (std::int32_t row = 0; row < 4; ++row) {
        for (const PressCode code : {Press::Confirm, Press::KeypadConfirm}) {
            const GameApp before = App;
            Open(OptionsPage::Root, row);
            ExpectPress(code, Confirm, changes.at(static_cast<std::size_t>(row)));
            App = before;
        }
    }
}

TEST_F(OptionsInputTest, BackOnTheRootPageLeavesTheOptions) {
    for (const AppScreen opener : {AppScreen::MainMenu, AppScreen::Pause}) {
        App.Screen = AppScreen::Options;
        App.OptionsReturnScreen = opener;
        ExpectPress(Press::Back, Back, [&](GameApp& e) { e.Screen = opener; });
    }
}

TEST_F(OptionsInputTest, LeftAndRightDoNothingOnTheRootPage) {
    for (const PressCode code : {Press::Left, Press::Right}) {
        ExpectPress(code, Move, Nothing);
    }
}

// --- Controls page

struct DeviceStep {
    ControlsDevice From;
    PressCode Code;
    ControlsDevice To;
};

TEST_F(OptionsInputTest, TheDevicesRunInACircle) {
    for (const DeviceStep& step : std::vector<DeviceStep>{
             {ControlsDevice::Keyboard, Press::Right, ControlsDevice::Gamepad},
             {ControlsDevice::Gamepad, Press::Right, ControlsDevice::Joystick},
             {ControlsDevice::Joystick, Press::Right, ControlsDevice::Keyboard},
             {ControlsDevice::Keyboard, Press::Left, ControlsDevice::Joystick},
             {ControlsDevice::Joystick, Press::Left, ControlsDevice::Gamepad},
             {ControlsDevice::Gamepad, Press::Left, ControlsDevice::Keyboard},
         }) {
        OpenControls(step.From, 0);
        ExpectPress(step.Code, Move, [&](GameApp& e) { e.ControlsEdit.PendingDevice = step.To; });
    }
}

TEST_F(OptionsInputTest, LeftAndRightDoNothingOnTheOtherControlsRows) {
    for (const ControlsDevice device : AllDevices) {
        for (std::int32_t row = 1; row < ShownRowCount(device) + 5; ++row) {
            OpenControls(device, row);
            ExpectPress(Press::Left, Move, Nothing);
            ExpectPress(Press::Right, Move, Nothing);
        }
    }
}

TEST_F(OptionsInputTest, ConfirmDoesNothingOnTheDeviceRow) {
    OpenControls(ControlsDevice::Gamepad, 0);
    ExpectPress(Press::Confirm, Confirm, Nothing);
}

TEST_F(OptionsInputTest, EachBindingRowStartsACapture) {
    for (const ControlsDevice device : AllDevices) {
        for (std::int32_t row = 1; row <= ShownRowCount(device); ++row) {
            OpenControls(device, row);
            ExpectPress(Press::Confirm, Confirm, [&](GameApp& e) {
                e.Capture.CaptureActive = true;
                switch (device) {
                case ControlsDevice::Keyboard:
                    e.Capture.CaptureDevice = CaptureDevice::Keyboard;
                    e.Capture.CaptureKeyboardRow = row - 1;
                    break;
                case ControlsDevice::Gamepad:
                    e.Capture.CaptureDevice = CaptureDevice::Gamepad;
                    e.Capture.CaptureGamepadRow = row - 1;
                    break;
                case ControlsDevice::Joystick:
                    e.Capture.CaptureDevice = CaptureDevice::Joystick;
                    e.Capture.CaptureJoystickRow = row - 1;
                    break;
                }
            });
            Press(Press::Back);
        }
    }
}

void ChangeControls(GameApp& app) {
    app.ControlsEdit.PendingKeyboard[0] = 100;
    app.ControlsEdit.PendingGamepad[1] = 20;
    app.ControlsEdit.PendingJoystick[2] = 30;
}

// The four rows behind the bindings, on each device, with and without a change before.
TEST_F(OptionsInputTest, TheLastRowsOfTheControlsPage) {
    for (const ControlsDevice device : AllDevices) {
        for (const bool changed : {false, true}) {
            const std::vector<Change> changes = {
                [](GameApp& e) {
                    e.ControlsEdit = PendingControls{.PendingValid = true}; // factory settings
                },
                [&](GameApp& e) {
                    if (changed) {
                        ChangeControls(e);
                        e.KeyboardBindings = e.ControlsEdit.PendingKeyboard;
                        e.GamepadBindings = e.ControlsEdit.PendingGamepad;
                        e.JoystickBindings = e.ControlsEdit.PendingJoystick;
                        e.OptionsDirty = true;
                    }
                },
                [](GameApp& e) { BeginControlsEdit(e); },
                [](GameApp& e) {
                    BeginControlsEdit(e);
                    e.ControlsEdit.PendingValid = false;
                    LeavesThePage(e);
                },
            };
            for (std::int32_t i = 0; i < 4; ++i) {
                SCOPED_TRACE(i);
                const GameApp before = App;
                Bind(InputAction::Place, KeyX);
                OpenControls(device, ShownRowCount(device) + 1 + i);
                if (changed) {
                    ChangeControls(App);
                }
                ExpectPress(Press::Confirm, Confirm, changes.at(static_cast<std::size_t>(i)));
                App = before;
            }
        }
    }
}

TEST_F(OptionsInputTest, ApplyingADeviceKeepsIt) {
    OpenControls(ControlsDevice::Keyboard, 0);
    Press(Press::Left);
    App.Rows.ControlsRow = 6 + 2;
    ExpectPress(Press::Confirm, Confirm, [](GameApp& e) {
        e.ControlsDevice = ControlsDevice::Joystick;
        e.OptionsDirty = true;
    });
}

TEST_F(OptionsInputTest, LeavingTheControlsPageDropsTheChangesWithoutAQuestion) {
    OpenControls(ControlsDevice::Keyboard, 3);
    ChangeControls(App);
    ExpectPress(Press::Back, Back, [](GameApp& e) {
        BeginControlsEdit(e);
        e.ControlsEdit.PendingValid = false;
        LeavesThePage(e);
    });
    EXPECT_EQ(App.KeyboardBindings, FactoryBindings::Keyboard);
}

TEST_F(OptionsInputTest, ADeviceWithFewerRowsKeepsTheSelectionOnBack) {
    OpenControls(ControlsDevice::Gamepad, 13);
    App.ControlsEdit.PendingDevice = ControlsDevice::Joystick;
    ExpectPress(KeyX, None, [](GameApp& e) { e.Rows.ControlsRow = 10; });
    OpenControls(ControlsDevice::Gamepad, 13);
    App.ControlsEdit.PendingDevice = ControlsDevice::Joystick;
    ExpectPress(Press::Up, Move, [](GameApp& e) { e.Rows.ControlsRow = 9; });
    OpenControls(ControlsDevice::Gamepad, 14);
    App.ControlsEdit.PendingDevice = ControlsDevice::Keyboard;
    Press(Press::Confirm);
    EXPECT_EQ(App.OptionsPage, OptionsPage::Root) << "it was Back";
}

// Reverting can change the device below a selection that is far down.
TEST_F(OptionsInputTest, TheSelectionIsClampedByTheNextPressOnly) {
    App.ControlsDevice = ControlsDevice::Joystick;
    Open(OptionsPage::Controls);
    Press(Press::Left); // to the gamepad
    App.Rows.ControlsRow = 13;
    ExpectPress(Press::Confirm, Confirm, [](GameApp& e) { BeginControlsEdit(e); });
    EXPECT_EQ(App.Rows.ControlsRow, 13);
    ExpectPress(Press::Down, Move, [](GameApp& e) { e.Rows.ControlsRow = 0; });
}

TEST_F(OptionsInputTest, APageWithoutItsEditBeginsOne) {
    App.OptionsPage = OptionsPage::Controls;
    ExpectPress(KeyX, None, [](GameApp& e) { BeginControlsEdit(e); });
    App.OptionsPage = OptionsPage::Graphics;
    ExpectPress(KeyX, None, [](GameApp& e) { BeginGraphicsEdit(e, nullptr); });
    App.OptionsPage = OptionsPage::Audio;
    ExpectPress(KeyX, None, [](GameApp& e) { BeginAudioEdit(e); });
}

TEST_F(OptionsInputTest, PagesReopenOnTheRowLastUsed) {
    for (const OptionsPage page :
         {OptionsPage::Controls, OptionsPage::Graphics, OptionsPage::Audio}) {
        Open(page, 5);
        Press(Press::Back);
        EXPECT_EQ(App.Rows.OptionsRootRow, static_cast<std::int32_t>(page) - 1);
        Press(Press::Confirm);
        EXPECT_EQ(RowOf(App, page), 5);
    }
}

// --- Capture

struct CaptureCase {
    ControlsDevice Device;
    std::int32_t Row;
    Change Clear;
};

const std::vector<CaptureCase>& CaptureCases() {
    static const std::vector<CaptureCase> cases = {
        {ControlsDevice::Keyboard, 6, [](GameApp& e) { e.ControlsEdit.PendingKeyboard[6] = 0; }},
        {ControlsDevice::Gamepad, 9, [](GameApp& e) { e.ControlsEdit.PendingGamepad[9] = -1; }},
        {ControlsDevice::Joystick, 0, [](GameApp& e) { e.ControlsEdit.PendingJoystick[4] = -1; }},
    };
    return cases;
}

class CaptureTest : public OptionsInputTest {
protected:
    void StartCapture(const CaptureCase& c) {
        OpenControls(c.Device, c.Row + 1);
        Press(Press::Confirm);
        ASSERT_TRUE(App.Capture.CaptureActive);
    }
};

TEST_F(CaptureTest, EscapeCancelsAndASecondOneLeavesThePage) {
    for (const CaptureCase& c : CaptureCases()) {
        StartCapture(c);
        ExpectPress(Press::Back, Back, [](GameApp& e) { EndCapture(e.Capture); });
        EXPECT_EQ(App.Rows.ControlsRow, c.Row + 1);
        ExpectPress(Press::Back, Back, [](GameApp& e) {
            e.ControlsEdit.PendingValid = false;
            LeavesThePage(e);
        });
    }
}

TEST_F(CaptureTest, EscapeCancelsEvenWhenItIsBound) {
    Bind(InputAction::CursorUp, Press::Back);
    for (const CaptureCase& c : CaptureCases()) {
        StartCapture(c);
        ExpectPress(Press::Back, Move, [](GameApp& e) { EndCapture(e.Capture); });
    }
}

TEST_F(CaptureTest, DeleteAndBackspaceClearTheRow) {
    for (const CaptureCase& c : CaptureCases()) {
        for (const PressCode code : {KeyDelete, KeyBackspace}) {
            StartCapture(c);
            ExpectPress(code, Confirm, [&](GameApp& e) {
                c.Clear(e);
                EndCapture(e.Capture);
            });
        }
    }
}

TEST_F(CaptureTest, ClearingSoundsInAdditionToWhatTheKeyMeans) {
    Bind(InputAction::CursorUp, KeyDelete);
    StartCapture(CaptureCases().front());
    EXPECT_EQ(Press(KeyDelete), (Sounds{SoundEvent::UiMove, SoundEvent::UiConfirm}));
}

TEST_F(CaptureTest, AnyOtherKeyIsBound) {
    for (PressCode code = 1; code <= MaxScancode; ++code) {
        if (code == Press::Back || code == KeyDelete || code == KeyBackspace) {
            continue;
        }
        StartCapture(CaptureCases().front());
        const bool moves = code >= 79 && code <= 82;
        const bool confirms = code == 40 || code == 88;
        ExpectPress(code,
                    moves      ? Move
                    : confirms ? Confirm
                               : None,
                    [&](GameApp& e) {
                        e.ControlsEdit.PendingKeyboard[6] = code;
                        EndCapture(e.Capture);
                    });
    }
    EXPECT_EQ(App.KeyboardBindings, FactoryBindings::Keyboard) << "not before Apply";
}

TEST_F(CaptureTest, KeysAreNotBoundWhileAButtonIsWaitedFor) {
    for (const CaptureCase& c : CaptureCases()) {
        if (c.Device == ControlsDevice::Keyboard) {
            continue;
        }
        StartCapture(c);
        ExpectPress(KeyX, None, Nothing);
        ExpectPress(Press::Up, Move, Nothing);
        ExpectPress(Press::Confirm, Confirm, Nothing);
        EXPECT_TRUE(App.Capture.CaptureActive);
        Press(Press::Back);
    }
}

TEST_F(CaptureTest, OneKeyCanBeBoundTwice) {
    for (const std::int32_t row : {0, 4, 7}) {
        StartCapture({ControlsDevice::Keyboard, row, Nothing});
        Press(KeyX);
        App.Rows.ControlsRow = 8 + 2;
        Press(Press::Confirm);
    }
    EXPECT_EQ(App.KeyboardBindings, (KeyboardTable{KeyX, 81, 80, 79, KeyX, 8, 40, KeyX}));
    EXPECT_TRUE(App.OptionsDirty);
}

// --- Graphics page

TEST_F(OptionsInputTest, LeftAndRightAdjustTheGraphicsRows) {
    for (std::int32_t row = 0; row < 9; ++row) {
        for (const std::int32_t direction : {-1, 1}) {
            const GameApp before = App;
            Open(OptionsPage::Graphics, row);
            ExpectPress(direction < 0 ? Press::Left : Press::Right, Move,
                        [&](GameApp& e) { AdjustGraphicsRow(e, nullptr, direction); });
            App = before;
        }
    }
}

void ChangeGraphics(GameApp& app) {
    app.ResolutionIndex = 3;
    app.VSync = false;
}

TEST_F(OptionsInputTest, EachRowOfTheGraphicsPage) {
    for (const bool changed : {false, true}) {
        const std::vector<Change> changes = {
            Nothing,
            Nothing,
            Nothing,
            [](GameApp& e) { AdjustGraphicsRow(e, nullptr, 1); },
            [](GameApp& e) { AdjustGraphicsRow(e, nullptr, 1); },
            [](GameApp& e) { ResetGraphicsEdit(e, nullptr); },
            [&](GameApp& e) {
                e.OptionsDirty = changed;
                BeginGraphicsEdit(e, nullptr);
            },
            [](GameApp& e) { RevertGraphicsEdit(e, nullptr); },
            [](GameApp& e) {
                RevertGraphicsEdit(e, nullptr);
                e.GraphicsEdit.Valid = false;
                LeavesThePage(e);
            },
        };
        for (std::int32_t row = 0; row < 9; ++row) {
            SCOPED_TRACE(row);
            const GameApp before = App;
            Open(OptionsPage::Graphics, row);
            if (changed) {
                ChangeGraphics(App);
            }
            ExpectPress(Press::Confirm, Confirm, changes.at(static_cast<std::size_t>(row)));
            App = before;
        }
    }
}

TEST_F(OptionsInputTest, LeavingTheGraphicsPageDropsTheChangesWithoutAQuestion) {
    const GameApp before = App;
    Open(OptionsPage::Graphics, 2);
    ChangeGraphics(App);
    ExpectPress(Press::Back, Back, [&](GameApp& e) {
        e.ResolutionIndex = before.ResolutionIndex;
        e.VSync = before.VSync;
        e.GraphicsEdit.Valid = false;
        LeavesThePage(e);
    });
}

// --- Audio page

TEST_F(OptionsInputTest, LeftAndRightAdjustTheAudioRows) {
    for (std::int32_t row = 0; row < 10; ++row) {
        for (const std::int32_t direction : {-1, 1}) {
            Open(OptionsPage::Audio, row);
            ExpectPress(direction < 0 ? Press::Left : Press::Right, Move,
                        [&](GameApp& e) { AdjustAudioRow(e, direction); });
        }
    }
}

void ChangeAudio(GameApp& app) {
    app.AudioEdit.MusicVolume = 10;
    app.AudioEdit.SfxEnabled = false;
    app.AudioEdit.Language = "de";
}

TEST_F(OptionsInputTest, EachRowOfTheAudioPage) {
    for (const bool changed : {false, true}) {
        const std::vector<Change> changes = {
            Nothing,
            Nothing,
            Nothing,
            [](GameApp& e) { e.AudioEdit.MusicEnabled = !e.AudioEdit.MusicEnabled; },
            [](GameApp& e) { e.AudioEdit.SfxEnabled = !e.AudioEdit.SfxEnabled; },
            [](GameApp& e) { CycleLanguage(e.AudioEdit.Language, 1); },
            [](GameApp& e) { ResetAudioEdit(e); },
            [&](GameApp& e) {
                if (changed) {
                    e.MusicVolume = 10;
                    e.SfxEnabled = false;
                    e.Language = "de";
                    e.OptionsDirty = true;
                }
            },
            [](GameApp& e) { BeginAudioEdit(e); },
            [](GameApp& e) {
                BeginAudioEdit(e);
                e.AudioEdit.Valid = false;
                LeavesThePage(e);
            },
        };
        for (std::int32_t row = 0; row < 10; ++row) {
            SCOPED_TRACE(row);
            const GameApp before = App;
            Open(OptionsPage::Audio, row);
            if (changed) {
                ChangeAudio(App);
            }
            ExpectPress(Press::Confirm, Confirm, changes.at(static_cast<std::size_t>(row)));
            App = before;
        }
    }
}

TEST_F(OptionsInputTest, LeavingTheAudioPageDropsTheChangesWithoutAQuestion) {
    Open(OptionsPage::Audio, 5);
    ChangeAudio(App);
    ExpectPress(Press::Back, Back, [](GameApp& e) {
        BeginAudioEdit(e);
        e.AudioEdit.Valid = false;
        LeavesThePage(e);
    });
    EXPECT_EQ(App.Language, "en");
    EXPECT_EQ(App.MusicVolume, 50);
}

TEST_F(OptionsInputTest, RevertingALanguageLeavesTheOldOne) {
    Open(OptionsPage::Audio, 5);
    Press(Press::Right);
    EXPECT_EQ(App.AudioEdit.Language, "de");
    App.Rows.AudioRow = 8;
    Press(Press::Confirm);
    App.Rows.AudioRow = 7;
    Press(Press::Confirm);
    EXPECT_EQ(App.Language, "en");
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "en");
    EXPECT_FALSE(App.OptionsDirty);
}

} // namespace

} // namespace Wirefall
