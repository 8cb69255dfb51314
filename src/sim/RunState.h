#pragma once

// The whole of one run as plain data: the board, the packets in flight, the counters and the random
// engine. The rules that change it are in LevelGeneration.h, PacketTick.h, Virus.h, LevelRules.h
// and RunCommands.h; the one live run of the program is in Simulation.h. The field names are also
// the keys of the save file.

#include "sim/Arithmetic.h"
#include "sim/Direction.h"
#include "sim/MersenneTwister.h"
#include "sim/Tile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Wirefall {

struct Packet {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    Direction Dir = Direction::Up; ///< By which exit it will leave its present cell.
    bool Corrupted = false;
    std::int32_t DelayTicks = 0; ///< Ticks left to wait before it moves again.

    bool operator==(const Packet&) const = default;
};

/// A source or a sink.
struct Endpoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    Direction Dir = Direction::Up; ///< From the board's edge inward: the single exit of the cell.

    bool operator==(const Endpoint&) const = default;
};

inline constexpr std::int32_t BoardSide = 10;
inline constexpr std::uint32_t DefaultSeed = 1337;

/// The defaults are those of a new run at level 1, but for the board, the queue and the engine,
/// which ConstructRunState makes.
struct RunState {
    std::int32_t GridWidth = BoardSide;
    std::int32_t GridHeight = BoardSide;
    /// Row-major: the cell (x, y) is element y * GridWidth + x. Always GridWidth * GridHeight
    /// elements.
    std::vector<Tile> Tiles;
    std::vector<Packet> Packets; ///< In the order in which they were spawned.
    std::vector<Endpoint> Sources;
    std::vector<Endpoint> Sinks;
    /// Element 0 is the tile in hand.
    std::array<TileType, 3> TileQueue = {TileType::Straight, TileType::Corner, TileType::TJunction};
    std::int32_t CursorX = 5;
    std::int32_t CursorY = 5;
    std::int32_t PreviewRotation = 0; ///< Quarter turns clockwise for the tile in hand, 0 to 3.
    std::int32_t Level = 1;
    std::int32_t TotalScore = 0; ///< May be negative.
    std::int32_t LevelTargetPackets = 20;
    std::int32_t FailureThreshold = 10; ///< The sum of lost and corrupted that ends the run.
    std::uint64_t Tick = 0;             ///< Of this level.
    std::int32_t SpawnIntervalTicks = 16;
    std::int32_t VirusSpreadIntervalTicks = 6;
    std::uint64_t NextSpawnTick = 16;
    std::int32_t PacketGraceTicks = 40;
    std::int32_t VirusGraceTicks = 40;
    std::int32_t PacketGraceRemaining = 40;
    std::int32_t VirusGraceRemaining = 40;
    std::uint64_t VirusActiveTicks = 0; ///< Ticks counted since the virus grace ended.
    std::int32_t LostPackets = 0;       ///< In this level, as the next two.
    std::int32_t CorruptedPackets = 0;
    std::int32_t DeliveredPackets = 0;
    bool GameOver = false;
    bool FastForward = false; ///< Written each frame from the held key; never saved.
    std::uint32_t Seed = DefaultSeed;
    MersenneTwister RandomEngine;

    bool operator==(const RunState&) const = default;
};

inline bool InBounds(const RunState& run, std::int32_t x, std::int32_t y) {
    return x >= 0 && y >= 0 && x < run.GridWidth && y < run.GridHeight;
}

/// The place in Tiles of the cell (x, y), which must be in bounds.
inline std::size_t TileIndex(const RunState& run, std::int32_t x, std::int32_t y) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(run.GridWidth) +
           static_cast<std::size_t>(x);
}

/// The cell (x, y), which must be in bounds.
inline Tile& TileAt(RunState& run, std::int32_t x, std::int32_t y) {
    return run.Tiles[TileIndex(run, x, y)];
}
inline const Tile& TileAt(const RunState& run, std::int32_t x, std::int32_t y) {
    return run.Tiles[TileIndex(run, x, y)];
}

/// Whether something that stands on `tile` at (x, y) can leave it by d: the tile has that exit, and
/// the neighbour is in bounds and has the opposite one. Packets and the virus both go by this.
inline bool CanExit(const RunState& run, const Tile& tile, std::int32_t x, std::int32_t y,
                    Direction d) {
    if (!HasExit(tile.Connections, d)) {
        return false;
    }
    const std::int32_t nx = WrappingAdd(x, DirectionDx(d));
    const std::int32_t ny = WrappingAdd(y, DirectionDy(d));
    return InBounds(run, nx, ny) && HasExit(TileAt(run, nx, ny).Connections, OppositeDirection(d));
}

/// Calls visit(neighbour) with each Tile& around the cell (x, y), which must be in bounds, for
/// whose side CanExit holds: first the one above, and then clockwise.
template <typename Visit>
void VisitConnected(RunState& run, std::int32_t x, std::int32_t y, Visit visit) {
    Tile* const cell = &TileAt(run, x, y);
    const ConnectionMask exits = cell->Connections;
    const auto look = [cell, exits, &visit](Direction d, bool inBounds, std::ptrdiff_t step) {
        if (HasExit(exits, d) && inBounds &&
            HasExit(cell[step].Connections, OppositeDirection(d))) {
            visit(cell[step]);
        }
    };
    look(Direction::Up, y > 0, -std::ptrdiff_t{run.GridWidth});
    look(Direction::Right, x + 1 < run.GridWidth, 1);
    look(Direction::Down, y + 1 < run.GridHeight, run.GridWidth);
    look(Direction::Left, x > 0, -1);
}

/// The first endpoint of the list at that position, or null.
inline const Endpoint* FindEndpoint(const std::vector<Endpoint>& list, std::int32_t x,
                                    std::int32_t y) {
    for (const Endpoint& endpoint : list) {
        if (endpoint.X == x && endpoint.Y == y) {
            return &endpoint;
        }
    }
    return nullptr;
}

/// Whether the cell is a sink, by its flag or by the list. False out of bounds.
inline bool IsSinkCell(const RunState& run, std::int32_t x, std::int32_t y) {
    return InBounds(run, x, y) &&
           (TileAt(run, x, y).OccupiedBySink || FindEndpoint(run.Sinks, x, y) != nullptr);
}

/// Whether the cell is a source or a sink, by its flags or by the lists. False out of bounds.
bool IsEndpointCell(const RunState& run, std::int32_t x, std::int32_t y);

/// Rebuilds the endpoint's cell: a Straight with the one exit Dir and the flag of its role. The
/// cell keeps its infection. An endpoint out of bounds is ignored.
void StampEndpointTile(RunState& run, const Endpoint& endpoint, bool isSource);

/// Makes a new run at level 1 with its board, drawing from an engine seeded with DefaultSeed: every
/// new run begins on the same board.
void ConstructRunState(RunState& run);

} // namespace Wirefall
