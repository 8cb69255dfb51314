#include "app/SessionLog.h"

#include <SDL3/SDL_log.h>
#include <SDL3/SDL_stdinc.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>

namespace Wirefall {

namespace {

constexpr std::array<std::string_view, 4> VerboseWords = {"1", "true", "yes", "on"};

bool WantsVerboseLog() {
    const char* const value = SDL_getenv("WIREFALL_VERBOSE_LOG");
    if (value == nullptr) {
        return false;
    }
    const auto isSpace = [](unsigned char c) { return std::isspace(c) != 0; };
    const auto toLower = [](unsigned char c) { return static_cast<char>(std::tolower(c)); };
    std::string word = value;
    word.erase(word.begin(), std::find_if_not(word.begin(), word.end(), isSpace));
    std::transform(word.begin(), word.end(), word.begin(), toLower);
    return std::find(VerboseWords.begin(), VerboseWords.end(), word) != VerboseWords.end();
}

} // namespace

void SetLogPriorities() {
    SDL_SetLogPriorities(SDL_LOG_PRIORITY_WARN);
    if (WantsVerboseLog()) {
        SDL_SetLogPriorities(SDL_LOG_PRIORITY_VERBOSE);
    }
}

// This build has no user storage, so there is no place for a log file.

void StartSessionLog() {}

void EndSessionLog() {}

} // namespace Wirefall
