#include "sim/Tile.h"

#include <array>

namespace Wirefall {

namespace {

struct Shape {
    ConnectionMask Base;
    bool Rotates;
};

constexpr auto Shapes = TableBy<TileType, Shape>({
    {0, false},  // Empty
    {5, true},   // Straight
    {3, true},   // Corner
    {7, true},   // TJunction
    {15, false}, // Cross
    {15, false}, // Firewall
    {15, false}, // Antivirus
    {5, true},   // Buffer
});

constexpr std::array<TileType, AllExits + 1> PlainTypes = {
    TileType::Empty,     // 0
    TileType::Cross,     // 1
    TileType::Cross,     // 2
    TileType::Corner,    // 3
    TileType::Cross,     // 4
    TileType::Straight,  // 5
    TileType::Corner,    // 6
    TileType::TJunction, // 7
    TileType::Cross,     // 8
    TileType::Corner,    // 9
    TileType::Straight,  // 10
    TileType::TJunction, // 11
    TileType::Corner,    // 12
    TileType::TJunction, // 13
    TileType::TJunction, // 14
    TileType::Cross,     // 15
};

ConnectionMask TurnedClockwise(ConnectionMask mask) {
    return static_cast<ConnectionMask>(((mask << 1) | (mask >> 3)) & AllExits);
}

} // namespace

Tile MakeTile(TileType type, std::int32_t rotation) {
    Tile tile;
    tile.Type = type;
    const Shape* const shape = Shapes.Find(type);
    if (shape == nullptr) {
        return tile;
    }
    tile.Connections = shape->Base;
    if (shape->Rotates) {
        const int turns = ((rotation % 4) + 4) % 4;
        for (int turn = 0; turn < turns; ++turn) {
            tile.Connections = TurnedClockwise(tile.Connections);
        }
    }
    return tile;
}

TileType PlainTypeForMask(ConnectionMask mask) { return PlainTypes[mask & AllExits]; }

} // namespace Wirefall
