#pragma once

// The one live run of the program and the module-level state beside it. The run is built before
// main, so that a board exists from the first moment, but it counts as not initialised until
// ResetRun or a loaded save has filled it; every public entry of the simulation sees to that first.
// The main thread alone touches it.

#include "sim/RunState.h"

#include <cstdint>
#include <vector>

namespace Wirefall {

/// Lists that a tick needs for its own work, kept so that a tick allocates nothing. What is in them
/// means nothing outside the tick.
struct TickScratch {
    struct CellCount {
        std::int32_t Total = 0;
        std::int32_t Vertical = 0;
        std::int32_t Horizontal = 0;
    };
    std::vector<CellCount> CellCounts;
    std::vector<Tile*> SpreadTargets;
};

struct Simulation {
    Simulation() { ConstructRunState(Run); }

    RunState Run;
    std::uint64_t AccumulatorMs = 0; ///< Milliseconds waiting to become steps; saved.
    std::uint64_t Revision = 0; ///< Grows by one at every change worth saving or showing; saved.
    bool RunInitialised = false;
    TickScratch Scratch;
};

/// The module's state as it is. Everybody but the simulation itself, the loader and tests wants
/// LiveRun instead.
Simulation& LiveSimulation();

/// The live run, after a ResetRun if none has been started or loaded yet.
RunState& LiveRun();

/// Starts a new run at level 1. Revision goes on growing; AccumulatorMs starts at 0.
void ResetRun();

/// The counter that tells whether the run has changed since it was last looked at.
std::uint64_t GetRevision();

/// Tells the simulation whether fast forward is held. Ignored while no run is initialised.
void SetFastForward(bool held);

} // namespace Wirefall
