#include "persist/SampleRuns.h"

#include "sim/LevelGeneration.h"
#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "sim/RunCommands.h"
#include "sim/Simulation.h"

#include <array>

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

std::uint64_t Checksum(const RunState& run) {
    std::uint64_t hash = 0xcbf29ce484222325; // FNV-1a over the fields, each as a 64-bit number.
    const auto add = [&hash](auto number) {
        auto value = static_cast<std::uint64_t>(number);
        for (int byte = 0; byte < 8; ++byte, value >>= 8) {
            hash = (hash ^ (value & 0xff)) * 0x100000001b3;
        }
    };
    for (const Tile& tile : run.Tiles) {
        add(tile.Type);
        add(tile.Connections);
        add(tile.VirusInfected);
        add(tile.OccupiedBySource);
        add(tile.OccupiedBySink);
        add(tile.Consumed);
        add(tile.CooldownTicks);
    }
    for (const Packet& packet : run.Packets) {
        add(packet.X);
        add(packet.Y);
        add(packet.Dir);
        add(packet.Corrupted);
        add(packet.DelayTicks);
    }
    for (const std::vector<Endpoint>* const list : {&run.Sources, &run.Sinks}) {
        add(list->size());
        for (const Endpoint& endpoint : *list) {
            add(endpoint.X);
            add(endpoint.Y);
            add(endpoint.Dir);
        }
    }
    for (const TileType tile : run.TileQueue) {
        add(tile);
    }
    for (const std::int32_t number :
         {run.GridWidth, run.GridHeight, run.CursorX, run.CursorY, run.PreviewRotation, run.Level,
          run.TotalScore, run.LevelTargetPackets, run.FailureThreshold, run.SpawnIntervalTicks,
          run.VirusSpreadIntervalTicks, run.PacketGraceTicks, run.VirusGraceTicks,
          run.PacketGraceRemaining, run.VirusGraceRemaining, run.LostPackets, run.CorruptedPackets,
          run.DeliveredPackets}) {
        add(number);
    }
    for (const std::uint64_t number : {run.Tick, run.NextSpawnTick, run.VirusActiveTicks}) {
        add(number);
    }
    add(run.GameOver);
    add(run.Seed);
    for (const std::uint32_t word : run.RandomEngine.Words) {
        add(word);
    }
    add(run.RandomEngine.Position);
    return hash;
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
