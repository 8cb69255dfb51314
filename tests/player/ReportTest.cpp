#include "player/Report.h"

#include <gtest/gtest.h>

namespace Wirefall {
namespace {

RunReport SampleReport() {
    LevelReport first;
    first.Level = 1;
    first.Ticks = 360;
    first.TicksToFirstDelivery = 54;
    first.Deliveries = 20;
    first.Presses = 31;
    first.Placements = 7;
    first.MeanInfection = 0.0175F;
    first.PeakInfection = 0.5F;
    first.Completed = true;
    first.InfectionBySecond = {0.25F, 0.5F};
    LevelReport second;
    second.Level = 2;
    second.Ticks = 100;
    second.Strikes = {1, 2, 3, 4};
    second.Presses = 9;
    second.Placements = 2;
    return {7, RunEnd::Failed, 250, {first, second}};
}

TEST(RunsCsv, AddsTheLevelsUp) {
    EXPECT_EQ(RunsCsv({5, 350}, {SampleReport()}),
              "presses_per_second,delay_ms,seed,level,end,score,deliveries,corrupted,"
              "lost_corrupted,lost_unbuilt,lost_on_way,presses,placements,seconds\n"
              "5,350,7,2,failed,250,20,1,2,3,4,40,9,57.500\n");
}

TEST(LevelsCsv, HasALineForEachLevel) {
    EXPECT_EQ(LevelsCsv(PerfectStyle, {SampleReport()}),
              "presses_per_second,delay_ms,seed,level,completed,seconds,first_delivery_seconds,"
              "deliveries,corrupted,lost_corrupted,lost_unbuilt,lost_on_way,presses,placements,"
              "mean_infection,peak_infection\n"
              "0,0,7,1,1,45.000,6.750,20,0,0,0,0,31,7,0.0175,0.5000\n"
              "0,0,7,2,0,12.500,0.000,0,1,2,3,4,9,2,0.0000,0.0000\n");
}

TEST(InfectionCsv, HasALineForEachSecond) {
    EXPECT_EQ(InfectionCsv(PerfectStyle, {SampleReport()}),
              "presses_per_second,delay_ms,seed,level,second,infection\n"
              "0,0,7,1,1,0.2500\n"
              "0,0,7,1,2,0.5000\n");
}

TEST(RunsTable, EndsWithHowFarTheRunsGot) {
    EXPECT_EQ(RunsTable({SampleReport()}),
              "      seed  level  end         delivered  strikes  presses  minutes\n"
              "         7      2  failed             20       10       40      1.0\n"
              "\n"
              "1 runs, 1 failed; level reached: least 2, 10% 2, median 2, 90% 2, most 2\n"
              "strikes of the levels that failed: corrupted 1, lost corrupted 2, lost, no way "
              "built 3, lost on the way 4\n");
}

TEST(RunsTable, WithoutRunsIsItsHeading) {
    EXPECT_EQ(RunsTable({}),
              "      seed  level  end         delivered  strikes  presses  minutes\n");
}

} // namespace
} // namespace Wirefall
