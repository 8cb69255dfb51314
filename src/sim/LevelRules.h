#pragma once

// The rules of a run above the single packet: when a level is done, what the next one is like, how
// near the run is to failing, and the status record that everything outside the simulation reads.

#include "sim/RunState.h"

#include <cstdint>

namespace Wirefall {

/// What the outside world needs to know of the run, at one moment.
struct RunSnapshot {
    std::int32_t TotalScore = 0;
    std::int32_t Level = 1;
    std::int32_t LevelTargetPackets = 0;
    std::int32_t FailureThreshold = 0;
    std::int32_t LostPackets = 0;
    std::int32_t CorruptedPackets = 0;
    std::int32_t DeliveredPackets = 0;
    float InfectionRatio = 0.0F; ///< Share of the live tiles infected, 0 to 1.
    float FailureRatio = 0.0F;   ///< How far the run is toward failure, 0 to 1.
    bool GameOver = false;
    std::uint8_t DangerLevel = 0; ///< 0 calm, 1 infection, 2 danger, 3 over.

    bool operator==(const RunSnapshot&) const = default;
};

/// The last status taken from the live run.
struct RunStatus {
    RunSnapshot PreviousSnapshot;       ///< If PreviousSnapshotValid.
    bool PreviousSnapshotValid = false; ///< False before the first.

    bool operator==(const RunStatus&) const = default;
};

/// Lost and corrupted packets together, which is what fails a run.
std::int64_t FailureCount(const RunState& run);

// How far a run is toward failure, limited to 0 to 1, in two forms that differ only for a threshold
// below 1, which a damaged save may hold: no such run is in danger, but its bar is full at the
// first failure.

/// FailureCount / FailureThreshold; 0 for a threshold below 1. The danger and its music go by this.
float FailureRatio(const RunState& run);

/// The same with the threshold raised to 1. The bar of the HUD shows this.
float FailureBarFraction(const RunState& run);

RunSnapshot SnapshotOf(const RunState& run);

/// Whether the run has reached its level's target. False after game over.
bool IsLevelComplete(const RunState& run);

/// Takes a run whose level is complete to the next level: bonus, harder settings, a fresh board.
void StartNextLevel(RunState& run);

} // namespace Wirefall
