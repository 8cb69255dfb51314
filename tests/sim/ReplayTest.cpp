// Long scripted games. Their checksums hold the whole of the simulation on every compiler and
// platform: a rule that changes in any detail, or arithmetic that differs anywhere, shows here.

#include "sim/LevelGeneration.h"
#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"
#include "support/Fnv1a.h"
#include "support/RunChecksum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

namespace Wirefall {
namespace {

using Testing::Fnv1a;

std::uint64_t ChecksumOf(const RunSnapshot& snapshot) {
    Fnv1a sum;
    sum.Add(std::bit_cast<std::uint32_t>(snapshot.InfectionRatio));
    sum.Add(std::bit_cast<std::uint32_t>(snapshot.FailureRatio));
    sum.Add(snapshot.DangerLevel);
    return sum.Value();
}

// Plays with keys drawn from an engine of its own. Levels are finished by decree from time to time,
// because random keys would not get that far, and a run that is over starts anew.
std::uint64_t PlayRandomly(std::uint32_t seed, int frames) {
    constexpr std::array<std::uint32_t, 8> Keys = {82, 81, 80, 79, 20, 8, 44, 44};
    MersenneTwister player;
    SeedEngine(player, seed);
    Fnv1a sum;
    ResetRun();
    const std::uint64_t firstRevision = GetRevision();
    LiveRun().FailureThreshold = 60;
    for (int frame = 0; frame < frames; ++frame) {
        if (UniformDraw(player, 0, 2) == 0) {
            ApplyRunCommand(Keys.at(UniformDraw(player, 0, 7)));
        }
        SetFastForward(UniformDraw(player, 0, 9) == 0);
        AdvanceSimulation(UniformDraw(player, 0, 60));
        if (frame % 700 == 699) {
            LiveRun().DeliveredPackets = LiveRun().LevelTargetPackets;
        }
        if (IsLevelComplete()) {
            AdvanceLevel();
        } else if (LiveRun().GameOver) {
            ResetRun();
            LiveRun().FailureThreshold = 60;
        }
        sum.Add(LiveSimulation().AccumulatorMs);
        sum.Add(GetRevision() - firstRevision);
        sum.Add(ChecksumOf(BuildRunSnapshot()));
        if (frame % 50 == 0) {
            sum.Add(Testing::PlayChecksum(LiveRun()));
        }
    }
    return sum.Value();
}

TEST(Replay, RandomGamesEndInTheRecordedState) {
    EXPECT_EQ(PlayRandomly(1, 20000), 16809994966097926233U);
    EXPECT_EQ(PlayRandomly(2, 20000), 2423991680553342088U);
    EXPECT_EQ(PlayRandomly(3, 20000), 1254299923907947821U);
}

TEST(Replay, TheSameGameTwiceIsTheSameGame) {
    EXPECT_EQ(PlayRandomly(4, 5000), PlayRandomly(4, 5000));
    EXPECT_NE(PlayRandomly(4, 5000), PlayRandomly(5, 5000));
}

// Whatever happens to it, a packet is in flight, delivered or lost.
TEST(Replay, NoPacketIsEverUnaccountedFor) {
    for (std::uint32_t seed = 0; seed < 30; ++seed) {
        RunState run;
        run.Level = 8;
        run.SpawnIntervalTicks = 2;
        run.PacketGraceTicks = 0;
        run.VirusGraceTicks = 0;
        run.FailureThreshold = 1000000;
        run.LevelTargetPackets = 1000000;
        SeedEngine(run.RandomEngine, seed);
        GenerateLevel(run);
        Testing::InstallLiveRun(run);
        MersenneTwister player;
        SeedEngine(player, seed);
        std::int32_t spawned = 0;
        for (int tick = 0; tick < 2000; ++tick) {
            ApplyRunCommand(
                std::array<std::uint32_t, 4>{44, 79, 82, 8}.at(UniformDraw(player, 0, 3)));
            const std::uint64_t due = LiveRun().NextSpawnTick;
            AdvanceSimulation(125);
            spawned += LiveRun().NextSpawnTick != due ? 1 : 0;
            const RunState& now = LiveRun();
            ASSERT_EQ(static_cast<std::int32_t>(now.Packets.size()) + now.DeliveredPackets +
                          now.LostPackets,
                      spawned);
            ASSERT_EQ(now.TotalScore,
                      10 * now.DeliveredPackets - 5 * now.LostPackets - 10 * now.CorruptedPackets);
            const auto corrupted = std::count_if(now.Packets.begin(), now.Packets.end(),
                                                 [](const Packet& p) { return p.Corrupted; });
            ASSERT_LE(corrupted, now.CorruptedPackets);
        }
    }
}

} // namespace
} // namespace Wirefall
