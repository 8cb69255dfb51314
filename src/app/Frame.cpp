#include "app/FramePacing.h"
#include "app/Game.h"
#include "app/InputPump.h"
#include "app/Screens.h"
#include "app/WindowTitle.h"
#include "audio/MusicPlayer.h"
#include "audio/SoundEffects.h"
#include "audio/SoundQueue.h"
#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "draw/Color.h"
#include "draw/Primitives.h"
#include "game/ScreenFlow.h"
#include "persist/Options.h"
#include "persist/SaveState.h"
#include "screens/CreditsScreen.h"
#include "sim/Simulation.h"

#include <SDL3/SDL_timer.h>

#include <algorithm>
#include <cmath>

namespace Wirefall {

namespace {

constexpr float MaxFrameSeconds = 0.033F;
constexpr float SaveDelayAfterChange = 0.8F;

constexpr PackedColor Black = Rgba(0x000000ff);

void PlayFrame(GameApp& app, std::uint64_t deltaMs) {
    AdvanceSimulation(deltaMs);
    const RunSnapshot snapshot = BuildRunSnapshot();
    if (app.PreviousSnapshotValid) {
        DetectGameSounds(app, snapshot);
    }
    app.PreviousSnapshot = snapshot;
    app.PreviousSnapshotValid = true;
    CheckGameOverTransition(app);
    CheckLevelCompleteTransition(app);
}

// How far a fade that began at `start` has come by `now`, 0 to 1.
float FadeProgress(std::uint64_t now, std::uint64_t start) {
    return std::min(static_cast<float>(now - start) / static_cast<float>(FadeMs), 1.0F);
}

// Draws the fades over the screen. Returns whether the quit fade has come to its end.
bool DrawFades(Game& game, std::uint64_t now) {
    GameApp& app = game.App;
    float black = 0.0F;
    if (app.FadeInActive) {
        const float progress = FadeProgress(now, app.FadeInStartTicks);
        black = std::max(1.0F - progress, 0.0F);
        app.FadeInActive = progress < 1.0F;
    }
    float quitProgress = 0.0F;
    if (app.QuitRequested) {
        quitProgress = FadeProgress(now, app.FadeOutStartTicks);
        black = std::max(quitProgress, black);
    }
    if (black > 0.0F) {
        const auto alpha = static_cast<std::uint8_t>(std::lroundf(std::min(black, 1.0F) * 255.0F));
        FillRect(game.Renderer, 0.0F, 0.0F, static_cast<float>(LogicalWidth),
                 static_cast<float>(LogicalHeight), WithAlpha(Black, alpha));
    }
    return quitProgress >= 1.0F;
}

} // namespace

void RunFrame(Game& game) {
    GameApp& app = game.App;
    const std::uint64_t frameStart = ClockMs();
    CheckGameOverTransition(app);
    CheckLevelCompleteTransition(app);
    PollInput(app, game.Controllers, game.Window, game.Renderer);
    SetFastForward(SampleFastForward(app, game.Controllers));
    SaveOptionsIfDirty(app);

    const std::uint64_t now = ClockMs();
    if (app.ResetFrameClock) {
        app.ResetFrameClock = false;
        game.PreviousTicks = now;
    }
    const std::uint64_t deltaMs = now - game.PreviousTicks;
    const float dt = std::min(static_cast<float>(deltaMs) / 1000.0F, MaxFrameSeconds);
    if (app.Screen == AppScreen::Playing) {
        PlayFrame(app, deltaMs);
    } else if (app.Screen == AppScreen::Credits) {
        RollCredits(app, game.Renderer, dt);
    }
    if (GetRevision() != app.LastSavedRevision) {
        app.LastSavedRevision = GetRevision();
        app.HasSavedRun = true;
        RequestSave(app, SaveDelayAfterChange);
    }
    SaveTick(app, dt);
    UpdateMusic(app, game.Music);
    DrainSoundQueue(app, game.Music);

    SetDrawColor(game.Renderer, Black);
    SDL_RenderClear(game.Renderer);
    DrawScreen(game.Renderer, app, game.Controllers);
    const bool quitDone = DrawFades(game, now);
    SDL_SetWindowTitle(game.Window, WindowTitle().c_str());
    SDL_RenderPresent(game.Renderer);
    if (quitDone) {
        app.Running = false;
    }
    if (const std::uint64_t delay = PaceDelayMs(app.VSyncActive, ClockMs() - frameStart)) {
        SDL_Delay(static_cast<Uint32>(delay));
    }
    game.PreviousTicks = now;
}

} // namespace Wirefall
