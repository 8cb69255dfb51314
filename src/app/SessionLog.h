#pragma once

// What the program reports goes through SDL_Log. By default only warnings and worse get through;
// the environment variable WIREFALL_VERBOSE_LOG (1, true, yes or on) lets everything through.
//
// While a session log is running, the messages go to the file Wirefall.log in the pref path instead
// of the console, one line each. The file is kept across sessions, each of which begins with a
// banner, and when it grows over its cap the older part is thrown away. No failure of the log stops
// the game, and none is reported: there is nowhere to report it. docs/formats.md describes the
// file.

#include "base/FileAccess.h"

#include <SDL3/SDL_log.h>

#include <cstdint>
#include <mutex>
#include <string>

namespace Wirefall {

struct SessionLog {
    FileHandle File; ///< Null when closed.
    /// Where the messages went before, with its userdata.
    SDL_LogOutputFunction PreviousOutput = nullptr;
    void* PreviousUserdata = nullptr;
    std::string Path;
    std::uint64_t MaxBytes = 0; ///< The cap.
    /// Let the messages go where they went before as well.
    bool ForwardToPrevious = false;
    bool Started = false;
    std::mutex Mutex; ///< Guards File while a message is written.
};

/// Sets which messages get through. After SDL_Init.
void SetLogPriorities();

/// Begins catching the messages in the session's log file. Without a place for one there is none,
/// and nothing is caught. Does nothing while one is running. No other thread may log meanwhile.
void StartSessionLog();

/// Ends what StartSessionLog began. Right before SDL_Quit, with no other thread logging.
void EndSessionLog();

/// Writes one line: milliseconds, priority, category, message. When that takes the file over the
/// cap the file is trimmed. `userdata` is a SessionLog; null does nothing. SDL may call this from
/// any thread.
void SDLCALL LogOutput(void* userdata, int category, SDL_LogPriority priority, const char* message);

/// Cuts a file of more than `maxBytes` down to its last 768 KiB, or to what fits when that is less,
/// behind a line that says so. With a cap of 35 bytes or less, which has no room for that line, it
/// is left out, and up to 768 KiB stay. The cut does not look for the beginning of a line. A cap of
/// 0, and a file that cannot be opened, change nothing.
void TrimLogFile(const std::string& path, std::uint64_t maxBytes);

} // namespace Wirefall
