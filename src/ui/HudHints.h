#pragma once

// The lines that tell how to play with the device in hand. The frame loop works them out each frame
// of play; the HUD shows them.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace Wirefall {

/// In this order: move, rotate, place, fast forward, menu.
inline constexpr std::size_t HudHintCount = 5;

/// Keeps the five lines for the HUD. An empty one is replaced by its default.
void StoreHudHintLines(std::string_view move, std::string_view rotate, std::string_view place,
                       std::string_view fastForward, std::string_view menu);

/// What was stored last; the defaults before that.
const std::array<std::string, HudHintCount>& HudHintLines();

} // namespace Wirefall
