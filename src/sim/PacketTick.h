#pragma once

// The heart of the game: a tick spawns, moves, routes and collides the packets, checks for failure
// and spreads the virus. A packet stands on a cell, and its Dir tells
// by which exit it will leave; a tick takes it across into the neighbour and settles there where it
// goes next. Given a RunState everything is determined; only the choice of a source is drawn.

#include "sim/RunState.h"
#include "sim/TickScratch.h"

namespace Wirefall {

/// One tick of a run. Revision is the caller's.
void RunTick(RunState& run, TickScratch& scratch);

} // namespace Wirefall
