#include "e2e/Player.h"

#include "e2e/RoutePlanner.h"
#include "sim/Arithmetic.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Wirefall::Testing {

namespace {

constexpr int MostRuns = 10;

// A run with so many packets gone is not worth going on with.
constexpr std::int32_t HopelessFailures = 8;

constexpr const char* FastForwardKey = "Shift_L";

void AddKeys(std::vector<std::string>& keys, std::int32_t count, const char* forward,
             const char* back) {
    for (std::int32_t i = 0; i < count; ++i) {
        keys.emplace_back(forward);
    }
    for (std::int32_t i = 0; i > count; --i) {
        keys.emplace_back(back);
    }
}

std::vector<std::string> KeysToCell(const RunState& run, const Cell& cell) {
    std::vector<std::string> keys;
    AddKeys(keys, cell.X - run.CursorX, "Right", "Left");
    AddKeys(keys, cell.Y - run.CursorY, "Down", "Up");
    return keys;
}

std::vector<std::string> KeysFor(const RunState& run, const Placement& placement) {
    std::vector<std::string> keys = KeysToCell(run, placement.Where);
    const std::int32_t turns = TurnsToRotation(run, placement.Rotation);
    AddKeys(keys, turns == 3 ? -1 : turns, "e", "q");
    keys.emplace_back("Return");
    return keys;
}

RunState AfterPlacement(RunState run, const Placement& placement) {
    Tile& cell = TileAt(run, placement.Where.X, placement.Where.Y);
    const bool infected = cell.VirusInfected;
    cell = MakeTile(run.TileQueue[0], placement.Rotation);
    cell.VirusInfected = infected;
    return run;
}

bool IsHopeless(const RunState& run) {
    return WideSum(run.LostPackets, run.CorruptedPackets) >= HopelessFailures;
}

// Presses the keys and stops the clock, all in one go. Once another screen is there, all of them
// have been taken.
//
// That screen may also be the end of the run: then Escape has led to the main menu, or is about to,
// and Return begins a new run there, as it resumes this one on the pause menu.
void PressAndThink(GameSession& game, std::vector<std::string> keys) {
    keys.emplace_back("Escape");
    game.Press(keys);
    game.WaitForOtherThanPlay();
    game.Resume();
}

// Nothing when the run has come to an end, or will.
std::optional<RunState> BuildRoute(GameSession& game, RunState run) {
    while (!IsHopeless(run)) {
        if (DeliversCleanly(run)) {
            // From a source or a sink the cursor hides nothing of what was built.
            const Endpoint& source = run.Sources.front();
            if (run.CursorX == source.X && run.CursorY == source.Y) {
                return run;
            }
            PressAndThink(game, KeysToCell(run, {source.X, source.Y}));
            run = game.WaitForRun(&run);
            continue;
        }
        const std::optional<Placement> placement = PlanPlacement(run);
        if (!placement) {
            break;
        }
        PressAndThink(game, KeysFor(run, *placement));
        const RunState expected = AfterPlacement(run, *placement);
        run = game.WaitForRun(&expected);
    }
    return std::nullopt;
}

// What became of waiting for packets.
enum class Outcome : std::uint8_t { Delivered, Interrupted, Ended };

Outcome WatchPackets(GameSession& game, std::int32_t packets) {
    Outcome outcome = Outcome::Interrupted;
    std::string trouble;
    bool wasFast = false;
    game.Screen().HoldKey(FastForwardKey);
    game.WaitUntil(
        "packets to be delivered in fast forward",
        [&](const Screenshot& screen) {
            const ReadResult seen = game.Reader().ReadRun(screen);
            trouble = seen.Trouble;
            if (!seen.Run) {
                outcome = Outcome::Ended;
                return wasFast && !game.Reader().ReadCursor(screen);
            }
            wasFast = wasFast || seen.Run->FastForward;
            outcome =
                seen.Run->DeliveredPackets >= packets ? Outcome::Delivered : Outcome::Interrupted;
            return wasFast && (outcome == Outcome::Delivered || !DeliversCleanly(*seen.Run));
        },
        &trouble);
    game.Screen().ReleaseKey(FastForwardKey);
    return outcome;
}

std::optional<RunState> PlayOneRun(GameSession& game, std::int32_t packets) {
    RunState run = game.WaitForRun();
    while (true) {
        const std::optional<RunState> built = BuildRoute(game, run);
        if (!built) {
            return std::nullopt;
        }
        const Outcome outcome = WatchPackets(game, packets);
        if (outcome == Outcome::Ended) {
            // From the result screen Return leads to the main menu, and there to a new run.
            game.Press({"Return"});
            game.StartNewGame();
        }
        do {
            run = game.WaitForRun();
        } while (run.FastForward);
        if (outcome == Outcome::Delivered) {
            return run;
        }
    }
}

} // namespace

RunState PlayUntilDelivered(GameSession& game, std::int32_t packets) {
    for (int runs = 0; runs < MostRuns; ++runs) {
        if (const std::optional<RunState> run = PlayOneRun(game, packets)) {
            return *run;
        }
        game.Pause();
        game.LeaveToMenu();
        game.StartNewGame();
    }
    throw std::runtime_error(std::to_string(MostRuns) + " runs without " + std::to_string(packets) +
                             " packets delivered");
}

} // namespace Wirefall::Testing
