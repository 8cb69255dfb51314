#pragma once

// One cell of the board: what kind of tile lies on it, by which sides it can be entered and left,
// and whether it carries the virus.

#include "base/EnumTable.h"
#include "sim/Direction.h"

#include <cstdint>

namespace Wirefall {

/// The kinds of tile. The values are part of the save format.
enum class TileType : std::uint8_t {
    Empty = 0,     ///< Nothing can enter.
    Straight = 1,  ///< Two opposite exits.
    Corner = 2,    ///< Two neighbouring exits.
    TJunction = 3, ///< Three exits.
    Cross = 4,     ///< Four exits; packets go straight through, and the two axes share it.
    Firewall = 5,  ///< Passes packets; never takes or gives the virus.
    Antivirus =
        6,      ///< Cleans itself and its connected neighbours for the first packet, then is plain.
    Buffer = 7, ///< Holds each packet for one extra tick.
};

inline constexpr auto TileTypeCount = static_cast<int>(EnumCount<TileType>);

struct Tile {
    TileType Type = TileType::Empty;
    /// Need not be what MakeTile would give for Type: an endpoint cell is a Straight with a single
    /// exit.
    ConnectionMask Connections = NoExits;
    bool VirusInfected = false;
    bool OccupiedBySource = false;
    bool OccupiedBySink = false;
    /// An Antivirus stood here and has been used. Kept and saved; no rule reads it.
    bool Consumed = false;
    /// Saved with the tile and otherwise left alone.
    std::int32_t CooldownTicks = 0;

    bool operator==(const Tile&) const = default;
};

/// A fresh tile. `rotation` is a number of quarter turns clockwise and may be any integer, negative
/// ones included; Cross, Firewall and Antivirus ignore it. A type value above 7 gives no exits.
Tile MakeTile(TileType type, std::int32_t rotation);

/// The kind that a tile with this mask becomes when its special nature is used up. A mask with a
/// single exit, like the full one, counts as a Cross.
TileType PlainTypeForMask(ConnectionMask mask);

} // namespace Wirefall
