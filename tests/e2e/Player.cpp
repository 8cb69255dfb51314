#include "e2e/Player.h"

#include "player/Planner.h"
#include "sim/Arithmetic.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Wirefall::Testing {

namespace {

constexpr int MostRuns = 10;

// A run with so many packets gone is given up, well before it would end among the keys of a move.
constexpr std::int32_t HopelessFailures = 6;

// A picture can show what the reader does not know (two packets that cross), but the next is new.
constexpr int MostGlances = 100;

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

// The player thinks while the game is paused. A run that ends before it can be paused does no harm:
// Escape then leads from its result to the main menu, and the Return that should resume it begins a
// new run there.

// The run as it was at a glance, from pause to pause.
RunState Glance(GameSession& game, const RunState* hint) {
    std::string trouble;
    for (int glances = 0; glances < MostGlances; ++glances) {
        game.Resume();
        const Screenshot seen = game.LastSeen();
        game.Pause();
        const ReadResult result = game.Reader().ReadRun(seen, hint);
        if (result.Run) {
            return *result.Run;
        }
        trouble = result.Trouble;
    }
    throw std::runtime_error("The play screen cannot be read: " + trouble);
}

// Presses the keys from pause to pause. Once the game is paused again, all of them have been taken.
void Act(GameSession& game, std::vector<std::string> keys) {
    keys.emplace_back("Escape");
    game.Resume();
    game.Press(keys);
    game.WaitForOtherThanPlay();
}

// From pause to pause. False when the run is going to end before it has a route.
bool BuildRoute(GameSession& game) {
    RunState run = Glance(game, nullptr);
    while (!IsHopeless(run)) {
        if (DeliversCleanly(run)) {
            // From a source or a sink the cursor hides nothing of what was built.
            const Endpoint& source = run.Sources.front();
            if (run.CursorX == source.X && run.CursorY == source.Y) {
                return true;
            }
            Act(game, KeysToCell(run, {source.X, source.Y}));
            run = Glance(game, &run);
            continue;
        }
        const std::optional<Placement> placement = PlanPlacement(run);
        if (!placement) {
            break;
        }
        Act(game, KeysFor(run, *placement));
        const RunState expected = AfterPlacement(run, *placement);
        run = Glance(game, &expected);
    }
    return false;
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

// Nothing when it comes to nothing; the game is paused then.
std::optional<RunState> PlayOneRun(GameSession& game, std::int32_t packets) {
    game.Pause();
    while (BuildRoute(game)) {
        game.Resume();
        const Outcome outcome = WatchPackets(game, packets);
        if (outcome == Outcome::Ended) {
            // From the result screen Return leads to the main menu.
            game.Press({"Return"});
            game.StartNewGame();
        }
        RunState run;
        do {
            run = game.WaitForRun();
        } while (run.FastForward);
        if (outcome == Outcome::Delivered) {
            return run;
        }
        game.Pause();
    }
    return std::nullopt;
}

} // namespace

RunState PlayUntilDelivered(GameSession& game, std::int32_t packets) {
    for (int runs = 0; runs < MostRuns; ++runs) {
        if (const std::optional<RunState> run = PlayOneRun(game, packets)) {
            return *run;
        }
        game.LeaveToMenu();
        game.StartNewGame();
    }
    throw std::runtime_error(std::to_string(MostRuns) + " runs without " + std::to_string(packets) +
                             " packets delivered");
}

} // namespace Wirefall::Testing
