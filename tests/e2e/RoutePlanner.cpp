#include "e2e/RoutePlanner.h"

#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <queue>
#include <utility>
#include <vector>

namespace Wirefall::Testing {

namespace {

// What a cell of the route costs. A turn takes a Corner, which is rare in the queue; a neighbour of
// the virus may be lost to it.
constexpr int StandingCost = 1;
constexpr int StraightCost = 4;
constexpr int TurnCost = 9;
constexpr int ContagionCost = 12;

// What a placement costs beside its key presses.
constexpr int WastedJunctionCost = 6;
constexpr int BesideRouteCost = 10;
constexpr int WastedTileCost = 4;

constexpr int LongestTrip = 400; // Ticks.

struct RouteStep {
    Cell Where;
    Direction In; ///< The direction of travel on entry.
    Direction Out;
};

Cell Beyond(const Cell& cell, Direction d) {
    return {cell.X + DirectionDx(d), cell.Y + DirectionDy(d)};
}

// Whether a packet that enters the cell in the direction `in` leaves it by `out` if `tile` lies
// there. The next cell of the route is taken to connect, since it is yet to be built.
bool Carries(const RunState& run, const Tile& tile, const Cell& cell, Direction in, Direction out) {
    if (!HasExit(tile.Connections, OppositeDirection(in)) || !HasExit(tile.Connections, out)) {
        return false;
    }
    if (HasAllExits(tile.Connections)) {
        return in == out;
    }
    for (const Direction d : {in, RightTurn(in), LeftTurn(in)}) {
        if (d == out) {
            return true;
        }
        if (CanExit(run, tile, cell.X, cell.Y, d)) {
            return false;
        }
    }
    return false;
}

bool Carries(const RunState& run, const RouteStep& step) {
    return Carries(run, TileAt(run, step.Where.X, step.Where.Y), step.Where, step.In, step.Out);
}

// The infected cells and all that the virus can reach from them as the board lies.
std::vector<bool> ContagiousCells(const RunState& run) {
    std::vector<bool> contagious(run.Tiles.size());
    std::vector<Cell> open;
    const auto add = [&](const Cell& cell) {
        const std::size_t i = TileIndex(run, cell.X, cell.Y);
        if (!contagious[i] && run.Tiles[i].Type != TileType::Firewall) {
            contagious[i] = true;
            open.push_back(cell);
        }
    };
    for (std::int32_t y = 0; y < run.GridHeight; ++y) {
        for (std::int32_t x = 0; x < run.GridWidth; ++x) {
            if (TileAt(run, x, y).VirusInfected) {
                add({x, y});
            }
        }
    }
    while (!open.empty()) {
        const Cell cell = open.back();
        open.pop_back();
        for (const Direction d : AllDirections) {
            if (CanExit(run, TileAt(run, cell.X, cell.Y), cell.X, cell.Y, d)) {
                add(Beyond(cell, d));
            }
        }
    }
    return contagious;
}

bool TouchesAny(const RunState& run, const std::vector<bool>& cells, const Cell& cell) {
    return std::ranges::any_of(AllDirections, [&](Direction d) {
        const Cell next = Beyond(cell, d);
        return InBounds(run, next.X, next.Y) && cells[TileIndex(run, next.X, next.Y)];
    });
}

// The cheapest way from the source to the sink by Dijkstra's algorithm, over pairs of a cell and
// the direction in which it is entered. Empty when there is none.
class RouteSearch {
public:
    explicit RouteSearch(const RunState& run)
        : Run(run), Contagious(ContagiousCells(run)), Entries(run.Tiles.size() * 4) {}

    std::vector<RouteStep> Find() {
        const Endpoint& source = Run.Sources.front();
        const Endpoint& sink = Run.Sinks.front();
        if (TileAt(Run, source.X, source.Y).VirusInfected ||
            TileAt(Run, sink.X, sink.Y).VirusInfected) {
            return {};
        }
        Enter(Beyond({source.X, source.Y}, source.Dir), source.Dir, 0, NoEntry);
        while (!Open.empty()) {
            const auto [cost, index] = Open.top();
            Open.pop();
            if (cost > Entries[index].Cost) {
                continue;
            }
            const Cell cell = CellOf(index);
            if (cell == Cell{sink.X, sink.Y}) {
                return Trace(index);
            }
            Leave(cell, static_cast<Direction>(index % 4), cost, index);
        }
        return {};
    }

private:
    static constexpr std::size_t NoEntry = std::numeric_limits<std::size_t>::max();

    struct Entry {
        int Cost = std::numeric_limits<int>::max();
        std::size_t From = NoEntry;
    };

    Cell CellOf(std::size_t index) const {
        const auto cell = static_cast<std::int32_t>(index / 4);
        return {cell % Run.GridWidth, cell / Run.GridWidth};
    }

    void Enter(const Cell& cell, Direction in, int cost, std::size_t from) {
        if (!InBounds(Run, cell.X, cell.Y)) {
            return;
        }
        const Tile& tile = TileAt(Run, cell.X, cell.Y);
        const bool shut = IsEndpointCell(Run, cell.X, cell.Y) &&
                          !HasExit(tile.Connections, OppositeDirection(in));
        if (tile.VirusInfected || shut || tile.OccupiedBySource) {
            return;
        }
        const std::size_t index = TileIndex(Run, cell.X, cell.Y) * 4 + static_cast<std::size_t>(in);
        if (cost < Entries[index].Cost) {
            Entries[index] = {cost, from};
            Open.emplace(cost, index);
        }
    }

    void Leave(const Cell& cell, Direction in, int cost, std::size_t index) {
        const int danger = TouchesAny(Run, Contagious, cell) ? ContagionCost : 0;
        for (const Direction out : {in, RightTurn(in), LeftTurn(in)}) {
            const int effort = Carries(Run, {cell, in, out}) ? StandingCost
                               : out == in                   ? StraightCost
                                                             : TurnCost;
            Enter(Beyond(cell, out), out, cost + danger + effort, index);
        }
    }

    // All steps before the sink.
    std::vector<RouteStep> Trace(std::size_t index) const {
        std::vector<RouteStep> steps;
        while (Entries[index].From != NoEntry) {
            const std::size_t from = Entries[index].From;
            steps.push_back({CellOf(from), static_cast<Direction>(from % 4),
                             static_cast<Direction>(index % 4)});
            index = from;
        }
        std::ranges::reverse(steps);
        return steps;
    }

    const RunState& Run;
    std::vector<bool> Contagious;
    std::vector<Entry> Entries;
    std::priority_queue<std::pair<int, std::size_t>, std::vector<std::pair<int, std::size_t>>,
                        std::greater<>>
        Open;
};

int CursorMoves(const RunState& run, const Cell& cell) {
    return std::abs(cell.X - run.CursorX) + std::abs(cell.Y - run.CursorY);
}

int TurnPresses(const RunState& run, std::int32_t rotation) {
    const std::int32_t turns = TurnsToRotation(run, rotation);
    return turns == 3 ? 1 : turns;
}

struct Choice {
    int Cost = std::numeric_limits<int>::max();
    Placement Chosen;

    void Offer(int cost, const Placement& placement) {
        if (cost < Cost) {
            *this = {cost, placement};
        }
    }
};

void OfferGap(const RunState& run, const RouteStep& step, Choice& choice) {
    for (std::int32_t rotation = 0; rotation < 4; ++rotation) {
        const Tile tile = MakeTile(run.TileQueue[0], rotation);
        if (Carries(run, tile, step.Where, step.In, step.Out)) {
            const bool wasted = tile.Type == TileType::TJunction && step.In != step.Out;
            choice.Offer(CursorMoves(run, step.Where) + TurnPresses(run, rotation) +
                             (wasted ? WastedJunctionCost : 0),
                         {step.Where, rotation});
        }
    }
}

// A place for a tile that the route has no use for.
void OfferDump(const RunState& run, const std::vector<bool>& onRoute, Choice& choice) {
    for (std::int32_t y = 0; y < run.GridHeight; ++y) {
        for (std::int32_t x = 0; x < run.GridWidth; ++x) {
            const Cell cell = {x, y};
            const std::size_t i = TileIndex(run, x, y);
            if (onRoute[i] || IsEndpointCell(run, x, y)) {
                continue;
            }
            choice.Offer(CursorMoves(run, cell) +
                             (TouchesAny(run, onRoute, cell) ? BesideRouteCost : 0) +
                             (run.Tiles[i].Type == TileType::Empty ? 0 : WastedTileCost),
                         {cell, run.PreviewRotation});
        }
    }
}

} // namespace

bool DeliversCleanly(const RunState& run) {
    RunState trial = run;
    const Endpoint& source = trial.Sources.front();
    Packet packet;
    packet.X = source.X;
    packet.Y = source.Y;
    packet.Dir = source.Dir;
    packet.Corrupted = TileAt(trial, source.X, source.Y).VirusInfected;
    trial.Packets = {packet};
    trial.DeliveredPackets = 0;
    trial.LostPackets = 0;
    trial.CorruptedPackets = 0;
    trial.PacketGraceRemaining = LongestTrip;
    trial.VirusGraceRemaining = LongestTrip;
    TickScratch scratch;
    for (int tick = 0; tick < LongestTrip && !trial.Packets.empty(); ++tick) {
        RunTick(trial, scratch);
    }
    return trial.DeliveredPackets == 1 && trial.CorruptedPackets == 0;
}

std::optional<Placement> PlanPlacement(const RunState& run) {
    const std::vector<RouteStep> route = RouteSearch(run).Find();
    if (route.empty()) {
        return std::nullopt;
    }
    std::vector<bool> onRoute(run.Tiles.size());
    Choice choice;
    for (const RouteStep& step : route) {
        onRoute[TileIndex(run, step.Where.X, step.Where.Y)] = true;
        if (!Carries(run, step)) {
            OfferGap(run, step, choice);
        }
    }
    if (choice.Cost == std::numeric_limits<int>::max()) {
        OfferDump(run, onRoute, choice);
    }
    return choice.Chosen;
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

} // namespace Wirefall::Testing
