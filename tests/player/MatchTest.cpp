#include "player/Match.h"

#include "player/Report.h"
#include "sim/LevelRules.h"
#include "sim/Simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace Wirefall {
namespace {

constexpr std::uint32_t FirstSeed = 2000;

MatchSettings Settings(std::uint32_t seed, const PlayStyle& style, std::int32_t lastLevel) {
    MatchSettings settings;
    settings.Seed = seed;
    settings.Style = style;
    settings.LastLevel = lastLevel;
    return settings;
}

TEST(StartSeededRun, WithTheDefaultSeedIsANewRun) {
    StartSeededRun(DefaultSeed);
    RunState fresh;
    ConstructRunState(fresh);
    EXPECT_EQ(LiveRun(), fresh);
}

TEST(StartSeededRun, WithAnotherSeedIsAnotherBoard) {
    StartSeededRun(DefaultSeed);
    const RunState first = LiveRun();
    StartSeededRun(FirstSeed);
    EXPECT_NE(LiveRun().Tiles, first.Tiles);
    EXPECT_EQ(LiveRun().Seed, FirstSeed);
    StartSeededRun(DefaultSeed);
    EXPECT_EQ(LiveRun(), first);
}

TEST(PlayMatch, WithPerfectHandsGetsToLevel12FromAnyBoard) {
    for (std::uint32_t seed = FirstSeed; seed < FirstSeed + 10; ++seed) {
        const RunReport report = PlayMatch(Settings(seed, PerfectStyle, 12));
        EXPECT_EQ(report.End, RunEnd::LastLevel) << "seed " << seed;
        EXPECT_EQ(report.LevelReached(), 12) << "seed " << seed;
    }
}

// The boards from level 111 up are empty but for the source and the sink.
TEST(PlayMatch, CrossesTheCliffAtLevel111) {
    MatchSettings settings = Settings(FirstSeed, PerfectStyle, 112);
    settings.FirstLevel = 110;
    const RunReport report = PlayMatch(settings);
    EXPECT_EQ(report.End, RunEnd::LastLevel);
    EXPECT_EQ(report.Levels.size(), 3U);
}

TEST(PlayMatch, WithAPersonsHandsEndsInGameOver) {
    const RunReport report = PlayMatch(Settings(FirstSeed, {1, 1000}, 120));
    EXPECT_EQ(report.End, RunEnd::Failed);
    EXPECT_TRUE(LiveRun().GameOver);
    EXPECT_FALSE(report.Levels.back().Completed);
}

TEST(PlayMatch, AccountsForEveryStrikeAndDelivery) {
    const RunReport report = PlayMatch(Settings(FirstSeed + 1, PersonStyle, 120));
    const LevelReport& last = report.Levels.back();
    EXPECT_EQ(std::accumulate(last.Strikes.begin(), last.Strikes.end(), 0),
              LiveRun().LostPackets + LiveRun().CorruptedPackets);
    EXPECT_EQ(last.Strikes[0], LiveRun().CorruptedPackets);
    EXPECT_EQ(last.Deliveries, LiveRun().DeliveredPackets);
    EXPECT_EQ(last.Ticks, LiveRun().Tick);
    EXPECT_EQ(last.InfectionBySecond.size(), last.Ticks / 8);
    std::int32_t score = 0;
    for (const LevelReport& level : report.Levels) {
        const std::int32_t lost =
            std::accumulate(level.Strikes.begin() + 1, level.Strikes.end(), 0);
        score +=
            10 * level.Deliveries - 10 * level.Strikes[0] - 5 * lost + (level.Completed ? 100 : 0);
    }
    EXPECT_EQ(report.Score, score);
}

TEST(PlayMatch, TellsItsObserverOfEverything) {
    int presses = 0;
    int steps = 0;
    int levels = 0;
    const MatchObserver observer = {[&presses](std::uint32_t) { ++presses; }, [&steps] { ++steps; },
                                    [&levels] { ++levels; }};
    const RunReport report = PlayMatch(Settings(FirstSeed, PerfectStyle, 3), observer);
    std::uint64_t ticks = 0;
    std::int32_t counted = 0;
    for (const LevelReport& level : report.Levels) {
        ticks += level.Ticks;
        counted += level.Presses;
    }
    EXPECT_EQ(presses, counted);
    EXPECT_EQ(static_cast<std::uint64_t>(steps), ticks);
    EXPECT_EQ(levels, 2);
}

TEST(PlayMatch, FromTheSameSeedIsTheSameToTheByte) {
    const auto csv = [](std::uint32_t seed) {
        const std::vector<RunReport> reports = {PlayMatch(Settings(seed, PersonStyle, 120))};
        return RunsCsv(PersonStyle, reports) + LevelsCsv(PersonStyle, reports) +
               InfectionCsv(PersonStyle, reports);
    };
    EXPECT_EQ(csv(FirstSeed), csv(FirstSeed));
    EXPECT_NE(csv(FirstSeed), csv(FirstSeed + 1));
}

} // namespace
} // namespace Wirefall
