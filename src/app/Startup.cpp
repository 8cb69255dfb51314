#include "app/Game.h"
#include "app/SessionLog.h"
#include "app/WindowTitle.h"
#include "audio/AudioEngine.h"
#include "audio/MusicPlayer.h"
#include "base/Clock.h"
#include "display/Aspect.h"
#include "display/DisplayModes.h"
#include "display/DisplaySettings.h"
#include "draw/BinaryRain.h"
#include "draw/SpriteAtlas.h"
#include "input/Controllers.h"
#include "persist/Options.h"
#include "persist/SaveState.h"
#include "sim/Simulation.h"
#include "words/LanguageFiles.h"

#include <SDL3/SDL_init.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_mouse.h>

#include <algorithm>
#include <csignal>
#include <random>
#include <string>

namespace Wirefall {

namespace {

void SeedSpareEngine(GameApp& app) {
    std::random_device device;
    SeedEngine(app.SpareEngine, device());
}

// A file that may not grow any further is a failed write, which is told and tried again, and no
// reason to be ended.
void IgnoreFileSizeSignal() {
#ifdef SIGXFSZ
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
#endif
}

bool OpenWindow(Game& game) {
    const Resolution resolution = CurrentResolution(game.App);
    UpdateLogicalWidth(game.App.AspectMode, resolution.Width, resolution.Height);
    game.Window = SDL_CreateWindow(WindowTitle().c_str(), std::max(resolution.Width, 1),
                                   std::max(resolution.Height, 1),
                                   game.App.Fullscreen ? SDL_WINDOW_FULLSCREEN : 0);
    if (game.Window == nullptr) {
        SDL_Log("SDL_CreateWindow failed: %s", SDL_GetError());
        return false;
    }
    game.Renderer = SDL_CreateRenderer(game.Window, nullptr);
    if (game.Renderer == nullptr) {
        SDL_Log("SDL_CreateRenderer failed: %s", SDL_GetError());
        return false;
    }
    SDL_SetRenderDrawBlendMode(game.Renderer, SDL_BLENDMODE_BLEND);
    SDL_SetWindowResizable(game.Window, false);
    ApplyLogicalPresentation(game.Window, game.Renderer);
    if (!BuildTextureAtlas(game.Renderer)) {
        SDL_Log("BuildTextureAtlas failed: %s", SDL_GetError());
        return false;
    }
    return true;
}

void CloseWindow(Game& game) {
    SDL_DestroyRenderer(game.Renderer);
    game.Renderer = nullptr;
    SDL_DestroyWindow(game.Window);
    game.Window = nullptr;
}

void StartLanguage(GameApp& app) {
    const std::string configured = app.Language;
    LoadLocalization(app);
    if (app.Language != configured && !app.OptionsUnread) {
        app.OptionsDirty = true;
    }
}

} // namespace

bool StartGame(Game& game) {
    if (!SDL_Init(SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMEPAD)) {
        SDL_Log("SDL_Init failed: %s", SDL_GetError());
        return false;
    }
    IgnoreFileSizeSignal();
    SetLogPriorities();
    StartSessionLog();

    GameApp& app = game.App;
    SeedSpareEngine(app);
    const bool optionsFound = LoadOptions(app);
    if (!optionsFound) {
        AdoptDesktopMode(app);
    }
    if (!OpenWindow(game)) {
        CloseWindow(game);
        SDL_Quit();
        return false;
    }
    SDL_HideCursor();
    RefreshDisplayModes(app, game.Window);
    if (!optionsFound && !SaveOptions(app)) {
        SDL_Log("Failed to create default options config: %s", "Config.ini");
    }
    StartLanguage(app);
    if (!LoadSaveState(app)) {
        app.HasSavedRun = false;
        RequestSave(app, 0.0F);
    }
    OpenAvailableControllers(game.Controllers);
    ApplyDisplaySettings(app, game.Window, game.Renderer);
    if (!InitAudio(app, game.Music)) {
        SDL_Log("Music runtime unavailable; game will run without music");
    }
    UpdateMusic(app, game.Music);
    // Not before the load: a loaded run must stay.
    if (!app.HasSavedRun) {
        ResetRun();
    }
    CaptureRunSnapshot(app);
    app.LastSavedRevision = GetRevision();
    game.PreviousTicks = ClockMs();
    app.FadeInActive = true;
    app.FadeInStartTicks = ClockMs();
    return true;
}

void ShutdownGame(Game& game) {
    GameApp& app = game.App;
    SaveOptionsIfDirty(app);
    FinishSaving(app);
    CloseControllers(game.Controllers);
    ShutdownAudio(game.Music, true);
    ReleaseRainCache();
    ReleaseTextureAtlas();
    CloseWindow(game);
    EndSessionLog();
    SDL_Quit();
}

} // namespace Wirefall
