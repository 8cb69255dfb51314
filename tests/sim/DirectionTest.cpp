#include "sim/Direction.h"

#include <gtest/gtest.h>

#include <vector>

namespace Wirefall {
namespace {

struct DirectionCase {
    Direction D;
    std::int32_t Dx;
    std::int32_t Dy;
    ConnectionMask Bit;
    Direction Opposite;
    Direction Right;
    Direction Left;
};

TEST(Direction, StepsTurnsAndBitsAreThoseOfTheBoard) {
    const std::vector<DirectionCase> cases = {
        {Direction::Up, 0, -1, 1, Direction::Down, Direction::Right, Direction::Left},
        {Direction::Right, 1, 0, 2, Direction::Left, Direction::Down, Direction::Up},
        {Direction::Down, 0, 1, 4, Direction::Up, Direction::Left, Direction::Right},
        {Direction::Left, -1, 0, 8, Direction::Right, Direction::Up, Direction::Down},
    };
    int value = 0;
    for (const DirectionCase& c : cases) {
        SCOPED_TRACE(value);
        EXPECT_EQ(static_cast<int>(c.D), value++);
        EXPECT_EQ(DirectionDx(c.D), c.Dx);
        EXPECT_EQ(DirectionDy(c.D), c.Dy);
        EXPECT_EQ(DirectionBit(c.D), c.Bit);
        EXPECT_EQ(OppositeDirection(c.D), c.Opposite);
        EXPECT_EQ(RightTurn(c.D), c.Right);
        EXPECT_EQ(LeftTurn(c.D), c.Left);
    }
}

TEST(Direction, AValueThatIsNoDirectionGoesNowhere) {
    for (const int value : {4, 5, 128, 255}) {
        SCOPED_TRACE(value);
        const auto d = static_cast<Direction>(value);
        EXPECT_EQ(DirectionDx(d), 0);
        EXPECT_EQ(DirectionDy(d), 0);
        EXPECT_EQ(DirectionBit(d), 0);
        EXPECT_EQ(OppositeDirection(d), Direction::Up);
        EXPECT_FALSE(HasExit(AllExits, d));
    }
}

} // namespace
} // namespace Wirefall
