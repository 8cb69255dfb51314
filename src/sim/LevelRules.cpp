#include "sim/LevelRules.h"

#include "sim/Arithmetic.h"
#include "sim/LevelGeneration.h"
#include "sim/Scoring.h"
#include "sim/Virus.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>

namespace Wirefall {

namespace {

constexpr std::int32_t TargetRise = 10;

// What each level multiplies a setting with, and how low it can get.
struct RampRow {
    std::int32_t RunState::*Field;
    float Factor;
    std::int32_t Floor;
};

constexpr std::array<RampRow, 4> Ramp = {{
    {&RunState::SpawnIntervalTicks, 0.95F, 5},
    {&RunState::VirusSpreadIntervalTicks, 0.95F, 3},
    {&RunState::PacketGraceTicks, 0.92F, 8},
    {&RunState::VirusGraceTicks, 0.95F, 16},
}};

// The settings of the next level and the ratios are reckoned in single precision. Hardware that
// keeps more digits in between would come to other levels.
static_assert(FLT_EVAL_METHOD == 0);

constexpr float InfectionWarning = 0.18F;
constexpr float InfectionDanger = 0.34F;
constexpr float FailureDanger = 0.45F;

std::uint8_t DangerLevelOf(const RunSnapshot& snapshot) {
    if (snapshot.GameOver) {
        return 3;
    }
    if (snapshot.InfectionRatio >= InfectionDanger || snapshot.FailureRatio >= FailureDanger) {
        return 2;
    }
    return snapshot.InfectionRatio >= InfectionWarning ? 1 : 0;
}

float ClampedShare(std::int64_t count, std::int32_t whole) {
    return std::clamp(static_cast<float>(count) / static_cast<float>(whole), 0.0F, 1.0F);
}

} // namespace

std::int64_t FailureCount(const RunState& run) {
    return WideSum(run.CorruptedPackets, run.LostPackets);
}

float FailureRatio(const RunState& run) {
    return run.FailureThreshold < 1 ? 0.0F : ClampedShare(FailureCount(run), run.FailureThreshold);
}

float FailureBarFraction(const RunState& run) {
    return ClampedShare(FailureCount(run), std::max(run.FailureThreshold, 1));
}

RunSnapshot SnapshotOf(const RunState& run) {
    RunSnapshot snapshot;
    snapshot.TotalScore = run.TotalScore;
    snapshot.Level = run.Level;
    snapshot.LevelTargetPackets = run.LevelTargetPackets;
    snapshot.FailureThreshold = run.FailureThreshold;
    snapshot.LostPackets = run.LostPackets;
    snapshot.CorruptedPackets = run.CorruptedPackets;
    snapshot.DeliveredPackets = run.DeliveredPackets;
    snapshot.InfectionRatio = InfectionRatio(run);
    snapshot.FailureRatio = FailureRatio(run);
    snapshot.GameOver = run.GameOver;
    snapshot.DangerLevel = DangerLevelOf(snapshot);
    return snapshot;
}

bool IsLevelComplete(const RunState& run) {
    return !run.GameOver && run.DeliveredPackets >= run.LevelTargetPackets;
}

void StartNextLevel(RunState& run) {
    run.LevelTargetPackets = WrappingAdd(run.LevelTargetPackets, TargetRise);
    run.TotalScore = WrappingAdd(run.TotalScore, ScoreLevelClear);
    run.Level = WrappingAdd(run.Level, 1);
    for (const RampRow& row : Ramp) {
        const float scaled = std::floor(static_cast<float>(run.*row.Field) * row.Factor);
        run.*row.Field = std::max(static_cast<std::int32_t>(scaled), row.Floor);
    }
    GenerateLevel(run);
}

} // namespace Wirefall
