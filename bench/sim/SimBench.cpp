// What the simulation costs, beside the plainest work on the same data: a copy of the tiles and a
// copy of the whole run. The machines are noisy, so only the ratios within one run mean anything.

#include "sim/LevelGeneration.h"
#include "sim/PacketTick.h"
#include "sim/RunState.h"
#include "sim/Simulation.h"

#include <benchmark/benchmark.h>

#include <limits>
#include <vector>

namespace {

using namespace Wirefall;

constexpr std::int32_t BusyLevel = 8;

constexpr std::int32_t RouteRows = 5;

// A route to and fro over the upper half of the board, from the top left corner to the right edge.
void LayRoute(RunState& run) {
    for (std::int32_t y = 0; y < RouteRows; ++y) {
        for (std::int32_t x = 0; x < BoardSide; ++x) {
            TileAt(run, x, y) = MakeTile(TileType::Straight, 1);
        }
        const bool rightward = y % 2 == 0;
        const std::int32_t first = rightward ? 0 : BoardSide - 1;
        const std::int32_t last = BoardSide - 1 - first;
        TileAt(run, first, y) = MakeTile(TileType::Corner, rightward ? 0 : 3);
        TileAt(run, last, y) = MakeTile(TileType::Corner, rightward ? 2 : 1);
    }
    run.Sources = {{0, 0, Direction::Right}};
    run.Sinks = {{BoardSide - 1, RouteRows - 1, Direction::Left}};
    StampEndpointTile(run, run.Sources.front(), true);
    StampEndpointTile(run, run.Sinks.front(), false);
}

// A board of level 8 late in the level: the player has turned one half into a long route on which
// packets travel at the level's pace, the other half is as it was generated, and the virus has got
// everywhere that it can get to.
RunState BusyRun() {
    RunState run;
    run.Level = BusyLevel;
    run.LevelTargetPackets = std::numeric_limits<std::int32_t>::max();
    run.FailureThreshold = std::numeric_limits<std::int32_t>::max();
    run.SpawnIntervalTicks = 9;
    run.VirusSpreadIntervalTicks = 3;
    run.PacketGraceTicks = 0;
    run.VirusGraceTicks = 0;
    SeedEngine(run.RandomEngine, 8);
    GenerateLevel(run);
    LayRoute(run);
    TileAt(run, 4, 2).VirusInfected = true;
    TickScratch scratch;
    for (int tick = 0; tick < 1000; ++tick) {
        RunTick(run, scratch);
    }
    return run;
}

void BusyTick(benchmark::State& state) {
    RunState run = BusyRun();
    TickScratch scratch;
    std::uint64_t ticks = 0;
    double packets = 0;
    for (auto _ : state) {
        RunTick(run, scratch);
        packets += static_cast<double>(run.Packets.size());
        ++ticks;
    }
    benchmark::DoNotOptimize(run);
    state.SetItemsProcessed(static_cast<std::int64_t>(ticks));
    state.counters["packets"] = packets / static_cast<double>(ticks);
}
BENCHMARK(BusyTick);

void CopyTiles(benchmark::State& state) {
    const RunState run = BusyRun();
    std::vector<Tile> copy = run.Tiles;
    for (auto _ : state) {
        copy = run.Tiles;
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyTiles);

void CopyRunState(benchmark::State& state) {
    const RunState run = BusyRun();
    RunState copy = run;
    for (auto _ : state) {
        copy = run;
        benchmark::DoNotOptimize(copy);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyRunState);

void Generate(benchmark::State& state) {
    RunState run;
    run.Level = static_cast<std::int32_t>(state.range(0));
    SeedEngine(run.RandomEngine, 15);
    for (auto _ : state) {
        GenerateLevel(run);
        benchmark::DoNotOptimize(run.Tiles.data());
    }
}
// The first level, a busy one, and one that uses up all attempts.
BENCHMARK(Generate)->Arg(1)->Arg(BusyLevel)->Arg(111);

} // namespace
