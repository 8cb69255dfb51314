#pragma once

// The frame of the screens that have the canvas to themselves: their panels leave a margin on every
// side.

#include "display/LogicalCanvas.h"

#include <algorithm>

namespace Wirefall::Page {

inline constexpr float X = 56.0F;
inline constexpr float Top = 42.0F;
inline constexpr float Bottom = static_cast<float>(LogicalHeight) - Top;
inline constexpr float Height = Bottom - Top;

/// The width on a canvas of that width.
constexpr float WidthOn(float canvasWidth) { return std::max(120.0F, canvasWidth - 2.0F * X); }

} // namespace Wirefall::Page
