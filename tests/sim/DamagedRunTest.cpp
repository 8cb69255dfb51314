// Runs as only a damaged save can hold them. What they do matters little; that they do it without
// undefined behaviour is what the sanitizer builds see here.

#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace Wirefall {
namespace {

constexpr std::int32_t Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Max = std::numeric_limits<std::int32_t>::max();

class DamagedRun : public testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(Extremes, DamagedRun, testing::Values(Min, Min + 1, -1, 0, Max - 1, Max));

TEST_P(DamagedRun, PlaysOnWithAnyValueInAnyCounter) {
    const std::vector<std::int32_t RunState::*> counters = {
        &RunState::CursorX,
        &RunState::CursorY,
        &RunState::PreviewRotation,
        &RunState::Level,
        &RunState::TotalScore,
        &RunState::LevelTargetPackets,
        &RunState::FailureThreshold,
        &RunState::SpawnIntervalTicks,
        &RunState::VirusSpreadIntervalTicks,
        &RunState::PacketGraceTicks,
        &RunState::VirusGraceTicks,
        &RunState::PacketGraceRemaining,
        &RunState::VirusGraceRemaining,
        &RunState::LostPackets,
        &RunState::CorruptedPackets,
        &RunState::DeliveredPackets,
    };
    for (std::size_t i = 0; i <= counters.size(); ++i) {
        ResetRun();
        RunState& run = LiveRun();
        run.PacketGraceRemaining = 0;
        run.VirusGraceRemaining = 0;
        // The last round damages all of them at once, but for the target, without which there is
        // no tick.
        for (std::size_t k = 0; k < counters.size(); ++k) {
            if (k == i || (i == counters.size() && counters[k] != &RunState::LevelTargetPackets &&
                           counters[k] != &RunState::DeliveredPackets)) {
                run.*counters[k] = GetParam();
            }
        }
        const bool canTick = run.DeliveredPackets < run.LevelTargetPackets;
        for (int frame = 0; frame < 200; ++frame) {
            for (std::uint32_t code = 0; code < 100; code += 4) {
                ApplyRunCommand(code);
            }
            AdvanceSimulation(250);
            BuildRunSnapshot();
        }
        EXPECT_EQ(run.Tick > 0, canTick);
        run.GameOver = false;
        run.DeliveredPackets = run.LevelTargetPackets;
        AdvanceLevel();
        EXPECT_EQ(run.Tiles.size(), 100U);
    }
}

// Counters that each event takes across the end of their range. They start out so that their sum is
// small and the run goes on.
TEST(DamagedRun, CountsWrapAround) {
    struct Case {
        std::int32_t RunState::*Counter;
        std::int32_t RunState::*Balance;
        const char* Road;
        bool Corrupted;
    };
    for (const Case& c : {
             Case{&RunState::LostPackets, &RunState::CorruptedPackets, "─.", false},
             Case{&RunState::CorruptedPackets, &RunState::LostPackets, "───", true},
             Case{&RunState::DeliveredPackets, &RunState::Level, "─⇐", false},
         }) {
        RunState run = Testing::DrawnRun({c.Road});
        run.*c.Counter = Max;
        run.*c.Balance = Min;
        run.TotalScore = c.Counter == &RunState::DeliveredPackets ? Max : Min;
        TileAt(run, 1, 0).VirusInfected = c.Corrupted;
        run.Packets = {Testing::PacketAt(0, 0, Direction::Right)};
        TickScratch scratch;
        RunTick(run, scratch);
        EXPECT_EQ(run.*c.Counter, Min);
        EXPECT_EQ(run.TotalScore > 0, c.Counter != &RunState::DeliveredPackets);
    }
}

TEST(DamagedRun, PlaysOnWithTheLargestTicks) {
    ResetRun();
    RunState& run = LiveRun();
    run.PacketGraceRemaining = 0;
    run.VirusGraceRemaining = 0;
    run.Tick = std::numeric_limits<std::uint64_t>::max() - 3;
    run.VirusActiveTicks = std::numeric_limits<std::uint64_t>::max() - 3;
    run.NextSpawnTick = run.Tick;
    LiveSimulation().Revision = std::numeric_limits<std::uint64_t>::max();
    for (int frame = 0; frame < 20; ++frame) {
        AdvanceSimulation(250);
    }
    EXPECT_EQ(run.Tick, 36U) << "the counter wraps around";
    EXPECT_EQ(GetRevision(), 39U);
}

TEST(DamagedRun, PlaysOnWithPacketsAndEndpointsAnywhere) {
    RunState run = Testing::DrawnRun({"→────────⇐", "┼┼┼┼┼┼┼┼┼┼"});
    for (const std::int32_t x : {Min, -1, 0, 9, 10, Max}) {
        for (const std::int32_t y : {Min, -1, 0, 1, 10, Max}) {
            for (const int dir : {0, 1, 2, 3, 4, 255}) {
                for (const std::int32_t delay : {Min, -1, 0, 1, Max}) {
                    Packet packet = Testing::PacketAt(x, y, static_cast<Direction>(dir));
                    packet.DelayTicks = delay;
                    run.Packets.push_back(packet);
                }
                run.Sources.push_back({x, y, static_cast<Direction>(dir)});
                run.Sinks.push_back({x, y, static_cast<Direction>(dir)});
            }
        }
    }
    run.FailureThreshold = Max;
    run.NextSpawnTick = 0;
    run.SpawnIntervalTicks = 1;
    Testing::InstallLiveRun(run);
    for (int frame = 0; frame < 100; ++frame) {
        AdvanceSimulation(125);
    }
    EXPECT_EQ(LiveRun().Tick, 100U);
}

TEST(DamagedRun, PlaysOnWithoutSourcesAndSinks) {
    ResetRun();
    LiveRun().Sources.clear();
    LiveRun().Sinks.clear();
    for (int frame = 0; frame < 100; ++frame) {
        AdvanceSimulation(250);
    }
    EXPECT_TRUE(LiveRun().Packets.empty());
}

TEST(DamagedRun, PlaysOnWithTilesOfAnyKindAndMask) {
    RunState run = Testing::DrawnRun({"→"});
    for (std::size_t i = 1; i < run.Tiles.size(); ++i) {
        run.Tiles[i].Type = static_cast<TileType>(i * 37 % 256);
        run.Tiles[i].Connections = static_cast<ConnectionMask>(i * 91 % 256);
        run.Tiles[i].VirusInfected = i % 7 == 0;
    }
    run.TileQueue = {static_cast<TileType>(200), TileType::Empty, static_cast<TileType>(8)};
    run.NextSpawnTick = 1;
    run.FailureThreshold = Max;
    Testing::InstallLiveRun(run);
    for (int frame = 0; frame < 300; ++frame) {
        ApplyRunCommand(44);
        ApplyRunCommand(frame % 2 == 0 ? 79 : 82);
        AdvanceSimulation(250);
    }
    EXPECT_EQ(LiveRun().Tick, 600U);
}

} // namespace
} // namespace Wirefall
