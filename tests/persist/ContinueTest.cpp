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
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
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

bool StoredFileIsWhole() {
    std::optional<std::vector<std::uint8_t>> content = ReadUserFile("SaveState.bin").Content;
    if (!content) {
        return false;
    }
    TaggedReader reader;
    reader.LoadBytes(std::move(*content));
    return ReadSavedGame(reader).IsWhole();
}

/// A process of its own that saves without pause, until it is killed.
class SavingProcess {
public:
    SavingProcess() {
        EXPECT_EQ(pipe(PipeEnds.data()), 0);
        Child = fork();
        if (Child == 0) {
            close(PipeEnds[0]);
            SaveForever(PipeEnds[1]);
        }
        close(PipeEnds[1]);
        EXPECT_TRUE(ReadReport()) << "The first save";
    }
    SavingProcess(const SavingProcess&) = delete;
    SavingProcess& operator=(const SavingProcess&) = delete;
    SavingProcess(SavingProcess&&) = delete;
    SavingProcess& operator=(SavingProcess&&) = delete;
    ~SavingProcess() { close(PipeEnds[0]); }

    void Kill() const { kill(Child, SIGKILL); }

    /// The last Revision that it knew to be safe, once it is dead.
    std::uint64_t SafeRevision() {
        waitpid(Child, nullptr, 0);
        while (ReadReport()) {
        }
        return Safe;
    }

private:
    bool ReadReport() { return read(PipeEnds[0], &Safe, sizeof(Safe)) == sizeof(Safe); }

    std::array<int, 2> PipeEnds{};
    pid_t Child = 0;
    std::uint64_t Safe = 0;
};

// Lets time pass for the processes: it is the moment of the kill that this is about.
void Pause(std::uint32_t microseconds) {
    const timespec pause = {
        0, std::chrono::nanoseconds(std::chrono::microseconds(microseconds)).count()};
    nanosleep(&pause, nullptr);
}

constexpr int Kills = 500;
constexpr std::uint32_t LongestLifeMicroseconds = 4000;

// Lets processes save and kills them, 500 times over; that is what `saveAndKill` does, and it
// returns the Revision that is safe. Each time the next start must find that one or a later one.
void ExpectEachStartFindsItsSave(
    std::uint32_t seed, const std::function<std::uint64_t(MersenneTwister& random)>& saveAndKill) {
    const Testing::UserFolder user;
    MersenneTwister random;
    SeedEngine(random, seed);
    Testing::StartSampleRun(12, 1, 100);
    int found = 0;
    int torn = 0;
    for (int kill = 0; kill < Kills; ++kill) {
        const std::uint64_t safe = saveAndKill(random);
        torn += StoredFileIsWhole() ? 0 : 1;
        GameApp app;
        EXPECT_TRUE(LoadSaveState(app));
        found += app.HasSavedRun && GetRevision() >= safe ? 1 : 0;
        ASSERT_EQ(Testing::NamesIn(user.Path()), std::vector<std::string>{"SaveState.bin"});
        LiveRun().FailureThreshold = 1000000;
    }
    EXPECT_EQ(found, Kills);
    std::cout << "The file itself was torn after " << torn << " of " << Kills << " kills\n";
}

TEST(Continue, AfterEachOf500KillsTheNextStartFindsTheLastSave) {
    ExpectEachStartFindsItsSave(500, [](MersenneTwister& random) {
        SavingProcess process;
        Pause(UniformDraw(random, 0, LongestLifeMicroseconds));
        process.Kill();
        return process.SafeRevision();
    });
}

// Either process may have been the last to save, so any run will do.
TEST(Continue, AfterEachOf500KillsOfTwoProgramsOnOneFolderTheNextStartFindsARun) {
    ExpectEachStartFindsItsSave(501, [](MersenneTwister& random) {
        SavingProcess first;
        SavingProcess second;
        Pause(UniformDraw(random, 0, LongestLifeMicroseconds));
        first.Kill();
        Pause(UniformDraw(random, 0, LongestLifeMicroseconds));
        second.Kill();
        first.SafeRevision();
        second.SafeRevision();
        return std::uint64_t{0};
    });
}

} // namespace
} // namespace Wirefall
