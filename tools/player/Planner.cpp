#include "player/Planner.h"

#include "player/PressCodes.h"
#include "sim/Arithmetic.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace Wirefall {

namespace {

constexpr int LongestTrip = 400; // Ticks.

// What is wrong with a way beside what it costs to build, in the same unit.
constexpr int LinkCost = 15;     // A cell of it that the virus can enter from beside it.
constexpr int NoWayCost = 10000; // There is none.

// What a placement costs beside its presses.
constexpr int PacketBelowCost = 4; // It may throw a packet off its way.
constexpr int SecondWayGain = 2;

// The run without its random engine: what a person can see of it. Copies of it are cheap, and a
// forecast cannot look into the future of the queue.
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

int Distance(const Cell& a, const Cell& b) { return std::abs(a.X - b.X) + std::abs(a.Y - b.Y); }

Cell CursorCell(const RunState& run) { return {run.CursorX, run.CursorY}; }

bool IsInfected(const RunState& run, const Cell& cell) {
    return TileAt(run, cell.X, cell.Y).VirusInfected;
}

CellSet CellsOf(const Route& route) {
    CellSet cells;
    for (const RouteStep& step : route.Steps) {
        cells.set(CellIndex(step.Where));
    }
    return cells;
}

// A way and how it stands with the virus.
struct Outlook {
    CellSet Contagious;
    Route Way;
    CellSet OnWay;
    int Links =
        0; ///< Connections by which the virus could come onto a cell of the way from beside.

    int Cost() const { return Way.Exists() ? Way.Cost + Links * LinkCost : NoWayCost; }
};

int CountLinks(const RunState& run, const Outlook& outlook) {
    int links = 0;
    for (const RouteStep& step : outlook.Way.Steps) {
        const Tile& tile = TileAt(run, step.Where.X, step.Where.Y);
        if (tile.Type == TileType::Firewall || !Carries(run, step)) {
            continue;
        }
        links += static_cast<int>(std::ranges::count_if(AllDirections, [&](Direction d) {
            if (!CanExit(run, tile, step.Where.X, step.Where.Y, d)) {
                return false;
            }
            const std::size_t beside = CellIndex(Beyond(step.Where, d));
            return outlook.Contagious[beside] && !outlook.OnWay[beside];
        }));
    }
    return links;
}

Outlook LookAt(const RunState& run) {
    Outlook outlook;
    outlook.Contagious = ContagiousCells(run);
    outlook.Way = FindRoute(run, outlook.Contagious);
    outlook.OnWay = CellsOf(outlook.Way);
    outlook.Links = CountLinks(run, outlook);
    return outlook;
}

bool IsStanding(const RunState& run, const Route& way) {
    return way.Exists() && std::ranges::all_of(way.Steps, [&run](const RouteStep& step) {
               return Carries(run, step);
           });
}

bool IsSound(const RunState& run, const Outlook& outlook) {
    const Endpoint& source = run.Sources.front();
    const Endpoint& sink = run.Sinks.front();
    return IsStanding(run, outlook.Way) && (outlook.OnWay & outlook.Contagious).none() &&
           !IsInfected(run, {source.X, source.Y}) && !IsInfected(run, {sink.X, sink.Y}) &&
           std::ranges::none_of(outlook.Way.Steps, [&run](const RouteStep& step) {
               return IsInfected(run, step.Where);
           });
}

int DistanceToWork(const RunState& run, const Route& way, const Cell& from) {
    int nearest = std::numeric_limits<int>::max();
    for (const RouteStep& step : way.Steps) {
        if (!Carries(run, step)) {
            nearest = std::min(nearest, Distance(from, step.Where));
        }
    }
    return nearest == std::numeric_limits<int>::max() ? 0 : nearest;
}

class PlacementSearch {
public:
    PlacementSearch(const RunState& run, const PlanWeights& weights)
        : Board(VisibleRun(run)), Weights(weights), Now(LookAt(Board)) {}

    std::optional<Placement> Find() {
        if (!Now.Way.Exists()) {
            return std::nullopt;
        }
        if (IsStanding(Board, Now.Way)) {
            FindSecondWay();
        }
        const CellSet candidates = Candidates();
        for (std::size_t index = 0; index < BoardCells; ++index) {
            if (candidates[index]) {
                TryCell(CellAt(index));
            }
        }
        return Best;
    }

private:
    // For when the first way is taken: it shares the cells beside the source and the sink with it,
    // which every way has.
    void FindSecondWay() {
        CellSet avoided = Now.OnWay;
        avoided.reset(CellIndex(Now.Way.Steps.front().Where));
        avoided.reset(CellIndex(Now.Way.Steps.back().Where));
        Second = FindRoute(Board, Now.Contagious, avoided);
        SecondCells = CellsOf(Second) & ~Now.OnWay;
    }

    // The ways, whatever carries the virus beside the first, and where the cursor is.
    CellSet Candidates() const {
        CellSet candidates = Now.OnWay | SecondCells;
        for (const RouteStep& step : Now.Way.Steps) {
            for (const Direction d : AllDirections) {
                const Cell beside = Beyond(step.Where, d);
                if (InBounds(Board, beside.X, beside.Y) && Now.Contagious[CellIndex(beside)]) {
                    candidates.set(CellIndex(beside));
                }
            }
        }
        candidates.set(CellIndex(CursorCell(Board)));
        for (const Direction d : AllDirections) {
            const Cell beside = Beyond(CursorCell(Board), d);
            if (InBounds(Board, beside.X, beside.Y)) {
                candidates.set(CellIndex(beside));
            }
        }
        return candidates;
    }

    void TryCell(const Cell& cell) {
        if (IsEndpointCell(Board, cell.X, cell.Y)) {
            return;
        }
        std::array<bool, AllExits + 1> tried{};
        for (std::int32_t turns = 0; turns < 4; ++turns) {
            const Placement placement = {cell, (Board.PreviewRotation + turns) % 4};
            const ConnectionMask mask =
                MakeTile(Board.TileQueue[0], placement.Rotation).Connections;
            if (!tried[mask]) {
                tried[mask] = true;
                TryPlacement(placement);
            }
        }
    }

    void TryPlacement(const Placement& placement) {
        const Cell& cell = placement.Where;
        const auto presses = static_cast<int>(PressesFor(Board, placement).size());
        Tile& tile = TileAt(Board, cell.X, cell.Y);
        const Tile former = tile;
        tile = MakeTile(Board.TileQueue[0], placement.Rotation);
        tile.VirusInfected = former.VirusInfected;
        const Outlook after = LookAt(Board);
        int cost =
            presses + Weights.WayCost * after.Cost() + DistanceToWork(Board, after.Way, cell);
        if (std::ranges::any_of(Board.Packets, [&cell](const Packet& p) {
                return Cell{p.X, p.Y} == cell;
            })) {
            cost += PacketBelowCost;
        }
        if (FillsSecondWay(placement)) {
            cost -= SecondWayGain;
        }
        tile = former;
        if (cost < BestCost) {
            BestCost = cost;
            Best = placement;
        }
    }

    // To be asked while the tile lies on the board.
    bool FillsSecondWay(const Placement& placement) const {
        return std::ranges::any_of(Second.Steps, [&](const RouteStep& step) {
            return step.Where == placement.Where && SecondCells[CellIndex(step.Where)] &&
                   Carries(Board, step);
        });
    }

    RunState Board;
    PlanWeights Weights;
    Outlook Now;
    Route Second;
    CellSet SecondCells;
    int BestCost = std::numeric_limits<int>::max();
    std::optional<Placement> Best;
};

} // namespace

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
    TickScratch scratch;
    for (int tick = 0; tick < ticks; ++tick) {
        RunTick(trial, scratch);
    }
    return WrappingAdd(trial.LostPackets, trial.CorruptedPackets);
}

bool IsSettled(const RunState& run) { return IsSound(run, LookAt(run)); }

std::optional<Placement> PlanPlacement(const RunState& run, const PlanWeights& weights) {
    return PlacementSearch(run, weights).Find();
}

std::int32_t TurnsToRotation(const RunState& run, std::int32_t rotation) {
    const ConnectionMask wanted = MakeTile(run.TileQueue[0], rotation).Connections;
    std::int32_t turns = 0;
    while (turns < 3 &&
           MakeTile(run.TileQueue[0], run.PreviewRotation + turns).Connections != wanted) {
        ++turns;
    }
    return turns;
}

std::vector<std::uint32_t> PressesFor(const RunState& run, const Placement& placement) {
    std::vector<std::uint32_t> presses;
    const auto add = [&presses](std::int32_t count, std::uint32_t forward, std::uint32_t back) {
        presses.insert(presses.end(), static_cast<std::size_t>(std::abs(count)),
                       count > 0 ? forward : back);
    };
    add(placement.Where.X - run.CursorX, Press::Right, Press::Left);
    add(placement.Where.Y - run.CursorY, Press::Down, Press::Up);
    const std::int32_t turns = TurnsToRotation(run, placement.Rotation);
    add(turns == 3 ? -1 : turns, Press::RotateRight, Press::RotateLeft);
    presses.push_back(Press::Place);
    return presses;
}

} // namespace Wirefall
