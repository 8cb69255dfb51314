#pragma once

// Runs as numbers, so that whole games can be compared tick by tick, with those of another process
// or with what was recorded once. Whether fast forward is held counts in none of them.

#include "sim/RunState.h"

#include <cstdint>

namespace Wirefall::Testing {

/// Over everything that playing changes.
std::uint64_t PlayChecksum(const RunState& run);

/// Over everything that a save keeps of the run.
std::uint64_t RunChecksum(const RunState& run);

} // namespace Wirefall::Testing
