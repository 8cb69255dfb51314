#include "base/Clock.h"

#include <SDL3/SDL_timer.h>

#include <optional>

namespace Wirefall {

namespace {

std::optional<std::uint64_t> FrozenAt;

} // namespace

std::uint64_t ClockMs() { return FrozenAt ? *FrozenAt : SDL_GetTicks(); }

void FreezeClock(std::uint64_t ms) { FrozenAt = ms; }

void ResumeClock() { FrozenAt.reset(); }

} // namespace Wirefall
