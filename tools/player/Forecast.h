#pragma once

// What will become of the packets on a board. A forecast runs the ticks of the game itself on a
// copy of what a person can see of the run.

#include "player/Route.h"
#include "sim/RunState.h"

#include <cstdint>

namespace Wirefall {

/// The run without its random engine, score and counters, and without an end. Copies of it are
/// cheap, and nothing that is done with them can look into the future of the queue.
RunState VisibleRun(const RunState& run);

/// Whether a packet that spawns now would be delivered if nothing on the board changed.
bool DeliversCleanly(const RunState& run);

/// How many packets are lost or corrupted in the next `ticks` if nobody touches the board.
std::int32_t ForecastStrikes(const RunState& run, int ticks);

/// The cells of the way on which an Antivirus has to lie when a packet comes: those that are
/// infected, and those beside an infected source or sink.
CellSet CureCells(const RunState& run, const Route& way);

/// Those of the CureCells of a way that is ready otherwise that had better be kept shut for a
/// while, because fewer packets come to harm then. An Antivirus cures nothing until a packet enters
/// it, and lets the virus out until then.
CellSet CellsToKeepShut(const RunState& run, const Route& way);

} // namespace Wirefall
