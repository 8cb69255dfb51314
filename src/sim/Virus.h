#pragma once

// How the virus spreads from cell to cell, and how much of the board it holds. (How packets carry
// it is part of the packet tick.)

#include "sim/RunState.h"
#include "sim/TickScratch.h"

namespace Wirefall {

/// One active tick of the virus. Every VirusSpreadIntervalTicks of them it takes one step along the
/// mutual connections of the tiles, all at once, so it reaches only the neighbours of the cells
/// that were infected before. A Firewall neither takes nor gives it.
void StepVirus(RunState& run, TickScratch& scratch);

/// The share of the live tiles that are infected, 0 to 1. A tile is live when it has an exit or is
/// a source or a sink; Firewalls count. 0 when no tile is live.
float InfectionRatio(const RunState& run);

} // namespace Wirefall
