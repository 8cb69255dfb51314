#pragma once

// Which shape a resolution has. A resolution belongs to a family, such as 16:9, when it is within
// about half a percent of it, since many displays only come near their nominal ratio. The family
// decides whether the player is offered the resolution, and how wide the logical canvas is.

#include "display/DisplayTypes.h"

#include <cstdint>

namespace Wirefall {

/// Whether width:height is a:b, for positive a and b, within 1 part in 200. A width or height below
/// 1 matches nothing; every other pair of 32-bit values, however large, gets a true answer.
bool AspectMatches(std::int32_t width, std::int32_t height, std::int32_t a, std::int32_t b);

/// Whether the resolution is one of those sold as 21:9, none of which is exactly that.
bool IsUltrawide(std::int32_t width, std::int32_t height);

/// Whether a resolution of this shape is offered in this aspect mode.
bool IsResolutionAllowed(AspectMode aspectMode, std::int32_t width, std::int32_t height);

/// Sets LogicalWidth to what suits the resolution. One that no family fits gets the width of 16:9.
void UpdateLogicalWidth(AspectMode aspectMode, std::int32_t width, std::int32_t height);

} // namespace Wirefall
