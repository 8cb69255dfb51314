#pragma once

#include <cstdint>

namespace Wirefall {

/// Without vertical sync frames begin at least this far apart.
inline constexpr std::uint64_t MinFrameMs = 8;

/// How long to wait at the end of a frame that has taken `elapsedMs` so far, in milliseconds. The
/// renderer's own wait is the only one while vertical sync is active.
constexpr std::uint64_t PaceDelayMs(bool vsyncActive, std::uint64_t elapsedMs) {
    return vsyncActive || elapsedMs >= MinFrameMs ? 0 : MinFrameMs - elapsedMs;
}

} // namespace Wirefall
