#pragma once

// Catches what the game logs with SDL_Log for as long as it lives. What SDL logs of its own accord,
// in other categories, is dropped.

#include <SDL3/SDL_log.h>

#include <string>
#include <vector>

namespace Wirefall::Testing {

class CapturedLog {
public:
    CapturedLog() {
        SDL_GetLogOutputFunction(&Previous, &PreviousUserdata);
        SDL_SetLogOutputFunction(Catch, this);
    }
    ~CapturedLog() { SDL_SetLogOutputFunction(Previous, PreviousUserdata); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    const std::vector<std::string>& Messages() const { return Caught; }

    /// Forgets them.
    void Clear() { Caught.clear(); }

private:
    static void SDLCALL Catch(void* self, int category, SDL_LogPriority /*priority*/,
                              const char* message) {
        if (category == SDL_LOG_CATEGORY_APPLICATION) {
            static_cast<CapturedLog*>(self)->Caught.emplace_back(message);
        }
    }

    SDL_LogOutputFunction Previous = nullptr;
    void* PreviousUserdata = nullptr;
    std::vector<std::string> Caught;
};

} // namespace Wirefall::Testing
