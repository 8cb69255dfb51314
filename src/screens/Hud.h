#pragma once

// The panel at the right of the play screen: the queue of tiles, the status of the level, and the
// commands with the keys of the device in hand.

#include "draw/Color.h"
#include "draw/Metrics.h"
#include "screens/BoardLayout.h"
#include "screens/HudLayout.h"

#include <SDL3/SDL_render.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall {

/// Draws the panel for the live run and the hint lines stored last.
void DrawHud(SDL_Renderer* renderer, const BoardLayout& layout, const UiMetrics& metrics);

/// What the parts of the panel are drawn with.
struct HudContext {
    SDL_Renderer* Renderer;
    const HudLayout& Layout;
};

/// One row of the commands box: icon, label, and the keys below it in `valueColor`. `row` counts
/// from 0.
void DrawCommandRow(const HudContext& context, std::int32_t sprite, std::int32_t row,
                    std::string_view label, std::string_view value, PackedColor valueColor);

/// The text of a counter, centred in the chip whose top left corner is (x, y), at `wantedScale` or
/// as much smaller as it takes.
void DrawChipText(const HudContext& context, std::string_view text, float x, float y,
                  PackedColor color, std::int32_t wantedScale);

/// The keys of a command in at most two lines of that width (in bytes), broken after a blank or one
/// of + - / | where there is one; what does not fit two lines is cut with dots. Never empty.
std::vector<std::string> SplitCommandValue(std::string_view value, float maxWidth,
                                           std::int32_t scale);

} // namespace Wirefall
