#include "app/SessionLog.h"

#include "base/Clock.h"
#include "support/CapturedLog.h"
#include "support/UserFolder.h"

#include <SDL3/SDL_stdinc.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <thread>

namespace Wirefall {
namespace {

using Testing::ReadFileText;
using Testing::TemporaryFolder;
using Testing::UserFolder;
using Testing::WriteFileText;

constexpr std::uint64_t Cap = 1048576;
constexpr std::size_t TrimmedSize = 786467;
const std::string Marker = "\n[log truncated: size cap reached]\n";
const std::string Banner = "\n========== Wirefall 0.1.0 (Release) ==========\n";
const std::string EndLine = "========== Log Session End ==========\n";

// A text in which no two places look alike.
std::string CountedText(std::size_t size) {
    std::string text;
    for (int i = 0; text.size() < size; ++i) {
        text += std::to_string(i) + ' ';
    }
    text.resize(size);
    return text;
}

class TrimLog : public testing::Test {
protected:
    std::string Trimmed(std::string_view text, std::uint64_t maxBytes) const {
        WriteFileText(Path, text);
        TrimLogFile(Path, maxBytes);
        return ReadFileText(Path);
    }

    TemporaryFolder Folder;
    std::string Path = Folder.File("Wirefall.log");
};

TEST_F(TrimLog, AFileOfExactlyTheCapStays) {
    const std::string text = CountedText(Cap);
    EXPECT_EQ(Trimmed(text, Cap), text);
}

TEST_F(TrimLog, OneByteMoreLeavesThreeQuartersOfTheCapBehindTheMarker) {
    const std::string text = CountedText(Cap + 1);
    const std::string trimmed = Trimmed(text, Cap);
    EXPECT_EQ(trimmed.size(), TrimmedSize);
    EXPECT_EQ(trimmed, Marker + text.substr(text.size() - 786432));
}

TEST_F(TrimLog, AFileFarOverTheCapIsCutTheSame) {
    const std::string text = CountedText(5 * Cap);
    EXPECT_EQ(Trimmed(text, Cap), Marker + text.substr(text.size() - 786432));
}

TEST_F(TrimLog, ASmallCapHoldsWithTheMarkerCounted) {
    const std::string text = CountedText(1000);
    EXPECT_EQ(Trimmed(text, 100), Marker + text.substr(1000 - 65));
    EXPECT_EQ(Trimmed(text, 36), Marker + text.substr(999));
    EXPECT_EQ(Trimmed(text, 999), Marker + text.substr(1000 - 964));
}

TEST_F(TrimLog, ACapWithoutRoomForTheMarkerKeepsWhatItWouldKeepAnyway) {
    const std::string text = CountedText(1000);
    EXPECT_EQ(Trimmed(text, 35), text);
    EXPECT_EQ(Trimmed(text, 1), text);
    const std::string large = CountedText(800000);
    EXPECT_EQ(Trimmed(large, 35), large.substr(800000 - 786432));
}

TEST_F(TrimLog, NoCapNoPathAndNoFileChangeNothing) {
    const std::string text = CountedText(1000);
    EXPECT_EQ(Trimmed(text, 0), text);
    TrimLogFile("", 100);
    TrimLogFile(Folder.File("missing"), 100);
    EXPECT_EQ(Testing::NamesIn(Folder.Path()), std::vector<std::string>{"Wirefall.log"});
    EXPECT_EQ(Trimmed("", 100), "");
}

TEST_F(TrimLog, AFolderStays) {
    std::filesystem::create_directory(Path);
    TrimLogFile(Path, 1);
    EXPECT_TRUE(std::filesystem::is_directory(Path));
}

TEST_F(TrimLog, TheCutFallsWhereItFalls) {
    std::string text;
    while (text.size() < 200) {
        text += "\xe2\x82\xac";
    }
    const std::string trimmed = Trimmed(text, 100);
    EXPECT_EQ(trimmed, Marker + text.substr(text.size() - 65));
    EXPECT_NE(trimmed[Marker.size()], '\xe2') << "This cut splits a character";
}

class LogLine : public testing::Test {
protected:
    LogLine() {
        Log.File.reset(std::fopen(Path.c_str(), "ab"));
        Log.Path = Path;
        Log.MaxBytes = Cap;
        FreezeClock(12345);
    }
    void TearDown() override { ResumeClock(); }

    std::string Content() const { return ReadFileText(Path); }

    TemporaryFolder Folder;
    std::string Path = Folder.File("Wirefall.log");
    SessionLog Log;
};

TEST_F(LogLine, TellsTimeLevelCategoryAndMessage) {
    LogOutput(&Log, SDL_LOG_CATEGORY_RENDER, SDL_LOG_PRIORITY_WARN, "the message");
    EXPECT_EQ(Content(), "[     12345 ms] [WARN] [cat:6] the message\n");
}

TEST_F(LogLine, NamesEveryPriority) {
    constexpr std::array<const char*, 9> Names = {"INVALID", "TRACE", "VERBOSE",  "DEBUG", "INFO",
                                                  "WARN",    "ERROR", "CRITICAL", "COUNT"};
    std::string expected;
    for (std::size_t priority = 0; priority < Names.size(); ++priority) {
        LogOutput(&Log, 0, static_cast<SDL_LogPriority>(priority), "m");
        expected += std::string("[     12345 ms] [") + Names.at(priority) + "] [cat:0] m\n";
    }
    EXPECT_EQ(Content(), expected);
}

TEST_F(LogLine, AnyOtherPriorityIsUnknown) {
    for (const int priority : {9, 15}) {
        WriteFileText(Path, "");
        LogOutput(&Log, 0, static_cast<SDL_LogPriority>(priority), "m");
        EXPECT_EQ(Content(), "[     12345 ms] [UNKNOWN] [cat:0] m\n");
    }
}

TEST_F(LogLine, NoMessageIsAnEmptyOne) {
    LogOutput(&Log, 19, SDL_LOG_PRIORITY_ERROR, nullptr);
    EXPECT_EQ(Content(), "[     12345 ms] [ERROR] [cat:19] \n");
}

TEST_F(LogLine, ALongTimeTakesTheRoomItNeeds) {
    FreezeClock(123456789012);
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    EXPECT_EQ(Content(), "[123456789012 ms] [INFO] [cat:0] m\n");
}

TEST_F(LogLine, PercentSignsAreNoFormat) {
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "100%s %n");
    EXPECT_EQ(Content(), "[     12345 ms] [INFO] [cat:0] 100%s %n\n");
}

TEST_F(LogLine, WithoutALogNothingHappens) {
    LogOutput(nullptr, 0, SDL_LOG_PRIORITY_INFO, "m");
    Log.File.reset();
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    EXPECT_EQ(Content(), "");
}

TEST_F(LogLine, GoesOnToTheOutputBeforeOnlyWhenToldTo) {
    std::vector<std::string> lines;
    Log.PreviousUserdata = &lines;
    Log.PreviousOutput = [](void* userdata, int category, SDL_LogPriority priority,
                            const char* message) {
        std::ostringstream line;
        line << category << ' ' << priority << ' ' << message;
        static_cast<std::vector<std::string>*>(userdata)->push_back(line.str());
    };
    LogOutput(&Log, 3, SDL_LOG_PRIORITY_WARN, "one");
    EXPECT_TRUE(lines.empty());
    Log.ForwardToPrevious = true;
    LogOutput(&Log, 3, SDL_LOG_PRIORITY_WARN, "two");
    Log.File.reset();
    LogOutput(&Log, 4, SDL_LOG_PRIORITY_ERROR, "three");
    EXPECT_EQ(lines, (std::vector<std::string>{"3 5 two", "4 6 three"}));
    Log.PreviousOutput = nullptr;
    LogOutput(&Log, 4, SDL_LOG_PRIORITY_ERROR, "four");
}

TEST_F(LogLine, TheOneThatPassesTheCapTrimsTheFile) {
    const std::string line = "[     12345 ms] [INFO] [cat:0] m\n";
    WriteFileText(Path, CountedText(Cap - line.size()));
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    EXPECT_EQ(Content().size(), Cap) << "At the cap is not over it";
    const std::string before = Content();
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    EXPECT_EQ(Content().size(), TrimmedSize);
    EXPECT_EQ(Content(), Marker + (before + line).substr(Cap + line.size() - 786432));
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    EXPECT_EQ(Content().size(), TrimmedSize + line.size());
}

TEST_F(LogLine, StaysSilentWhenTheTrimmedFileCannotBeOpenedAgain) {
    Log.MaxBytes = 50;
    Log.Path = Folder.File("missing/Wirefall.log");
    const std::string line = "[     12345 ms] [INFO] [cat:0] m\n";
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    EXPECT_EQ(Log.File, nullptr);
    LogOutput(&Log, 0, SDL_LOG_PRIORITY_INFO, "m");
    EXPECT_EQ(Content(), line + line);
}

// The file of the log that StartSessionLog opens in a folder of its own.
class LogSession : public testing::Test {
protected:
    void TearDown() override { EndSessionLog(); }
    std::string Content() const { return ReadFileText(User.File("Wirefall.log")); }

    UserFolder User;
};

TEST_F(LogSession, BeginsWithABannerAndEndsWithALine) {
    StartSessionLog();
    EXPECT_EQ(Content(), Banner);
    EndSessionLog();
    EXPECT_EQ(Content(), Banner + EndLine);
}

TEST_F(LogSession, GoesOnInTheFileOfTheLastOne) {
    StartSessionLog();
    EndSessionLog();
    StartSessionLog();
    EndSessionLog();
    EXPECT_EQ(Content(), Banner + EndLine + Banner + EndLine);
}

TEST_F(LogSession, CatchesWhatIsLogged) {
    FreezeClock(7);
    StartSessionLog();
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "careful: %d", 3);
    EndSessionLog();
    ResumeClock();
    EXPECT_EQ(Content(), Banner + "[         7 ms] [WARN] [cat:0] careful: 3\n" + EndLine);
}

TEST_F(LogSession, KeepsTheConsoleQuietAndGivesItBackInTheEnd) {
    const Testing::CapturedLog console;
    StartSessionLog();
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "for the file");
    EXPECT_TRUE(console.Messages().empty());
    EndSessionLog();
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "for the console");
    EXPECT_EQ(console.Messages(), std::vector<std::string>{"for the console"});
}

TEST_F(LogSession, StartedTwiceIsStartedOnce) {
    const Testing::CapturedLog console;
    StartSessionLog();
    StartSessionLog();
    EndSessionLog();
    EXPECT_EQ(Content(), Banner + EndLine);
    EndSessionLog();
    EXPECT_EQ(Content(), Banner + EndLine);
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "for the console");
    EXPECT_EQ(console.Messages().size(), 1U);
}

TEST_F(LogSession, CutsALogOverTheCapBeforeItBegins) {
    User.Create();
    const std::string text = CountedText(Cap + 1);
    WriteFileText(User.File("Wirefall.log"), text);
    StartSessionLog();
    EXPECT_EQ(Content(), Marker + text.substr(text.size() - 786432) + Banner);
}

TEST_F(LogSession, WithoutAPlaceForTheFileTheConsoleStaysInUse) {
    WriteFileText(User.DataHome() / "Velkor", "a file in the way");
    const Testing::CapturedLog console;
    StartSessionLog();
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "for the console");
    EndSessionLog();
    EXPECT_EQ(console.Messages(), std::vector<std::string>{"for the console"});
}

TEST_F(LogSession, WithAFolderInTheWayTheConsoleStaysInUse) {
    std::filesystem::create_directories(User.File("Wirefall.log"));
    const Testing::CapturedLog console;
    StartSessionLog();
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "for the console");
    EndSessionLog();
    EXPECT_EQ(console.Messages(), std::vector<std::string>{"for the console"});
}

// Two threads log as fast as they can, over and over the cap. ThreadSanitizer watches in its build.
TEST_F(LogSession, SurvivesTwoThreadsThatLogWhileItIsTrimmed) {
    StartSessionLog();
    const auto hammer = [](const char* name) {
        const std::string text(200, '.');
        for (int i = 0; i < 8000; ++i) {
            SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "%s %d %s", name, i, text.c_str());
        }
    };
    // SDL sets its log up at the first message, which must be over before the threads come.
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "before");
    std::thread first(hammer, "first");
    std::thread second(hammer, "second");
    first.join();
    second.join();
    EndSessionLog();

    const std::string content = Content();
    EXPECT_LE(content.size(), Cap + EndLine.size());
    ASSERT_EQ(content.substr(0, Marker.size()), Marker);
    std::istringstream lines(content.substr(Marker.size()));
    std::string line;
    std::getline(lines, line); // Cut somewhere.
    std::string last;
    int whole = 0;
    while (std::getline(lines, line) && line + '\n' != EndLine) {
        ++whole;
        last = line;
        EXPECT_TRUE(line.ends_with(" " + std::string(200, '.'))) << line;
        EXPECT_EQ(line.find("[WARN] [cat:0] "), 16U) << line;
    }
    EXPECT_GT(whole, 3000);
    EXPECT_NE(last.find(" 7999 "), std::string::npos) << "Nothing is lost at the end: " << last;
}

// The same on LogOutput itself, which must hold without SDL's own lock around it.
TEST_F(LogLine, SurvivesThreadsThatCallItDirectly) {
    Log.MaxBytes = TrimmedSize + 10000;
    const std::string text(200, '.');
    const auto hammer = [this, &text] {
        for (int i = 0; i < 4000; ++i) {
            LogOutput(&Log, 0, SDL_LOG_PRIORITY_WARN, text.c_str());
        }
    };
    std::thread first(hammer);
    std::thread second(hammer);
    first.join();
    second.join();
    EXPECT_LE(Content().size(), Log.MaxBytes);
    EXPECT_NE(Log.File, nullptr);
}

bool LetsInfoThrough(const char* value) {
    SDL_Environment* const environment = SDL_GetEnvironment();
    if (value != nullptr) {
        SDL_SetEnvironmentVariable(environment, "WIREFALL_VERBOSE_LOG", value, true);
    } else {
        SDL_UnsetEnvironmentVariable(environment, "WIREFALL_VERBOSE_LOG");
    }
    SetLogPriorities();
    SDL_UnsetEnvironmentVariable(environment, "WIREFALL_VERBOSE_LOG");
    const SDL_LogPriority priority = SDL_GetLogPriority(SDL_LOG_CATEGORY_APPLICATION);
    EXPECT_TRUE(priority == SDL_LOG_PRIORITY_WARN || priority == SDL_LOG_PRIORITY_VERBOSE);
    return priority == SDL_LOG_PRIORITY_VERBOSE;
}

TEST(VerboseLog, IsTurnedOnByFourWords) {
    for (const char* const value :
         {"1", "true", "yes", "on", "TRUE", "On", " Yes", "  TRUE", "\t\n1"}) {
        EXPECT_TRUE(LetsInfoThrough(value)) << '"' << value << '"';
    }
}

TEST(VerboseLog, IsOffWithAnythingElse) {
    EXPECT_FALSE(LetsInfoThrough(nullptr));
    for (const char* const value : {"", "  ", "0", "2", "Y", "1 ", "TRUE ", "yess", "no"}) {
        EXPECT_FALSE(LetsInfoThrough(value)) << '"' << value << '"';
    }
}

TEST(VerboseLog, TheGamesOwnMessagesComeOnlyWithIt) {
    Testing::CapturedLog log;
    SetLogPriorities();
    SDL_Log("a message");
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "a warning");
    EXPECT_EQ(log.Messages(), std::vector<std::string>{"a warning"});
}

} // namespace
} // namespace Wirefall
