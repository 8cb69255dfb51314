#pragma once

// What the player does on the board: move the cursor, turn the tile in hand, put it down. Commands
// are named by the key that gives them in the game's default layout, so that the screens above pass
// on one vocabulary of numbers.

#include "sim/RunState.h"

#include <cstdint>

namespace Wirefall {

/// Applies a command to a run, between ticks, and returns whether it has changed the run. `code` is
/// a USB HID keyboard usage (equal to the SDL scancode of the key); a code that is no command does
/// nothing, and after game over none does anything. A tile can be put on every cell in bounds but a
/// source or a sink; the cell keeps its infection, and the queue moves up by one with one draw from
/// the run's engine.
bool ApplyCommand(RunState& run, std::uint32_t code);

} // namespace Wirefall
