#include "sim/Simulation.h"

#include "sim/LevelRules.h"
#include "sim/PacketTick.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace Wirefall {
namespace {

TEST(LiveRun, ABoardExistsBeforeAnythingHasStartedIt) {
    // A fresh object stands for the global as static initialisation leaves it.
    const Simulation simulation;
    EXPECT_FALSE(simulation.RunInitialised);
    EXPECT_EQ(simulation.Revision, 0U);
    EXPECT_EQ(simulation.Run.Tiles.size(), 100U);
    EXPECT_EQ(simulation.Run.Sources.size(), 1U);
}

TEST(LiveRun, EveryEntryStartsARunWhenThereIsNone) {
    const std::vector<std::pair<const char*, std::function<void()>>> entries = {
        {"ApplyRunCommand", [] { ApplyRunCommand(0); }},
        {"BuildRunSnapshot", [] { BuildRunSnapshot(); }},
        {"FailureRatio", [] { FailureRatio(); }},
        {"IsLevelComplete", [] { IsLevelComplete(); }},
        {"GetRevision", [] { GetRevision(); }},
        {"AdvanceLevel", [] { AdvanceLevel(); }},
        {"AdvanceSimulation", [] { AdvanceSimulation(0); }},
        {"LiveRun", [] { LiveRun(); }},
    };
    for (const auto& [name, entry] : entries) {
        SCOPED_TRACE(name);
        LiveSimulation() = Simulation{};
        LiveSimulation().Run.Level = 77;
        LiveSimulation().Revision = 5;
        entry();
        EXPECT_TRUE(LiveSimulation().RunInitialised);
        EXPECT_EQ(LiveSimulation().Run.Level, 1);
        EXPECT_EQ(LiveSimulation().Revision, 6U);
        entry();
        EXPECT_EQ(LiveSimulation().Revision, 6U) << "the run that stands is kept";
    }
}

TEST(LiveRun, FastForwardIsIgnoredUntilARunIsInitialised) {
    LiveSimulation() = Simulation{};
    SetFastForward(true);
    EXPECT_FALSE(LiveSimulation().RunInitialised);
    EXPECT_FALSE(LiveSimulation().Run.FastForward);
    ResetRun();
    SetFastForward(true);
    EXPECT_TRUE(LiveRun().FastForward);
    SetFastForward(false);
    EXPECT_FALSE(LiveRun().FastForward);
}

TEST(ResetRun, ReplacesTheWholeRunButTheRevision) {
    RunState old = Testing::DrawnRun({"→─⇐"});
    old.Seed = 99;
    old.Level = 12;
    old.TotalScore = 400;
    Testing::InstallLiveRun(old);
    LiveSimulation().Revision = 1000;
    LiveSimulation().AccumulatorMs = 124;

    ResetRun();

    RunState expected;
    ConstructRunState(expected);
    EXPECT_EQ(LiveRun(), expected);
    EXPECT_EQ(LiveRun().Seed, 1337U);
    EXPECT_EQ(GetRevision(), 1001U);
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 0U);
}

TEST(ResetRun, EveryNewRunBeginsAlike) {
    ResetRun();
    const RunState first = LiveRun();
    ApplyRunCommand(44);
    for (int frame = 0; frame < 400; ++frame) {
        AdvanceSimulation(125);
    }
    EXPECT_NE(LiveRun(), first);
    ResetRun();
    EXPECT_EQ(LiveRun(), first);
}

} // namespace
} // namespace Wirefall
