#pragma once

// Arithmetic on the counters of a run. A damaged save can hold any 32-bit value in them, so nothing
// here may overflow: additions wrap around as two's complement does, and comparisons of sums are
// made in 64 bits.

#include <cstdint>

namespace Wirefall {

/// a + b, wrapping around at the ends of the 32-bit range.
constexpr std::int32_t WrappingAdd(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// a + b, which always fits.
constexpr std::int64_t WideSum(std::int32_t a, std::int32_t b) { return std::int64_t{a} + b; }

} // namespace Wirefall
