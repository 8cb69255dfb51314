#pragma once

// The heart of the game: time becomes ticks, and a tick spawns, moves, routes and collides the
// packets, checks for failure and spreads the virus. A packet stands on a cell, and its Dir tells
// by which exit it will leave; a tick takes it across into the neighbour and settles there where it
// goes next. Given a RunState everything is determined; only the choice of a source is drawn.

#include "sim/RunState.h"
#include "sim/Simulation.h"

#include <cstdint>

namespace Wirefall {

inline constexpr std::uint64_t StepMs = 125;
/// The most time that one frame can feed in, so that the game slows down after a stall.
inline constexpr std::uint64_t MaxFrameMs = 250;
/// The most steps that one call runs. Play never has more than two waiting; only a damaged save
/// can, and it must not freeze the frame.
inline constexpr int MaxStepsPerCall = 1000;
inline constexpr int FastForwardTicks = 3;

inline constexpr std::int32_t ScoreDelivered = 10;
inline constexpr std::int32_t ScoreCorrupted = -10;
inline constexpr std::int32_t ScoreLost = -5;

/// Feeds the time of one frame to the live run and runs the steps that are due: one tick each, or
/// three with fast forward held. Ticks stop at game over and when the level's target is reached,
/// but their steps are used up all the same.
void AdvanceSimulation(std::uint64_t deltaMs);

/// One tick of a run. Revision is the caller's.
void RunTick(RunState& run, TickScratch& scratch);

} // namespace Wirefall
