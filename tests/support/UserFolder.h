#pragma once

// Where the game keeps the player's files during a test: a folder of the test's own.

#include "support/TestFiles.h"
#include "support/TestHome.h"

#include <filesystem>
#include <string_view>

namespace Wirefall::Testing {

class UserFolder {
public:
    /// What XDG_DATA_HOME names.
    const std::filesystem::path& DataHome() const { return Home.Folder(); }
    /// The pref path, which on this platform is also the user storage. It need not exist yet.
    std::filesystem::path Path() const { return DataHome() / "Velkor" / "Wirefall"; }
    std::filesystem::path File(std::string_view name) const { return Path() / name; }
    /// Makes the folder and what leads to it.
    void Create() const { std::filesystem::create_directories(Path()); }

private:
    TestHome Home;
};

} // namespace Wirefall::Testing
