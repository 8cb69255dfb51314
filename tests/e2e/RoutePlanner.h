#pragma once

// A player that thinks: where to put the tile in hand, so that packets get from the source to the
// sink. It looks at the board and the queue only, never at what a person could not see.

#include "sim/LevelGeneration.h"
#include "sim/RunState.h"

#include <cstdint>
#include <optional>

namespace Wirefall::Testing {

struct Placement {
    Cell Where;
    std::int32_t Rotation = 0;
};

/// Whether a packet that spawns now would be delivered if nothing on the board changed.
bool DeliversCleanly(const RunState& run);

/// Where the tile in hand does most for the cheapest route: on the route where it fits, or out of
/// the way. Nothing when no clean route can be built.
std::optional<Placement> PlanPlacement(const RunState& run);

/// How often to turn the tile in hand to the right, 0 to 3, so that it lies as with `rotation`.
std::int32_t TurnsToRotation(const RunState& run, std::int32_t rotation);

} // namespace Wirefall::Testing
