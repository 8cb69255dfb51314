#include "support/SampleRuns.h"

#include "persist/RunConversion.h"
#include "sim/LevelGeneration.h"
#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Wirefall::Testing {

namespace {

constexpr int TicksPerLevel = 700;

} // namespace

RandomPlayer::RandomPlayer(std::uint32_t seed) { SeedEngine(Engine, seed); }

void RandomPlayer::PlayTick() {
    constexpr std::array<std::uint32_t, 8> Commands = {82, 81, 80, 79, 20, 8, 44, 44};
    if (UniformDraw(Engine, 0, 2) == 0) {
        ApplyRunCommand(Commands.at(UniformDraw(Engine, 0, 7)));
    }
    AdvanceSimulation(StepMs);
    if (++Ticks % TicksPerLevel == 0) {
        LiveRun().DeliveredPackets = LiveRun().LevelTargetPackets;
    }
    if (IsLevelComplete()) {
        AdvanceLevel();
    }
}

void StartSampleRun(std::int32_t level, std::uint32_t seed, int ticks) {
    ResetRun();
    RunState& run = LiveRun();
    run.Level = level;
    run.SpawnIntervalTicks = 3;
    run.PacketGraceTicks = 20;
    run.PacketGraceRemaining = 20;
    run.FailureThreshold = 1000000;
    run.LevelTargetPackets = 30;
    run.Seed = seed;
    SeedEngine(run.RandomEngine, seed);
    GenerateLevel(run);
    RandomPlayer player(seed);
    for (int tick = 0; tick < ticks; ++tick) {
        player.PlayTick();
    }
    LiveSimulation().AccumulatorMs = 77;
}

SaveDocument HeaviestDocument() {
    StartSampleRun(3, 5, 200);
    SaveDocument document = MakeSaveDocument();
    document.AccumulatorMs = std::numeric_limits<std::uint64_t>::max() - 1000;
    document.FailureThreshold = std::numeric_limits<std::int32_t>::max();
    document.LevelTargetPackets = std::numeric_limits<std::int32_t>::max();
    document.SpawnIntervalTicks = 1;
    document.VirusSpreadIntervalTicks = 1;
    document.PacketGraceRemaining = 0;
    document.VirusGraceRemaining = 0;
    document.NextSpawnTick = 0;
    constexpr DocumentTile InfectedCross = {
        static_cast<std::int32_t>(TileType::Cross), AllExits, true, false, false, false, 0};
    std::ranges::fill(document.Tiles, InfectedCross);
    document.Sources.assign(HeavyListElements, {0, 0, 1});
    document.Sinks.assign(HeavyListElements, {9, 9, 3});
    document.Packets.clear();
    for (std::size_t i = 0; i < HeavyListElements; ++i) {
        const auto cell = static_cast<std::int32_t>(i % 100);
        document.Packets.push_back(
            {cell % 10, cell / 10, static_cast<std::int32_t>(i / 100 % 4), false, 0});
    }
    return document;
}

RunState Normalised(RunState run) {
    for (Tile& tile : run.Tiles) {
        tile.Consumed = false;
        if (tile.Type == TileType::Firewall) {
            tile.VirusInfected = false;
        }
    }
    return run;
}

} // namespace Wirefall::Testing
