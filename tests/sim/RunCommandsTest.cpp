#include "sim/LevelGeneration.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace Wirefall {
namespace {

using Testing::DrawnRun;
using Testing::InstallLiveRun;

constexpr std::uint32_t Up = 82;
constexpr std::uint32_t Down = 81;
constexpr std::uint32_t Left = 80;
constexpr std::uint32_t Right = 79;
constexpr std::uint32_t TurnLeft = 20;
constexpr std::uint32_t TurnRight = 8;
constexpr std::uint32_t Place = 44;

class Commands : public testing::Test {
protected:
    void SetUp() override { InstallLiveRun(DrawnRun({"→─⇐"})); }

    // Whether the command counted as a change.
    static bool Give(std::uint32_t code) {
        const std::uint64_t before = GetRevision();
        ApplyRunCommand(code);
        EXPECT_LE(GetRevision() - before, 1U);
        return GetRevision() != before;
    }

    static void PutCursor(std::int32_t x, std::int32_t y) {
        LiveRun().CursorX = x;
        LiveRun().CursorY = y;
    }
};

TEST_F(Commands, EachCodeDoesWhatItsKeyDoes) {
    struct Case {
        std::uint32_t Code;
        std::int32_t X;
        std::int32_t Y;
        std::int32_t Rotation;
        bool Places;
    };
    const std::vector<Case> cases = {
        {82, 5, 4, 0, false}, {26, 5, 4, 0, false}, {81, 5, 6, 0, false}, {22, 5, 6, 0, false},
        {80, 4, 5, 0, false}, {4, 4, 5, 0, false},  {79, 6, 5, 0, false}, {7, 6, 5, 0, false},
        {20, 5, 5, 3, false}, {8, 5, 5, 1, false},  {40, 5, 5, 0, true},  {44, 5, 5, 0, true},
        {88, 5, 5, 0, true},
    };
    std::set<std::uint32_t> known;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Code);
        known.insert(c.Code);
        InstallLiveRun(DrawnRun({"→─⇐"}));
        EXPECT_TRUE(Give(c.Code));
        EXPECT_EQ(LiveRun().CursorX, c.X);
        EXPECT_EQ(LiveRun().CursorY, c.Y);
        EXPECT_EQ(LiveRun().PreviewRotation, c.Rotation);
        EXPECT_EQ(TileAt(LiveRun(), 5, 5).Type, c.Places ? TileType::Straight : TileType::Empty);
    }
    InstallLiveRun(DrawnRun({"→─⇐"}));
    const RunState before = LiveRun();
    for (std::uint32_t code = 0; code < 600; ++code) {
        if (!known.contains(code)) {
            EXPECT_FALSE(Give(code)) << code;
        }
    }
    EXPECT_FALSE(Give(0xffffffff));
    EXPECT_EQ(LiveRun(), before);
}

TEST_F(Commands, TheCursorStopsAtTheWalls) {
    PutCursor(0, 0);
    EXPECT_FALSE(Give(Left));
    EXPECT_FALSE(Give(Up));
    EXPECT_EQ(LiveRun().CursorX, 0);
    EXPECT_EQ(LiveRun().CursorY, 0);
    PutCursor(9, 9);
    EXPECT_FALSE(Give(Right));
    EXPECT_FALSE(Give(Down));
    EXPECT_EQ(LiveRun().CursorX, 9);
    EXPECT_EQ(LiveRun().CursorY, 9);
}

TEST_F(Commands, ACursorOfADamagedRunComesBackToTheBoard) {
    constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
    PutCursor(Lowest, Lowest);
    EXPECT_FALSE(Give(Place));
    EXPECT_TRUE(Give(Left));
    EXPECT_TRUE(Give(Up));
    EXPECT_EQ(LiveRun().CursorX, 0);
    EXPECT_EQ(LiveRun().CursorY, 0);
    PutCursor(Highest, Highest);
    EXPECT_FALSE(Give(Place));
    EXPECT_TRUE(Give(Right));
    EXPECT_TRUE(Give(Down));
    EXPECT_EQ(LiveRun().CursorX, 9);
    EXPECT_EQ(LiveRun().CursorY, 9);
}

TEST_F(Commands, RotationRunsInACircleAndAlwaysCounts) {
    EXPECT_TRUE(Give(TurnLeft));
    EXPECT_EQ(LiveRun().PreviewRotation, 3);
    EXPECT_TRUE(Give(TurnRight));
    EXPECT_EQ(LiveRun().PreviewRotation, 0);
    EXPECT_TRUE(Give(TurnRight));
    EXPECT_EQ(LiveRun().PreviewRotation, 1);
    LiveRun().PreviewRotation = std::numeric_limits<std::int32_t>::max();
    EXPECT_TRUE(Give(TurnRight));
    EXPECT_EQ(LiveRun().PreviewRotation, 0);
    LiveRun().PreviewRotation = std::numeric_limits<std::int32_t>::min();
    EXPECT_TRUE(Give(TurnLeft));
    EXPECT_EQ(LiveRun().PreviewRotation, 3);
}

TEST_F(Commands, PlacesTheTileInHandAsItIsTurned) {
    struct Case {
        TileType Type;
        std::int32_t Rotation;
        int Connections;
    };
    for (const Case& c : {Case{TileType::Straight, 1, 10}, Case{TileType::Corner, 3, 9},
                          Case{TileType::Cross, 2, 15}, Case{TileType::Buffer, 1, 10}}) {
        LiveRun().TileQueue[0] = c.Type;
        LiveRun().PreviewRotation = c.Rotation;
        EXPECT_TRUE(Give(Place));
        EXPECT_EQ(TileAt(LiveRun(), 5, 5).Type, c.Type);
        EXPECT_EQ(TileAt(LiveRun(), 5, 5).Connections, c.Connections);
        EXPECT_EQ(LiveRun().PreviewRotation, c.Rotation) << "the rotation stays for the next tile";
    }
}

TEST_F(Commands, PlacingMovesTheQueueUpAndDrawsOneTile) {
    RunState& run = LiveRun();
    run.TileQueue = {TileType::Corner, TileType::Buffer, TileType::Firewall};
    MersenneTwister engine = run.RandomEngine;
    ApplyRunCommand(Place);
    const TileType first = DrawQueueTile(engine);
    EXPECT_EQ(run.TileQueue,
              (std::array<TileType, 3>{TileType::Buffer, TileType::Firewall, first}));
    EXPECT_EQ(run.RandomEngine, engine);
    ApplyRunCommand(Place);
    EXPECT_EQ(run.TileQueue,
              (std::array<TileType, 3>{TileType::Firewall, first, DrawQueueTile(engine)}));
    EXPECT_EQ(run.RandomEngine, engine);
}

TEST_F(Commands, NothingCanBeBuiltOnASourceOrASink) {
    for (const std::int32_t x : {0, 2}) {
        PutCursor(x, 0);
        const RunState before = LiveRun();
        EXPECT_FALSE(Give(Place));
        EXPECT_EQ(LiveRun(), before) << "queue and engine included";
    }
}

TEST_F(Commands, BuildingDoesNotCleanTheCell) {
    for (const TileType type : {TileType::Straight, TileType::Cross, TileType::Firewall,
                                TileType::Antivirus, TileType::Buffer}) {
        Tile& cell = TileAt(LiveRun(), 5, 5);
        cell = MakeTile(TileType::Corner, 0);
        cell.VirusInfected = true;
        cell.Consumed = true;
        cell.CooldownTicks = 3;
        LiveRun().TileQueue[0] = type;
        EXPECT_TRUE(Give(Place));
        Tile expected = MakeTile(type, 0);
        expected.VirusInfected = true;
        EXPECT_EQ(cell, expected) << "all else of the old tile is gone";
    }
}

TEST_F(Commands, EveryOtherTileCanBeReplaced) {
    InstallLiveRun(DrawnRun({"→─⇐", "│┌┬┼FABb"}));
    LiveRun().Packets.push_back(Testing::PacketAt(0, 1, Direction::Up));
    for (std::int32_t x = 0; x < 8; ++x) {
        PutCursor(x, 1);
        LiveRun().TileQueue[0] = TileType::TJunction;
        EXPECT_TRUE(Give(Place));
        EXPECT_EQ(TileAt(LiveRun(), x, 1), MakeTile(TileType::TJunction, 0));
    }
    EXPECT_EQ(LiveRun().Packets.front(), Testing::PacketAt(0, 1, Direction::Up));
}

TEST_F(Commands, AfterGameOverNothingMoves) {
    LiveRun().GameOver = true;
    const RunState before = LiveRun();
    for (const std::uint32_t code : {Up, Down, Left, Right, TurnLeft, TurnRight, Place}) {
        EXPECT_FALSE(Give(code));
    }
    EXPECT_EQ(LiveRun(), before);
}

TEST_F(Commands, WorkDuringTheGraces) {
    LiveRun().PacketGraceRemaining = 40;
    LiveRun().VirusGraceRemaining = 40;
    EXPECT_TRUE(Give(Place));
}

} // namespace
} // namespace Wirefall
