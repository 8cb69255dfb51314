// Holds the layering of docs/architecture.md: which folder of src/ may include which others.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// The folders that each folder may include, besides itself and the shared records.
const std::map<std::string, std::set<std::string>> AllowedFolders = {
    {"velini", {}},
    {"sim", {}},
    {"base", {}},
    {"display", {"base", "sim"}},
    {"persist", {"base", "display", "sim", "velini"}},
    {"audio", {"base", "persist", "sim", "velini"}},
    {"ui", {"base", "display", "persist", "sim", "velini"}},
    {"input", {"audio", "base", "display", "persist", "sim", "ui"}},
    {"app", {"audio", "base", "display", "input", "persist", "sim", "ui", "velini"}},
};

// The record that everything above the ground may share, and what it is made of.
const std::set<std::string> SharedRecords = {
    "app/AppScreen.h",        "app/GameApp.h",        "audio/SoundEvent.h",
    "display/DisplayTypes.h", "input/BindingRows.h",  "input/Bindings.h",
    "input/ControllerSet.h",  "input/OptionsState.h", "input/PressCodes.h",
    "persist/GameOptions.h",
};

const std::set<std::string> GroundFolders = {"velini", "sim", "base"};

// Which of the third-party headers a ground folder may include: none but SDL's, and those only in
// base.
bool MayIncludeSdl(const std::string& folder) { return folder != "velini" && folder != "sim"; }

std::string FolderOf(const std::string& path) { return path.substr(0, path.find('/')); }

std::vector<fs::path> SourceFiles() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(WIREFALL_SOURCE_DIR)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".h" || extension == ".cpp") {
            files.push_back(fs::relative(entry.path(), WIREFALL_SOURCE_DIR));
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool IsAllowed(const std::string& file, const std::string& included) {
    const std::string folder = FolderOf(file);
    const std::string target = FolderOf(included);
    if (folder == target) {
        return true;
    }
    if (SharedRecords.count(included) != 0 && GroundFolders.count(folder) == 0) {
        return true;
    }
    return AllowedFolders.at(folder).count(target) != 0;
}

TEST(Architecture, EveryIncludeFollowsTheArrows) {
    const std::regex ours(R"re(^\s*#include "([^"]+)")re");
    const std::regex sdl(R"(^\s*#include <SDL3)");
    int includes = 0;
    for (const fs::path& path : SourceFiles()) {
        const std::string file = path.generic_string();
        ASSERT_EQ(AllowedFolders.count(FolderOf(file)), 1U) << file << " is in no known folder";
        std::ifstream stream(fs::path(WIREFALL_SOURCE_DIR) / path);
        std::string line;
        while (std::getline(stream, line)) {
            std::smatch match;
            if (std::regex_search(line, match, ours)) {
                ++includes;
                EXPECT_TRUE(IsAllowed(file, match[1])) << file << " includes " << match[1];
            }
            EXPECT_TRUE(!std::regex_search(line, sdl) || MayIncludeSdl(FolderOf(file)))
                << file << ": " << line;
        }
    }
    EXPECT_GT(includes, 100) << "the files have been found";
}

// The records may include each other, the standard library, SDL's types and sim/, but no code.
TEST(Architecture, TheSharedRecordsAreMadeOfRecords) {
    const std::regex ours(R"re(^\s*#include "([^"]+)")re");
    for (const std::string& record : SharedRecords) {
        std::ifstream stream(fs::path(WIREFALL_SOURCE_DIR) / record);
        ASSERT_TRUE(stream.is_open()) << record;
        std::string line;
        while (std::getline(stream, line)) {
            std::smatch match;
            if (std::regex_search(line, match, ours)) {
                EXPECT_TRUE(SharedRecords.count(match[1]) != 0 || FolderOf(match[1]) == "sim")
                    << record << " includes " << match[1];
            }
        }
    }
}

} // namespace
