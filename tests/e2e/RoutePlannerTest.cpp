#include "e2e/RoutePlanner.h"

#include "sim/PacketTick.h"
#include "sim/Simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace Wirefall::Testing {

namespace {

constexpr std::uint32_t PlaceCommand = 44;

} // namespace

// As many boards as there are seeds here, with a tick for each tile placed.
TEST(RoutePlannerTest, BuildsARouteThatDelivers) {
    constexpr std::uint32_t Boards = 40;
    constexpr int MostPlacements = 60;
    std::uint32_t delivered = 0;
    for (std::uint32_t seed = 1; seed <= Boards; ++seed) {
        RunState& run = LiveRun();
        run = RunState{};
        run.Seed = seed;
        SeedEngine(run.RandomEngine, seed);
        GenerateLevel(run);
        for (int i = 0; i < MostPlacements && !DeliversCleanly(run); ++i) {
            const std::optional<Placement> placement = PlanPlacement(run);
            if (!placement) {
                break;
            }
            run.CursorX = placement->Where.X;
            run.CursorY = placement->Where.Y;
            run.PreviewRotation += TurnsToRotation(run, placement->Rotation);
            ApplyRunCommand(PlaceCommand);
            RunTick(run, LiveSimulation().Scratch);
        }
        delivered += DeliversCleanly(run) ? 1U : 0U;
    }
    // A board can lie badly beside the virus; a player then starts anew.
    EXPECT_GE(delivered, Boards * 9 / 10);
}

TEST(RoutePlannerTest, AFreshBoardDeliversNothing) {
    RunState run;
    ConstructRunState(run);
    EXPECT_FALSE(DeliversCleanly(run));
}

} // namespace Wirefall::Testing
