#include "sim/Simulation.h"

#include <utility>

namespace Wirefall {

namespace {

Simulation TheSimulation;

} // namespace

Simulation& LiveSimulation() { return TheSimulation; }

RunState& LiveRun() {
    if (!TheSimulation.RunInitialised) {
        ResetRun();
    }
    return TheSimulation.Run;
}

void ResetRun() {
    RunState fresh;
    ConstructRunState(fresh);
    TheSimulation.Run = std::move(fresh);
    TheSimulation.RunInitialised = true;
    ++TheSimulation.Revision;
    TheSimulation.AccumulatorMs = 0;
}

std::uint64_t GetRevision() {
    LiveRun();
    return TheSimulation.Revision;
}

void SetFastForward(bool held) {
    if (TheSimulation.RunInitialised) {
        TheSimulation.Run.FastForward = held;
    }
}

} // namespace Wirefall
