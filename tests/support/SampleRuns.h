#pragma once

// Runs that have been played for a while, so that every member of a save holds something of its
// own.

#include "persist/SaveDocument.h"
#include "sim/MersenneTwister.h"
#include "sim/RunState.h"

#include <cstddef>
#include <cstdint>

namespace Wirefall::Testing {

/// Plays the live run as somebody would who presses keys at random. Now and then a level is
/// complete by decree, because random keys do not get that far, and the next one follows.
class RandomPlayer {
public:
    explicit RandomPlayer(std::uint32_t seed);
    /// Perhaps a command, then one tick.
    void PlayTick();

private:
    MersenneTwister Engine;
    int Ticks = 0;
};

/// Makes the live run one of that level, played for `ticks`, that random play does not end.
void StartSampleRun(std::int32_t level, std::uint32_t seed, int ticks);

inline constexpr std::size_t HeavyListElements = 1000;

/// A save that is let in and asks for much work: that many sources, sinks and packets, on a board
/// of infected crosses, in a level without an end, with steps waiting for centuries.
SaveDocument HeaviestDocument();

/// What loading makes of the tiles of a run that is valid otherwise: a Firewall is never infected,
/// and the marks of spent tiles are gone.
RunState Normalised(RunState run);

} // namespace Wirefall::Testing
