#pragma once

// Makes the board of a level. Everything random comes from the run's engine in a fixed order, so
// the same engine state and level always give the same board; saved runs rely on that order:
// source edge, source cell, sink cell, then kind and rotation of each other cell row by row, the
// shuffle for the specials and a rotation for each, the shuffle of the plain cells, the shuffle of
// the cells that can be infected, and last the three tiles of the queue.

#include "sim/RunState.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Wirefall {

/// A position on the board.
struct Cell {
    std::int32_t X = 0;
    std::int32_t Y = 0;

    bool operator==(const Cell&) const = default;
};

/// Replaces the board, the queue and everything else of the run that belongs to one level, for the
/// run's Level. Level, score, target, threshold, intervals and graces stay. A board without enough
/// empty cells is thrown away and drawn anew; after 64 such boards (which happens to every level
/// from 111 up, where the specials crowd out the empty cells) the level is an empty board with one
/// source and one sink.
void GenerateLevel(RunState& run);

/// Shuffles a list of fewer than 65536 cells, with one draw for each two swaps.
void ShuffleCells(std::vector<Cell>& list, MersenneTwister& engine);

/// A kind of tile for the queue, one draw; all seven kinds that can be placed are equally frequent.
TileType DrawQueueTile(MersenneTwister& engine);

} // namespace Wirefall
