#pragma once

// The logical canvas: everything is drawn in its coordinates, origin at the top left, and SDL
// letterboxes it into the window. Its height is fixed; its width follows the aspect of the chosen
// resolution.

#include <cstdint>

namespace Wirefall {

/// 960, 1080, 1152, 1280, 1728 or 2560.
extern std::int32_t LogicalWidth;

inline constexpr std::int32_t LogicalHeight = 720;

} // namespace Wirefall
