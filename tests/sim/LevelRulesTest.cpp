#include "sim/LevelRules.h"

#include "sim/LevelGeneration.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace Wirefall {
namespace {

using Testing::DrawnRun;
using Testing::InstallLiveRun;

class Rules : public testing::Test {
protected:
    void SetUp() override { InstallLiveRun(DrawnRun({"→────────⇐"})); }

    // A board with that many live tiles, the first few of them infected.
    static void InstallInfection(int infected, int live) {
        RunState run = DrawnRun({});
        for (int i = 0; i < live; ++i) {
            Tile& tile = run.Tiles[static_cast<std::size_t>(i)];
            tile = MakeTile(TileType::Cross, 0);
            tile.VirusInfected = i < infected;
        }
        InstallLiveRun(run);
    }
};

TEST_F(Rules, TheSnapshotCopiesTheRun) {
    RunState& run = LiveRun();
    run.TotalScore = -15;
    run.Level = 4;
    run.LevelTargetPackets = 50;
    run.FailureThreshold = 8;
    run.LostPackets = 1;
    run.CorruptedPackets = 2;
    run.DeliveredPackets = 17;
    run.GameOver = true;
    TileAt(run, 0, 0).VirusInfected = true;
    const RunSnapshot snapshot = BuildRunSnapshot();
    EXPECT_EQ(snapshot.TotalScore, -15);
    EXPECT_EQ(snapshot.Level, 4);
    EXPECT_EQ(snapshot.LevelTargetPackets, 50);
    EXPECT_EQ(snapshot.FailureThreshold, 8);
    EXPECT_EQ(snapshot.LostPackets, 1);
    EXPECT_EQ(snapshot.CorruptedPackets, 2);
    EXPECT_EQ(snapshot.DeliveredPackets, 17);
    EXPECT_EQ(snapshot.InfectionRatio, 0.1F);
    EXPECT_EQ(snapshot.FailureRatio, 0.375F);
    EXPECT_TRUE(snapshot.GameOver);
    EXPECT_EQ(snapshot.DangerLevel, 3);
}

struct DangerCase {
    int Infected;
    int Live;
    std::int32_t Strikes;
    int Level;
};

TEST_F(Rules, DangerRisesWithInfectionAndFailure) {
    for (const DangerCase& c : std::vector<DangerCase>{
             {0, 100, 0, 0},
             {17, 100, 0, 0},
             {18, 100, 0, 1}, // exactly the warning
             {9, 50, 0, 1},
             {33, 100, 0, 1},
             {34, 100, 0, 2}, // exactly the danger
             {100, 100, 0, 2},
             {0, 100, 4, 0},
             {0, 100, 5, 2}, // half of the threshold
             {20, 100, 5, 2},
             {20, 100, 4, 1},
         }) {
        SCOPED_TRACE(testing::Message()
                     << c.Infected << " of " << c.Live << ", " << c.Strikes << " strikes");
        InstallInfection(c.Infected, c.Live);
        LiveRun().LostPackets = c.Strikes;
        EXPECT_EQ(BuildRunSnapshot().DangerLevel, c.Level);
        LiveRun().GameOver = true;
        EXPECT_EQ(BuildRunSnapshot().DangerLevel, 3) << "whatever the ratios are";
    }
}

TEST_F(Rules, DangerBeginsAtNineTwentiethsOfTheThreshold) {
    LiveRun().FailureThreshold = 20;
    LiveRun().LostPackets = 9;
    EXPECT_EQ(FailureRatio(), 0.45F);
    EXPECT_EQ(BuildRunSnapshot().DangerLevel, 2);
    LiveRun().LostPackets = 8;
    EXPECT_EQ(BuildRunSnapshot().DangerLevel, 0);
}

TEST_F(Rules, FailureRatioIsLimitedAndGuarded) {
    RunState& run = LiveRun();
    run.LostPackets = 2;
    run.CorruptedPackets = 3;
    EXPECT_EQ(FailureRatio(), 0.5F);
    run.LostPackets = 20;
    EXPECT_EQ(FailureRatio(), 1.0F);
    run.LostPackets = -20;
    EXPECT_EQ(FailureRatio(), 0.0F);
    for (const std::int32_t threshold : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
        run.LostPackets = 5;
        run.FailureThreshold = threshold;
        EXPECT_EQ(FailureRatio(), 0.0F);
    }
    run.LostPackets = std::numeric_limits<std::int32_t>::max();
    run.CorruptedPackets = std::numeric_limits<std::int32_t>::max();
    run.FailureThreshold = 1;
    EXPECT_EQ(FailureRatio(), 1.0F);
}

TEST_F(Rules, ALevelIsCompleteAtItsTargetUnlessTheRunIsOver) {
    RunState& run = LiveRun();
    run.DeliveredPackets = 19;
    EXPECT_FALSE(IsLevelComplete());
    run.DeliveredPackets = 20;
    EXPECT_TRUE(IsLevelComplete());
    run.DeliveredPackets = 21;
    EXPECT_TRUE(IsLevelComplete());
    run.GameOver = true;
    EXPECT_FALSE(IsLevelComplete());
}

TEST_F(Rules, AdvancingAnUnfinishedOrFailedRunChangesNothing) {
    RunState before = LiveRun();
    const std::uint64_t revision = GetRevision();
    AdvanceLevel();
    EXPECT_EQ(LiveRun(), before);
    LiveRun().DeliveredPackets = 20;
    LiveRun().GameOver = true;
    before = LiveRun();
    AdvanceLevel();
    EXPECT_EQ(LiveRun(), before);
    EXPECT_EQ(GetRevision(), revision);
}

TEST_F(Rules, AdvancingGivesTheBonusAndAFreshBoard) {
    RunState& run = LiveRun();
    run.TotalScore = -130;
    run.DeliveredPackets = 20;
    run.LostPackets = 3;
    run.CorruptedPackets = 2;
    run.Tick = 999;
    run.Packets.push_back(Testing::PacketAt(3, 0, Direction::Right));
    LiveSimulation().AccumulatorMs = 90;
    const std::uint64_t revision = GetRevision();
    RunState expected = run;

    AdvanceLevel();

    expected.Level = 2;
    expected.TotalScore = -30;
    expected.LevelTargetPackets = 30;
    expected.SpawnIntervalTicks = 15;
    expected.VirusSpreadIntervalTicks = 5;
    expected.PacketGraceTicks = 36;
    expected.VirusGraceTicks = 38;
    GenerateLevel(expected);
    EXPECT_EQ(run, expected);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.LostPackets, 0);
    EXPECT_EQ(run.PacketGraceRemaining, 36);
    EXPECT_EQ(run.VirusGraceRemaining, 38);
    EXPECT_EQ(GetRevision(), revision + 1);
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 0U);
}

struct RampCase {
    std::int32_t Level;
    std::int32_t Target;
    std::int32_t SpawnInterval;
    std::int32_t VirusInterval;
    std::int32_t PacketGrace;
    std::int32_t VirusGrace;
};

TEST_F(Rules, LevelsGetHarderByTheRamp) {
    const std::vector<RampCase> ramp = {
        {1, 20, 16, 6, 40, 40},  {2, 30, 15, 5, 36, 38}, {3, 40, 14, 4, 33, 36},
        {4, 50, 13, 3, 30, 34},  {5, 60, 12, 3, 27, 32}, {8, 90, 9, 3, 20, 26},
        {12, 130, 5, 3, 12, 19}, {15, 160, 5, 3, 9, 16}, {16, 170, 5, 3, 8, 16},
        {17, 180, 5, 3, 8, 16},  {40, 410, 5, 3, 8, 16}, {111, 1120, 5, 3, 8, 16},
    };
    ResetRun();
    RunState& run = LiveRun();
    for (const RampCase& c : ramp) {
        while (run.Level < c.Level) {
            run.DeliveredPackets = run.LevelTargetPackets;
            AdvanceLevel();
        }
        SCOPED_TRACE(c.Level);
        EXPECT_EQ(run.Level, c.Level);
        EXPECT_EQ(run.LevelTargetPackets, c.Target);
        EXPECT_EQ(run.FailureThreshold, 10);
        EXPECT_EQ(run.SpawnIntervalTicks, c.SpawnInterval);
        EXPECT_EQ(run.VirusSpreadIntervalTicks, c.VirusInterval);
        EXPECT_EQ(run.PacketGraceTicks, c.PacketGrace);
        EXPECT_EQ(run.VirusGraceTicks, c.VirusGrace);
        EXPECT_EQ(run.TotalScore, 100 * (c.Level - 1));
        EXPECT_EQ(run.NextSpawnTick, static_cast<std::uint64_t>(c.SpawnInterval));
    }
}

// The last case tells single precision from double, which would come to 24 more.
TEST_F(Rules, TheRampIsReckonedInSinglePrecision) {
    struct Case {
        std::int32_t Before;
        std::int32_t After;
    };
    for (const Case& c : {Case{20, 19}, Case{40, 38}, Case{60, 57}, Case{100, 95},
                          Case{std::numeric_limits<std::int32_t>::max(), 2040109440}}) {
        RunState run = DrawnRun({"→─⇐"});
        run.SpawnIntervalTicks = c.Before;
        run.DeliveredPackets = run.LevelTargetPackets;
        InstallLiveRun(run);
        AdvanceLevel();
        EXPECT_EQ(LiveRun().SpawnIntervalTicks, c.After) << c.Before;
    }
}

} // namespace
} // namespace Wirefall
