#pragma once

// What a screen shows, pixel by pixel.

#include "support/SoftwareCanvas.h"

#include <cstddef>
#include <cstdint>

namespace Wirefall::Testing {

using Screenshot = Picture;

inline bool Holds(const Screenshot& picture, std::int32_t x, std::int32_t y) {
    return x >= 0 && y >= 0 && x < picture.Width && y < picture.Height;
}

/// How many pixels of two pictures of one size are not the same. Throws std::invalid_argument for
/// different sizes.
std::size_t CountDifferences(const Screenshot& a, const Screenshot& b);

} // namespace Wirefall::Testing
