// The game as a player has it: the executable, a display, a keyboard. What it shows is read off the
// screen.

#include "e2e/EndToEndFixture.h"
#include "e2e/GameSession.h"
#include "e2e/Player.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <ostream>
#include <sstream>
#include <thread>

namespace Wirefall::Testing {

namespace {

using Clock = std::chrono::steady_clock;

// The fade at the end, which no machine can make shorter.
constexpr auto QuitFade = std::chrono::milliseconds(420);

} // namespace

TEST_F(EndToEndTest, PlaysUntilPacketsAreDeliveredAndQuits) {
    GameSession& game = Start(Wide);
    game.WaitForMenu({.OffersToContinue = false, .Selection = 0});
    game.Reader().LearnRuns();
    game.StartNewGame();

    const RunState run = PlayUntilDelivered(game, 2);
    const Screenshot played = game.LastSeen();

    EXPECT_GE(run.DeliveredPackets, 2);
    EXPECT_EQ(0U, CountDifferences(game.Reader().DrawRun(run), played));

    game.Pause();
    game.LeaveToMenu();
    game.WaitForMenu({.OffersToContinue = true, .Selection = 0});
    game.Press({"Escape"});
    EXPECT_EQ(0, game.WaitForExit());
}

TEST_F(EndToEndTest, NewGameShowsTheFirstBoard) {
    GameSession& game = Start(Wide);
    game.Reader().LearnRuns();
    game.StartNewGame();
    RunState fresh;
    ConstructRunState(fresh);
    const RunState run = game.WaitForRun(&fresh);
    for (std::size_t i = 0; i < fresh.Tiles.size(); ++i) {
        SCOPED_TRACE("cell " + std::to_string(i));
        EXPECT_EQ(fresh.Tiles[i].Type, run.Tiles[i].Type);
        EXPECT_EQ(fresh.Tiles[i].Connections, run.Tiles[i].Connections);
    }
    EXPECT_EQ(fresh.Sources, run.Sources);
    EXPECT_EQ(fresh.Sinks, run.Sinks);
    EXPECT_EQ(fresh.TileQueue, run.TileQueue);
    EXPECT_EQ(fresh.CursorX, run.CursorX);
    EXPECT_EQ(fresh.CursorY, run.CursorY);
}

// Options, help and credits each open, and Escape leads back to the row that was left.
TEST_F(EndToEndTest, WalksTheMenuAndQuitsByItsLastRow) {
    GameSession& game = Start(Wide);
    game.WaitForMenu({.OffersToContinue = false, .Selection = MenuRow::NewGame});
    game.Press({"Up"});
    game.WaitForMenu({.OffersToContinue = false, .Selection = MenuRow::Quit});
    game.Press({"Down"});
    game.WaitForMenu({.OffersToContinue = false, .Selection = MenuRow::NewGame});
    for (const std::int32_t row : {MenuRow::Options, MenuRow::Help, MenuRow::Credits}) {
        game.Press({"Down"});
        game.WaitForMenu({.OffersToContinue = false, .Selection = row});
        game.Press({"Return"});
        game.WaitForOtherThanMenu();
        game.Press({"Escape"});
        game.WaitForMenu({.OffersToContinue = false, .Selection = row});
    }
    game.SelectMenuRow(MenuRow::Quit);
    game.Press({"Return"});
    EXPECT_EQ(0, game.WaitForExit());
}

// A pause that is longer than the time until the first packet, so a clock that goes on shows as a
// packet on the board or as a lost one. Only time that may have been played can excuse that.
TEST_F(EndToEndTest, PauseStopsTheClock) {
    constexpr auto PauseTime = std::chrono::milliseconds(5500);
    constexpr auto FirstPacket = std::chrono::milliseconds(40 * StepMs);
    constexpr int MostTries = 5;
    GameSession& game = Start(Wide);
    game.Reader().LearnRuns();
    for (int tries = 0; tries < MostTries; ++tries) {
        const auto start = Clock::now();
        game.StartNewGame();
        const RunState before = game.WaitForRun();
        game.Pause();
        auto played = Clock::now() - start;

        std::this_thread::sleep_for(PauseTime);
        const auto resumed = Clock::now();
        game.Resume();
        const RunState after = game.WaitForRun(&before);
        played += Clock::now() - resumed;

        game.Pause();
        game.LeaveToMenu();
        if (played < FirstPacket) {
            EXPECT_TRUE(after.Packets.empty());
            EXPECT_EQ(0, after.LostPackets);
            EXPECT_EQ(before.Tiles, after.Tiles);
            return;
        }
    }
    FAIL() << "This machine is too slow to play for less than five seconds";
}

TEST_F(EndToEndTest, ContinueGoesOnWithTheRun) {
    GameSession& game = Start(Wide);
    game.StartNewGame();
    const Cell start = game.WaitForPlay();
    const Cell moved = {start.X - 1, start.Y};
    game.Press({"Left"});
    game.WaitUntil("the cursor to move left", [&](const Screenshot& screen) {
        return game.Reader().ReadCursor(screen) == moved;
    });
    game.Pause();
    game.LeaveToMenu();
    game.WaitForMenu({.OffersToContinue = true, .Selection = 0});
    game.Press({"Return"});
    EXPECT_EQ(moved, game.WaitForPlay());
}

TEST_F(EndToEndTest, EscapeOnTheMenuFadesAndQuits) {
    GameSession& game = Start(Wide);
    game.WaitForAnyMenu();
    const auto start = Clock::now();
    game.Press({"Escape"});
    EXPECT_EQ(0, game.WaitForExit());
    EXPECT_GE(Clock::now() - start, QuitFade);
}

TEST_F(EndToEndTest, ClosingTheWindowFadesAndQuits) {
    GameSession& game = Start(Wide);
    game.WaitForAnyMenu();
    const auto start = Clock::now();
    ASSERT_TRUE(game.Screen().CloseWindows());
    EXPECT_EQ(0, game.WaitForExit());
    EXPECT_GE(Clock::now() - start, QuitFade);
}

// If a close began the fade anew, the picture would brighten, and with closes coming all the time
// the game would never end.
TEST_F(EndToEndTest, ClosingDuringTheFadeChangesNothing) {
    GameSession& game = Start(Wide);
    game.WaitForAnyMenu();
    std::uint64_t brightness = game.Reader().MenuBrightness(game.LastSeen());
    const auto start = Clock::now();
    game.Press({"Escape"});
    constexpr auto Limit = std::chrono::minutes(2);
    while (!game.HasEnded() && Clock::now() - start < Limit) {
        game.Screen().CloseWindows();
        const std::uint64_t now = game.Reader().MenuBrightness(game.Look());
        ASSERT_LE(now, brightness);
        brightness = now;
    }
    ASSERT_TRUE(game.HasEnded());
    EXPECT_EQ(0, game.WaitForExit());
    EXPECT_GE(Clock::now() - start, QuitFade);
}

// --- Displays

struct DisplayCase {
    const char* Name;
    WindowSize Window;
};

// GoogleTest looks for a function of this name.
// NOLINTNEXTLINE(readability-identifier-naming)
void PrintTo(const DisplayCase& display, std::ostream* out) { *out << display.Name; }

class DisplayTest : public EndToEndTest, public testing::WithParamInterface<DisplayCase> {};

// The canvas takes the display's shape, and all of it is drawn as it should be.
TEST_P(DisplayTest, PlaysOnThatCanvas) {
    GameSession& game = Start(GetParam().Window);
    game.Reader().LearnRuns();
    game.StartNewGame();
    const RunState fresh = game.WaitForRun();
    game.Press({"Right", "e", "Return"});
    RunState run;
    do {
        run = game.WaitForRun(&fresh);
    } while (run.TileQueue[0] == fresh.TileQueue[0]);
    EXPECT_EQ(fresh.CursorX + 1, run.CursorX);
    EXPECT_EQ(fresh.TileQueue[1], run.TileQueue[0]);
    EXPECT_EQ(0U, CountDifferences(game.Reader().DrawRun(run), game.LastSeen()));
    game.Pause();
    game.LeaveToMenu();
    game.Press({"Escape"});
    EXPECT_EQ(0, game.WaitForExit());
}

INSTANTIATE_TEST_SUITE_P(EndToEnd, DisplayTest,
                         testing::Values(DisplayCase{"Classic1024x768", {1024, 768, 960}},
                                         DisplayCase{"Wide1440x900", {1440, 900, 1152}},
                                         DisplayCase{"Ultrawide1728x720", {1728, 720, 1728}}),
                         [](const auto& test) { return std::string(test.param.Name); });

// What the player's own renderer draws may round colours differently, but what is opaque is exact.
TEST_F(EndToEndTest, RunsOnTheDefaultRenderer) {
    GameSession& game = Start(Wide, DrawnBy::Default);
    game.WaitForMenu({.OffersToContinue = false, .Selection = 0});
    game.Press({"Down"});
    game.WaitForMenu({.OffersToContinue = false, .Selection = 1});
    ASSERT_TRUE(game.Screen().CloseWindows());
    EXPECT_EQ(0, game.WaitForExit());
}

// The window keeps its size, so the display shows a part of it.
TEST_F(EndToEndTest, GoesOnOnADisplaySmallerThanItsWindow) {
    GameSession& game = Keep(std::make_unique<GameSession>(Wide, 800, 600, DrawnBy::Software));
    game.StartNewGame();
    EXPECT_EQ((Cell{5, 5}), game.WaitForPlay());
    game.Press({"Right"});
    game.WaitUntil("the cursor to move right", [&](const Screenshot& screen) {
        return game.Reader().ReadCursor(screen) == Cell{6, 5};
    });
    game.Pause();
    game.LeaveToMenu();
    game.Press({"Escape"});
    EXPECT_EQ(0, game.WaitForExit());
}

TEST(NoDisplayTest, EndsWithTheReason) {
    const TemporaryFolder home;
    const ProgramSpec spec = GameSpec(home, std::nullopt);
    ChildProgram program(spec);
    EXPECT_EQ(1, program.WaitForExit(std::chrono::minutes(2)));
    std::ostringstream printed;
    printed << std::ifstream(spec.Output).rdbuf();
    EXPECT_NE(std::string::npos, printed.str().find("SDL_Init failed: ")) << printed.str();
}

} // namespace Wirefall::Testing
