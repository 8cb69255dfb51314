#include "app/SessionLog.h"

#include "base/BuildInfo.h"
#include "base/Clock.h"
#include "storage/Storage.h"

#include <SDL3/SDL_stdinc.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <string_view>
#include <vector>

namespace Wirefall {

namespace {

constexpr const char* LogName = "Wirefall.log";
constexpr std::uint64_t LogCap = 1048576;
constexpr std::uint64_t KeptBytes = 786432;
constexpr std::string_view TrimMarker = "\n[log truncated: size cap reached]\n";

constexpr std::array<std::string_view, 4> VerboseWords = {"1", "true", "yes", "on"};

// By SDL_LogPriority.
constexpr std::array<const char*, 9> LevelNames = {"INVALID", "TRACE", "VERBOSE",  "DEBUG", "INFO",
                                                   "WARN",    "ERROR", "CRITICAL", "COUNT"};

SessionLog TheSessionLog;

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

const char* LevelName(SDL_LogPriority priority) {
    const auto index = static_cast<std::size_t>(priority);
    return index < LevelNames.size() ? LevelNames[index] : "UNKNOWN";
}

// How much of a file of `size` bytes stays under a cap.
std::uint64_t KeptSize(std::uint64_t size, std::uint64_t maxBytes) {
    std::uint64_t kept = std::min(size, KeptBytes);
    if (maxBytes > TrimMarker.size()) {
        kept = std::min(kept, maxBytes - TrimMarker.size());
    }
    return kept;
}

// The end of a file that is over the cap; nothing for any other file.
std::vector<char> ReadTail(const std::string& path, std::uint64_t maxBytes) {
    const FileHandle file = OpenFile(path, "rb");
    if (!file || std::fseek(file.get(), 0, SEEK_END) != 0) {
        return {};
    }
    const long size = std::ftell(file.get());
    if (size < 1 || static_cast<std::uint64_t>(size) <= maxBytes) {
        return {};
    }
    std::vector<char> tail(KeptSize(static_cast<std::uint64_t>(size), maxBytes));
    if (std::fseek(file.get(), size - static_cast<long>(tail.size()), SEEK_SET) != 0) {
        return {};
    }
    tail.resize(std::fread(tail.data(), 1, tail.size(), file.get()));
    return tail;
}

// Whether it arrives is not looked at: there is nowhere to report it.
void Append(std::FILE* file, std::string_view text) {
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), file));
    static_cast<void>(std::fflush(file));
}

void WriteLine(SessionLog& log, int category, SDL_LogPriority priority, const char* message) {
    static_cast<void>(std::fprintf(log.File.get(), "[%10llu ms] [%s] [cat:%d] %s\n",
                                   static_cast<unsigned long long>(ClockMs()), LevelName(priority),
                                   category, message != nullptr ? message : ""));
    static_cast<void>(std::fflush(log.File.get()));
}

void TrimWhenOverCap(SessionLog& log) {
    const long position = std::ftell(log.File.get());
    if (position < 0 || static_cast<std::uint64_t>(position) <= log.MaxBytes) {
        return;
    }
    log.File.reset();
    TrimLogFile(log.Path, log.MaxBytes);
    log.File = OpenFile(log.Path, "ab");
}

} // namespace

void SetLogPriorities() {
    SDL_SetLogPriorities(SDL_LOG_PRIORITY_WARN);
    if (WantsVerboseLog()) {
        SDL_SetLogPriorities(SDL_LOG_PRIORITY_VERBOSE);
    }
}

void StartSessionLog() {
    SessionLog& log = TheSessionLog;
    if (log.Started) {
        return;
    }
    log.Path = GetPrefFilePath(LogName);
    if (log.Path.empty()) {
        return;
    }
    log.MaxBytes = LogCap;
    TrimLogFile(log.Path, log.MaxBytes);
    log.File = OpenFile(log.Path, "ab");
    if (!log.File) {
        return;
    }
    SDL_GetLogOutputFunction(&log.PreviousOutput, &log.PreviousUserdata);
    log.ForwardToPrevious = false;
    SDL_SetLogOutputFunction(LogOutput, &log);
    log.Started = true;
    Append(log.File.get(),
           std::string("\n========== Wirefall ") + Version + " (" + BuildKind + ") ==========\n");
}

void EndSessionLog() {
    SessionLog& log = TheSessionLog;
    if (!log.Started) {
        return;
    }
    if (log.File) {
        Append(log.File.get(), "========== Log Session End ==========\n");
    }
    SDL_SetLogOutputFunction(log.PreviousOutput, log.PreviousUserdata);
    log.Started = false;
    log.PreviousOutput = nullptr;
    log.PreviousUserdata = nullptr;
    log.Path.clear();
    log.File.reset();
}

void SDLCALL LogOutput(void* userdata, int category, SDL_LogPriority priority,
                       const char* message) {
    if (userdata == nullptr) {
        return;
    }
    SessionLog& log = *static_cast<SessionLog*>(userdata);
    {
        const std::lock_guard lock(log.Mutex);
        if (log.File) {
            WriteLine(log, category, priority, message);
            TrimWhenOverCap(log);
        }
    }
    if (log.ForwardToPrevious && log.PreviousOutput != nullptr) {
        log.PreviousOutput(log.PreviousUserdata, category, priority, message);
    }
}

void TrimLogFile(const std::string& path, std::uint64_t maxBytes) {
    if (path.empty() || maxBytes == 0) {
        return;
    }
    const std::vector<char> tail = ReadTail(path, maxBytes);
    if (tail.empty()) {
        return;
    }
    const FileHandle file = OpenFile(path, "wb");
    if (!file) {
        return;
    }
    if (maxBytes > TrimMarker.size()) {
        Append(file.get(), TrimMarker);
    }
    Append(file.get(), {tail.data(), tail.size()});
}

} // namespace Wirefall
