#include "player/Workers.h"

#include "player/Report.h"

#include <gtest/gtest.h>

namespace Wirefall {
namespace {

TEST(PlayMatches, IsTheSameHoweverManyShareTheWork) {
    std::vector<MatchSettings> matches(5);
    for (std::size_t i = 0; i < matches.size(); ++i) {
        matches[i].Seed = static_cast<std::uint32_t>(i);
        matches[i].Style = PersonStyle;
    }
    const std::vector<RunReport> alone = PlayMatches(matches, 1);
    ASSERT_EQ(alone.size(), matches.size());
    EXPECT_EQ(alone.back().Seed, matches.back().Seed);
    for (const std::size_t jobs : {2U, 3U, 8U}) {
        const std::vector<RunReport> shared = PlayMatches(matches, jobs);
        EXPECT_EQ(RunsCsv(PersonStyle, shared), RunsCsv(PersonStyle, alone));
        EXPECT_EQ(LevelsCsv(PersonStyle, shared), LevelsCsv(PersonStyle, alone));
        EXPECT_EQ(InfectionCsv(PersonStyle, shared), InfectionCsv(PersonStyle, alone));
    }
}

} // namespace
} // namespace Wirefall
