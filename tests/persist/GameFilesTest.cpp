// The whole game and its files: what a first start writes, what a restart finds, and that the game
// runs whatever stands in the way of its files.

#include "app/Game.h"
#include "display/DisplayModes.h"
#include "persist/SaveState.h"
#include "sim/Simulation.h"
#include "support/CapturedOutput.h"
#include "support/SampleRuns.h"
#include "support/UserFolder.h"
#include "velini/VelINIStream.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace Wirefall {
namespace {

namespace fs = std::filesystem;
using Testing::NamesIn;

using Names = std::vector<std::string>;

class GameFiles : public testing::Test {
protected:
    void Start() {
        LiveSimulation() = Simulation{};
        G = Game{};
        ASSERT_TRUE(StartGame(G));
    }
    void StartAndPlaySomeFrames() {
        Start();
        for (int frame = 0; frame < 3; ++frame) {
            RunFrame(G);
        }
    }

    Testing::UserFolder User;
    Game G;
};

TEST_F(GameFiles, OfAFirstStartHoldTheDesktopBeforeTheFirstFrame) {
    Start();
    velINI::velINIStream config;
    ASSERT_TRUE(config.ReadFile(User.File("Config.ini").string()));
    const SDL_DisplayMode* const desktop = SDL_GetDesktopDisplayMode(SDL_GetPrimaryDisplay());
    EXPECT_EQ(config.GetValue("Graphics", "ResolutionWidth", ""), std::to_string(desktop->w));
    EXPECT_EQ(config.GetValue("Graphics", "ResolutionHeight", ""), std::to_string(desktop->h));
    EXPECT_TRUE(G.App.SaveDirty);
    RunFrame(G);
    EXPECT_FALSE(G.App.SaveDirty);
    EXPECT_EQ(fs::file_size(User.File("SaveState.bin")), 58U);
    ShutdownGame(G);
    EXPECT_EQ(NamesIn(User.Path()), (Names{"Config.ini", "SaveState.bin", "Wirefall.log"}));
}

TEST_F(GameFiles, AreLeftAloneByASecondStart) {
    Start();
    ShutdownGame(G);
    const std::string mine = "[Audio]\nMusicVolume=7\n";
    Testing::WriteFileText(User.File("Config.ini"), mine);
    StartAndPlaySomeFrames();
    EXPECT_EQ(G.App.MusicVolume, 7);
    EXPECT_FALSE(G.App.HasSavedRun);
    ShutdownGame(G);
    EXPECT_EQ(Testing::ReadFileText(User.File("Config.ini")), mine);
}

TEST_F(GameFiles, BringTheRunBackAfterARestart) {
    StartAndPlaySomeFrames();
    Testing::StartSampleRun(3, 5, 200);
    RunFrame(G);
    EXPECT_TRUE(G.App.SaveDirty) << "The change waits to be saved";
    const RunState before = LiveRun();
    ShutdownGame(G);
    Start();
    EXPECT_TRUE(G.App.HasSavedRun);
    EXPECT_EQ(LiveRun(), Testing::Normalised(before));
    EXPECT_EQ(G.App.LastSavedRevision, GetRevision());
    EXPECT_EQ(G.App.Screen, AppScreen::MainMenu);
    ShutdownGame(G);
}

TEST_F(GameFiles, ThatMayNotGrowDoNotEndTheGame) {
    EXPECT_TRUE(Testing::HoldsInChild([this] {
        // Whoever started the test may ignore it, which is inherited.
        std::signal(SIGXFSZ, SIG_DFL); // NOLINT(cert-err33-c)
        StartAndPlaySomeFrames();
        Testing::StartSampleRun(3, 5, 200);
        RunFrame(G);
        const rlimit nothing = {0, 0};
        setrlimit(RLIMIT_FSIZE, &nothing);
        ShutdownGame(G);
        return G.App.SaveDirty;
    }));
}

struct Obstacle {
    const char* Name;
    void (*Place)(const Testing::UserFolder& user);
};

class ObstructedFiles : public GameFiles, public testing::WithParamInterface<Obstacle> {};

TEST_P(ObstructedFiles, DoNotStopTheGame) {
    User.Create();
    GetParam().Place(User);
    {
        const Testing::CapturedErrors quietErrors;
        const Testing::CapturedOutput quiet;
        StartAndPlaySomeFrames();
        Testing::StartSampleRun(3, 5, 200);
        RunFrame(G);
        ShutdownGame(G);
    }

    fs::remove_all(User.DataHome() / "Velkor");
    StartAndPlaySomeFrames();
    EXPECT_FALSE(G.App.SaveDirty) << "Once the obstacle is gone everything is stored";
    ShutdownGame(G);
    EXPECT_EQ(NamesIn(User.Path()), (Names{"Config.ini", "SaveState.bin", "Wirefall.log"}));
}

INSTANTIATE_TEST_SUITE_P(
    Obstacles, ObstructedFiles,
    testing::Values(
        Obstacle{
            "FilesThatAreFolders",
            [](const Testing::UserFolder& user) {
                for (const char* const name : {"SaveState.bin", "Config.ini", "Wirefall.log"}) {
                    fs::create_directory(user.File(name));
                }
            }},
        Obstacle{"TemporaryFilesThatAreFolders",
                 [](const Testing::UserFolder& user) {
                     fs::create_directory(user.File(".SaveState.bin.tmp"));
                     fs::create_directory(user.File(".Config.ini.tmp"));
                 }},
        Obstacle{
            "EmptyFiles",
            [](const Testing::UserFolder& user) {
                for (const char* const name : {"SaveState.bin", "Config.ini", "Wirefall.log"}) {
                    Testing::WriteFileText(user.File(name), "");
                }
            }},
        Obstacle{"Rubbish",
                 [](const Testing::UserFolder& user) {
                     for (const char* const name : {"SaveState.bin", "Config.ini",
                                                    ".SaveState.bin.tmp", ".Config.ini.tmp"}) {
                         Testing::WriteFileText(user.File(name), std::string(5000, '\n'));
                     }
                 }},
        Obstacle{"FileInPlaceOfTheFolder",
                 [](const Testing::UserFolder& user) {
                     fs::remove(user.Path());
                     Testing::WriteFileText(user.Path(), "a file");
                 }},
        Obstacle{"NoFolder",
                 [](const Testing::UserFolder& user) {
                     fs::remove_all(user.DataHome() / "Velkor");
                     Testing::WriteFileText(user.DataHome() / "Velkor", "a file");
                 }}),
    [](const auto& obstacle) { return obstacle.param.Name; });

} // namespace
} // namespace Wirefall
