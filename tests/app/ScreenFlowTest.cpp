#include "game/ScreenFlow.h"

#include "app/Screens.h"
#include "base/Clock.h"
#include "game/GameApp.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"
#include "support/SameApp.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Wirefall {
namespace {

using Testing::QueuedSounds;
using Testing::SameApp;
using Testing::Sounds;

constexpr PressCode KeyW = SDL_SCANCODE_W;
constexpr PressCode KeyS = SDL_SCANCODE_S;
constexpr PressCode KeyA = SDL_SCANCODE_A;
constexpr PressCode KeyD = SDL_SCANCODE_D;
constexpr PressCode KeySpace = SDL_SCANCODE_SPACE;

const Sounds Move = {SoundEvent::UiMove};
const Sounds Confirm = {SoundEvent::UiConfirm};
const Sounds Back = {SoundEvent::UiBack};
const Sounds None = {};

constexpr std::array<PressCode, 2> ConfirmKeys = {Press::Confirm, Press::KeypadConfirm};

constexpr std::uint64_t Now = 5000;

// What a press changes. Asked after the press, with the record as it was before.
using Change = std::function<void(GameApp& expected)>;

void Nothing(GameApp& /*expected*/) {}

// What all ways into play have in common.
void Plays(GameApp& expected) {
    expected.Screen = AppScreen::Playing;
    expected.ResetFrameClock = true;
}

void TakesTheRunAsSaved(GameApp& expected) { expected.LastSavedRevision = GetRevision(); }

void TakesASnapshot(GameApp& expected) {
    expected.PreviousSnapshot = BuildRunSnapshot();
    expected.PreviousSnapshotValid = true;
}

void Quits(GameApp& expected) {
    expected.QuitRequested = true;
    expected.FadeOutStartTicks = Now;
    expected.ResetFrameClock = true;
}

// Whatever was under way on the Options screen is forgotten; the rows are kept.
void OpensTheOptions(GameApp& expected, AppScreen from) {
    expected.Screen = AppScreen::Options;
    expected.OptionsReturnScreen = from;
    expected.OptionsPage = OptionsPage::Root;
    expected.Capture.CaptureActive = false;
    expected.Capture.CaptureDevice = CaptureDevice::None;
    expected.ControlsEdit.PendingValid = false;
    expected.GraphicsEdit.Valid = false;
    expected.AudioEdit.Valid = false;
}

void OpensTheHelp(GameApp& expected, AppScreen from) {
    expected.Screen = AppScreen::Help;
    expected.HelpReturnScreen = from;
}

class Screens : public testing::Test {
protected:
    void SetUp() override {
        FreezeClock(Now);
        Begin(AppScreen::MainMenu);
    }
    void TearDown() override { ResumeClock(); }

    // A record in which every field that a transition may set has another value before.
    void Begin(AppScreen screen) {
        Testing::InstallLiveRun(Testing::DrawnRun({"→────────⇐"}));
        App = GameApp{};
        App.Screen = screen;
        App.MenuSelection = 3;
        App.PauseSelection = 2;
        App.OptionsReturnScreen = AppScreen::Credits;
        App.HelpReturnScreen = AppScreen::Credits;
        App.CreditsScroll = 50.0F;
        App.OptionsPage = OptionsPage::Audio;
        App.Rows = {.OptionsRootRow = 1, .ControlsRow = 2, .GraphicsRow = 3, .AudioRow = 4};
        App.Capture = {.CaptureActive = true,
                       .CaptureDevice = CaptureDevice::Gamepad,
                       .CaptureKeyboardRow = 1,
                       .CaptureGamepadRow = 2,
                       .CaptureJoystickRow = 3};
        App.ControlsEdit.PendingValid = true;
        App.GraphicsEdit.Valid = true;
        App.AudioEdit.Valid = true;
        App.SaveDelaySeconds = 0.5F;
    }

    // Presses on the current screen, and gives the sounds that come of it.
    Sounds Press(PressCode code) {
        App.SoundQueueCount = 0;
        DispatchPress(App, nullptr, nullptr, code);
        return QueuedSounds(App);
    }

    // Holds that the press sounds so and changes what `change` says, and nothing else.
    void ExpectPress(PressCode code, const Sounds& sounds, const Change& change) {
        SCOPED_TRACE("press " + std::to_string(code));
        GameApp expected = App;
        Press(code);
        change(expected);
        Testing::SetQueuedSounds(expected, sounds);
        EXPECT_TRUE(SameApp(expected, App));
    }

    // The same, and the run stays as it is.
    void ExpectPressBesideTheRun(PressCode code, const Sounds& sounds, const Change& change) {
        const RunState run = LiveRun();
        const std::uint64_t revision = GetRevision();
        ExpectPress(code, sounds, change);
        EXPECT_EQ(LiveRun(), run);
        EXPECT_EQ(GetRevision(), revision);
    }

    std::filesystem::path SavePath() const {
        return Home.Folder() / "Velkor" / "Wirefall" / "SaveState.bin";
    }

    void Bind(InputAction action, std::uint32_t scancode) {
        App.KeyboardBindings.at(ActionIndex(action)) = scancode;
    }

    // Level complete saves.
    Testing::TestHome Home;
    GameApp App;
};

// --- Every screen

constexpr std::array<AppScreen, 8> AllScreens = {
    AppScreen::MainMenu,      AppScreen::Options, AppScreen::Help,    AppScreen::Playing,
    AppScreen::LevelComplete, AppScreen::Pause,   AppScreen::Credits, AppScreen::GameOver,
};

TEST_F(Screens, IgnoreEverythingDuringTheQuitFade) {
    for (const AppScreen screen : AllScreens) {
        Begin(screen);
        App.QuitRequested = true;
        for (PressCode code = 0; code < 600; ++code) {
            ExpectPressBesideTheRun(code, None, Nothing);
        }
    }
}

TEST_F(Screens, IgnoreCodesThatAreNoKeys) {
    for (const AppScreen screen : AllScreens) {
        Begin(screen);
        App.KeyboardBindings = {0, 512, 600, 0xffffffffU, 0, 512, 0, 512};
        for (const PressCode code : {0U, 512U, 600U, 0xffffffffU}) {
            ExpectPressBesideTheRun(code, None, Nothing);
        }
    }
    Begin(AppScreen::Playing);
    Bind(InputAction::CursorUp, 511);
    EXPECT_EQ(Press(511), Sounds{SoundEvent::CursorMove});
}

// On every screen, the keys that its table does not name. The Options have tables of their own.
TEST_F(Screens, AllOtherKeysDoNothing) {
    constexpr std::uint32_t Free = SDL_SCANCODE_F12;
    for (const AppScreen screen : AllScreens) {
        if (screen == AppScreen::Options) {
            continue;
        }
        const bool playing = screen == AppScreen::Playing;
        const bool menu = screen == AppScreen::MainMenu || screen == AppScreen::Pause;
        for (PressCode code = 1; code <= MaxScancode; ++code) {
            const bool upOrDown = code == Press::Up || code == Press::Down;
            const bool inPlay = upOrDown || code == Press::Left || code == Press::Right ||
                                code == Press::RotateLeft || code == Press::RotateRight;
            const bool menuKey = code == Press::Confirm || code == Press::KeypadConfirm;
            if (code == Press::Back || (playing && inPlay) || (menu && upOrDown) ||
                (!playing && menuKey)) {
                continue;
            }
            Begin(screen);
            Bind(InputAction::Place, Free);
            if (code != Free || !playing) {
                ExpectPressBesideTheRun(code, None, Nothing);
            }
        }
    }
}

// --- Main menu

TEST_F(Screens, TheMainMenuSelectionRunsInACircle) {
    for (const bool hasSavedRun : {false, true}) {
        const std::int32_t rows = hasSavedRun ? 6 : 5;
        for (std::int32_t row = 0; row < rows; ++row) {
            for (const bool bound : {false, true}) {
                Begin(AppScreen::MainMenu);
                App.HasSavedRun = hasSavedRun;
                App.MenuSelection = row;
                Bind(InputAction::CursorUp, KeyW);
                Bind(InputAction::CursorDown, KeyS);
                ExpectPressBesideTheRun(bound ? KeyS : Press::Down, Move, [&](GameApp& e) {
                    e.MenuSelection = row + 1 < rows ? row + 1 : 0;
                });
                App.MenuSelection = row;
                ExpectPressBesideTheRun(bound ? KeyW : Press::Up, Move, [&](GameApp& e) {
                    e.MenuSelection = row > 0 ? row - 1 : rows - 1;
                });
            }
        }
    }
}

// The row that is gone with the saved run counts as the first, whatever is pressed.
TEST_F(Screens, TheMainMenuResetsALostRow) {
    struct LostRow {
        PressCode Code;
        Sounds Sound;
        std::int32_t After;
    };
    for (const LostRow& c : std::vector<LostRow>{
             {Press::Down, Move, 1},
             {Press::Up, Move, 4},
             {KeySpace, None, 0},
         }) {
        Begin(AppScreen::MainMenu);
        App.MenuSelection = 5;
        ExpectPressBesideTheRun(c.Code, c.Sound, [&](GameApp& e) { e.MenuSelection = c.After; });
    }
    Begin(AppScreen::MainMenu);
    App.HasSavedRun = true;
    App.MenuSelection = 6;
    ExpectPressBesideTheRun(KeySpace, None, [](GameApp& e) { e.MenuSelection = 0; });
}

struct Row {
    const char* Name;
    Change Does;
};

TEST_F(Screens, EachRowOfTheMainMenuLeadsSomewhere) {
    const std::vector<Row> rows = {
        {"continue",
         [](GameApp& e) {
             Plays(e);
             TakesTheRunAsSaved(e);
         }},
        {"new game",
         [](GameApp& e) {
             Plays(e);
             TakesASnapshot(e);
             TakesTheRunAsSaved(e);
             e.HasSavedRun = true;
             e.SaveDirty = true;
             e.SaveDelaySeconds = 0.0F;
         }},
        {"options", [](GameApp& e) { OpensTheOptions(e, AppScreen::MainMenu); }},
        {"help", [](GameApp& e) { OpensTheHelp(e, AppScreen::MainMenu); }},
        {"credits",
         [](GameApp& e) {
             e.Screen = AppScreen::Credits;
             e.CreditsScroll = 0.0F;
         }},
        {"quit", Quits},
    };
    for (const bool hasSavedRun : {true, false}) {
        const std::size_t first = hasSavedRun ? 0 : 1;
        for (std::size_t row = first; row < rows.size(); ++row) {
            for (const PressCode confirm : ConfirmKeys) {
                SCOPED_TRACE(rows[row].Name);
                Begin(AppScreen::MainMenu);
                App.HasSavedRun = hasSavedRun;
                App.MenuSelection = static_cast<std::int32_t>(row - first);
                const RunState run = LiveRun();
                ExpectPress(confirm, Confirm, rows[row].Does);
                if (row == 1) {
                    EXPECT_EQ(LiveRun().Sources.front().X, 9) << "the known first board";
                } else {
                    EXPECT_EQ(LiveRun(), run);
                }
            }
        }
    }
}

TEST_F(Screens, BackOnTheMainMenuQuits) {
    ExpectPressBesideTheRun(Press::Back, Back, Quits);
    EXPECT_TRUE(App.Running) << "the fade comes first";
}

TEST_F(Screens, AskingToQuitTwiceDoesNotRestartTheFade) {
    RequestQuit(App);
    App.ResetFrameClock = false;
    FreezeClock(Now + 100);
    RequestQuit(App);
    EXPECT_EQ(App.FadeOutStartTicks, Now);
    EXPECT_FALSE(App.ResetFrameClock);
}

// --- Playing

struct PlayCase {
    const char* What;
    PressCode Code;
    SoundEvent Sound;
    std::int32_t X;
    std::int32_t Y;
    std::int32_t Rotation;
    bool Places;
};

TEST_F(Screens, EachKeyOfPlayDoesItsCommand) {
    const std::vector<PlayCase> cases = {
        {"up", Press::Up, SoundEvent::CursorMove, 5, 4, 0, false},
        {"down", Press::Down, SoundEvent::CursorMove, 5, 6, 0, false},
        {"left", Press::Left, SoundEvent::CursorMove, 4, 5, 0, false},
        {"right", Press::Right, SoundEvent::CursorMove, 6, 5, 0, false},
        {"rotate left", Press::RotateLeft, SoundEvent::Rotate, 5, 5, 3, false},
        {"rotate right", Press::RotateRight, SoundEvent::Rotate, 5, 5, 1, false},
        {"place", Press::Confirm, SoundEvent::Place, 5, 5, 0, true},
        {"bound up", KeyW, SoundEvent::CursorMove, 5, 4, 0, false},
        {"bound down", KeyS, SoundEvent::CursorMove, 5, 6, 0, false},
        {"bound left", KeyA, SoundEvent::CursorMove, 4, 5, 0, false},
        {"bound right", KeyD, SoundEvent::CursorMove, 6, 5, 0, false},
        {"bound rotate left", SDL_SCANCODE_Z, SoundEvent::Rotate, 5, 5, 3, false},
        {"bound rotate right", SDL_SCANCODE_X, SoundEvent::Rotate, 5, 5, 1, false},
        {"bound place", KeySpace, SoundEvent::Place, 5, 5, 0, true},
    };
    for (const PlayCase& c : cases) {
        SCOPED_TRACE(c.What);
        Begin(AppScreen::Playing);
        if (std::string_view(c.What).starts_with("bound")) {
            App.KeyboardBindings = {KeyW,           KeyS,           KeyA,     KeyD,
                                    SDL_SCANCODE_Z, SDL_SCANCODE_X, KeySpace, 225};
        }
        ExpectPress(c.Code, {c.Sound}, Nothing);
        EXPECT_EQ(LiveRun().CursorX, c.X);
        EXPECT_EQ(LiveRun().CursorY, c.Y);
        EXPECT_EQ(LiveRun().PreviewRotation, c.Rotation);
        EXPECT_EQ(TileAt(LiveRun(), 5, 5).Type, c.Places ? TileType::Straight : TileType::Empty);
    }
}

TEST_F(Screens, ReturnPlacesOnlyWhileItIsBoundToIt) {
    Begin(AppScreen::Playing);
    Bind(InputAction::Place, KeySpace);
    ExpectPressBesideTheRun(Press::Confirm, None, Nothing);
    ExpectPress(KeySpace, {SoundEvent::Place}, Nothing);
}

TEST_F(Screens, ARefusedCommandStillSounds) {
    Begin(AppScreen::Playing);
    LiveRun().CursorX = 0;
    LiveRun().CursorY = 0;
    ExpectPressBesideTheRun(Press::Left, {SoundEvent::CursorMove}, Nothing);
    ExpectPressBesideTheRun(Press::Confirm, {SoundEvent::Place}, Nothing); // on the source
}

TEST_F(Screens, OfTwoActionsOnOneKeyTheFirstWins) {
    const std::array<SoundEvent, 7> sounds = {
        SoundEvent::CursorMove, SoundEvent::CursorMove, SoundEvent::CursorMove,
        SoundEvent::CursorMove, SoundEvent::Rotate,     SoundEvent::Rotate,
        SoundEvent::Place,
    };
    // All actions from one on.
    for (std::size_t first = 0; first < sounds.size(); ++first) {
        Begin(AppScreen::Playing);
        std::fill(App.KeyboardBindings.begin() + static_cast<std::ptrdiff_t>(first),
                  App.KeyboardBindings.end(), KeySpace);
        ExpectPress(KeySpace, {sounds.at(first)}, Nothing);
    }
}

TEST_F(Screens, EscapePausesEvenWhenItIsBound) {
    for (const InputAction action : {InputAction::CursorUp, InputAction::Place}) {
        Begin(AppScreen::Playing);
        Bind(action, Press::Back);
        ExpectPressBesideTheRun(Press::Back, Back, [](GameApp& e) {
            e.Screen = AppScreen::Pause;
            e.PauseSelection = 0;
            e.ResetFrameClock = true;
        });
    }
}

// --- Pause

TEST_F(Screens, ThePauseSelectionRunsInACircle) {
    for (std::int32_t row = 0; row < 4; ++row) {
        for (const bool bound : {false, true}) {
            Begin(AppScreen::Pause);
            App.PauseSelection = row;
            Bind(InputAction::CursorUp, KeyW);
            Bind(InputAction::CursorDown, KeyS);
            ExpectPressBesideTheRun(bound ? KeyS : Press::Down, Move,
                                    [&](GameApp& e) { e.PauseSelection = (row + 1) % 4; });
            App.PauseSelection = row;
            ExpectPressBesideTheRun(bound ? KeyW : Press::Up, Move,
                                    [&](GameApp& e) { e.PauseSelection = (row + 3) % 4; });
        }
    }
}

TEST_F(Screens, EachRowOfThePauseMenuLeadsSomewhere) {
    const std::vector<Row> rows = {
        {"resume", [](GameApp& e) { e.Screen = AppScreen::Playing; }},
        {"options", [](GameApp& e) { OpensTheOptions(e, AppScreen::Pause); }},
        {"help", [](GameApp& e) { OpensTheHelp(e, AppScreen::Pause); }},
        {"main menu",
         [](GameApp& e) {
             e.Screen = AppScreen::MainMenu;
             e.MenuSelection = 0;
         }},
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        SCOPED_TRACE(rows[row].Name);
        for (const PressCode confirm : ConfirmKeys) {
            Begin(AppScreen::Pause);
            App.HasSavedRun = true; // so the run can be gone on with from the menu
            App.PauseSelection = static_cast<std::int32_t>(row);
            ExpectPressBesideTheRun(confirm, Confirm, rows[row].Does);
        }
        Begin(AppScreen::Pause);
        App.PauseSelection = static_cast<std::int32_t>(row);
        ExpectPressBesideTheRun(Press::Back, Back,
                                [](GameApp& e) { e.Screen = AppScreen::Playing; });
    }
}

// --- Help, credits, results

TEST_F(Screens, HelpGoesBackToWhereItWasOpenedFrom) {
    for (const AppScreen opener : {AppScreen::MainMenu, AppScreen::Pause}) {
        for (const PressCode code : {Press::Confirm, Press::KeypadConfirm, Press::Back}) {
            Begin(AppScreen::Help);
            App.HelpReturnScreen = opener;
            ExpectPressBesideTheRun(code, Back, [&](GameApp& e) { e.Screen = opener; });
        }
    }
}

TEST_F(Screens, CreditsGoBackToTheirRowOfTheMenu) {
    for (const PressCode code : {Press::Confirm, Press::KeypadConfirm, Press::Back}) {
        Begin(AppScreen::Credits);
        ExpectPressBesideTheRun(code, Back, [](GameApp& e) { e.Screen = AppScreen::MainMenu; });
    }
}

TEST_F(Screens, LeavingLevelCompleteStartsTheNextLevel) {
    for (const auto& [code, sounds] : std::vector<std::pair<PressCode, Sounds>>{
             {Press::Confirm, Confirm}, {Press::KeypadConfirm, Confirm}, {Press::Back, Back}}) {
        Begin(AppScreen::LevelComplete);
        LiveRun().DeliveredPackets = 20;
        // No save is asked for: the first tick of the new level sees to that.
        ExpectPress(code, sounds, [](GameApp& e) {
            Plays(e);
            TakesASnapshot(e);
            TakesTheRunAsSaved(e);
            e.HasSavedRun = true;
        });
        EXPECT_EQ(LiveRun().Level, 2);
        EXPECT_EQ(LiveRun().TotalScore, 100);
    }
}

TEST_F(Screens, LeavingGameOverGoesToTheTopOfTheMenu) {
    for (const auto& [code, sounds] : std::vector<std::pair<PressCode, Sounds>>{
             {Press::Confirm, Confirm}, {Press::KeypadConfirm, Confirm}, {Press::Back, Back}}) {
        Begin(AppScreen::GameOver);
        ExpectPressBesideTheRun(code, sounds, [](GameApp& e) {
            e.Screen = AppScreen::MainMenu;
            e.MenuSelection = 0;
        });
    }
}

// --- Options

// The pages have tests of their own; here the way in, through each of them, and out again.
TEST_F(Screens, TheOptionsGoBackToWhereTheyWereOpenedFrom) {
    for (const AppScreen opener : {AppScreen::MainMenu, AppScreen::Pause}) {
        for (std::int32_t page = 1; page <= 3; ++page) {
            Begin(opener);
            App.MenuSelection = 1;
            App.PauseSelection = 1;
            EXPECT_EQ(Press(Press::Confirm), Confirm);
            App.Rows.OptionsRootRow = page - 1;
            EXPECT_EQ(Press(Press::Confirm), Confirm);
            EXPECT_EQ(App.OptionsPage, static_cast<OptionsPage>(page));
            EXPECT_EQ(Press(Press::Back), Back);
            EXPECT_EQ(App.OptionsPage, OptionsPage::Root);
            EXPECT_EQ(App.Screen, AppScreen::Options);
            EXPECT_EQ(Press(Press::Back), Back);
            EXPECT_EQ(App.Screen, opener);
            EXPECT_EQ(App.MenuSelection, 1);
            EXPECT_EQ(App.PauseSelection, 1);
        }
    }
}

// --- How play ends

TEST_F(Screens, ARunThatIsOverShowsGameOver) {
    Begin(AppScreen::Playing);
    App.HasSavedRun = true;
    App.LastSavedRevision = 0;
    CheckGameOverTransition(App);
    EXPECT_EQ(App.Screen, AppScreen::Playing);

    LiveRun().GameOver = true;
    LiveRun().TotalScore = -45;
    CheckGameOverTransition(App);
    EXPECT_EQ(App.Screen, AppScreen::GameOver);
    EXPECT_FALSE(App.HasSavedRun);
    EXPECT_TRUE(App.SaveDirty);
    EXPECT_EQ(App.SaveDelaySeconds, 0.0F);
    EXPECT_TRUE(App.ResetFrameClock);
    EXPECT_TRUE(App.PreviousSnapshotValid);
    EXPECT_EQ(App.PreviousSnapshot.TotalScore, -45);
    EXPECT_TRUE(App.PreviousSnapshot.GameOver);
    EXPECT_EQ(App.LastSavedRevision, GetRevision());
}

TEST_F(Screens, ALevelThatIsCompleteShowsIt) {
    App.Screen = AppScreen::Playing;
    CheckLevelCompleteTransition(App);
    EXPECT_EQ(App.Screen, AppScreen::Playing);

    LiveRun().DeliveredPackets = 20;
    App.LastSavedRevision = 0;
    EXPECT_FALSE(std::filesystem::exists(SavePath()));
    CheckLevelCompleteTransition(App);
    EXPECT_TRUE(std::filesystem::exists(SavePath())) << "saved before the screen changes";
    EXPECT_FALSE(App.SaveDirty);
    EXPECT_EQ(App.Screen, AppScreen::LevelComplete);
    EXPECT_TRUE(App.HasSavedRun);
    EXPECT_TRUE(App.ResetFrameClock);
    EXPECT_TRUE(App.PreviousSnapshotValid);
    EXPECT_EQ(App.PreviousSnapshot.DeliveredPackets, 20);
    EXPECT_EQ(App.LastSavedRevision, GetRevision());
    EXPECT_EQ(LiveRun().Level, 1) << "the next level waits for a press";
}

TEST_F(Screens, PlayEndsOnlyOnThePlayingScreen) {
    for (int screen = 0; screen < 8; ++screen) {
        App.Screen = static_cast<AppScreen>(screen);
        if (App.Screen == AppScreen::Playing) {
            continue;
        }
        LiveRun().GameOver = true;
        CheckGameOverTransition(App);
        LiveRun().GameOver = false;
        LiveRun().DeliveredPackets = 20;
        CheckLevelCompleteTransition(App);
        EXPECT_EQ(App.Screen, static_cast<AppScreen>(screen));
        EXPECT_FALSE(App.SaveDirty);
    }
}

TEST_F(Screens, GameOverWinsOverLevelComplete) {
    App.Screen = AppScreen::Playing;
    LiveRun().GameOver = true;
    LiveRun().DeliveredPackets = 20;
    CheckLevelCompleteTransition(App);
    EXPECT_EQ(App.Screen, AppScreen::Playing);
    CheckGameOverTransition(App);
    CheckLevelCompleteTransition(App);
    EXPECT_EQ(App.Screen, AppScreen::GameOver);
}

} // namespace
} // namespace Wirefall
