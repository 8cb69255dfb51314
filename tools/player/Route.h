#pragma once

// Ways for packets from the source to the sink: where the virus can get to, whether a tile carries
// a packet from one side to another, and the cheapest way over the board as it lies and as it could
// be built. All of it looks at the board only.

#include "sim/LevelGeneration.h"
#include "sim/RunState.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Wirefall {

/// Clockwise from the top.
inline constexpr std::array<Direction, 4> AllDirections = {Direction::Up, Direction::Right,
                                                           Direction::Down, Direction::Left};

inline constexpr std::size_t BoardCells = std::size_t{BoardSide} * BoardSide;

/// A set of cells of the board, by their place in RunState::Tiles.
using CellSet = std::bitset<BoardCells>;

/// The cell beside `cell`; it may lie out of bounds.
inline Cell Beyond(const Cell& cell, Direction d) {
    return {cell.X + DirectionDx(d), cell.Y + DirectionDy(d)};
}

inline std::size_t CellIndex(const Cell& cell) {
    return static_cast<std::size_t>(cell.Y) * BoardSide + static_cast<std::size_t>(cell.X);
}

inline Cell CellAt(std::size_t index) {
    return {static_cast<std::int32_t>(index % BoardSide),
            static_cast<std::int32_t>(index / BoardSide)};
}

/// The infected cells and all that the virus can reach from them as the board lies. Infected
/// firewalls are not among them: they corrupt packets, but the virus stays where it is. Cells of
/// `shut` neither take the virus nor give it.
CellSet ContagiousCells(const RunState& run, const CellSet& shut = {});

/// One cell of a way.
struct RouteStep {
    Cell Where;
    Direction In; ///< The direction of travel on entry.
    Direction Out;
};

/// Whether a packet that enters the cell of `step` leaves it as the step says if `tile` lies there.
/// The next cell of the way is taken to connect, since it may be yet to be built.
bool Carries(const RunState& run, const Tile& tile, const RouteStep& step);

/// As above, with the tile that lies there.
bool Carries(const RunState& run, const RouteStep& step);

struct Route {
    static constexpr int NoCost = std::numeric_limits<int>::max();

    /// All cells between the source and the sink, in the order of travel.
    std::vector<RouteStep> Steps;
    int Cost = NoCost;

    bool Exists() const { return Cost != NoCost; }
};

/// The cells of a way.
CellSet CellsOf(const Route& route);

/// The cheapest way from the source to the sink, by Dijkstra's algorithm over pairs of a cell and
/// the direction in which it is entered. The cost tells how hard it is to build what is
/// missing and to make the way safe from the virus; an infected cell can be on it
/// at the price of an Antivirus. Cells of `avoided` are not used. There may be no way.
Route FindRoute(const RunState& run, const CellSet& contagious, const CellSet& avoided = {});

} // namespace Wirefall
