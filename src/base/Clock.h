#pragma once

// The one clock of the program. Everything that asks for the time asks here, so that a test can
// freeze it and step it.

#include <cstdint>

namespace Wirefall {

/// Milliseconds since SDL started, or what the frozen clock shows.
std::uint64_t ClockMs();

/// Stops the clock at `ms` until the next call of this or of ResumeClock. For tests.
void FreezeClock(std::uint64_t ms);

void ResumeClock();

} // namespace Wirefall
