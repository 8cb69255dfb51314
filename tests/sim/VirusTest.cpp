#include "sim/Virus.h"

#include "sim/PacketTick.h"
#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace Wirefall {
namespace {

using Testing::DrawnRun;

// The drawn board with the virus on the given cells, one spread step due.
RunState InfectedBoard(const std::vector<std::string_view>& rows,
                       const std::vector<std::pair<int, int>>& cells) {
    RunState run = DrawnRun(rows);
    run.VirusSpreadIntervalTicks = 1;
    for (const auto& [x, y] : cells) {
        TileAt(run, x, y).VirusInfected = true;
    }
    return run;
}

std::string InfectionOfRow(const RunState& run, std::int32_t y, std::int32_t width) {
    std::string row;
    for (std::int32_t x = 0; x < width; ++x) {
        row += TileAt(run, x, y).VirusInfected ? '#' : '.';
    }
    return row;
}

void Steps(RunState& run, int count) {
    TickScratch scratch;
    for (int i = 0; i < count; ++i) {
        StepVirus(run, scratch);
    }
}

TEST(VirusSpread, TakesOneStepAtATimeAlongMutualConnections) {
    RunState run = InfectedBoard({"───┼──"}, {{2, 0}});
    Steps(run, 1);
    EXPECT_EQ(InfectionOfRow(run, 0, 6), ".###..");
    Steps(run, 1);
    EXPECT_EQ(InfectionOfRow(run, 0, 6), "#####.");
    EXPECT_EQ(run.VirusActiveTicks, 2U);
}

TEST(VirusSpread, ReachesAllNeighboursOfACrossAndNothingElse) {
    RunState run = InfectedBoard({"┼│┼", "─┼─", "┼│┼"}, {{1, 1}});
    Steps(run, 1);
    EXPECT_EQ(InfectionOfRow(run, 0, 3), ".#.");
    EXPECT_EQ(InfectionOfRow(run, 1, 3), "###");
    EXPECT_EQ(InfectionOfRow(run, 2, 3), ".#.");
}

TEST(VirusSpread, NeedsBothTilesToConnect) {
    RunState run = InfectedBoard({"─│─", "│.."}, {{0, 0}});
    Steps(run, 3);
    EXPECT_EQ(InfectionOfRow(run, 0, 3), "#..");
    EXPECT_EQ(InfectionOfRow(run, 1, 3), "...");
    RunState facing = InfectedBoard({"│─"}, {{1, 0}});
    Steps(facing, 3);
    EXPECT_EQ(InfectionOfRow(facing, 0, 2), ".#");
}

TEST(VirusSpread, IsBlockedByEmptyCells) {
    RunState run = InfectedBoard({"─.─"}, {{0, 0}});
    Steps(run, 5);
    EXPECT_EQ(InfectionOfRow(run, 0, 3), "#..");
}

TEST(VirusSpread, NeverEntersAFirewallHoweverLongItLasts) {
    RunState run = InfectedBoard({"─F─"}, {{0, 0}});
    Steps(run, 100);
    EXPECT_EQ(InfectionOfRow(run, 0, 3), "#..");
}

TEST(VirusSpread, DoesNotComeOutOfAnInfectedFirewall) {
    RunState run = InfectedBoard({"─F─"}, {{1, 0}});
    Steps(run, 100);
    EXPECT_EQ(InfectionOfRow(run, 0, 3), ".#.");
}

TEST(VirusSpread, ReachesBuffersAntivirusSourcesAndSinks) {
    RunState run = InfectedBoard({"→bA─⇐"}, {{2, 0}});
    Steps(run, 2);
    EXPECT_EQ(InfectionOfRow(run, 0, 5), "#####");
    EXPECT_EQ(TileAt(run, 2, 0).Type, TileType::Antivirus) << "the virus does not spend it";
}

TEST(VirusSpread, ComesEveryInterval) {
    RunState run = InfectedBoard({"─────────"}, {{0, 0}});
    run.VirusSpreadIntervalTicks = 6;
    Steps(run, 5);
    EXPECT_EQ(InfectionOfRow(run, 0, 4), "#...");
    Steps(run, 1);
    EXPECT_EQ(InfectionOfRow(run, 0, 4), "##..") << "the first in the sixth active tick";
    Steps(run, 6);
    EXPECT_EQ(InfectionOfRow(run, 0, 4), "###.");
}

TEST(VirusSpread, AnIntervalBelowOneCountsAsOne) {
    for (const std::int32_t interval : {0, -3, std::numeric_limits<std::int32_t>::min()}) {
        RunState run = InfectedBoard({"───"}, {{0, 0}});
        run.VirusSpreadIntervalTicks = interval;
        Steps(run, 1);
        EXPECT_EQ(InfectionOfRow(run, 0, 3), "##.");
    }
}

TEST(VirusSpread, WaitsForItsGraceInATick) {
    RunState run = InfectedBoard({"→────────⇐"}, {{5, 0}});
    run.VirusGraceRemaining = 3;
    TickScratch scratch;
    for (int i = 0; i < 3; ++i) {
        RunTick(run, scratch);
    }
    EXPECT_EQ(InfectionOfRow(run, 0, 10), ".....#....");
    RunTick(run, scratch);
    EXPECT_EQ(InfectionOfRow(run, 0, 10), "....###...");
}

TEST(InfectionRatio, IsZeroWithoutALiveTile) {
    RunState run;
    EXPECT_EQ(InfectionRatio(run), 0.0F) << "no tiles at all";
    run = DrawnRun({});
    TileAt(run, 0, 0).VirusInfected = true;
    EXPECT_EQ(InfectionRatio(run), 0.0F) << "an infected empty cell is not live";
}

TEST(InfectionRatio, IsTheShareOfTheLiveTiles) {
    RunState run = DrawnRun({"→────────⇐", "┼┼┼┼┼┼┼┼┼┼", "FFFFFFFFFF", "││││││││││"});
    EXPECT_EQ(InfectionRatio(run), 0.0F);
    TileAt(run, 0, 0).VirusInfected = true;
    EXPECT_EQ(InfectionRatio(run), 0.025F);
    TileAt(run, 0, 2).VirusInfected = true;
    EXPECT_EQ(InfectionRatio(run), 0.05F) << "firewalls count";
    TileAt(run, 9, 9).VirusInfected = true;
    EXPECT_EQ(InfectionRatio(run), 0.05F) << "empty cells do not";
    for (Tile& tile : run.Tiles) {
        tile.VirusInfected = true;
    }
    EXPECT_EQ(InfectionRatio(run), 1.0F);
}

TEST(InfectionRatio, AnEndpointWithoutExitsIsStillLive) {
    RunState run = DrawnRun({"→⇐"});
    TileAt(run, 0, 0).Connections = 0;
    TileAt(run, 1, 0).Connections = 0;
    TileAt(run, 1, 0).VirusInfected = true;
    EXPECT_EQ(InfectionRatio(run), 0.5F);
}

} // namespace
} // namespace Wirefall
