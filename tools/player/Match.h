#pragma once

// Whole runs of the player, and what is worth knowing about them afterwards.

#include "player/Player.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace Wirefall {

/// What can happen to a packet that counts against the run.
enum class StrikeKind : std::uint8_t {
    Corrupted,     ///< It has caught the virus.
    LostCorrupted, ///< Lost afterwards, at the sink or before.
    LostUnbuilt,   ///< Lost clean, while nothing led from the source to the sink.
    LostOnWay,     ///< Lost clean although a way did: collided, or thrown off by a new tile.
};

inline constexpr std::size_t StrikeKindCount = 4;

/// The numbers of one level.
struct LevelFigures {
    std::int32_t Level = 0;
    std::uint64_t Ticks = 0;
    std::uint64_t TicksToFirstDelivery = 0; ///< 0 when there was none.
    std::int32_t Deliveries = 0;
    std::array<std::int32_t, StrikeKindCount> Strikes{};
    std::int32_t Presses = 0;
    std::int32_t Placements = 0;
    float MeanInfection = 0.0F; ///< Over the ticks, of the share of live tiles infected.
    float PeakInfection = 0.0F;
    bool Completed = false;
};

struct LevelReport : LevelFigures {
    /// The share of live tiles infected at the end of each second.
    std::vector<float> InfectionBySecond;
};

enum class RunEnd : std::uint8_t {
    Failed,    ///< Game over.
    LastLevel, ///< The level that was asked for is complete.
    TimeLimit, ///< A level went on for longer than any should.
};

std::string_view RunEndName(RunEnd end);

struct RunReport {
    std::uint32_t Seed = 0;
    RunEnd End = RunEnd::Failed;
    std::int32_t Score = 0;
    std::vector<LevelReport> Levels;

    std::int32_t LevelReached() const { return Levels.empty() ? 0 : Levels.back().Level; }
};

struct MatchSettings {
    std::uint32_t Seed = DefaultSeed;
    PlayStyle Style;
    /// The levels before this one are complete by decree.
    std::int32_t FirstLevel = 1;
    std::int32_t LastLevel = 120;
};

/// Makes the live run a new one whose engine starts from `seed`. With DefaultSeed it is the run
/// that the game itself starts; any other is one that only a loaded save can bring. The board of
/// the first level is made anew from the seeded engine.
void StartSeededRun(std::uint32_t seed);

/// Makes the live run's target reached, as if the packets had been delivered.
void CompleteByDecree();

/// Who wants to see all that is done to the live run.
struct MatchObserver {
    std::function<void(std::uint32_t code)> OnPress;
    std::function<void()> OnStep;  ///< After each step of StepMs.
    std::function<void()> OnLevel; ///< After each step to a next level.
};

/// Plays the live run from its start to its end.
RunReport PlayMatch(const MatchSettings& settings, const MatchObserver& observer = {});

} // namespace Wirefall
