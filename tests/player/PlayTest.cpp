#include "player/Play.h"

#include "player/Match.h"
#include "player/PressCodes.h"
#include "sim/Simulation.h"

#include <gtest/gtest.h>

namespace Wirefall {
namespace {

using Commands = std::vector<PlayCommand>;

int CountSteps(const Commands& play) {
    PlayReader reader(play);
    int steps = 0;
    while (reader.RunStep()) {
        ++steps;
    }
    return steps;
}

// Plays it, and returns the run as it is then.
const RunState& Played(const Commands& play) {
    CountSteps(play);
    return LiveRun();
}

TEST(ParsePlay, ReadsLettersWithAndWithoutNumbers) {
    EXPECT_EQ(ParsePlay("7s3ru p\n\t40t0f"),
              (Commands{{'s', 7}, {'r', 3}, {'u', 1}, {'p', 1}, {'t', 40}, {'f', 0}}));
    EXPECT_TRUE(ParsePlay("").empty());
    EXPECT_EQ(ParsePlay("4294967295m"), (Commands{{'m', 4294967295U}}));
}

TEST(ParsePlay, PassesCommentsOver) {
    EXPECT_EQ(ParsePlay("# up: u\r\nd # and so on"), (Commands{{'d', 1}}));
}

struct WrongPlay {
    const char* Name;
    const char* Text;
    const char* Message;
};

class ParsePlayRefuses : public testing::TestWithParam<WrongPlay> {};

TEST_P(ParsePlayRefuses, WithTheLine) {
    try {
        ParsePlay(GetParam().Text);
        FAIL();
    } catch (const PlayError& error) {
        EXPECT_STREQ(error.what(), GetParam().Message);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, ParsePlayRefuses,
                         testing::Values(WrongPlay{"Letter", "u\nd x", "line 2: 'x' is no command"},
                                         WrongPlay{"Size", "u\n\n4294967296t",
                                                   "line 3: the number is too large"},
                                         WrongPlay{"End", "u 12", "line 1: the command is missing"},
                                         WrongPlay{"Blank", "12 t", "line 1: ' ' is no command"}),
                         [](const auto& test) { return std::string(test.param.Name); });

TEST(FormatPlay, IsReadBackAsTheSame) {
    Commands play = {{'s', 1337}, {'c', 1}, {'n', 1}, {'f', 0}, {'k', 26}};
    for (std::uint32_t i = 0; i < 300; ++i) {
        play.push_back({'t', i});
        play.push_back({i % 7 == 0 ? 'n' : 'p', 1});
    }
    EXPECT_EQ(ParsePlay(FormatPlay(play)), play);
    EXPECT_EQ(FormatPlay({}), "");
}

TEST(FormatPlay, KeepsLinesShort) {
    const std::string text = FormatPlay(Commands(500, {'t', 12345}));
    std::size_t start = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos;
         end = text.find('\n', start)) {
        EXPECT_LE(end - start, 100U);
        start = end + 1;
    }
    EXPECT_EQ(start, text.size());
}

TEST(PlayWriter, CountsWhatIsRepeated) {
    PlayWriter writer;
    writer.Add('s', 5);
    writer.Add('s', 5);
    writer.AddPress(Press::Up);
    writer.AddPress(Press::Up);
    writer.AddPress(26);
    writer.AddPress(26);
    writer.Add('t');
    writer.Add('t', 9);
    EXPECT_EQ(FormatPlay(writer.Play()), "5s5s2u26k26k10t\n");
}

TEST(PlayReader, StopsAfterEachStep) {
    EXPECT_EQ(CountSteps(ParsePlay("3t u 2t 17m p")), 6);
    EXPECT_EQ(CountSteps(ParsePlay("0t 0u")), 0);
    EXPECT_EQ(CountSteps(ParsePlay("up")), 0);
}

TEST(PlayReader, StartsAsTheProgramDoes) {
    LiveRun().TotalScore = 99;
    LiveSimulation().Revision = 12345;
    const Commands play = ParsePlay("t");
    PlayReader reader(play);
    EXPECT_FALSE(LiveSimulation().RunInitialised);
    ASSERT_TRUE(reader.RunStep());
    EXPECT_EQ(LiveRun().TotalScore, 0);
    EXPECT_EQ(LiveSimulation().Revision, 2U) << "The new run and its first tick";
}

TEST(PlayReader, DoesWhatTheLettersSay) {
    EXPECT_EQ(Played(ParsePlay("3l2u")).CursorX, 2);
    EXPECT_EQ(LiveRun().CursorY, 3);
    EXPECT_EQ(Played(ParsePlay("rrd")).CursorX, 7);
    EXPECT_EQ(LiveRun().CursorY, 6);
    EXPECT_EQ(Played(ParsePlay("q")).PreviewRotation, 3);
    EXPECT_EQ(Played(ParsePlay("2e")).PreviewRotation, 2);
    EXPECT_EQ(Played(ParsePlay("p")).Tiles[55].Type, TileType::Cross);
    EXPECT_EQ(Played(ParsePlay("26k")).CursorY, 4);
    EXPECT_EQ(Played(ParsePlay("t 1f t")).Tick, 4U);
    EXPECT_EQ(Played(ParsePlay("t 1f 0f t")).Tick, 2U);
    EXPECT_EQ(Played(ParsePlay("250m 99m")).Tick, 2U);
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 99U);
    EXPECT_EQ(Played(ParsePlay("n")).Level, 1);
    EXPECT_EQ(Played(ParsePlay("cn")).Level, 2);
    EXPECT_EQ(Played(ParsePlay("77s")).Seed, 77U);
}

TEST(PlayReader, CopiesGoOnFromTheSamePlace) {
    const Commands play = ParsePlay("5t 2r 5t");
    PlayReader reader(play);
    for (int step = 0; step < 3; ++step) {
        reader.RunStep();
    }
    PlayReader copy = reader;
    const Simulation here = LiveSimulation();
    while (reader.RunStep()) {
    }
    const RunState end = LiveRun();
    LiveSimulation() = here;
    while (copy.RunStep()) {
    }
    EXPECT_EQ(LiveRun(), end);
    EXPECT_EQ(LiveRun().Tick, 10U);
}

// What a run was recorded as plays it again.
TEST(PlayWriter, TakesARunDownSoThatItCanBePlayedAgain) {
    PlayWriter writer;
    writer.Add('s', 3);
    const MatchObserver observer = {[&writer](std::uint32_t code) { writer.AddPress(code); },
                                    [&writer] { writer.Add('t'); }, [&writer] { writer.Add('n'); }};
    MatchSettings settings;
    settings.Seed = 3;
    settings.Style = {8, 100};
    settings.LastLevel = 5;
    PlayMatch(settings, observer);
    const RunState end = LiveRun();
    EXPECT_EQ(Played(ParsePlay(FormatPlay(writer.Play()))), end);
}

} // namespace
} // namespace Wirefall
