#include "sim/Tile.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace Wirefall {
namespace {

struct ShapeCase {
    TileType Type;
    int Value;
    std::array<int, 4> MaskByRotation;
};

TEST(Tile, EveryKindHasItsExitsAtEveryRotation) {
    const std::vector<ShapeCase> cases = {
        {TileType::Empty, 0, {0, 0, 0, 0}},         {TileType::Straight, 1, {5, 10, 5, 10}},
        {TileType::Corner, 2, {3, 6, 12, 9}},       {TileType::TJunction, 3, {7, 14, 13, 11}},
        {TileType::Cross, 4, {15, 15, 15, 15}},     {TileType::Firewall, 5, {15, 15, 15, 15}},
        {TileType::Antivirus, 6, {15, 15, 15, 15}}, {TileType::Buffer, 7, {5, 10, 5, 10}},
    };
    for (const ShapeCase& c : cases) {
        EXPECT_EQ(static_cast<int>(c.Type), c.Value);
        for (int rotation = 0; rotation < 4; ++rotation) {
            SCOPED_TRACE(testing::Message() << c.Value << " turned " << rotation);
            Tile expected;
            expected.Type = c.Type;
            expected.Connections = static_cast<ConnectionMask>(
                c.MaskByRotation.at(static_cast<std::size_t>(rotation)));
            EXPECT_EQ(MakeTile(c.Type, rotation), expected);
        }
    }
}

TEST(Tile, RotationCountsInQuarterTurnsBothWays) {
    EXPECT_EQ(MakeTile(TileType::Straight, -1).Connections, 10);
    EXPECT_EQ(MakeTile(TileType::Corner, 5).Connections, 6);
    EXPECT_EQ(MakeTile(TileType::Corner, -1).Connections, 9);
    EXPECT_EQ(MakeTile(TileType::Firewall, 3).Connections, 15);
    EXPECT_EQ(MakeTile(TileType::Antivirus, 2).Connections, 15);
    EXPECT_EQ(MakeTile(TileType::Empty, 2).Connections, 0);
    EXPECT_EQ(MakeTile(TileType::Corner, std::numeric_limits<std::int32_t>::min()).Connections, 3);
    EXPECT_EQ(MakeTile(TileType::Corner, std::numeric_limits<std::int32_t>::max()).Connections, 9);
}

TEST(Tile, AnUnknownKindHasNoExits) {
    EXPECT_EQ(MakeTile(static_cast<TileType>(8), 1).Connections, 0);
    EXPECT_EQ(MakeTile(static_cast<TileType>(255), 0).Connections, 0);
}

TEST(Tile, AUsedUpTileBecomesThePlainKindOfItsExits) {
    const std::array<TileType, 16> plain = {
        TileType::Empty,  TileType::Cross,     TileType::Cross,     TileType::Corner,
        TileType::Cross,  TileType::Straight,  TileType::Corner,    TileType::TJunction,
        TileType::Cross,  TileType::Corner,    TileType::Straight,  TileType::TJunction,
        TileType::Corner, TileType::TJunction, TileType::TJunction, TileType::Cross,
    };
    for (std::size_t mask = 0; mask < plain.size(); ++mask) {
        EXPECT_EQ(PlainTypeForMask(static_cast<ConnectionMask>(mask)), plain.at(mask)) << mask;
    }
}

} // namespace
} // namespace Wirefall
