#include "sim/Simulation.h"

#include "sim/PacketTick.h"
#include "sim/RunCommands.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Wirefall {

namespace {

Simulation TheSimulation;

bool LevelIsOver(const RunState& run) {
    return run.GameOver || run.DeliveredPackets >= run.LevelTargetPackets;
}

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

void AdvanceSimulation(std::uint64_t deltaMs) {
    RunState& run = LiveRun();
    Simulation& simulation = TheSimulation;
    // Up against the end of the range, where only a damaged save can put it, it stops growing.
    const std::uint64_t room = std::numeric_limits<std::uint64_t>::max() - simulation.AccumulatorMs;
    simulation.AccumulatorMs += std::min({deltaMs, MaxFrameMs, room});
    for (int step = 0; simulation.AccumulatorMs >= StepMs && step < MaxStepsPerCall; ++step) {
        const int ticks = run.FastForward && !run.GameOver ? FastForwardTicks : 1;
        for (int tick = 0; tick < ticks && !LevelIsOver(run); ++tick) {
            RunTick(run, simulation.Scratch);
            ++simulation.Revision;
        }
        simulation.AccumulatorMs -= StepMs;
    }
}

void ApplyRunCommand(std::uint32_t code) {
    if (ApplyCommand(LiveRun(), code)) {
        ++TheSimulation.Revision;
    }
}

bool IsLevelComplete() { return IsLevelComplete(LiveRun()); }

void AdvanceLevel() {
    RunState& run = LiveRun();
    if (!IsLevelComplete(run)) {
        return;
    }
    StartNextLevel(run);
    ++TheSimulation.Revision;
    TheSimulation.AccumulatorMs = 0;
}

float FailureRatio() { return FailureRatio(LiveRun()); }

RunSnapshot BuildRunSnapshot() { return SnapshotOf(LiveRun()); }

void CaptureRunSnapshot(RunStatus& status) {
    status.PreviousSnapshot = BuildRunSnapshot();
    status.PreviousSnapshotValid = true;
}

} // namespace Wirefall
