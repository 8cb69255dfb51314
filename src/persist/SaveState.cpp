#include "persist/SaveState.h"

#include "app/GameApp.h"

#include <SDL3/SDL_log.h>

#include <algorithm>

namespace Wirefall {

namespace {

constexpr float RetrySeconds = 1.0F;

} // namespace

void RequestSave(GameApp& app, float delaySeconds) {
    app.SaveDirty = true;
    if (delaySeconds <= 0.0F) {
        app.SaveDelaySeconds = 0.0F;
    } else if (app.SaveDelaySeconds > 0.0F) {
        app.SaveDelaySeconds = std::min(app.SaveDelaySeconds, delaySeconds);
    } else {
        app.SaveDelaySeconds = delaySeconds;
    }
}

void SaveTick(GameApp& app, float elapsedSeconds) {
    if (!app.SaveDirty) {
        return;
    }
    app.SaveDelaySeconds = std::max(app.SaveDelaySeconds - std::max(elapsedSeconds, 0.0F), 0.0F);
    if (app.SaveDelaySeconds > 0.0F) {
        return;
    }
    if (WriteSaveState(app)) {
        app.SaveDirty = false;
        app.SaveDelaySeconds = 0.0F;
    } else {
        SDL_Log("Failed to write save state: %s", "SaveState.bin");
        app.SaveDelaySeconds = RetrySeconds;
    }
}

// This build has no user storage: there is never a run to go on with, and no write succeeds.

bool WriteSaveState(const GameApp& /*app*/) { return false; }

bool LoadSaveState(GameApp& /*app*/) { return false; }

} // namespace Wirefall
