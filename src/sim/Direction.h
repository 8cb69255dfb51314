#pragma once

// The four directions of the board and their small tables. x grows to the right and y downward, so
// Up is dy -1. A stored direction can hold any byte (a damaged save may); values above Left have no
// step and no connection bit, and their opposite reads as Up.

#include "base/EnumTable.h"

#include <cstdint>

namespace Wirefall {

enum class Direction : std::uint8_t { Up = 0, Right = 1, Down = 2, Left = 3 };

/// A set of exits of a cell: the sum of the DirectionBit of each. Only the low four bits count.
using ConnectionMask = std::uint8_t;

inline constexpr ConnectionMask NoExits = 0;
inline constexpr ConnectionMask AllExits = 15;

namespace DirectionTables {

struct Row {
    std::int8_t Dx;
    std::int8_t Dy;
    ConnectionMask Bit;
    Direction Opposite;
    Direction TurnRight;
    Direction TurnLeft;
};

inline constexpr auto Rows = TableBy<Direction, Row>({
    {0, -1, 1, Direction::Down, Direction::Right, Direction::Left},
    {+1, 0, 2, Direction::Left, Direction::Down, Direction::Up},
    {0, +1, 4, Direction::Up, Direction::Left, Direction::Right},
    {-1, 0, 8, Direction::Right, Direction::Up, Direction::Down},
});

inline constexpr Row InvalidRow = {0, 0, NoExits, Direction::Up, Direction::Up, Direction::Up};

constexpr const Row& Of(Direction d) {
    const Row* const row = Rows.Find(d);
    return row != nullptr ? *row : InvalidRow;
}

} // namespace DirectionTables

/// -1, 0 or +1; 0 for a value that is no direction.
constexpr std::int32_t DirectionDx(Direction d) { return DirectionTables::Of(d).Dx; }
/// -1, 0 or +1; 0 for a value that is no direction.
constexpr std::int32_t DirectionDy(Direction d) { return DirectionTables::Of(d).Dy; }
/// 1, 2, 4 or 8 for Up, Right, Down, Left; 0 for a value that is no direction.
constexpr ConnectionMask DirectionBit(Direction d) { return DirectionTables::Of(d).Bit; }
/// Up for a value that is no direction.
constexpr Direction OppositeDirection(Direction d) { return DirectionTables::Of(d).Opposite; }
/// The direction after a quarter turn clockwise.
constexpr Direction RightTurn(Direction d) { return DirectionTables::Of(d).TurnRight; }
/// The direction after a quarter turn counter-clockwise.
constexpr Direction LeftTurn(Direction d) { return DirectionTables::Of(d).TurnLeft; }

constexpr bool HasExit(ConnectionMask connections, Direction d) {
    return (connections & DirectionBit(d)) != 0;
}

constexpr bool HasAllExits(ConnectionMask connections) {
    return (connections & AllExits) == AllExits;
}

} // namespace Wirefall
