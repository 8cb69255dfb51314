// Holds the floors of docs/architecture.md: which folder of src/ reads which others. And that the
// folders of tests/ read of one another only what they share.

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

const fs::path Root = WIREFALL_ROOT;

struct Floor {
    std::string Folder;
    std::set<std::string> Reads; ///< Besides itself.

    bool operator==(const Floor&) const = default;
};

// From the ground up.
const std::vector<Floor> Floors = {
    {"base", {}},
    {"velini", {}},
    {"sim", {"base"}},
    {"storage", {"base", "velini"}},
    {"display", {"base"}},
    {"input", {"base"}},
    {"audio", {"base", "velini", "sim", "storage"}},
    {"words", {"base", "velini", "storage", "input"}},
    {"persist", {"base", "velini", "sim", "storage", "display", "input", "audio", "words"}},
    {"draw", {"base", "sim", "display"}},
    {"game", {"base", "sim", "display", "input", "audio", "words", "persist"}},
    {"screens", {"base", "sim", "display", "input", "audio", "words", "persist", "draw", "game"}},
    {"options", {"base", "display", "input", "audio", "words", "draw", "game"}},
    {"app",
     {"base", "sim", "storage", "display", "input", "audio", "words", "persist", "draw", "game",
      "screens", "options"}},
};

std::string FolderOf(const std::string& path) { return path.substr(0, path.find('/')); }

std::vector<std::string> LinesOf(const fs::path& file) {
    std::ifstream stream(file);
    EXPECT_TRUE(stream.is_open()) << file;
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// What each file below the folder includes of ours, by its path there.
std::map<std::string, std::set<std::string>> IncludesOfFiles(const fs::path& folder) {
    const std::regex include(R"re(^\s*#include "([^"]+)")re");
    std::map<std::string, std::set<std::string>> includes;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") {
            continue;
        }
        std::set<std::string>& ofFile =
            includes[fs::relative(entry.path(), folder).generic_string()];
        for (const std::string& line : LinesOf(entry.path())) {
            std::smatch match;
            if (std::regex_search(line, match, include)) {
                ofFile.insert(match[1]);
            }
        }
    }
    return includes;
}

// The words in backquotes of a cell of a table.
std::set<std::string> QuotedWords(const std::string& cell) {
    const std::regex word("`([^`]+)`");
    return {std::sregex_token_iterator(cell.begin(), cell.end(), word, 1),
            std::sregex_token_iterator()};
}

// The table of folders in docs/architecture.md.
std::vector<Floor> FloorsOfThePage() {
    const std::regex row(R"(^\| `src/(\w+)` \| ([^|]*) \|)");
    std::vector<Floor> floors;
    for (const std::string& line : LinesOf(Root / "docs" / "architecture.md")) {
        std::smatch match;
        if (std::regex_search(line, match, row)) {
            floors.push_back({match[1], QuotedWords(match[2])});
        }
    }
    return floors;
}

TEST(Architecture, NoFolderReadsOneThatStandsAboveIt) {
    std::set<std::string> below;
    for (const Floor& floor : Floors) {
        EXPECT_TRUE(std::ranges::includes(below, floor.Reads)) << floor.Folder;
        below.insert(floor.Folder);
    }
}

TEST(Architecture, EachFolderReadsWhatItsFloorSaysNoMoreAndNoLess) {
    std::map<std::string, std::set<std::string>> reads;
    for (const auto& [file, includes] : IncludesOfFiles(Root / "src")) {
        std::set<std::string>& ofFolder = reads[FolderOf(file)];
        for (const std::string& included : includes) {
            if (FolderOf(included) != FolderOf(file)) {
                ofFolder.insert(FolderOf(included));
            }
        }
    }
    EXPECT_EQ(reads.size(), Floors.size()) << "every folder has a floor";
    for (const Floor& floor : Floors) {
        EXPECT_EQ(reads[floor.Folder], floor.Reads) << floor.Folder;
    }
}

TEST(Architecture, ThePageDrawsTheSameFloors) {
    const std::vector<Floor> page = FloorsOfThePage();
    ASSERT_EQ(page.size(), Floors.size());
    for (std::size_t i = 0; i < page.size(); ++i) {
        EXPECT_EQ(page[i].Folder, Floors[i].Folder);
        EXPECT_EQ(page[i].Reads, Floors[i].Reads) << page[i].Folder;
    }
}

// Neither in their own files nor in what they read of others.
TEST(Architecture, TheRulesAndTheIniLibraryKnowNothingOfSdl) {
    const std::map<std::string, std::set<std::string>> includes = IncludesOfFiles(Root / "src");
    std::set<std::string> reached;
    std::vector<std::string> open;
    for (const auto& [file, ofFile] : includes) {
        if (FolderOf(file) == "sim" || FolderOf(file) == "velini") {
            open.push_back(file);
        }
    }
    ASSERT_GT(open.size(), 20U);
    while (!open.empty()) {
        const std::string file = open.back();
        open.pop_back();
        if (reached.insert(file).second) {
            open.insert(open.end(), includes.at(file).begin(), includes.at(file).end());
        }
    }
    for (const std::string& file : reached) {
        for (const std::string& line : LinesOf(Root / "src" / file)) {
            EXPECT_FALSE(line.starts_with("#include <SDL3")) << file << ": " << line;
        }
    }
}

// What one folder of tests takes from another stands in tests/support.
TEST(Architecture, NoFolderOfTestsReadsAnotherButWhatTheyShare) {
    std::size_t shared = 0;
    for (const auto& [file, includes] : IncludesOfFiles(Root / "tests")) {
        for (const std::string& included : includes) {
            if (!fs::exists(Root / "tests" / included)) {
                continue; // A header of the game.
            }
            const bool isShared = FolderOf(included) == "support";
            shared += isShared ? 1U : 0U;
            EXPECT_TRUE(isShared || FolderOf(included) == FolderOf(file))
                << file << " reads " << included;
        }
    }
    EXPECT_GT(shared, 50U);
}

} // namespace
