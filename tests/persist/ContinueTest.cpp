// What the save is for: the game goes on exactly where it was, in another process, and even when
// the process before was killed while it saved.

#include "game/GameApp.h"
#include "persist/RunConversion.h"
#include "persist/SaveState.h"
#include "sim/Simulation.h"
#include "storage/Storage.h"
#include "support/RunChecksum.h"
#include "support/SampleRuns.h"
#include "support/UserFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace Wirefall {
namespace {

constexpr int TicksToGoOn = 10000;

// The lines that a fresh process prints, see PlayOn.cpp.
std::vector<std::string> PlayedOnElsewhere(std::uint32_t seed) {
    const std::string command =
        WIREFALL_PLAY_ON " " + std::to_string(seed) + " " + std::to_string(TicksToGoOn);
    std::vector<std::string> lines;
    std::array<char, 100> line{};
    std::FILE* const output = popen(command.c_str(), "r"); // NOLINT(cert-env33-c)
    while (std::fgets(line.data(), static_cast<int>(line.size()), output) != nullptr) {
        lines.emplace_back(line.data());
    }
    EXPECT_EQ(pclose(output), 0);
    return lines;
}

std::vector<std::string> PlayedOnHere(std::uint32_t seed) {
    std::vector<std::string> lines;
    Testing::RandomPlayer player(seed);
    for (int tick = 0; tick < TicksToGoOn; ++tick) {
        player.PlayTick();
        std::array<char, 100> line{};
        static_cast<void>(
            std::snprintf(line.data(), line.size(), "%016llx %llu\n",
                          static_cast<unsigned long long>(Testing::RunChecksum(LiveRun())),
                          static_cast<unsigned long long>(GetRevision())));
        lines.emplace_back(line.data());
    }
    return lines;
}

TEST(Continue, AFreshProcessPlaysOnBitForBit) {
    MersenneTwister random;
    SeedEngine(random, 20);
    for (std::uint32_t seed = 1; seed <= 5; ++seed) {
        const Testing::UserFolder user;
        const auto level = static_cast<std::int32_t>(UniformDraw(random, 1, 15));
        Testing::StartSampleRun(level, seed, static_cast<int>(UniformDraw(random, 50, 2000)));
        GameApp app;
        app.HasSavedRun = true;
        ASSERT_TRUE(WriteSaveState(app));
        const std::vector<std::string> elsewhere = PlayedOnElsewhere(seed);

        LiveRun() = Testing::Normalised(LiveRun());
        const std::vector<std::string> here = PlayedOnHere(seed);
        ASSERT_EQ(elsewhere.size(), here.size());
        for (std::size_t tick = 0; tick < here.size(); ++tick) {
            ASSERT_EQ(elsewhere[tick], here[tick]) << "seed " << seed << ", tick " << tick;
        }
        EXPECT_GT(LiveRun().Level, level) << "The test has played through more than one level";
    }
}

// Saves as fast as it can until it is killed. After each save that has succeeded it tells the
// Revision that is now safe.
[[noreturn]] void SaveForever(int report) {
    GameApp app;
    app.HasSavedRun = true;
    Testing::RandomPlayer player(1);
    for (;;) {
        player.PlayTick();
        if (WriteSaveState(app)) {
            const std::uint64_t revision = GetRevision();
            if (write(report, &revision, sizeof(revision)) != sizeof(revision)) {
                _exit(EXIT_FAILURE);
            }
        }
    }
}

struct Session {
    std::uint64_t SafeRevision = 0;
    bool FileIsWhole = false; // Of the file as the killed process left it.
};

// Lets a process save for that long and kills it.
Session KilledSession(std::chrono::microseconds lifetime) {
    std::array<int, 2> pipeEnds{};
    EXPECT_EQ(pipe(pipeEnds.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        close(pipeEnds[0]);
        SaveForever(pipeEnds[1]);
    }
    close(pipeEnds[1]);
    Session session;
    const auto readReport = [&session, &pipeEnds] {
        return read(pipeEnds[0], &session.SafeRevision, sizeof(session.SafeRevision)) ==
               sizeof(session.SafeRevision);
    };
    EXPECT_TRUE(readReport()) << "The first save";
    const timespec pause = {0, std::chrono::nanoseconds(lifetime).count()};
    nanosleep(&pause, nullptr);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (readReport()) {
    }
    close(pipeEnds[0]);
    if (std::optional<std::vector<std::uint8_t>> content = ReadUserFile("SaveState.bin")) {
        TaggedReader reader;
        reader.LoadBytes(std::move(*content));
        session.FileIsWhole = ReadSavedGame(reader).IsWhole();
    }
    return session;
}

TEST(Continue, AfterEachOf500KillsTheNextStartFindsTheLastSave) {
    constexpr int Kills = 500;
    constexpr std::uint32_t LongestLifeMicroseconds = 4000;
    const Testing::UserFolder user;
    MersenneTwister random;
    SeedEngine(random, 500);
    Testing::StartSampleRun(12, 1, 100);
    int found = 0;
    int torn = 0;
    for (int kill = 0; kill < Kills; ++kill) {
        const Session session = KilledSession(
            std::chrono::microseconds(UniformDraw(random, 0, LongestLifeMicroseconds)));
        torn += session.FileIsWhole ? 0 : 1;
        GameApp app;
        EXPECT_TRUE(LoadSaveState(app));
        if (app.HasSavedRun && GetRevision() >= session.SafeRevision) {
            ++found;
        }
        ASSERT_EQ(Testing::NamesIn(user.Path()), std::vector<std::string>{"SaveState.bin"});
        LiveRun().FailureThreshold = 1000000;
    }
    EXPECT_EQ(found, Kills);
    std::cout << "The file itself was torn after " << torn << " of " << Kills << " kills\n";
}

} // namespace
} // namespace Wirefall
