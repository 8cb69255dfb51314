#include "player/Route.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <utility>

namespace Wirefall {

namespace {

// What a cell of the way costs. Nearly every tile of the queue goes straight on, but a turn needs a
// Corner, or a TJunction where it fits, and a cure an Antivirus. That the virus will reach a cell
// is no more than a reason to prefer another way: one cut may save all of this one.
constexpr int StandingCost = 5;
constexpr int StraightCost = 25;
constexpr int TurnCost = 55;
constexpr int CureCost = 150;
constexpr int ThreatCost = 1;
constexpr int BesideVirusCost = 5;

bool IsReadyAntivirus(const Tile& tile) { return tile.Type == TileType::Antivirus; }

class RouteSearch {
public:
    RouteSearch(const RunState& run, const CellSet& contagious, const CellSet& avoided)
        : Run(run),
          Contagious(contagious),
          Avoided(avoided),
          Source(run.Sources.front()),
          Sink(run.Sinks.front()) {
        First = Beyond({Source.X, Source.Y}, Source.Dir);
        Last = Beyond({Sink.X, Sink.Y}, Sink.Dir);
        SourceInfected = TileAt(run, Source.X, Source.Y).VirusInfected;
        SinkInfected = TileAt(run, Sink.X, Sink.Y).VirusInfected;
    }

    Route Find() {
        Enter(First, Source.Dir, 0, NoEntry);
        while (!Open.empty()) {
            const auto [cost, index] = Open.top();
            Open.pop();
            if (cost > Entries[index].Cost) {
                continue;
            }
            const Cell cell = CellAt(index / 4);
            if (cell == Cell{Sink.X, Sink.Y}) {
                return {Trace(index), cost};
            }
            const auto in = static_cast<Direction>(index % 4);
            for (const Direction out : {in, RightTurn(in), LeftTurn(in)}) {
                const int price = Price({cell, in, out});
                if (price != Route::NoCost) {
                    Enter(Beyond(cell, out), out, cost + price, index);
                }
            }
        }
        return {};
    }

private:
    static constexpr std::size_t NoEntry = std::numeric_limits<std::size_t>::max();

    struct Entry {
        int Cost = Route::NoCost;
        std::size_t From = NoEntry;
    };

    void Enter(const Cell& cell, Direction in, int cost, std::size_t from) {
        if (!InBounds(Run, cell.X, cell.Y) || Avoided[CellIndex(cell)]) {
            return;
        }
        const Tile& tile = TileAt(Run, cell.X, cell.Y);
        if (tile.OccupiedBySource ||
            (tile.OccupiedBySink && !HasExit(tile.Connections, OppositeDirection(in)))) {
            return;
        }
        const std::size_t index = CellIndex(cell) * 4 + static_cast<std::size_t>(in);
        if (cost < Entries[index].Cost) {
            Entries[index] = {cost, from};
            Open.emplace(cost, index);
        }
    }

    // An Antivirus cleans its own cell and the cells that it connects to, so that one beside an
    // infected source or sink cures that.
    bool NeedsCure(const Cell& cell, const Tile& tile) const {
        return tile.VirusInfected || (SourceInfected && cell == First) ||
               (SinkInfected && cell == Last);
    }

    bool IsBesideVirus(const Cell& cell) const {
        return std::ranges::any_of(AllDirections, [&](Direction d) {
            const Cell next = Beyond(cell, d);
            return InBounds(Run, next.X, next.Y) && Contagious[CellIndex(next)];
        });
    }

    int Price(const RouteStep& step) const {
        const Tile& tile = TileAt(Run, step.Where.X, step.Where.Y);
        const bool straight = step.In == step.Out;
        if (NeedsCure(step.Where, tile)) {
            if (!straight) {
                return Route::NoCost;
            }
            return IsReadyAntivirus(tile) ? StandingCost : CureCost;
        }
        if (!Carries(Run, tile, step)) {
            return (straight ? StraightCost : TurnCost) +
                   (IsBesideVirus(step.Where) ? BesideVirusCost : 0);
        }
        return StandingCost + (Contagious[CellIndex(step.Where)] ? ThreatCost : 0);
    }

    // All steps before the sink.
    std::vector<RouteStep> Trace(std::size_t index) const {
        std::vector<RouteStep> steps;
        while (Entries[index].From != NoEntry) {
            const std::size_t from = Entries[index].From;
            steps.push_back({CellAt(from / 4), static_cast<Direction>(from % 4),
                             static_cast<Direction>(index % 4)});
            index = from;
        }
        std::ranges::reverse(steps);
        return steps;
    }

    using OpenEntry = std::pair<int, std::size_t>;

    const RunState& Run;
    const CellSet& Contagious;
    const CellSet& Avoided;
    Endpoint Source;
    Endpoint Sink;
    Cell First;
    Cell Last;
    bool SourceInfected = false;
    bool SinkInfected = false;
    std::array<Entry, BoardCells * 4> Entries;
    std::priority_queue<OpenEntry, std::vector<OpenEntry>, std::greater<>> Open;
};

} // namespace

CellSet ContagiousCells(const RunState& run, const CellSet& shut) {
    CellSet contagious;
    std::array<Cell, BoardCells> open{};
    std::size_t openCount = 0;
    const auto add = [&](std::size_t index) {
        if (!contagious[index] && !shut[index] && run.Tiles[index].Type != TileType::Firewall) {
            contagious.set(index);
            open[openCount++] = CellAt(index);
        }
    };
    for (std::size_t index = 0; index < run.Tiles.size(); ++index) {
        if (run.Tiles[index].VirusInfected) {
            add(index);
        }
    }
    while (openCount > 0) {
        const Cell cell = open[--openCount];
        for (const Direction d : AllDirections) {
            if (CanExit(run, TileAt(run, cell.X, cell.Y), cell.X, cell.Y, d)) {
                add(CellIndex(Beyond(cell, d)));
            }
        }
    }
    return contagious;
}

bool Carries(const RunState& run, const Tile& tile, const RouteStep& step) {
    if (!HasExit(tile.Connections, OppositeDirection(step.In)) ||
        !HasExit(tile.Connections, step.Out)) {
        return false;
    }
    if (HasAllExits(tile.Connections)) {
        return step.In == step.Out;
    }
    for (const Direction d : {step.In, RightTurn(step.In), LeftTurn(step.In)}) {
        if (d == step.Out) {
            return true;
        }
        if (CanExit(run, tile, step.Where.X, step.Where.Y, d)) {
            return false;
        }
    }
    return false;
}

bool Carries(const RunState& run, const RouteStep& step) {
    return Carries(run, TileAt(run, step.Where.X, step.Where.Y), step);
}

CellSet CellsOf(const Route& route) {
    CellSet cells;
    for (const RouteStep& step : route.Steps) {
        cells.set(CellIndex(step.Where));
    }
    return cells;
}

Route FindRoute(const RunState& run, const CellSet& contagious, const CellSet& avoided) {
    return RouteSearch(run, contagious, avoided).Find();
}

} // namespace Wirefall
