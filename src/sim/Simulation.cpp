#include "sim/Simulation.h"

#include "sim/PacketTick.h"
#include "sim/RunCommands.h"

#include <algorithm>
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
    simulation.AccumulatorMs += std::min(deltaMs, MaxFrameMs);
    std::uint64_t moves = 0;
    for (int step = 0;
         simulation.AccumulatorMs >= StepMs && step < MaxStepsPerCall && moves < MaxMovesPerCall;
         ++step) {
        if (LevelIsOver(run)) {
            simulation.AccumulatorMs %= StepMs;
            return;
        }
        const int ticks = run.FastForward ? FastForwardTicks : 1;
        for (int tick = 0; tick < ticks && !LevelIsOver(run); ++tick) {
            moves += run.Packets.size();
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
