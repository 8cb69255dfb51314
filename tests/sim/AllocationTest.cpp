// A tick makes no allocation once its lists have grown to what a level needs.

#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/Allocations.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

namespace Wirefall {
namespace {

TEST(Allocation, AWarmTickAllocatesNothing) {
    // A road with packets on it, a dead end beside it where they collide, and a virus that is
    // driven back by every tile that is placed anew.
    RunState run = Testing::DrawnRun({
        "→────────┐",
        "┌────────┘",
        "└────────⇐",
        "──────────",
    });
    run.SpawnIntervalTicks = 2;
    run.NextSpawnTick = 1;
    run.VirusSpreadIntervalTicks = 1;
    run.FailureThreshold = 1000000;
    run.LevelTargetPackets = 1000000;
    run.CursorX = 0;
    run.CursorY = 9;
    Testing::InstallLiveRun(run);
    RunState& live = LiveRun();

    std::size_t mostPackets = 0;
    std::int32_t collisions = 0;
    int spreads = 0;
    const auto play = [&](int ticks) {
        for (int tick = 0; tick < ticks; ++tick) {
            if (tick % 50 == 0) {
                for (std::int32_t x = 0; x < BoardSide; ++x) {
                    TileAt(live, x, 3).VirusInfected = x == 0;
                }
                // Two on one cell.
                live.Packets.push_back(Testing::PacketAt(5, 3, Direction::Right));
                live.Packets.push_back(Testing::PacketAt(7, 3, Direction::Left));
            }
            ApplyRunCommand(44);
            const std::int32_t lost = live.LostPackets;
            AdvanceSimulation(125);
            mostPackets = std::max(mostPackets, live.Packets.size());
            collisions += live.LostPackets - lost;
            spreads += TileAt(live, 1, 3).VirusInfected ? 1 : 0;
        }
    };
    play(500);
    mostPackets = 0;
    collisions = 0;
    spreads = 0;
    EXPECT_EQ(Testing::AllocationsOf([&] {
                  play(2000);
                  BuildRunSnapshot();
              }),
              0U);
    EXPECT_EQ(live.Tick, 2500U);
    EXPECT_GE(mostPackets, 10U) << "the road is busy";
    EXPECT_GE(collisions, 40) << "packets collide";
    EXPECT_GT(spreads, 1900) << "the virus spreads";
    EXPECT_GT(live.DeliveredPackets, 1000);
}

} // namespace
} // namespace Wirefall
