#include "app/ScreenFlow.h"

#include "app/GameApp.h"
#include "audio/SoundQueue.h"
#include "base/Clock.h"
#include "input/ControlsEdit.h"
#include "input/OptionsInput.h"
#include "input/PressMeaning.h"
#include "persist/SaveState.h"
#include "sim/RunCommands.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Wirefall {

namespace {

void ShowPlaying(GameApp& app) {
    app.Screen = AppScreen::Playing;
    app.ResetFrameClock = true;
}

void OpenOptions(GameApp& app, AppScreen returnScreen) {
    app.OptionsReturnScreen = returnScreen;
    app.Screen = AppScreen::Options;
    app.OptionsPage = OptionsPage::Root;
    EndCapture(app.Capture);
    app.ControlsEdit.PendingValid = false;
    app.GraphicsEdit.Valid = false;
    app.AudioEdit.Valid = false;
}

void OpenHelp(GameApp& app, AppScreen returnScreen) {
    app.HelpReturnScreen = returnScreen;
    app.Screen = AppScreen::Help;
}

void ShowMainMenu(GameApp& app) {
    app.Screen = AppScreen::MainMenu;
    app.MenuSelection = 0;
}

// --- Rows of the main menu, in the order in which they stand. The first is there only with a saved
// run.

void ContinueGame(GameApp& app) {
    ShowPlaying(app);
    app.LastSavedRevision = GetRevision();
}

void StartNewGame(GameApp& app) {
    ResetRun();
    CaptureRunSnapshot(app);
    app.LastSavedRevision = GetRevision();
    app.HasSavedRun = true;
    RequestSave(app, 0.0F);
    ShowPlaying(app);
}

void OpenOptionsFromMenu(GameApp& app) { OpenOptions(app, AppScreen::MainMenu); }

void OpenHelpFromMenu(GameApp& app) { OpenHelp(app, AppScreen::MainMenu); }

void OpenCredits(GameApp& app) {
    app.CreditsScroll = 0.0F;
    app.Screen = AppScreen::Credits;
}

using RowAction = void (*)(GameApp& app);

constexpr std::array<RowAction, 6> MenuActions = {
    ContinueGame, StartNewGame, OpenOptionsFromMenu, OpenHelpFromMenu, OpenCredits, RequestQuit,
};

// --- Rows of the pause menu.

void Resume(GameApp& app) { app.Screen = AppScreen::Playing; }

void OpenOptionsFromPause(GameApp& app) { OpenOptions(app, AppScreen::Pause); }

void OpenHelpFromPause(GameApp& app) { OpenHelp(app, AppScreen::Pause); }

constexpr std::array<RowAction, 4> PauseActions = {
    Resume,
    OpenOptionsFromPause,
    OpenHelpFromPause,
    ShowMainMenu,
};

// --- What a press does, screen by screen.

// Moves the selection over `actions` in a circle, or does what the selected row says, or goes back.
void PressInMenu(GameApp& app, PressCode code, std::span<const RowAction> actions,
                 std::int32_t& selection, RowAction back) {
    const auto rows = static_cast<std::int32_t>(actions.size());
    if (IsUp(app.KeyboardBindings, code)) {
        EnqueueSound(app, SoundEvent::UiMove);
        selection = (rows + selection - 1) % rows;
    } else if (IsDown(app.KeyboardBindings, code)) {
        EnqueueSound(app, SoundEvent::UiMove);
        selection = (selection + 1) % rows;
    } else if (IsBack(code)) {
        EnqueueSound(app, SoundEvent::UiBack);
        back(app);
    } else if (IsConfirm(code)) {
        EnqueueSound(app, SoundEvent::UiConfirm);
        actions[static_cast<std::size_t>(selection)](app);
    }
}

void PressOnMainMenu(GameApp& app, PressCode code) {
    const std::span<const RowAction> all(MenuActions);
    const std::span<const RowAction> actions = app.HasSavedRun ? all : all.subspan(1);
    if (app.MenuSelection >= static_cast<std::int32_t>(actions.size())) {
        app.MenuSelection = 0;
    }
    PressInMenu(app, code, actions, app.MenuSelection, RequestQuit);
}

void PressOnPause(GameApp& app, PressCode code) {
    PressInMenu(app, code, PauseActions, app.PauseSelection, Resume);
}

// The first row that matches decides. A row matches its fixed code and the key bound to its action.
struct PlayRow {
    PressCode FixedCode;
    InputAction Action;
    SoundEvent Sound;
    std::uint32_t Command;
};

constexpr std::uint32_t PlaceCommand = SDL_SCANCODE_SPACE;

constexpr std::array<PlayRow, 7> PlayRows = {{
    {Press::Up, InputAction::CursorUp, SoundEvent::CursorMove, Press::Up},
    {Press::Down, InputAction::CursorDown, SoundEvent::CursorMove, Press::Down},
    {Press::Left, InputAction::CursorLeft, SoundEvent::CursorMove, Press::Left},
    {Press::Right, InputAction::CursorRight, SoundEvent::CursorMove, Press::Right},
    {Press::RotateLeft, InputAction::RotateLeft, SoundEvent::Rotate, Press::RotateLeft},
    {Press::RotateRight, InputAction::RotateRight, SoundEvent::Rotate, Press::RotateRight},
    {Press::None, InputAction::Place, SoundEvent::Place, PlaceCommand},
}};

void PressOnPlaying(GameApp& app, PressCode code) {
    if (IsBack(code)) {
        EnqueueSound(app, SoundEvent::UiBack);
        app.Screen = AppScreen::Pause;
        app.PauseSelection = 0;
        app.ResetFrameClock = true;
        return;
    }
    const auto row =
        std::find_if(PlayRows.begin(), PlayRows.end(), [&app, code](const PlayRow& candidate) {
            return code == candidate.FixedCode ||
                   IsBoundTo(app.KeyboardBindings, code, candidate.Action);
        });
    if (row != PlayRows.end()) {
        EnqueueSound(app, row->Sound);
        ApplyRunCommand(row->Command);
    }
}

// A press that ends a screen, by either of the two keys that can.
void PressToLeave(GameApp& app, PressCode code, SoundEvent confirmSound, RowAction leave) {
    if (IsConfirm(code)) {
        EnqueueSound(app, confirmSound);
        leave(app);
    } else if (IsBack(code)) {
        EnqueueSound(app, SoundEvent::UiBack);
        leave(app);
    }
}

void PressOnHelp(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiBack,
                 [](GameApp& leaving) { leaving.Screen = leaving.HelpReturnScreen; });
}

void PressOnCredits(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiBack,
                 [](GameApp& leaving) { leaving.Screen = AppScreen::MainMenu; });
}

void PressOnLevelComplete(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiConfirm, [](GameApp& leaving) {
        AdvanceLevel();
        CaptureRunSnapshot(leaving);
        leaving.LastSavedRevision = GetRevision();
        leaving.HasSavedRun = true;
        ShowPlaying(leaving);
    });
}

void PressOnGameOver(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiConfirm, ShowMainMenu);
}

// What both transitions out of play do with the run's last status.
void KeepFinalSnapshot(GameApp& app, const RunSnapshot& snapshot) {
    app.PreviousSnapshot = snapshot;
    app.PreviousSnapshotValid = true;
    app.LastSavedRevision = GetRevision();
}

} // namespace

void RequestQuit(GameApp& app) {
    if (app.QuitRequested) {
        return;
    }
    app.QuitRequested = true;
    app.FadeOutStartTicks = ClockMs();
    app.ResetFrameClock = true;
}

void CheckGameOverTransition(GameApp& app) {
    if (app.Screen != AppScreen::Playing) {
        return;
    }
    const RunSnapshot snapshot = BuildRunSnapshot();
    if (!snapshot.GameOver) {
        return;
    }
    KeepFinalSnapshot(app, snapshot);
    app.HasSavedRun = false;
    RequestSave(app, 0.0F);
    app.Screen = AppScreen::GameOver;
    app.ResetFrameClock = true;
}

void CheckLevelCompleteTransition(GameApp& app) {
    if (app.Screen != AppScreen::Playing || !IsLevelComplete()) {
        return;
    }
    KeepFinalSnapshot(app, BuildRunSnapshot());
    app.HasSavedRun = true;
    RequestSave(app, 0.0F);
    SaveTick(app, 0.0F);
    app.Screen = AppScreen::LevelComplete;
    app.ResetFrameClock = true;
}

void CaptureRunSnapshot(GameApp& app) {
    app.PreviousSnapshot = BuildRunSnapshot();
    app.PreviousSnapshotValid = true;
}

void DispatchPress(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code) {
    if (app.QuitRequested || code == Press::None || code > MaxScancode) {
        return;
    }
    switch (app.Screen) {
    case AppScreen::MainMenu:
        PressOnMainMenu(app, code);
        break;
    case AppScreen::Options:
        PressOnOptions(app, window, renderer, code);
        break;
    case AppScreen::Help:
        PressOnHelp(app, code);
        break;
    case AppScreen::Playing:
        PressOnPlaying(app, code);
        break;
    case AppScreen::LevelComplete:
        PressOnLevelComplete(app, code);
        break;
    case AppScreen::Pause:
        PressOnPause(app, code);
        break;
    case AppScreen::Credits:
        PressOnCredits(app, code);
        break;
    case AppScreen::GameOver:
        PressOnGameOver(app, code);
        break;
    }
}

} // namespace Wirefall
