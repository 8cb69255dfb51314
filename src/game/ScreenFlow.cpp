#include "game/ScreenFlow.h"

#include "base/Clock.h"
#include "persist/SaveState.h"
#include "sim/Simulation.h"

namespace Wirefall {

namespace {

// What both transitions out of play do with the run's last status.
void KeepFinalSnapshot(GameApp& app) {
    CaptureRunSnapshot(app);
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

void ShowPlaying(GameApp& app) {
    app.Screen = AppScreen::Playing;
    app.ResetFrameClock = true;
}

void ShowMainMenu(GameApp& app) {
    app.Screen = AppScreen::MainMenu;
    app.MenuSelection = 0;
}

void OpenOptions(GameApp& app, AppScreen returnScreen) {
    app.OptionsReturnScreen = returnScreen;
    app.Screen = AppScreen::Options;
    ResetOptionsPages(app);
}

void OpenHelp(GameApp& app, AppScreen returnScreen) {
    app.HelpReturnScreen = returnScreen;
    app.Screen = AppScreen::Help;
}

void CheckGameOverTransition(GameApp& app) {
    if (app.Screen != AppScreen::Playing || !LiveRun().GameOver) {
        return;
    }
    KeepFinalSnapshot(app);
    app.HasSavedRun = false;
    RequestSave(app, 0.0F);
    app.Screen = AppScreen::GameOver;
    app.ResetFrameClock = true;
}

void CheckLevelCompleteTransition(GameApp& app) {
    if (app.Screen != AppScreen::Playing || !IsLevelComplete()) {
        return;
    }
    KeepFinalSnapshot(app);
    app.HasSavedRun = true;
    RequestSave(app, 0.0F);
    SaveTick(app, 0.0F);
    app.Screen = AppScreen::LevelComplete;
    app.ResetFrameClock = true;
}

} // namespace Wirefall
