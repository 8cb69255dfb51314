#include "app/ScreenFlow.h"

#include "app/GameApp.h"
#include "base/Clock.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <vector>

namespace Wirefall {
namespace {

using Sounds = std::vector<SoundEvent>;

constexpr PressCode KeyW = SDL_SCANCODE_W;
constexpr PressCode KeyS = SDL_SCANCODE_S;
constexpr PressCode KeyA = SDL_SCANCODE_A;
constexpr PressCode KeyD = SDL_SCANCODE_D;
constexpr PressCode KeySpace = SDL_SCANCODE_SPACE;

class Screens : public testing::Test {
protected:
    void SetUp() override {
        Testing::InstallLiveRun(Testing::DrawnRun({"→────────⇐"}));
        App.LastSavedRevision = GetRevision();
    }

    // Presses on the current screen, and gives the sounds that come of it.
    Sounds Press(PressCode code) {
        App.SoundQueueCount = 0;
        DispatchPress(App, nullptr, nullptr, code);
        return {App.SoundQueue.begin(),
                App.SoundQueue.begin() + static_cast<std::ptrdiff_t>(App.SoundQueueCount)};
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

// --- Every screen -------------------------------------------------------------------------------

TEST_F(Screens, IgnoreEverythingDuringTheQuitFade) {
    for (int screen = 0; screen < 8; ++screen) {
        App.Screen = static_cast<AppScreen>(screen);
        App.QuitRequested = true;
        for (PressCode code = 0; code < 600; ++code) {
            ASSERT_EQ(Press(code), Sounds{});
        }
        EXPECT_EQ(App.Screen, static_cast<AppScreen>(screen));
    }
}

TEST_F(Screens, IgnoreCodesThatAreNoKeys) {
    App.Screen = AppScreen::Playing;
    Bind(InputAction::Place, 0);
    Bind(InputAction::CursorUp, 512);
    for (const PressCode code : {0U, 512U, 600U, 0xffffffffU}) {
        EXPECT_EQ(Press(code), Sounds{}) << code;
    }
    Bind(InputAction::CursorUp, 511);
    EXPECT_EQ(Press(511), Sounds{SoundEvent::CursorMove});
}

// --- Main menu ----------------------------------------------------------------------------------

struct MenuStep {
    bool HasSavedRun;
    std::int32_t Before;
    PressCode Code;
    std::int32_t After;
};

TEST_F(Screens, TheMainMenuSelectionRunsInACircle) {
    for (const MenuStep& step : std::vector<MenuStep>{
             {false, 0, Press::Down, 1},
             {false, 4, Press::Down, 0},
             {false, 0, Press::Up, 4},
             {false, 3, Press::Up, 2},
             {true, 4, Press::Down, 5},
             {true, 5, Press::Down, 0},
             {true, 0, Press::Up, 5},
             {false, 5, Press::Down, 1}, // a row that is gone counts as the first
             {false, 5, Press::Up, 4},
             {true, 6, Press::Down, 1},
         }) {
        App.Screen = AppScreen::MainMenu;
        App.HasSavedRun = step.HasSavedRun;
        App.MenuSelection = step.Before;
        EXPECT_EQ(Press(step.Code), Sounds{SoundEvent::UiMove});
        EXPECT_EQ(App.MenuSelection, step.After) << "from " << step.Before;
        EXPECT_EQ(App.Screen, AppScreen::MainMenu);
    }
}

TEST_F(Screens, TheMainMenuHearsTheBoundCursorKeysToo) {
    Bind(InputAction::CursorUp, KeyW);
    Bind(InputAction::CursorDown, KeyS);
    EXPECT_EQ(Press(KeyS), Sounds{SoundEvent::UiMove});
    EXPECT_EQ(App.MenuSelection, 1);
    EXPECT_EQ(Press(KeyW), Sounds{SoundEvent::UiMove});
    EXPECT_EQ(App.MenuSelection, 0);
}

TEST_F(Screens, TheMainMenuResetsALostRowEvenForAKeyThatMeansNothing) {
    App.MenuSelection = 5;
    EXPECT_EQ(Press(KeySpace), Sounds{});
    EXPECT_EQ(App.MenuSelection, 0);
}

struct MenuRow {
    const char* Name;
    std::int32_t RowWithSavedRun;
    std::function<void(const GameApp&)> Check;
};

TEST_F(Screens, EachRowOfTheMainMenuLeadsSomewhere) {
    const std::vector<MenuRow> rows = {
        {"continue", 0,
         [](const GameApp& app) {
             EXPECT_EQ(app.Screen, AppScreen::Playing);
             EXPECT_TRUE(app.ResetFrameClock);
             EXPECT_EQ(app.LastSavedRevision, GetRevision());
             EXPECT_EQ(LiveRun().Sources.front().X, 0) << "the same run goes on";
             EXPECT_FALSE(app.SaveDirty);
         }},
        {"new game", 1,
         [](const GameApp& app) {
             EXPECT_EQ(app.Screen, AppScreen::Playing);
             EXPECT_TRUE(app.ResetFrameClock);
             EXPECT_TRUE(app.HasSavedRun);
             EXPECT_TRUE(app.SaveDirty);
             EXPECT_EQ(app.SaveDelaySeconds, 0.0F);
             EXPECT_EQ(app.LastSavedRevision, GetRevision());
             EXPECT_EQ(LiveRun().Sources.front().X, 9) << "the known first board";
             EXPECT_TRUE(app.PreviousSnapshotValid);
             EXPECT_EQ(app.PreviousSnapshot, BuildRunSnapshot());
         }},
        {"options", 2,
         [](const GameApp& app) {
             EXPECT_EQ(app.Screen, AppScreen::Options);
             EXPECT_EQ(app.OptionsReturnScreen, AppScreen::MainMenu);
         }},
        {"help", 3,
         [](const GameApp& app) {
             EXPECT_EQ(app.Screen, AppScreen::Help);
             EXPECT_EQ(app.HelpReturnScreen, AppScreen::MainMenu);
         }},
        {"credits", 4,
         [](const GameApp& app) {
             EXPECT_EQ(app.Screen, AppScreen::Credits);
             EXPECT_EQ(app.CreditsScroll, 0.0F);
         }},
        {"quit", 5, [](const GameApp& app) { EXPECT_TRUE(app.QuitRequested); }},
    };
    for (const bool hasSavedRun : {true, false}) {
        for (const MenuRow& row : rows) {
            if (!hasSavedRun && row.RowWithSavedRun == 0) {
                continue;
            }
            for (const PressCode confirm : {Press::Confirm, Press::KeypadConfirm}) {
                SCOPED_TRACE(row.Name);
                App = GameApp{};
                SetUp();
                App.HasSavedRun = hasSavedRun;
                App.MenuSelection = row.RowWithSavedRun - (hasSavedRun ? 0 : 1);
                App.CreditsScroll = 50.0F;
                App.LastSavedRevision = 0;
                App.HelpReturnScreen = AppScreen::Pause;
                App.OptionsReturnScreen = AppScreen::Pause;
                EXPECT_EQ(Press(confirm), Sounds{SoundEvent::UiConfirm});
                row.Check(App);
            }
        }
    }
}

TEST_F(Screens, BackOnTheMainMenuQuits) {
    FreezeClock(5000);
    EXPECT_EQ(Press(Press::Back), Sounds{SoundEvent::UiBack});
    EXPECT_TRUE(App.QuitRequested);
    EXPECT_EQ(App.FadeOutStartTicks, 5000U);
    EXPECT_TRUE(App.ResetFrameClock);
    EXPECT_TRUE(App.Running) << "the fade comes first";
    ResumeClock();
}

TEST_F(Screens, AskingToQuitTwiceDoesNotRestartTheFade) {
    FreezeClock(5000);
    RequestQuit(App);
    App.ResetFrameClock = false;
    FreezeClock(5100);
    RequestQuit(App);
    EXPECT_EQ(App.FadeOutStartTicks, 5000U);
    EXPECT_FALSE(App.ResetFrameClock);
    ResumeClock();
}

TEST_F(Screens, OpeningTheOptionsForgetsWhatWasUnderWayThere) {
    for (const bool fromPause : {false, true}) {
        App.Screen = fromPause ? AppScreen::Pause : AppScreen::MainMenu;
        App.MenuSelection = 1;
        App.PauseSelection = 1;
        App.OptionsPage = OptionsPage::Audio;
        App.Rows.AudioRow = 4;
        App.Capture.CaptureActive = true;
        App.Capture.CaptureDevice = CaptureDevice::Gamepad;
        App.ControlsEdit.PendingValid = true;
        App.GraphicsEdit.Valid = true;
        App.AudioEdit.Valid = true;
        Press(Press::Confirm);
        EXPECT_EQ(App.Screen, AppScreen::Options);
        EXPECT_EQ(App.OptionsReturnScreen, fromPause ? AppScreen::Pause : AppScreen::MainMenu);
        EXPECT_EQ(App.OptionsPage, OptionsPage::Root);
        EXPECT_EQ(App.Rows.AudioRow, 4) << "the rows are kept";
        EXPECT_FALSE(App.Capture.CaptureActive);
        EXPECT_EQ(App.Capture.CaptureDevice, CaptureDevice::None);
        EXPECT_FALSE(App.ControlsEdit.PendingValid);
        EXPECT_FALSE(App.GraphicsEdit.Valid);
        EXPECT_FALSE(App.AudioEdit.Valid);
    }
}

// --- Playing ------------------------------------------------------------------------------------

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
        App = GameApp{};
        SetUp();
        App.Screen = AppScreen::Playing;
        if (std::string_view(c.What).starts_with("bound")) {
            App.KeyboardBindings = {KeyW,           KeyS,           KeyA,     KeyD,
                                    SDL_SCANCODE_Z, SDL_SCANCODE_X, KeySpace, 225};
        }
        EXPECT_EQ(Press(c.Code), Sounds{c.Sound});
        EXPECT_EQ(LiveRun().CursorX, c.X);
        EXPECT_EQ(LiveRun().CursorY, c.Y);
        EXPECT_EQ(LiveRun().PreviewRotation, c.Rotation);
        EXPECT_EQ(TileAt(LiveRun(), 5, 5).Type, c.Places ? TileType::Straight : TileType::Empty);
        EXPECT_EQ(App.Screen, AppScreen::Playing);
    }
}

TEST_F(Screens, ReturnPlacesOnlyWhileItIsBoundToIt) {
    App.Screen = AppScreen::Playing;
    Bind(InputAction::Place, KeySpace);
    EXPECT_EQ(Press(Press::Confirm), Sounds{});
    EXPECT_EQ(Press(KeySpace), Sounds{SoundEvent::Place});
}

TEST_F(Screens, ARefusedCommandStillSounds) {
    App.Screen = AppScreen::Playing;
    LiveRun().CursorX = 0;
    LiveRun().CursorY = 0;
    const std::uint64_t revision = GetRevision();
    EXPECT_EQ(Press(Press::Left), Sounds{SoundEvent::CursorMove});
    EXPECT_EQ(Press(Press::Confirm), Sounds{SoundEvent::Place}) << "on the source";
    EXPECT_EQ(GetRevision(), revision);
}

TEST_F(Screens, OfTwoActionsOnOneKeyTheFirstWins) {
    App.Screen = AppScreen::Playing;
    Bind(InputAction::RotateLeft, KeySpace);
    Bind(InputAction::Place, KeySpace);
    EXPECT_EQ(Press(KeySpace), Sounds{SoundEvent::Rotate});
}

TEST_F(Screens, OtherKeysDoNothingInPlay) {
    App.Screen = AppScreen::Playing;
    EXPECT_EQ(Press(KeySpace), Sounds{});
    EXPECT_EQ(Press(SDL_SCANCODE_LSHIFT), Sounds{});
}

TEST_F(Screens, EscapePausesEvenWhenItIsBound) {
    App.Screen = AppScreen::Playing;
    App.PauseSelection = 3;
    Bind(InputAction::Place, Press::Back);
    EXPECT_EQ(Press(Press::Back), Sounds{SoundEvent::UiBack});
    EXPECT_EQ(App.Screen, AppScreen::Pause);
    EXPECT_EQ(App.PauseSelection, 0);
    EXPECT_TRUE(App.ResetFrameClock);
}

// --- Pause --------------------------------------------------------------------------------------

TEST_F(Screens, ThePauseSelectionRunsInACircle) {
    App.Screen = AppScreen::Pause;
    for (const std::int32_t expected : {1, 2, 3, 0}) {
        EXPECT_EQ(Press(Press::Down), Sounds{SoundEvent::UiMove});
        EXPECT_EQ(App.PauseSelection, expected);
    }
    for (const std::int32_t expected : {3, 2, 1, 0}) {
        EXPECT_EQ(Press(Press::Up), Sounds{SoundEvent::UiMove});
        EXPECT_EQ(App.PauseSelection, expected);
    }
}

struct PauseCase {
    PressCode Code;
    std::int32_t Row;
    SoundEvent Sound;
    AppScreen Screen;
};

TEST_F(Screens, EachRowOfThePauseMenuLeadsSomewhere) {
    for (const PauseCase& c : std::vector<PauseCase>{
             {Press::Confirm, 0, SoundEvent::UiConfirm, AppScreen::Playing},
             {Press::KeypadConfirm, 0, SoundEvent::UiConfirm, AppScreen::Playing},
             {Press::Confirm, 1, SoundEvent::UiConfirm, AppScreen::Options},
             {Press::Confirm, 2, SoundEvent::UiConfirm, AppScreen::Help},
             {Press::Confirm, 3, SoundEvent::UiConfirm, AppScreen::MainMenu},
             {Press::Back, 2, SoundEvent::UiBack, AppScreen::Playing},
         }) {
        App = GameApp{};
        SetUp();
        App.Screen = AppScreen::Pause;
        App.PauseSelection = c.Row;
        App.MenuSelection = 4;
        App.HasSavedRun = true;
        const RunState before = LiveRun();
        EXPECT_EQ(Press(c.Code), Sounds{c.Sound});
        EXPECT_EQ(App.Screen, c.Screen);
        EXPECT_EQ(LiveRun(), before);
        EXPECT_TRUE(App.HasSavedRun) << "the run can be gone on with from the menu";
        EXPECT_EQ(App.MenuSelection, c.Screen == AppScreen::MainMenu ? 0 : 4);
        if (c.Screen == AppScreen::Options) {
            EXPECT_EQ(App.OptionsReturnScreen, AppScreen::Pause);
        }
        if (c.Screen == AppScreen::Help) {
            EXPECT_EQ(App.HelpReturnScreen, AppScreen::Pause);
        }
    }
}

// --- Help, credits, results ---------------------------------------------------------------------

TEST_F(Screens, HelpGoesBackToWhereItWasOpenedFrom) {
    for (const AppScreen opener : {AppScreen::MainMenu, AppScreen::Pause}) {
        for (const PressCode code : {Press::Confirm, Press::KeypadConfirm, Press::Back}) {
            App.Screen = AppScreen::Help;
            App.HelpReturnScreen = opener;
            EXPECT_EQ(Press(code), Sounds{SoundEvent::UiBack});
            EXPECT_EQ(App.Screen, opener);
        }
    }
    App.Screen = AppScreen::Help;
    EXPECT_EQ(Press(Press::Down), Sounds{});
    EXPECT_EQ(App.Screen, AppScreen::Help);
}

TEST_F(Screens, CreditsGoBackToTheirRowOfTheMenu) {
    for (const PressCode code : {Press::Confirm, Press::KeypadConfirm, Press::Back}) {
        App.Screen = AppScreen::Credits;
        App.MenuSelection = 3;
        EXPECT_EQ(Press(code), Sounds{SoundEvent::UiBack});
        EXPECT_EQ(App.Screen, AppScreen::MainMenu);
        EXPECT_EQ(App.MenuSelection, 3);
    }
    App.Screen = AppScreen::Credits;
    EXPECT_EQ(Press(Press::Up), Sounds{});
    EXPECT_EQ(App.Screen, AppScreen::Credits);
}

TEST_F(Screens, LeavingLevelCompleteStartsTheNextLevel) {
    for (const auto& [code, sound] : std::vector<std::pair<PressCode, SoundEvent>>{
             {Press::Confirm, SoundEvent::UiConfirm},
             {Press::KeypadConfirm, SoundEvent::UiConfirm},
             {Press::Back, SoundEvent::UiBack}}) {
        App = GameApp{};
        SetUp();
        LiveRun().DeliveredPackets = 20;
        App.Screen = AppScreen::LevelComplete;
        EXPECT_EQ(Press(code), Sounds{sound});
        EXPECT_EQ(App.Screen, AppScreen::Playing);
        EXPECT_TRUE(App.ResetFrameClock);
        EXPECT_TRUE(App.HasSavedRun);
        EXPECT_EQ(LiveRun().Level, 2);
        EXPECT_EQ(LiveRun().TotalScore, 100);
        EXPECT_EQ(App.LastSavedRevision, GetRevision());
        EXPECT_EQ(App.PreviousSnapshot, BuildRunSnapshot());
        EXPECT_FALSE(App.SaveDirty) << "the first tick of the new level sees to that";
    }
    App.Screen = AppScreen::LevelComplete;
    EXPECT_EQ(Press(Press::Down), Sounds{});
    EXPECT_EQ(App.Screen, AppScreen::LevelComplete);
}

TEST_F(Screens, LeavingGameOverGoesToTheTopOfTheMenu) {
    for (const auto& [code, sound] : std::vector<std::pair<PressCode, SoundEvent>>{
             {Press::Confirm, SoundEvent::UiConfirm},
             {Press::KeypadConfirm, SoundEvent::UiConfirm},
             {Press::Back, SoundEvent::UiBack}}) {
        App.Screen = AppScreen::GameOver;
        App.MenuSelection = 3;
        EXPECT_EQ(Press(code), Sounds{sound});
        EXPECT_EQ(App.Screen, AppScreen::MainMenu);
        EXPECT_EQ(App.MenuSelection, 0);
    }
    App.Screen = AppScreen::GameOver;
    EXPECT_EQ(Press(Press::Left), Sounds{});
    EXPECT_EQ(App.Screen, AppScreen::GameOver);
}

TEST_F(Screens, EscapeLeavesTheOptions) {
    for (const AppScreen opener : {AppScreen::MainMenu, AppScreen::Pause}) {
        App.Screen = AppScreen::Options;
        App.OptionsReturnScreen = opener;
        EXPECT_EQ(Press(Press::Back), Sounds{SoundEvent::UiBack});
        EXPECT_EQ(App.Screen, opener);
    }
}

// --- How play ends ------------------------------------------------------------------------------

TEST_F(Screens, ARunThatIsOverShowsGameOver) {
    App.Screen = AppScreen::Playing;
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
