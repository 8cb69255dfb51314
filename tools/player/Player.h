#pragma once

// The player: plans a placement, and presses the keys for it at the pace of its style. It plays the
// live run through ApplyRunCommand and nothing else.

#include "player/Planner.h"
#include "sim/Tile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace Wirefall {

/// How fast somebody's hands and head are.
struct PlayStyle {
    /// 0 for hands that are as fast as they want to be: all presses come between two ticks.
    std::int32_t PressesPerSecond = 0;
    /// From something new on the board, which a new level is as well, to the first press of what is
    /// done about it. What the player's own presses bring is no news.
    std::int32_t DelayMs = 0;

    bool IsPerfect() const { return PressesPerSecond == 0 && DelayMs == 0; }
    bool operator==(const PlayStyle&) const = default;
};

inline constexpr PlayStyle PerfectStyle = {0, 0};
/// A practised player: five presses a second, a third of a second to see what to do.
inline constexpr PlayStyle PersonStyle = {5, 350};

class Player {
public:
    using PressFunction = std::function<void(std::uint32_t code)>;

    /// `press` is told of each press after it has been given to the live run.
    explicit Player(const PlayStyle& style, PressFunction press = {});

    /// What the player does in the time of one step, StepMs, that the live run is about to take.
    void PlayStep();

private:
    void PlayAtOnce();
    void PlayInTime();
    /// The next presses, or none when there is nothing to do. Looks at the board afresh only when
    /// it has changed.
    std::vector<std::uint32_t> Decide();
    bool NeedsHelp();
    void GivePress(std::uint32_t code);

    PlayStyle Style;
    PressFunction Told;
    std::vector<std::uint32_t> Pending;
    std::size_t NextPending = 0;
    std::int32_t DelayLeftMs = 0;
    /// Time that hands have had for presses that they have not made yet, in thousandths of a press.
    std::int32_t PressBudget = 0;
    /// The board as it was when nothing was to be done.
    std::vector<Tile> SettledTiles;
    /// The board as the player has seen and made it. Whatever else happens to it is news.
    std::vector<Tile> ExpectedTiles;
};

} // namespace Wirefall
