#include "persist/UserFolder.h"

#include <SDL3/SDL_stdinc.h>

namespace Wirefall::Testing {

UserFolder::UserFolder() { SetDataHome(Home.Path()); }

void SetDataHome(const std::filesystem::path& folder) {
    SDL_SetEnvironmentVariable(SDL_GetEnvironment(), "XDG_DATA_HOME", folder.c_str(), true);
}

CapturedLog::CapturedLog() {
    SDL_GetLogOutputFunction(&Previous, &PreviousUserdata);
    SDL_SetLogPriorities(SDL_LOG_PRIORITY_VERBOSE);
    SDL_SetLogOutputFunction(
        [](void* userdata, int /*category*/, SDL_LogPriority /*priority*/, const char* message) {
            static_cast<CapturedLog*>(userdata)->Lines.emplace_back(message);
        },
        this);
}

CapturedLog::~CapturedLog() {
    SDL_SetLogOutputFunction(Previous, PreviousUserdata);
    SDL_ResetLogPriorities();
}

} // namespace Wirefall::Testing
