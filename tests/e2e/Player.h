#pragma once

// Plays the game by its picture and its keys until packets have been delivered. The player pauses
// to think, so neither a slow machine nor a slow player costs the run anything.

#include "e2e/GameSession.h"
#include "sim/RunState.h"

#include <cstdint>

namespace Wirefall::Testing {

/// On the play screen: builds a route, speeds the game up, and plays until that many packets have
/// been delivered; starts anew when a run goes wrong. Returns the run as it looks then, with the
/// game still on the play screen. Throws std::runtime_error when it does not come to that.
RunState PlayUntilDelivered(GameSession& game, std::int32_t packets);

} // namespace Wirefall::Testing
