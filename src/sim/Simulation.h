#pragma once

// The one live run of the program, and every door to it. The rules themselves work on any RunState
// and are told in LevelGeneration.h, PacketTick.h, Virus.h, LevelRules.h and RunCommands.h; here
// they meet the live run and its change counter.
//
// The run is built before main, so that a board exists from the first moment, but it counts as not
// initialised until ResetRun or a loaded save has filled it; every public entry sees to that first.
// The main thread alone touches it.

#include "sim/LevelRules.h"
#include "sim/RunState.h"
#include "sim/TickScratch.h"

#include <cstdint>

namespace Wirefall {

inline constexpr std::uint64_t StepMs = 125;
/// The most time that one frame can feed in, so that the game slows down after a stall.
inline constexpr std::uint64_t MaxFrameMs = 250;
/// The most steps and the most moves of packets after which one call ends. Play never has more than
/// two steps waiting and a handful of packets; only a damaged save can have more, and it must not
/// freeze the frame.
inline constexpr int MaxStepsPerCall = 1000;
inline constexpr std::uint64_t MaxMovesPerCall = 1000000;
inline constexpr int FastForwardTicks = 3;

struct Simulation {
    Simulation() { ConstructRunState(Run); }

    RunState Run;
    std::uint64_t AccumulatorMs = 0; ///< Milliseconds waiting to become steps; saved. Wraps around.
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

/// Feeds the time of one frame to the live run and runs the steps that are due: one tick each, or
/// three with fast forward held. Ticks stop at game over and when the level's target is reached,
/// but their steps are used up all the same, however many there are.
void AdvanceSimulation(std::uint64_t deltaMs);

/// Applies a command of RunCommands.h to the live run, between ticks.
void ApplyRunCommand(std::uint32_t code);

/// Whether the live run has reached its level's target. False after game over.
bool IsLevelComplete();

/// Takes a live run whose level is complete to the next level. Does nothing to any other run.
void AdvanceLevel();

/// FailureRatio of the live run.
float FailureRatio();

/// The live run's status.
RunSnapshot BuildRunSnapshot();

/// Takes the live run's present status as what the next one is compared with.
void CaptureRunSnapshot(RunStatus& status);

} // namespace Wirefall
