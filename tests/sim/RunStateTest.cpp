#include "sim/RunState.h"

#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <vector>

namespace Wirefall {
namespace {

using Testing::DrawnRun;

TEST(Board, OnlyTheCellsOfTheGridAreInBounds) {
    RunState run;
    run.GridWidth = 12;
    run.GridHeight = 7;
    EXPECT_TRUE(InBounds(run, 0, 0));
    EXPECT_TRUE(InBounds(run, 11, 6));
    EXPECT_FALSE(InBounds(run, -1, 0));
    EXPECT_FALSE(InBounds(run, 0, -1));
    EXPECT_FALSE(InBounds(run, 12, 0));
    EXPECT_FALSE(InBounds(run, 0, 7));
}

TEST(Board, CellsLieRowByRow) {
    RunState run = DrawnRun({"...", "..A"});
    EXPECT_EQ(run.Tiles[12].Type, TileType::Antivirus);
    EXPECT_EQ(&TileAt(run, 2, 1), &run.Tiles[12]);
}

TEST(Board, AnExitNeedsANeighbourThatConnectsBack) {
    const RunState run = DrawnRun({
        "┌─┐",
        "│.│",
        "└┴┘",
    });
    EXPECT_TRUE(CanExit(run, TileAt(run, 0, 0), 0, 0, Direction::Right));
    EXPECT_TRUE(CanExit(run, TileAt(run, 0, 0), 0, 0, Direction::Down));
    EXPECT_FALSE(CanExit(run, TileAt(run, 0, 0), 0, 0, Direction::Up)) << "no exit there";
    EXPECT_FALSE(CanExit(run, TileAt(run, 1, 2), 1, 2, Direction::Up)) << "an empty neighbour";
    const RunState corner = DrawnRun({"┘"});
    EXPECT_FALSE(CanExit(corner, TileAt(corner, 0, 0), 0, 0, Direction::Up)) << "off the board";
    EXPECT_FALSE(CanExit(corner, TileAt(corner, 0, 0), 0, 0, static_cast<Direction>(4)));
}

TEST(Board, ConnectedNeighboursAreVisitedClockwiseFromTheTop) {
    RunState run = DrawnRun({
        "┼│┼",
        "─┼─",
        "┼│┼",
    });
    std::vector<const Tile*> visited;
    const auto visit = [&visited](Tile& neighbour) { visited.push_back(&neighbour); };
    VisitConnected(run, 1, 1, visit);
    EXPECT_EQ(visited, (std::vector<const Tile*>{&TileAt(run, 1, 0), &TileAt(run, 2, 1),
                                                 &TileAt(run, 1, 2), &TileAt(run, 0, 1)}));
    visited.clear();
    VisitConnected(run, 0, 0, visit);
    EXPECT_TRUE(visited.empty()) << "two sides off the board, two that do not connect back";
    TileAt(run, 1, 1).Connections = DirectionBit(Direction::Left);
    VisitConnected(run, 1, 1, visit);
    EXPECT_EQ(visited, (std::vector<const Tile*>{&TileAt(run, 0, 1)}));
}

TEST(Endpoints, AreFoundByPositionFirstOfTheListFirst) {
    const std::vector<Endpoint> list = {
        {1, 2, Direction::Up}, {3, 4, Direction::Down}, {3, 4, Direction::Left}};
    EXPECT_EQ(FindEndpoint(list, 3, 4), &list[1]);
    EXPECT_EQ(FindEndpoint(list, 4, 3), nullptr);
    EXPECT_EQ(FindEndpoint({}, 0, 0), nullptr);
}

TEST(Endpoints, CellsAreTellableByTheirFlags) {
    RunState run = DrawnRun({"→─⇐"});
    run.Sources.clear();
    run.Sinks.clear();
    EXPECT_TRUE(IsEndpointCell(run, 0, 0));
    EXPECT_FALSE(IsSinkCell(run, 0, 0));
    EXPECT_FALSE(IsEndpointCell(run, 1, 0));
    EXPECT_TRUE(IsEndpointCell(run, 2, 0));
    EXPECT_TRUE(IsSinkCell(run, 2, 0));
}

TEST(Endpoints, CellsWhoseFlagsAreLostAreStillTellableByTheLists) {
    RunState run = DrawnRun({"→─⇐"});
    run.Tiles.assign(100, Tile{});
    EXPECT_TRUE(IsEndpointCell(run, 0, 0));
    EXPECT_FALSE(IsSinkCell(run, 0, 0));
    EXPECT_FALSE(IsEndpointCell(run, 1, 0));
    EXPECT_TRUE(IsEndpointCell(run, 2, 0));
    EXPECT_TRUE(IsSinkCell(run, 2, 0));
}

TEST(Endpoints, NoneIsOutOfBounds) {
    RunState run = DrawnRun({});
    run.Sources = {{-1, 5, Direction::Right}};
    run.Sinks = {{10, 5, Direction::Left}};
    EXPECT_FALSE(IsEndpointCell(run, -1, 5));
    EXPECT_FALSE(IsEndpointCell(run, 10, 5));
    EXPECT_FALSE(IsSinkCell(run, 10, 5));
}

TEST(Endpoints, AStampedCellHasOneExitAndKeepsItsInfection) {
    RunState run = DrawnRun({"A┼"});
    TileAt(run, 0, 0).VirusInfected = true;
    TileAt(run, 0, 0).Consumed = true;
    TileAt(run, 0, 0).CooldownTicks = 7;
    StampEndpointTile(run, {0, 0, Direction::Down}, true);
    Tile source;
    source.Type = TileType::Straight;
    source.Connections = 4;
    source.VirusInfected = true;
    source.OccupiedBySource = true;
    EXPECT_EQ(TileAt(run, 0, 0), source);

    StampEndpointTile(run, {1, 0, Direction::Left}, false);
    Tile sink;
    sink.Type = TileType::Straight;
    sink.Connections = 8;
    sink.OccupiedBySink = true;
    EXPECT_EQ(TileAt(run, 1, 0), sink);
}

TEST(Endpoints, OneOutOfBoundsStampsNothing) {
    RunState run = DrawnRun({"─"});
    const RunState before = run;
    StampEndpointTile(run, {10, 0, Direction::Left}, true);
    StampEndpointTile(run, {0, -1, Direction::Left}, false);
    EXPECT_EQ(run, before);
}

TEST(NewRun, StartsWithTheSettingsOfLevelOne) {
    RunState run;
    run.Level = 9;
    run.Seed = 5;
    run.TotalScore = -40;
    run.LostPackets = 3;
    run.GameOver = true;
    ConstructRunState(run);
    EXPECT_EQ(run.GridWidth, 10);
    EXPECT_EQ(run.GridHeight, 10);
    EXPECT_EQ(run.Tiles.size(), 100U);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.Sources.size(), 1U);
    EXPECT_EQ(run.Sinks.size(), 1U);
    EXPECT_EQ(run.CursorX, 5);
    EXPECT_EQ(run.CursorY, 5);
    EXPECT_EQ(run.PreviewRotation, 0);
    EXPECT_EQ(run.Level, 1);
    EXPECT_EQ(run.TotalScore, 0);
    EXPECT_EQ(run.LevelTargetPackets, 20);
    EXPECT_EQ(run.FailureThreshold, 10);
    EXPECT_EQ(run.Tick, 0U);
    EXPECT_EQ(run.SpawnIntervalTicks, 16);
    EXPECT_EQ(run.VirusSpreadIntervalTicks, 6);
    EXPECT_EQ(run.NextSpawnTick, 16U);
    EXPECT_EQ(run.PacketGraceTicks, 40);
    EXPECT_EQ(run.VirusGraceTicks, 40);
    EXPECT_EQ(run.PacketGraceRemaining, 40);
    EXPECT_EQ(run.VirusGraceRemaining, 40);
    EXPECT_EQ(run.VirusActiveTicks, 0U);
    EXPECT_EQ(run.LostPackets, 0);
    EXPECT_EQ(run.CorruptedPackets, 0);
    EXPECT_EQ(run.DeliveredPackets, 0);
    EXPECT_FALSE(run.GameOver);
    EXPECT_FALSE(run.FastForward);
    EXPECT_EQ(run.Seed, 1337U);
}

} // namespace
} // namespace Wirefall
