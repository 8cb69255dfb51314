#include "player/Planner.h"

#include "player/Forecast.h"
#include "player/PressCodes.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace Wirefall {

namespace {

// What is wrong with a way beside what it costs to build, in the same unit.
constexpr int LinkCost = 15;     // A cell of it that the virus can enter from beside it.
constexpr int NoWayCost = 10000; // There is none.

// What a placement costs beside its presses.
constexpr int PacketBelowCost = 4; // It may throw a packet off its way.
constexpr int SecondWayGain = 2;

int Distance(const Cell& a, const Cell& b) { return std::abs(a.X - b.X) + std::abs(a.Y - b.Y); }

Cell CursorCell(const RunState& run) { return {run.CursorX, run.CursorY}; }

bool IsInfected(const RunState& run, const Cell& cell) {
    return TileAt(run, cell.X, cell.Y).VirusInfected;
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

// The connections of the cell to cells of `others`.
int CountConnections(const RunState& run, const Cell& cell, const CellSet& others) {
    return static_cast<int>(std::ranges::count_if(AllDirections, [&](Direction d) {
        return CanExit(run, TileAt(run, cell.X, cell.Y), cell.X, cell.Y, d) &&
               others[CellIndex(Beyond(cell, d))];
    }));
}

// The way with both its ends.
CellSet CellsFromEndToEnd(const RunState& run, const CellSet& onWay) {
    CellSet cells = onWay;
    cells.set(CellIndex({run.Sources.front().X, run.Sources.front().Y}));
    cells.set(CellIndex({run.Sinks.front().X, run.Sinks.front().Y}));
    return cells;
}

// What the virus can reach only by the way itself does not count, nor do the source and the sink.
int CountLinks(const RunState& run, const Outlook& outlook) {
    const CellSet outside = ContagiousCells(run, CellsFromEndToEnd(run, outlook.OnWay));
    int links = 0;
    for (const RouteStep& step : outlook.Way.Steps) {
        const Tile& tile = TileAt(run, step.Where.X, step.Where.Y);
        if (tile.Type == TileType::Firewall || !Carries(run, step)) {
            continue;
        }
        links += CountConnections(run, step.Where, outside);
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
        if (Weights.CanWait) {
            Shut = CellsToKeepShut(Board, Now.Way);
        }
        if (CountOpenings() > 0) {
            return FindQuarantine();
        }
        if (Shut.any() && IsReadyButForShutCells()) {
            return std::nullopt;
        }
        if (IsStanding(Board, Now.Way)) {
            FindSecondWay();
        }
        TryCells(Candidates() & ~Shut);
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

    // Makes the cells that are to be kept shut so.
    std::optional<Placement> FindQuarantine() {
        Quarantining = true;
        TryCells(Shut | (BesideCursor() & ~Now.OnWay));
        return Best;
    }

    // By which the virus could come from a cell that is to be kept shut onto the way.
    int CountOpenings() const {
        const CellSet way = CellsFromEndToEnd(Board, Now.OnWay);
        int openings = 0;
        for (std::size_t index = 0; index < BoardCells; ++index) {
            openings += Shut[index] ? CountConnections(Board, CellAt(index), way) : 0;
        }
        return openings;
    }

    bool IsReadyButForShutCells() const {
        const CellSet cures = CureCells(Board, Now.Way);
        return std::ranges::all_of(Now.Way.Steps, [&](const RouteStep& step) {
            const std::size_t index = CellIndex(step.Where);
            return Shut[index] ||
                   (Carries(Board, step) &&
                    (!cures[index] || Board.Tiles[index].Type == TileType::Antivirus));
        });
    }

    CellSet BesideCursor() const {
        CellSet cells;
        cells.set(CellIndex(CursorCell(Board)));
        for (const Direction d : AllDirections) {
            const Cell beside = Beyond(CursorCell(Board), d);
            if (InBounds(Board, beside.X, beside.Y)) {
                cells.set(CellIndex(beside));
            }
        }
        return cells;
    }

    void TryCells(const CellSet& cells) {
        for (std::size_t index = 0; index < BoardCells; ++index) {
            if (cells[index]) {
                TryCell(CellAt(index));
            }
        }
    }

    // The ways, whatever carries the virus beside the first, and where the cursor is.
    CellSet Candidates() const {
        CellSet candidates = Now.OnWay | SecondCells | BesideCursor();
        for (const RouteStep& step : Now.Way.Steps) {
            for (const Direction d : AllDirections) {
                const Cell beside = Beyond(step.Where, d);
                if (InBounds(Board, beside.X, beside.Y) && Now.Contagious[CellIndex(beside)]) {
                    candidates.set(CellIndex(beside));
                }
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
        int cost = presses + CostOfBoard(cell);
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

    // Of the board as it lies, with the cursor on `cursor`.
    int CostOfBoard(const Cell& cursor) const {
        if (Quarantining) {
            return Weights.WayCost * CountOpenings() * LinkCost;
        }
        const Outlook outlook = LookAt(Board);
        return Weights.WayCost * outlook.Cost() + DistanceToWork(Board, outlook.Way, cursor);
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
    CellSet Shut;
    bool Quarantining = false;
    int BestCost = std::numeric_limits<int>::max();
    std::optional<Placement> Best;
};

} // namespace

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
