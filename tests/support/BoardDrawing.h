#pragma once

// Boards for tests, drawn with characters, so that a test shows the pipes that it is about.

#include "sim/RunState.h"

#include <array>
#include <string_view>
#include <vector>

namespace Wirefall::Testing {

/// Clockwise from the top.
inline constexpr std::array<Direction, 4> AllDirections = {Direction::Up, Direction::Right,
                                                           Direction::Down, Direction::Left};

/// A run on the drawn board: one character a cell, cells and rows that are not drawn are empty, and
/// counters as in a new run but with both graces over and no spawn due.
///
///     .              empty
///     │ ─            Straight
///     └ ┌ ┐ ┘        Corner
///     ├ ┬ ┤ ┴        TJunction
///     ┼              Cross
///     F A            Firewall, Antivirus
///     B b            Buffer, upright and lying
///     ↑ → ↓ ←        a source with that Dir
///     ⇑ ⇒ ⇓ ⇐        a sink with that Dir
RunState DrawnRun(const std::vector<std::string_view>& rows);

/// Lays the drawn tiles on a run whose board stands already; cells that are not drawn stay, and so
/// does everything else of the run.
void LayTiles(RunState& run, const std::vector<std::string_view>& rows);

/// A clean packet.
Packet PacketAt(std::int32_t x, std::int32_t y, Direction dir);

/// Puts `run` in the place of the live run, initialised, with an empty accumulator.
void InstallLiveRun(const RunState& run);

} // namespace Wirefall::Testing
