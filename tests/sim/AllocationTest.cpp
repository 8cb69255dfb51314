// Counts heap allocations: a tick makes none once its lists have grown to what a level needs.

#include "sim/LevelGeneration.h"
#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/RunCommands.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace {

std::size_t Allocations = 0;

void* CountedAllocation(std::size_t size) {
    ++Allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) { return CountedAllocation(size); }
void* operator new[](std::size_t size) { return CountedAllocation(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace Wirefall {
namespace {

void PlayLevel(int frames) {
    for (int frame = 0; frame < frames; ++frame) {
        ApplyRunCommand(frame % 3 == 0 ? 44 : 79);
        AdvanceSimulation(125);
    }
}

TEST(Allocation, TheCounterCounts) {
    const std::size_t before = Allocations;
    const auto list = std::make_unique<std::vector<int>>(100);
    EXPECT_EQ(Allocations, before + 2);
}

TEST(Allocation, AWarmTickAllocatesNothing) {
    RunState run;
    run.Level = 8;
    run.SpawnIntervalTicks = 1;
    run.VirusSpreadIntervalTicks = 1;
    run.PacketGraceTicks = 0;
    run.VirusGraceTicks = 0;
    run.FailureThreshold = 1000000;
    run.LevelTargetPackets = 1000000;
    SeedEngine(run.RandomEngine, 5);
    GenerateLevel(run);
    // A lattice, on which many packets stay in flight.
    for (Tile& tile : run.Tiles) {
        if (!tile.OccupiedBySource && !tile.OccupiedBySink) {
            tile = MakeTile(TileType::TJunction, 0);
        }
    }
    Testing::InstallLiveRun(run);
    PlayLevel(500);
    const std::size_t before = Allocations;
    PlayLevel(2000);
    BuildRunSnapshot();
    EXPECT_EQ(Allocations, before);
    EXPECT_GT(LiveRun().Tick, 2000U);
}

} // namespace
} // namespace Wirefall
