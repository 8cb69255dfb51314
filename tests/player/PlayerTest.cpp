#include "player/Player.h"

#include "player/PressCodes.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

namespace Wirefall {
namespace {

// How many presses came in each step.
std::vector<int> PressesBySteps(const PlayStyle& style, int steps) {
    ResetRun();
    int presses = 0;
    Player player(style, [&presses](std::uint32_t) { ++presses; });
    std::vector<int> list;
    for (int step = 0; step < steps; ++step) {
        presses = 0;
        player.PlayStep();
        list.push_back(presses);
        AdvanceSimulation(StepMs);
    }
    return list;
}

int Sum(const std::vector<int>& list, std::size_t first, std::size_t count) {
    int sum = 0;
    for (std::size_t i = first; i < std::min(first + count, list.size()); ++i) {
        sum += list[i];
    }
    return sum;
}

TEST(Player, WithPerfectHandsBuildsBeforeAnythingMoves) {
    const std::vector<int> presses = PressesBySteps(PerfectStyle, 40);
    EXPECT_GT(presses.front(), 5);
    EXPECT_EQ(Sum(presses, 1, presses.size()), 0);
    EXPECT_TRUE(IsSettled(LiveRun()));
}

TEST(Player, WithAPersonsHandsIsNoFasterThanTheyAre) {
    constexpr std::size_t StepsPerSecond = 8;
    for (const std::int32_t pace : {1, 3, 5, 12}) {
        const std::vector<int> presses = PressesBySteps({pace, 0}, 200);
        for (std::size_t step = 0; step < presses.size(); ++step) {
            ASSERT_LE(Sum(presses, step, StepsPerSecond), pace + 1) << "after step " << step;
        }
        EXPECT_GE(Sum(presses, 0, 2 * StepsPerSecond), pace * 2 - 1)
            << "a new board is no time to rest";
    }
}

TEST(Player, WaitsBeforeItAnswersToANewBoard) {
    const std::vector<int> presses = PressesBySteps({8, 1000}, 20);
    EXPECT_EQ(Sum(presses, 0, 8), 0);
    EXPECT_GT(Sum(presses, 8, 4), 0);
}

TEST(Player, GivesNoCommandButThoseOfTheGame) {
    constexpr std::array<std::uint32_t, 7> Known = {
        Press::Up,         Press::Down,        Press::Left, Press::Right,
        Press::RotateLeft, Press::RotateRight, Press::Place};
    ResetRun();
    Player player(PersonStyle, [&](std::uint32_t code) {
        EXPECT_NE(std::ranges::find(Known, code), Known.end());
    });
    for (int step = 0; step < 500; ++step) {
        player.PlayStep();
        AdvanceSimulation(StepMs);
    }
}

TEST(Player, ChangesTheRunByItsPressesOnly) {
    ResetRun();
    const RunState before = LiveRun();
    int presses = 0;
    Player player({1, 10000}, [&presses](std::uint32_t) { ++presses; });
    player.PlayStep();
    EXPECT_EQ(presses, 0);
    EXPECT_EQ(LiveRun(), before);
}

TEST(Player, RestsWhileAllIsWell) {
    Testing::InstallLiveRun(Testing::DrawnRun({"→──⇐"}));
    Player player(PerfectStyle, [](std::uint32_t) { FAIL(); });
    for (int step = 0; step < 50; ++step) {
        player.PlayStep();
        AdvanceSimulation(StepMs);
    }
}

TEST(Player, DoesNothingOnceTheRunOrTheLevelIsOver) {
    Player player(PerfectStyle, [](std::uint32_t) { FAIL(); });
    ResetRun();
    LiveRun().GameOver = true;
    player.PlayStep();
    ResetRun();
    LiveRun().DeliveredPackets = LiveRun().LevelTargetPackets;
    player.PlayStep();
}

TEST(Player, AnswersToTheVirus) {
    RunState run = Testing::DrawnRun({"→─┼─⇐", "..│..", "..│.."});
    run.VirusGraceRemaining = 1000;
    run.VirusSpreadIntervalTicks = 40;
    run.NextSpawnTick = 1;
    Testing::InstallLiveRun(run);
    int presses = 0;
    Player player(PersonStyle, [&presses](std::uint32_t) { ++presses; });
    for (int step = 0; step < 20; ++step) {
        player.PlayStep();
        AdvanceSimulation(StepMs);
    }
    ASSERT_EQ(presses, 0);
    TileAt(LiveRun(), 2, 2).VirusInfected = true;
    LiveRun().VirusGraceRemaining = 0;
    for (int step = 0; step < 300 && !IsSettled(LiveRun()); ++step) {
        player.PlayStep();
        AdvanceSimulation(StepMs);
    }
    EXPECT_GT(presses, 0);
    EXPECT_TRUE(IsSettled(LiveRun()));
}

} // namespace
} // namespace Wirefall
