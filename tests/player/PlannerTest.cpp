#include "player/Planner.h"

#include "player/PressCodes.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Wirefall {
namespace {

using Testing::DrawnRun;

void Infect(RunState& run, std::int32_t x, std::int32_t y) {
    TileAt(run, x, y).VirusInfected = true;
}

void Hold(RunState& run, TileType tile) { run.TileQueue[0] = tile; }

// The board after the placement.
RunState After(const RunState& run, const Placement& placement) {
    Testing::InstallLiveRun(run);
    for (const std::uint32_t code : PressesFor(run, placement)) {
        ApplyRunCommand(code);
    }
    return LiveRun();
}

TEST(DeliversCleanly, TellsWhetherAPacketArrives) {
    EXPECT_TRUE(DeliversCleanly(DrawnRun({"→──⇐"})));
    EXPECT_FALSE(DeliversCleanly(DrawnRun({"→─.⇐"})));
    RunState fresh;
    ConstructRunState(fresh);
    EXPECT_FALSE(DeliversCleanly(fresh));
}

TEST(DeliversCleanly, DoesNotCallACorruptedPacketDelivered) {
    RunState run = DrawnRun({"→──⇐"});
    Infect(run, 2, 0);
    EXPECT_FALSE(DeliversCleanly(run));
    RunState cured = DrawnRun({"→─A⇐"});
    Infect(cured, 2, 0);
    EXPECT_TRUE(DeliversCleanly(cured));
}

TEST(IsSettled, NeedsAWayThatTheVirusCannotReach) {
    RunState run = DrawnRun({"→──⇐", ".┴.."});
    EXPECT_TRUE(IsSettled(run));
    Infect(run, 1, 1);
    EXPECT_TRUE(IsSettled(run));
    TileAt(run, 1, 0) = MakeTile(TileType::Cross, 0);
    EXPECT_FALSE(IsSettled(run));
    TileAt(run, 1, 0) = MakeTile(TileType::Firewall, 0);
    EXPECT_TRUE(IsSettled(run));
}

TEST(ForecastStrikes, CountsWhatWouldGoWrong) {
    RunState run = DrawnRun({"→─.⇐"});
    run.SpawnIntervalTicks = 10;
    run.NextSpawnTick = 1;
    EXPECT_EQ(ForecastStrikes(run, 5), 0) << "The packet goes to and fro";
    run = DrawnRun({"→.─⇐"});
    run.SpawnIntervalTicks = 10;
    run.NextSpawnTick = 1;
    EXPECT_EQ(ForecastStrikes(run, 35), 4);
}

TEST(PlanPlacement, FillsTheGap) {
    RunState run = DrawnRun({"→─.─⇐"});
    Hold(run, TileType::Straight);
    const std::optional<Placement> placement = PlanPlacement(run);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->Where, (Cell{2, 0}));
    EXPECT_TRUE(DeliversCleanly(After(run, *placement)));
}

TEST(PlanPlacement, TurnsTheTileAsItIsNeeded) {
    RunState run = DrawnRun({"→─..", "..│.", "..└⇐"});
    Hold(run, TileType::Corner);
    const std::optional<Placement> placement = PlanPlacement(run);
    ASSERT_TRUE(placement);
    EXPECT_TRUE(DeliversCleanly(After(run, *placement)));
}

TEST(PlanPlacement, CutsTheVirusOff) {
    RunState run = DrawnRun({"→─┼─⇐", "..│..", "..│.."});
    Infect(run, 2, 2);
    ASSERT_FALSE(IsSettled(run));
    for (const TileType tile : {TileType::Straight, TileType::Firewall}) {
        Hold(run, tile);
        const std::optional<Placement> placement = PlanPlacement(run);
        ASSERT_TRUE(placement);
        EXPECT_TRUE(IsSettled(After(run, *placement)));
    }
}

TEST(PlanPlacement, CuresWhatCannotBeAvoided) {
    RunState run = DrawnRun({"→─⇐"});
    Infect(run, 1, 0);
    Hold(run, TileType::Antivirus);
    const std::optional<Placement> placement = PlanPlacement(run);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->Where, (Cell{1, 0}));
    EXPECT_TRUE(DeliversCleanly(After(run, *placement)));
}

TEST(PlanPlacement, PutsATileThatIsOfNoUseWhereItDoesNoHarm) {
    RunState run = DrawnRun({"→─..", "..│.", "..└⇐"});
    Hold(run, TileType::Cross);
    run.CursorX = 2;
    run.CursorY = 2;
    const std::optional<Placement> placement = PlanPlacement(run);
    ASSERT_TRUE(placement);
    RunState after = After(run, *placement);
    Hold(after, TileType::Corner);
    const std::optional<Placement> next = PlanPlacement(after);
    ASSERT_TRUE(next);
    EXPECT_TRUE(DeliversCleanly(After(after, *next)));
}

// The second way need not be whole: the first is threatened, and nothing in hand can cut it off.
TEST(PlanPlacement, PreparesASecondWayWhenTheFirstCannotBeSaved) {
    RunState run = DrawnRun({"→┬───┬⇐", ".└...┘.", ".......", "...│..."});
    Infect(run, 3, 0);
    TileAt(run, 3, 0) = MakeTile(TileType::Straight, 1);
    Hold(run, TileType::Straight);
    run.CursorX = 3;
    run.CursorY = 1;
    const std::optional<Placement> placement = PlanPlacement(run);
    ASSERT_TRUE(placement);
    EXPECT_EQ(placement->Where.Y, 1) << "the way below the infected one";
}

TEST(PlanPlacement, FindsNothingWhereThereIsNoWay) {
    EXPECT_EQ(PlanPlacement(DrawnRun({"←──⇐"})), std::nullopt);
}

// A person sees three tiles of the queue; the engine that will draw the fourth is hidden.
TEST(PlanPlacement, DoesNotLookIntoTheFuture) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        RunState run;
        SeedEngine(run.RandomEngine, seed);
        GenerateLevel(run);
        const std::optional<Placement> placement = PlanPlacement(run);
        SeedEngine(run.RandomEngine, seed + 1000);
        EXPECT_EQ(PlanPlacement(run), placement);
    }
}

// As many boards as there are seeds here, with a tick for each tile placed.
TEST(PlanPlacement, BuildsAWayThatDelivers) {
    constexpr std::uint32_t Boards = 40;
    constexpr int MostPlacements = 60;
    std::uint32_t delivered = 0;
    for (std::uint32_t seed = 1; seed <= Boards; ++seed) {
        RunState board;
        SeedEngine(board.RandomEngine, seed);
        GenerateLevel(board);
        Testing::InstallLiveRun(board);
        for (int i = 0; i < MostPlacements && !DeliversCleanly(LiveRun()); ++i) {
            const std::optional<Placement> placement = PlanPlacement(LiveRun());
            ASSERT_TRUE(placement);
            std::ranges::for_each(PressesFor(LiveRun(), *placement), ApplyRunCommand);
            RunTick(LiveRun(), LiveSimulation().Scratch);
        }
        delivered += DeliversCleanly(LiveRun()) ? 1U : 0U;
    }
    EXPECT_EQ(delivered, Boards);
}

TEST(TurnsToRotation, TakesTheShorterOfTwoRotationsThatLookTheSame) {
    RunState run = DrawnRun({"→⇐"});
    Hold(run, TileType::Straight);
    run.PreviewRotation = 1;
    EXPECT_EQ(TurnsToRotation(run, 3), 0);
    EXPECT_EQ(TurnsToRotation(run, 2), 1);
    Hold(run, TileType::Cross);
    EXPECT_EQ(TurnsToRotation(run, 3), 0);
    Hold(run, TileType::Corner);
    EXPECT_EQ(TurnsToRotation(run, 0), 3);
}

TEST(PressesFor, LeadToThePlacement) {
    for (std::int32_t rotation = 0; rotation < 4; ++rotation) {
        for (const Cell& cell : {Cell{1, 2}, Cell{9, 9}, Cell{5, 5}, Cell{9, 0}}) {
            RunState run = DrawnRun({"→⇐"});
            Hold(run, TileType::Corner);
            run.CursorX = 5;
            run.CursorY = 5;
            run.PreviewRotation = 2;
            const RunState after = After(run, {cell, rotation});
            EXPECT_EQ(TileAt(after, cell.X, cell.Y), MakeTile(TileType::Corner, rotation));
        }
    }
}

TEST(PressesFor, AreNoMoreThanItTakes) {
    RunState run = DrawnRun({"→⇐"});
    Hold(run, TileType::Corner);
    run.CursorX = 5;
    run.CursorY = 5;
    EXPECT_EQ(PressesFor(run, {{4, 7}, 3}),
              (std::vector<std::uint32_t>{Press::Left, Press::Down, Press::Down, Press::RotateLeft,
                                          Press::Place}));
}

} // namespace
} // namespace Wirefall
