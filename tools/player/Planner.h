#pragma once

// A player that thinks: where to put the tile in hand, so that packets get from the source to the
// sink and the virus does not. It looks at the board and the queue only, never at what a person
// could not see.

#include "player/Forecast.h"
#include "player/Route.h"
#include "sim/RunState.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Wirefall {

struct Placement {
    Cell Where;
    std::int32_t Rotation = 0;

    bool operator==(const Placement&) const = default;
};

/// What suits the hands that are to carry a plan out.
struct PlanWeights {
    /// What weighs more: the presses of a placement, or what it does for the way. In presses for a
    /// unit of Route::Cost.
    int WayCost = 1;
    /// Whether they can lay an Antivirus at the very tick at which a packet needs it.
    bool CanWait = false;
};

/// For hands that a press costs time.
inline constexpr PlanWeights CountedPresses = {1, false};
/// For hands that are as fast as they want to be.
inline constexpr PlanWeights FreePresses = {20, true};

/// Whether there is nothing to do: packets get from the source to the sink, and the virus cannot
/// get at their way, however long it takes.
bool IsSettled(const RunState& run);

/// The best use of the tile in hand: a gap of the cheapest way, a cut between the way and the
/// virus, a cure, a step of a second way for when the first is taken, or a place where it does no
/// harm so that the next tile comes to hand. Nothing when there is no way at all, or when it is
/// best to wait with a cure until a packet is near.
std::optional<Placement> PlanPlacement(const RunState& run,
                                       const PlanWeights& weights = CountedPresses);

/// How often to turn the tile in hand to the right, 0 to 3, so that it lies as with `rotation`.
std::int32_t TurnsToRotation(const RunState& run, std::int32_t rotation);

/// The commands that make a placement, for ApplyRunCommand: cursor moves, turns, and the key that
/// puts the tile down.
std::vector<std::uint32_t> PressesFor(const RunState& run, const Placement& placement);

} // namespace Wirefall
