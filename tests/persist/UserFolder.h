#pragma once

// A place for the player's files that is a test's own, and what the game logs meanwhile.

#include "persist/TestFiles.h"

#include <SDL3/SDL_log.h>

#include <string>
#include <string_view>
#include <vector>

namespace Wirefall::Testing {

/// Makes SDL keep the player's files below a temporary folder for the life of the process or until
/// the next of these. One at a time.
class UserFolder {
public:
    UserFolder();

    /// What XDG_DATA_HOME names.
    const std::filesystem::path& DataHome() const { return Home.Path(); }
    /// The pref path, which on this platform is also the user storage. It need not exist yet.
    std::filesystem::path Path() const { return DataHome() / "Velkor" / "Wirefall"; }
    std::filesystem::path File(std::string_view name) const { return Path() / name; }
    /// Makes the folder and what leads to it.
    void Create() const { std::filesystem::create_directories(Path()); }

private:
    TemporaryFolder Home;
};

/// Makes SDL keep the player's files below that folder.
void SetDataHome(const std::filesystem::path& folder);

/// Collects what goes through SDL_Log, of every priority.
class CapturedLog {
public:
    CapturedLog();
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;
    ~CapturedLog();

    std::vector<std::string> Lines;

private:
    SDL_LogOutputFunction Previous = nullptr;
    void* PreviousUserdata = nullptr;
};

} // namespace Wirefall::Testing
