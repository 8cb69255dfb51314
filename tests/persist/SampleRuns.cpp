#include "persist/SampleRuns.h"

#include "sim/LevelGeneration.h"
#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/RunCommands.h"
#include "sim/Simulation.h"

#include <array>

namespace Wirefall::Testing {

RandomPlayer::RandomPlayer(std::uint32_t seed) { SeedEngine(Engine, seed); }

void RandomPlayer::PlayTick() {
    constexpr std::array<std::uint32_t, 8> Commands = {82, 81, 80, 79, 20, 8, 44, 44};
    if (UniformDraw(Engine, 0, 2) == 0) {
        ApplyRunCommand(Commands.at(UniformDraw(Engine, 0, 7)));
    }
    AdvanceSimulation(StepMs);
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
