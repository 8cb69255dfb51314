// Whole runs, kept as they once were: every build on every compiler and platform goes through the
// same states.

#include "player/KeptPlays.h"

#include "player/Trace.h"
#include "sim/LevelRules.h"
#include "sim/Simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>

namespace Wirefall {
namespace {

using Testing::KeptPlay;
using Testing::KeptPlays;

class KeptPlayTest : public testing::TestWithParam<KeptPlay> {};

TEST_P(KeptPlayTest, GoesThroughTheSameStates) {
    const auto difference = CompareWithTrace(GetParam().Commands(), GetParam().Trace());
    EXPECT_FALSE(difference) << Describe(difference.value());
}

INSTANTIATE_TEST_SUITE_P(Corpus, KeptPlayTest, testing::ValuesIn(KeptPlays()),
                         [](const auto& test) { return Testing::TestName(test.param); });

bool TwoShareACell(const std::vector<Packet>& packets) {
    std::set<std::pair<std::int32_t, std::int32_t>> cells;
    return std::ranges::any_of(
        packets, [&cells](const Packet& p) { return !cells.emplace(p.X, p.Y).second; });
}

// What the plays are kept for: that they come past what can happen in a run.
TEST(KeptPlays, ComePastAllThatARunCanCome) {
    std::size_t longRuns = 0;
    std::int32_t highestLevel = 0;
    bool gameOver = false;
    bool spentAntivirus = false;
    bool infectedFirewall = false;
    bool corrupted = false;
    bool waiting = false;
    bool crossing = false;
    for (const KeptPlay& kept : KeptPlays()) {
        const std::vector<PlayCommand> play = kept.Commands();
        PlayReader reader(play);
        std::size_t steps = 0;
        while (reader.RunStep()) {
            ++steps;
            const RunState& run = LiveRun();
            highestLevel = std::max(highestLevel, run.Level);
            gameOver |= run.GameOver;
            spentAntivirus |= std::ranges::any_of(run.Tiles, &Tile::Consumed);
            infectedFirewall |= std::ranges::any_of(run.Tiles, [](const Tile& tile) {
                return tile.Type == TileType::Firewall && tile.VirusInfected;
            });
            corrupted |= std::ranges::any_of(run.Packets, &Packet::Corrupted);
            waiting |=
                std::ranges::any_of(run.Packets, [](const Packet& p) { return p.DelayTicks > 0; });
            crossing |= TwoShareACell(run.Packets);
        }
        longRuns += steps >= 4000 ? 1U : 0U;
    }
    EXPECT_GE(longRuns, 6U);
    EXPECT_GE(highestLevel, 125);
    EXPECT_TRUE(gameOver);
    EXPECT_TRUE(spentAntivirus);
    EXPECT_TRUE(infectedFirewall);
    EXPECT_TRUE(corrupted);
    EXPECT_TRUE(waiting);
    EXPECT_TRUE(crossing);
}

} // namespace
} // namespace Wirefall
