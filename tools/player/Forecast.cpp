#include "player/Forecast.h"

#include "sim/Arithmetic.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"

#include <limits>
#include <vector>

namespace Wirefall {

namespace {

// Ticks.
constexpr int LongestTrip = 400;
constexpr int LongestWait = 40;
constexpr int CureHorizon = 80;

void RunTicks(RunState& run, int ticks) {
    TickScratch scratch;
    for (int tick = 0; tick < ticks; ++tick) {
        RunTick(run, scratch);
    }
}

std::int32_t Strikes(const RunState& run) {
    return WrappingAdd(run.LostPackets, run.CorruptedPackets);
}

// The cell keeps its infection, as with every placement.
void Lay(RunState& run, std::size_t index, TileType type, std::int32_t rotation = 0) {
    const bool infected = run.Tiles[index].VirusInfected;
    run.Tiles[index] = MakeTile(type, rotation);
    run.Tiles[index].VirusInfected = infected;
}

// A cell, the way through it, and for how many ticks it is kept shut before it is cured.
struct Cure {
    std::size_t Index = 0;
    std::int32_t Rotation = 0; // Of a Straight that carries the way on.
    int Wait = 0;
};

// A spent Antivirus is open to all sides, so it is taken for granted that a Straight follows it.
std::int32_t StrikesIfCured(const RunState& run, const std::vector<Cure>& cures) {
    RunState trial = VisibleRun(run);
    for (const Cure& cure : cures) {
        Lay(trial, cure.Index, TileType::Empty);
    }
    TickScratch scratch;
    for (int tick = 0; tick < CureHorizon; ++tick) {
        for (const Cure& cure : cures) {
            if (cure.Wait == tick) {
                Lay(trial, cure.Index, TileType::Antivirus);
            }
        }
        RunTick(trial, scratch);
        for (const Cure& cure : cures) {
            if (trial.Tiles[cure.Index].Consumed) {
                Lay(trial, cure.Index, TileType::Straight, cure.Rotation);
            }
        }
    }
    return Strikes(trial);
}

} // namespace

RunState VisibleRun(const RunState& run) {
    RunState visible;
    visible.Tiles = run.Tiles;
    visible.Packets = run.Packets;
    visible.Sources = run.Sources;
    visible.Sinks = run.Sinks;
    visible.TileQueue = run.TileQueue;
    visible.CursorX = run.CursorX;
    visible.CursorY = run.CursorY;
    visible.PreviewRotation = run.PreviewRotation;
    visible.LevelTargetPackets = std::numeric_limits<std::int32_t>::max();
    visible.FailureThreshold = std::numeric_limits<std::int32_t>::max();
    visible.Tick = run.Tick;
    visible.SpawnIntervalTicks = run.SpawnIntervalTicks;
    visible.VirusSpreadIntervalTicks = run.VirusSpreadIntervalTicks;
    visible.NextSpawnTick = run.NextSpawnTick;
    visible.PacketGraceRemaining = run.PacketGraceRemaining;
    visible.VirusGraceRemaining = run.VirusGraceRemaining;
    visible.VirusActiveTicks = run.VirusActiveTicks;
    return visible;
}

bool DeliversCleanly(const RunState& run) {
    RunState trial = VisibleRun(run);
    const Endpoint& source = trial.Sources.front();
    Packet packet;
    packet.X = source.X;
    packet.Y = source.Y;
    packet.Dir = source.Dir;
    packet.Corrupted = TileAt(trial, source.X, source.Y).VirusInfected;
    trial.Packets = {packet};
    trial.PacketGraceRemaining = LongestTrip;
    trial.VirusGraceRemaining = LongestTrip;
    TickScratch scratch;
    for (int tick = 0; tick < LongestTrip && !trial.Packets.empty(); ++tick) {
        RunTick(trial, scratch);
    }
    return trial.DeliveredPackets == 1 && trial.CorruptedPackets == 0;
}

std::int32_t ForecastStrikes(const RunState& run, int ticks) {
    RunState trial = VisibleRun(run);
    RunTicks(trial, ticks);
    return Strikes(trial);
}

CellSet CureCells(const RunState& run, const Route& way) {
    CellSet cells;
    for (const RouteStep& step : way.Steps) {
        if (TileAt(run, step.Where.X, step.Where.Y).VirusInfected) {
            cells.set(CellIndex(step.Where));
        }
    }
    const Endpoint& source = run.Sources.front();
    const Endpoint& sink = run.Sinks.front();
    if (!way.Steps.empty() && TileAt(run, source.X, source.Y).VirusInfected) {
        cells.set(CellIndex(way.Steps.front().Where));
    }
    if (!way.Steps.empty() && TileAt(run, sink.X, sink.Y).VirusInfected) {
        cells.set(CellIndex(way.Steps.back().Where));
    }
    return cells;
}

// What a cure near the source does to packets depends on whether they come through at the far end,
// so the waits are settled from there.
CellSet CellsToKeepShut(const RunState& run, const Route& way) {
    const CellSet cells = CureCells(run, way);
    std::vector<Cure> cures;
    for (const RouteStep& step : std::vector(way.Steps.rbegin(), way.Steps.rend())) {
        if (cells[CellIndex(step.Where)]) {
            cures.push_back({CellIndex(step.Where), DirectionDx(step.In) == 0 ? 0 : 1, 0});
        } else if (!Carries(run, step)) {
            return {};
        }
    }
    CellSet shut;
    std::int32_t fewest = StrikesIfCured(run, cures);
    for (Cure& cure : cures) {
        int best = 0;
        for (cure.Wait = 1; cure.Wait <= LongestWait && fewest > 0; ++cure.Wait) {
            const std::int32_t strikes = StrikesIfCured(run, cures);
            if (strikes < fewest) {
                fewest = strikes;
                best = cure.Wait;
            }
        }
        cure.Wait = best;
        shut[cure.Index] = best > 0;
    }
    return shut;
}

} // namespace Wirefall
