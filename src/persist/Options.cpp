#include "persist/Options.h"

#include "app/GameApp.h"

#include <SDL3/SDL_log.h>

namespace Wirefall {

// This build has no user storage: every start is a first one, and no write succeeds.

bool LoadOptions(GameApp& /*app*/) { return false; }

bool SaveOptions(const GameApp& /*app*/) { return false; }

void SaveOptionsIfDirty(GameApp& app) {
    if (!app.OptionsDirty) {
        return;
    }
    if (SaveOptions(app)) {
        app.OptionsDirty = false;
    } else {
        SDL_Log("Failed to write options config: %s", "Config.ini");
    }
}

} // namespace Wirefall
