#include "sim/PacketTick.h"

#include "sim/LevelRules.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

namespace Wirefall {
namespace {

using Testing::DrawnRun;
using Testing::InstallLiveRun;
using Testing::PacketAt;

Packet Corrupted(Packet packet) {
    packet.Corrupted = true;
    return packet;
}

Packet Waiting(Packet packet, std::int32_t ticks) {
    packet.DelayTicks = ticks;
    return packet;
}

RunState WithPackets(RunState run, std::vector<Packet> packets) {
    run.Packets = std::move(packets);
    return run;
}

void Ticks(RunState& run, int count) {
    TickScratch scratch;
    for (int i = 0; i < count; ++i) {
        RunTick(run, scratch);
    }
}

// --- Time

class Time : public testing::Test {
protected:
    void SetUp() override { InstallLiveRun(DrawnRun({"→─⇐"})); }
    static std::uint64_t& Accumulator() { return LiveSimulation().AccumulatorMs; }
};

TEST_F(Time, LessThanAStepRunsNothing) {
    Accumulator() = 124;
    AdvanceSimulation(0);
    EXPECT_EQ(LiveRun().Tick, 0U);
    EXPECT_EQ(Accumulator(), 124U);
}

TEST_F(Time, AStepRunsWhenItsLastMillisecondIsIn) {
    Accumulator() = 124;
    AdvanceSimulation(1);
    EXPECT_EQ(LiveRun().Tick, 1U);
    EXPECT_EQ(Accumulator(), 0U);
}

TEST_F(Time, AStalledFrameCountsAsAQuarterSecond) {
    Accumulator() = 60;
    AdvanceSimulation(100000);
    EXPECT_EQ(LiveRun().Tick, 2U);
    EXPECT_EQ(Accumulator(), 60U);
    AdvanceSimulation(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(LiveRun().Tick, 4U);
}

TEST_F(Time, EightTicksASecondAndTwentyFourWithFastForward) {
    for (int frame = 0; frame < 100; ++frame) {
        AdvanceSimulation(10);
    }
    EXPECT_EQ(LiveRun().Tick, 8U);
    SetFastForward(true);
    for (int frame = 0; frame < 100; ++frame) {
        AdvanceSimulation(10);
    }
    EXPECT_EQ(LiveRun().Tick, 32U);
}

TEST_F(Time, TheLongestFrameMakesSixTicksWithFastForward) {
    SetFastForward(true);
    AdvanceSimulation(250);
    EXPECT_EQ(LiveRun().Tick, 6U);
}

TEST_F(Time, EachTickCountsAsARevision) {
    const std::uint64_t before = GetRevision();
    SetFastForward(true);
    AdvanceSimulation(125);
    EXPECT_EQ(GetRevision(), before + 3);
    AdvanceSimulation(0);
    EXPECT_EQ(GetRevision(), before + 3);
}

TEST_F(Time, FastForwardDoesNotMakePacketsSkipCells) {
    InstallLiveRun(WithPackets(DrawnRun({"→────────⇐"}), {PacketAt(0, 0, Direction::Right)}));
    SetFastForward(true);
    AdvanceSimulation(125);
    EXPECT_EQ(LiveRun().Packets, (std::vector<Packet>{PacketAt(3, 0, Direction::Right)}));
}

TEST_F(Time, StepsAreUsedUpWithoutTicksAfterGameOver) {
    LiveRun().GameOver = true;
    Accumulator() = 100;
    const std::uint64_t revision = GetRevision();
    AdvanceSimulation(250);
    EXPECT_EQ(LiveRun().Tick, 0U);
    EXPECT_EQ(Accumulator(), 100U);
    EXPECT_EQ(GetRevision(), revision);
}

TEST_F(Time, StepsAreUsedUpWithoutTicksOnceTheTargetIsMet) {
    LiveRun().DeliveredPackets = 20;
    AdvanceSimulation(250);
    EXPECT_EQ(LiveRun().Tick, 0U);
    EXPECT_EQ(Accumulator(), 0U);
}

TEST_F(Time, FastForwardStopsInTheMiddleOfAStepWhenTheTargetIsMet) {
    InstallLiveRun(WithPackets(
        DrawnRun({"→──⇐"}), {PacketAt(2, 0, Direction::Right), PacketAt(0, 0, Direction::Right)}));
    LiveRun().LevelTargetPackets = 1;
    SetFastForward(true);
    AdvanceSimulation(250);
    EXPECT_EQ(LiveRun().Tick, 1U);
    EXPECT_EQ(LiveRun().DeliveredPackets, 1);
    EXPECT_EQ(Accumulator(), 0U) << "the second step is used up all the same";
}

TEST_F(Time, FastForwardStopsInTheMiddleOfAStepAtGameOver) {
    InstallLiveRun(WithPackets(DrawnRun({"→.."}), {PacketAt(0, 0, Direction::Right)}));
    LiveRun().FailureThreshold = 1;
    SetFastForward(true);
    AdvanceSimulation(125);
    EXPECT_EQ(LiveRun().Tick, 1U);
    EXPECT_TRUE(LiveRun().GameOver);
}

TEST_F(Time, AHugeAccumulatorIsDrainedInPortions) {
    Accumulator() = 125 * 2500 + 3;
    AdvanceSimulation(0);
    EXPECT_EQ(LiveRun().Tick, 1000U);
    EXPECT_EQ(Accumulator(), 125U * 1500 + 3);
    AdvanceSimulation(0);
    AdvanceSimulation(0);
    EXPECT_EQ(LiveRun().Tick, 2500U);
    EXPECT_EQ(Accumulator(), 3U);
}

TEST_F(Time, AnAccumulatorAtTheEndOfItsRangeWrapsAround) {
    Accumulator() = std::numeric_limits<std::uint64_t>::max() - 100;
    AdvanceSimulation(250);
    EXPECT_EQ(LiveRun().Tick, 1U) << "149 are left beyond the end";
    EXPECT_EQ(Accumulator(), 24U);
}

TEST_F(Time, AHugeAccumulatorIsDrainedAtOnceWhereNoTickCanRun) {
    constexpr std::uint64_t Huge = std::numeric_limits<std::uint64_t>::max() - 250;
    const std::uint64_t revision = GetRevision();
    LiveRun().GameOver = true;
    Accumulator() = Huge;
    AdvanceSimulation(0);
    EXPECT_EQ(Accumulator(), Huge % 125);
    LiveRun().GameOver = false;
    LiveRun().DeliveredPackets = LiveRun().LevelTargetPackets;
    Accumulator() = Huge;
    AdvanceSimulation(250);
    EXPECT_EQ(Accumulator(), (Huge + 250) % 125);
    EXPECT_EQ(LiveRun().Tick, 0U);
    EXPECT_EQ(GetRevision(), revision);
}

TEST_F(Time, ARunThatEndsOnTheWayDrainsWhatIsLeft) {
    InstallLiveRun(WithPackets(DrawnRun({"→──⇐"}), {PacketAt(2, 0, Direction::Right)}));
    LiveRun().LevelTargetPackets = 1;
    Accumulator() = std::uint64_t{125} * 100000 + 7;
    AdvanceSimulation(0);
    EXPECT_EQ(LiveRun().Tick, 1U);
    EXPECT_EQ(Accumulator(), 7U);
}

TEST_F(Time, ACallEndsAfterTheStepThatMakesItAMillionMoves) {
    InstallLiveRun(WithPackets(DrawnRun({"→────────⇐"}), {}));
    RunState& run = LiveRun();
    run.FailureThreshold = std::numeric_limits<std::int32_t>::max();
    run.LevelTargetPackets = std::numeric_limits<std::int32_t>::max();
    run.Sources.clear();
    Packet waiting = PacketAt(1, 0, Direction::Right);
    waiting.DelayTicks = 1000; // So that they do not move on.
    for (std::int32_t x = 1; x < 9; ++x) {
        waiting.X = x;
        run.Packets.push_back(waiting);
    }
    Accumulator() = std::uint64_t{125} * 100000;
    AdvanceSimulation(0);
    EXPECT_EQ(LiveRun().Tick, 1000U) << "8,000 moves are not too many";

    run.Packets.assign(400000, PacketAt(-1, 0, Direction::Up));
    for (Packet& packet : run.Packets) {
        packet.DelayTicks = 1000;
    }
    const std::uint64_t before = LiveRun().Tick;
    AdvanceSimulation(0);
    EXPECT_EQ(LiveRun().Tick - before, 1000U) << "those off the board are gone after one tick";
    SetFastForward(true);
    run.Packets.assign(1000000, PacketAt(-1, 0, Direction::Up));
    AdvanceSimulation(0);
    EXPECT_EQ(LiveRun().Tick - before, 1003U) << "the step is made whole";
}

// --- Graces and spawning

TEST(Spawning, TheFirstPacketComesWhenTheGraceIsOver) {
    RunState run;
    ConstructRunState(run);
    TickScratch scratch;
    std::vector<std::uint64_t> spawnTicks;
    std::uint64_t due = run.NextSpawnTick;
    while (run.Tick < 80) {
        RunTick(run, scratch);
        if (run.NextSpawnTick != due) {
            due = run.NextSpawnTick;
            spawnTicks.push_back(run.Tick);
        }
        EXPECT_EQ(run.PacketGraceRemaining, std::max(0, 40 - static_cast<int>(run.Tick)));
    }
    EXPECT_EQ(spawnTicks, (std::vector<std::uint64_t>{41, 57, 73}));
}

TEST(Spawning, WithoutGraceTheFirstPacketComesAtItsTick) {
    RunState run = DrawnRun({"→────────⇐"});
    run.NextSpawnTick = 4;
    Ticks(run, 3);
    EXPECT_TRUE(run.Packets.empty());
    Ticks(run, 1);
    EXPECT_EQ(run.Packets.size(), 1U);
    EXPECT_EQ(run.NextSpawnTick, 20U);
}

TEST(Spawning, APacketMovesInTheTickInWhichItIsMade) {
    RunState run = DrawnRun({"→───⇐"});
    run.NextSpawnTick = 1;
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 0, Direction::Right)}));
}

TEST(Spawning, APacketWithNowhereToGoIsLostInItsFirstTick) {
    RunState run = DrawnRun({"→│"});
    run.NextSpawnTick = 1;
    Ticks(run, 1);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.LostPackets, 1);
    EXPECT_EQ(run.TotalScore, -5);
}

TEST(Spawning, AnInfectedSourceMakesCorruptedPackets) {
    RunState run = DrawnRun({"→───⇐"});
    TileAt(run, 0, 0).VirusInfected = true;
    run.NextSpawnTick = 1;
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{Corrupted(PacketAt(1, 0, Direction::Right))}));
    EXPECT_EQ(run.CorruptedPackets, 1) << "once, though it has entered a further cell";
    EXPECT_EQ(run.TotalScore, -10);
}

TEST(Spawning, DrawsItsSourceAmongAll) {
    RunState run = DrawnRun({"→────────.", "→────────.", "→────────."});
    run.NextSpawnTick = 1;
    run.SpawnIntervalTicks = 0;
    run.FailureThreshold = 1000000;
    std::array<int, 3> spawned{};
    TickScratch scratch;
    for (int i = 0; i < 300; ++i) {
        MersenneTwister engine = run.RandomEngine;
        const std::uint32_t source = UniformDraw(engine, 0, 2);
        RunTick(run, scratch);
        EXPECT_EQ(run.RandomEngine, engine);
        EXPECT_EQ(run.Packets.back().Y, static_cast<std::int32_t>(source));
        ++spawned.at(source);
    }
    EXPECT_GT(*std::min_element(spawned.begin(), spawned.end()), 60);
}

TEST(Spawning, AnIntervalBelowOneCountsAsOne) {
    for (const std::int32_t interval : {0, -7, std::numeric_limits<std::int32_t>::min()}) {
        RunState run = DrawnRun({"→────────⇐"});
        run.NextSpawnTick = 1;
        run.SpawnIntervalTicks = interval;
        Ticks(run, 3);
        EXPECT_EQ(run.Packets.size(), 3U);
        EXPECT_EQ(run.NextSpawnTick, 4U);
    }
}

TEST(Spawning, WithoutASourceNothingComes) {
    RunState run = DrawnRun({"───"});
    run.NextSpawnTick = 1;
    const MersenneTwister engine = run.RandomEngine;
    Ticks(run, 5);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.RandomEngine, engine);
    EXPECT_EQ(run.NextSpawnTick, 1U);
}

TEST(Graces, CountDownSeparatelyAndStopAtZero) {
    RunState run = DrawnRun({"→─⇐"});
    run.PacketGraceRemaining = 2;
    run.VirusGraceRemaining = 4;
    Ticks(run, 3);
    EXPECT_EQ(run.PacketGraceRemaining, 0);
    EXPECT_EQ(run.VirusGraceRemaining, 1);
    EXPECT_EQ(run.VirusActiveTicks, 0U);
    Ticks(run, 1);
    EXPECT_EQ(run.VirusActiveTicks, 0U) << "the grace of the virus still held before this tick";
    Ticks(run, 1);
    EXPECT_EQ(run.VirusActiveTicks, 1U);
}

// --- Moving and routing

TEST(Moving, APacketCrossesOneCellATick) {
    RunState run = WithPackets(DrawnRun({"→──⇐"}), {PacketAt(0, 0, Direction::Right)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 0, Direction::Right)}));
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(2, 0, Direction::Right)}));
    Ticks(run, 1);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.DeliveredPackets, 1);
    EXPECT_EQ(run.TotalScore, 10);
    EXPECT_EQ(run.LostPackets, 0);
}

struct LossCase {
    const char* Why;
    std::vector<std::string_view> Board;
    Packet Lost;
};

TEST(Moving, APacketIsLostWhereTheWayEnds) {
    const std::vector<LossCase> cases = {
        {"the neighbour does not connect back", {"─│"}, PacketAt(0, 0, Direction::Right)},
        {"the neighbour is empty", {"─."}, PacketAt(0, 0, Direction::Right)},
        {"the edge of the board", {"─"}, PacketAt(0, 0, Direction::Left)},
        {"its cell has no exit that way", {"│─"}, PacketAt(0, 0, Direction::Right)},
        {"its cell is off the board", {"─"}, PacketAt(-1, 0, Direction::Right)},
        {"its cell is far off the board",
         {"─"},
         PacketAt(std::numeric_limits<std::int32_t>::max(),
                  std::numeric_limits<std::int32_t>::min(), Direction::Right)},
        {"its direction is none", {"┼┼"}, PacketAt(0, 0, static_cast<Direction>(9))},
        {"a straight met from the side", {"│", "─"}, PacketAt(0, 0, Direction::Down)},
    };
    for (const LossCase& c : cases) {
        SCOPED_TRACE(c.Why);
        RunState run = WithPackets(DrawnRun(c.Board), {c.Lost});
        Ticks(run, 1);
        EXPECT_TRUE(run.Packets.empty());
        EXPECT_EQ(run.LostPackets, 1);
        EXPECT_EQ(run.CorruptedPackets, 0);
        EXPECT_EQ(run.TotalScore, -5);
    }
}

struct RouteCase {
    const char* What;
    std::vector<std::string_view> Board;
    Packet Before;
    Packet After;
};

TEST(Routing, APacketLeavesByTheFirstExitThatLeadsOn) {
    const std::vector<RouteCase> cases = {
        {"a straight leads on",
         {"───"},
         PacketAt(0, 0, Direction::Right),
         PacketAt(1, 0, Direction::Right)},
        {"a corner turns right",
         {"─┐", ".│"},
         PacketAt(0, 0, Direction::Right),
         PacketAt(1, 0, Direction::Down)},
        {"a corner turns left",
         {".│", "─┘"},
         PacketAt(0, 1, Direction::Right),
         PacketAt(1, 1, Direction::Up)},
        {"a junction entered by its stem turns right when both arms lead on",
         {".│", "─┤", ".│"},
         PacketAt(0, 1, Direction::Right),
         PacketAt(1, 1, Direction::Down)},
        {"a junction entered by its stem turns left when only that arm leads on",
         {".│", "─┤", "..."},
         PacketAt(0, 1, Direction::Right),
         PacketAt(1, 1, Direction::Up)},
        {"a junction entered along its bar goes straight on",
         {"─┬─", ".│"},
         PacketAt(0, 0, Direction::Right),
         PacketAt(1, 0, Direction::Right)},
        {"a junction entered along its bar turns where straight on is closed",
         {"─┬│", ".│"},
         PacketAt(0, 0, Direction::Right),
         PacketAt(1, 0, Direction::Down)},
        {"a dead end sends it back",
         {"──│"},
         PacketAt(0, 0, Direction::Right),
         PacketAt(1, 0, Direction::Left)},
        {"a cross is passed straight through, even against a wall",
         {"─┼│", ".│"},
         PacketAt(0, 0, Direction::Right),
         PacketAt(1, 0, Direction::Right)},
        {"a firewall too",
         {"─F.", ".│"},
         PacketAt(0, 0, Direction::Right),
         PacketAt(1, 0, Direction::Right)},
        {"a source turns it back out",
         {"→─"},
         PacketAt(1, 0, Direction::Left),
         PacketAt(0, 0, Direction::Right)},
    };
    for (const RouteCase& c : cases) {
        SCOPED_TRACE(c.What);
        RunState run = WithPackets(DrawnRun(c.Board), {c.Before});
        Ticks(run, 1);
        EXPECT_EQ(run.Packets, (std::vector<Packet>{c.After}));
        EXPECT_EQ(run.LostPackets, 0);
    }
}

TEST(Moving, APacketThatWasSentBackIsLostWhereTheWayBackIsGone) {
    RunState run = WithPackets(DrawnRun({"b─│"}), {PacketAt(0, 0, Direction::Right)});
    TileAt(run, 0, 0).Connections = DirectionBit(Direction::Right);
    TileAt(run, 1, 0).Connections = DirectionBit(Direction::Left);
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 0, Direction::Left)}));
    TileAt(run, 0, 0) = MakeTile(TileType::Empty, 0);
    Ticks(run, 1);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.LostPackets, 1);
}

TEST(Routing, APacketThatCrossesIsLostAtTheNextTickIfTheWayIsClosed) {
    RunState run = WithPackets(DrawnRun({"─┼│"}), {PacketAt(0, 0, Direction::Right)});
    Ticks(run, 2);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.LostPackets, 1);
}

TEST(Routing, APacketMeetsTheTileThatWasBuiltUnderIt) {
    InstallLiveRun(WithPackets(DrawnRun({"───"}), {PacketAt(1, 0, Direction::Right)}));
    RunState& run = LiveRun();
    run.CursorX = 1;
    run.CursorY = 0;
    run.TileQueue[0] = TileType::Straight;
    ApplyRunCommand(44);
    EXPECT_EQ(run.Packets.size(), 1U) << "it stays where it is";
    AdvanceSimulation(125);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.LostPackets, 1);
}

TEST(Buffer, HoldsAPacketForOneTick) {
    RunState run = WithPackets(DrawnRun({"─b─⇐"}), {PacketAt(0, 0, Direction::Right)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{Waiting(PacketAt(1, 0, Direction::Right), 1)}));
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 0, Direction::Right)}));
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(2, 0, Direction::Right)}));
}

TEST(Buffer, ANegativeDelayFromADamagedRunDoesNotHold) {
    RunState run = WithPackets(
        DrawnRun({"───"}),
        {Waiting(PacketAt(0, 0, Direction::Right), std::numeric_limits<std::int32_t>::min())});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets.front().X, 1);
}

// --- Virus on the way

TEST(Infection, ACleanPacketIsCorruptedOnceByInfectedCells) {
    RunState run = WithPackets(DrawnRun({"────"}), {PacketAt(0, 0, Direction::Right)});
    TileAt(run, 1, 0).VirusInfected = true;
    TileAt(run, 2, 0).VirusInfected = true;
    Ticks(run, 2);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{Corrupted(PacketAt(2, 0, Direction::Right))}));
    EXPECT_EQ(run.CorruptedPackets, 1);
    EXPECT_EQ(run.TotalScore, -10);
    EXPECT_EQ(run.LostPackets, 0);
}

TEST(Infection, ACorruptedPacketInfectsEachCellThatItEnters) {
    RunState run = WithPackets(DrawnRun({"─┼bF─"}), {Corrupted(PacketAt(0, 0, Direction::Right))});
    run.VirusGraceRemaining = 100;
    Ticks(run, 5);
    EXPECT_FALSE(TileAt(run, 0, 0).VirusInfected) << "where it stood, it had not entered";
    EXPECT_TRUE(TileAt(run, 1, 0).VirusInfected);
    EXPECT_TRUE(TileAt(run, 2, 0).VirusInfected);
    EXPECT_FALSE(TileAt(run, 3, 0).VirusInfected) << "a firewall never takes it";
    EXPECT_TRUE(TileAt(run, 4, 0).VirusInfected);
}

TEST(Infection, AnInfectedFirewallCorruptsWhatEntersIt) {
    RunState run = WithPackets(DrawnRun({"─F─"}), {PacketAt(0, 0, Direction::Right)});
    TileAt(run, 1, 0).VirusInfected = true;
    Ticks(run, 1);
    EXPECT_TRUE(run.Packets.front().Corrupted);
    EXPECT_TRUE(TileAt(run, 1, 0).VirusInfected);
}

TEST(Infection, ACorruptedPacketAtTheSinkCountsAsCorruptedAndAsLost) {
    RunState run = WithPackets(DrawnRun({"→──⇐"}), {PacketAt(0, 0, Direction::Right)});
    TileAt(run, 1, 0).VirusInfected = true;
    run.VirusGraceRemaining = 100;
    Ticks(run, 3);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.CorruptedPackets, 1);
    EXPECT_EQ(run.LostPackets, 1);
    EXPECT_EQ(run.DeliveredPackets, 0);
    EXPECT_EQ(run.TotalScore, -15);
}

TEST(Infection, ACleanPacketIsLostOnAnInfectedSink) {
    RunState run = WithPackets(DrawnRun({"→⇐"}), {PacketAt(0, 0, Direction::Right)});
    TileAt(run, 1, 0).VirusInfected = true;
    Ticks(run, 1);
    EXPECT_EQ(run.CorruptedPackets, 1);
    EXPECT_EQ(run.LostPackets, 1);
    EXPECT_EQ(run.DeliveredPackets, 0);
}

TEST(Antivirus, CleansItselfAndWhatItConnectsToAndIsSpent) {
    RunState run = WithPackets(DrawnRun({
                                   ".│.",
                                   "─A─",
                                   ".─.",
                               }),
                               {PacketAt(0, 1, Direction::Right)});
    run.VirusGraceRemaining = 100;
    for (Tile& tile : run.Tiles) {
        tile.VirusInfected = tile.Type != TileType::Empty;
    }
    TileAt(run, 9, 9).VirusInfected = true;
    Ticks(run, 1);
    const Tile& spent = TileAt(run, 1, 1);
    EXPECT_EQ(spent.Type, TileType::Cross);
    EXPECT_EQ(spent.Connections, 15);
    EXPECT_TRUE(spent.Consumed);
    EXPECT_FALSE(spent.VirusInfected);
    EXPECT_FALSE(TileAt(run, 1, 0).VirusInfected);
    EXPECT_FALSE(TileAt(run, 0, 1).VirusInfected);
    EXPECT_FALSE(TileAt(run, 2, 1).VirusInfected);
    EXPECT_TRUE(TileAt(run, 1, 2).VirusInfected) << "it does not connect back";
    EXPECT_TRUE(TileAt(run, 9, 9).VirusInfected) << "out of its reach";
    EXPECT_FALSE(run.Packets.front().Corrupted) << "it was clean before the packet met it";
}

TEST(Antivirus, DoesNotCleanAFirewall) {
    RunState run = WithPackets(DrawnRun({"─AF"}), {PacketAt(0, 0, Direction::Right)});
    run.VirusGraceRemaining = 100;
    TileAt(run, 2, 0).VirusInfected = true;
    Ticks(run, 1);
    EXPECT_TRUE(TileAt(run, 2, 0).VirusInfected);
}

TEST(Antivirus, ACorruptedPacketSpendsItAndInfectsItAgain) {
    RunState run = WithPackets(DrawnRun({"─A─"}), {Corrupted(PacketAt(0, 0, Direction::Right))});
    run.VirusGraceRemaining = 100;
    TileAt(run, 2, 0).VirusInfected = true;
    Ticks(run, 1);
    EXPECT_EQ(TileAt(run, 1, 0).Type, TileType::Cross);
    EXPECT_TRUE(TileAt(run, 1, 0).VirusInfected);
    EXPECT_FALSE(TileAt(run, 2, 0).VirusInfected) << "what was cleaned around it stays clean";
    EXPECT_EQ(run.CorruptedPackets, 0);
}

TEST(Antivirus, CleansOnlyOnce) {
    RunState run = WithPackets(DrawnRun({"─A─"}), {PacketAt(0, 0, Direction::Right)});
    run.VirusGraceRemaining = 100;
    Ticks(run, 1);
    TileAt(run, 2, 0).VirusInfected = true;
    run.Packets = {PacketAt(0, 0, Direction::Right)};
    Ticks(run, 1);
    EXPECT_TRUE(TileAt(run, 2, 0).VirusInfected);
}

TEST(Antivirus, WithFewerExitsBecomesThePlainTileOfThem) {
    RunState run = WithPackets(DrawnRun({"─A─"}), {PacketAt(0, 0, Direction::Right)});
    TileAt(run, 1, 0).Connections = 10;
    Ticks(run, 1);
    EXPECT_EQ(TileAt(run, 1, 0).Type, TileType::Straight);
    EXPECT_EQ(TileAt(run, 1, 0).Connections, 10);
}

// --- Collisions

TEST(Collisions, OfThePacketsOnACellTheLastSurvives) {
    RunState run = WithPackets(DrawnRun({"───"}), {Waiting(PacketAt(1, 0, Direction::Right), 1),
                                                   Waiting(PacketAt(1, 0, Direction::Left), 1),
                                                   PacketAt(0, 0, Direction::Right)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 0, Direction::Right)}));
    EXPECT_EQ(run.LostPackets, 2);
    EXPECT_EQ(run.TotalScore, -10);
}

TEST(Collisions, ACrossCarriesOnePacketOnEachAxis) {
    RunState run = WithPackets(DrawnRun({".│.", "─┼─", ".│."}),
                               {PacketAt(0, 1, Direction::Right), PacketAt(1, 0, Direction::Down)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 1, Direction::Right),
                                                PacketAt(1, 1, Direction::Down)}));
    EXPECT_EQ(run.LostPackets, 0);
}

TEST(Collisions, OnACrossTwoOfOneAxisCollideInOppositeDirectionsToo) {
    RunState run = WithPackets(DrawnRun({".│.", "─┼─", ".│."}),
                               {PacketAt(0, 1, Direction::Right), PacketAt(2, 1, Direction::Left),
                                PacketAt(1, 0, Direction::Down)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 1, Direction::Left),
                                                PacketAt(1, 1, Direction::Down)}));
    EXPECT_EQ(run.LostPackets, 1);
}

TEST(Collisions, AFirewallAndASpentAntivirusCarryBothAxesToo) {
    for (const TileType type : {TileType::Firewall, TileType::Antivirus}) {
        RunState run =
            WithPackets(DrawnRun({".│.", "─┼─", ".│."}),
                        {PacketAt(0, 1, Direction::Right), PacketAt(1, 0, Direction::Down)});
        TileAt(run, 1, 1) = MakeTile(type, 0);
        Ticks(run, 1);
        EXPECT_EQ(run.Packets.size(), 2U);
    }
}

TEST(Collisions, PacketsThatSwapCellsPassEachOther) {
    RunState run = WithPackets(DrawnRun({"────"}),
                               {PacketAt(1, 0, Direction::Right), PacketAt(2, 0, Direction::Left)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(2, 0, Direction::Right),
                                                PacketAt(1, 0, Direction::Left)}));
}

TEST(Collisions, ADeliveredPacketNoLongerTakesPart) {
    RunState run = WithPackets(DrawnRun({"─⇐─"}), {PacketAt(0, 0, Direction::Right),
                                                   Waiting(PacketAt(1, 0, Direction::Left), 1)});
    Ticks(run, 1);
    EXPECT_EQ(run.DeliveredPackets, 1);
    EXPECT_EQ(run.Packets.size(), 1U);
    EXPECT_EQ(run.LostPackets, 0);
}

TEST(Collisions, APacketThatWaitsCollidesLikeAnyOther) {
    RunState run = WithPackets(DrawnRun({"─b─"}), {Waiting(PacketAt(1, 0, Direction::Right), 1),
                                                   PacketAt(0, 0, Direction::Right)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{Waiting(PacketAt(1, 0, Direction::Right), 1)}));
    EXPECT_EQ(run.LostPackets, 1);
}

TEST(Collisions, APacketOffTheBoardIsDroppedWithoutACount) {
    RunState run = WithPackets(DrawnRun({"────"}), {Waiting(PacketAt(10, 0, Direction::Right), 1),
                                                    PacketAt(0, 0, Direction::Right)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets, (std::vector<Packet>{PacketAt(1, 0, Direction::Right)}));
    EXPECT_EQ(run.LostPackets, 0);
    EXPECT_EQ(run.TotalScore, 0);
}

TEST(Collisions, ALonePacketOffTheBoardIsLeftToItsNextMove) {
    RunState run = WithPackets(DrawnRun({"────"}), {Waiting(PacketAt(10, 0, Direction::Right), 1)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets.size(), 1U);
    Ticks(run, 1);
    EXPECT_EQ(run.LostPackets, 1);
}

TEST(Collisions, AnyDirectionButUpAndDownCountsAsHorizontal) {
    RunState run =
        WithPackets(DrawnRun({"┼"}), {Waiting(PacketAt(0, 0, static_cast<Direction>(7)), 2),
                                      Waiting(PacketAt(0, 0, Direction::Left), 2),
                                      Waiting(PacketAt(0, 0, static_cast<Direction>(4)), 2),
                                      Waiting(PacketAt(0, 0, Direction::Up), 2)});
    Ticks(run, 1);
    EXPECT_EQ(run.Packets,
              (std::vector<Packet>{Waiting(PacketAt(0, 0, static_cast<Direction>(4)), 1),
                                   Waiting(PacketAt(0, 0, Direction::Up), 1)}));
    EXPECT_EQ(run.LostPackets, 2);
}

// --- The end of a tick

TEST(Failure, TheRunEndsWhenStrikesReachTheThreshold) {
    RunState run = WithPackets(DrawnRun({"─."}), {PacketAt(0, 0, Direction::Right)});
    run.LostPackets = 5;
    run.CorruptedPackets = 4;
    Ticks(run, 1);
    EXPECT_TRUE(run.GameOver);
    EXPECT_EQ(run.VirusActiveTicks, 0U) << "the virus does not step any more";
}

TEST(Failure, OneStrikeLessLeavesTheRunGoing) {
    RunState run = WithPackets(DrawnRun({"─."}), {PacketAt(0, 0, Direction::Right)});
    run.LostPackets = 4;
    run.CorruptedPackets = 4;
    Ticks(run, 1);
    EXPECT_FALSE(run.GameOver);
    EXPECT_EQ(run.VirusActiveTicks, 1U);
}

TEST(Failure, WinsOverTheTargetReachedInTheSameTick) {
    InstallLiveRun(WithPackets(
        DrawnRun({"→⇐─."}), {PacketAt(0, 0, Direction::Right), PacketAt(2, 0, Direction::Right)}));
    LiveRun().LevelTargetPackets = 1;
    LiveRun().FailureThreshold = 1;
    AdvanceSimulation(125);
    EXPECT_TRUE(LiveRun().GameOver);
    EXPECT_EQ(LiveRun().DeliveredPackets, 1);
    EXPECT_FALSE(IsLevelComplete());
}

TEST(Failure, AThresholdOfZeroEndsTheRunAtTheFirstTick) {
    for (const std::int32_t threshold : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
        RunState run = DrawnRun({"→─⇐"});
        run.FailureThreshold = threshold;
        Ticks(run, 1);
        EXPECT_TRUE(run.GameOver);
    }
}

TEST(Target, TheVirusRestsInTheTickThatReachesIt) {
    RunState run = WithPackets(DrawnRun({"→⇐"}), {PacketAt(0, 0, Direction::Right)});
    run.LevelTargetPackets = 1;
    Ticks(run, 1);
    EXPECT_EQ(run.DeliveredPackets, 1);
    EXPECT_EQ(run.VirusActiveTicks, 0U);
}

} // namespace
} // namespace Wirefall
