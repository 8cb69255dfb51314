#pragma once

// What is to be heard in this frame. The screens queue the sounds of presses, DetectGameSounds
// those of the simulation; the audio engine plays the queue and empties it.

#include "audio/SoundEvent.h"
#include "base/Slices.h"
#include "sim/LevelRules.h"

#include <array>
#include <cstddef>

namespace Wirefall {

/// How many events one frame can queue; more are dropped.
inline constexpr std::size_t SoundQueueCapacity = 64;

struct QueuedSounds {
    std::array<SoundEvent, SoundQueueCapacity> SoundQueue{};
    std::size_t SoundQueueCount = 0;

    bool operator==(const QueuedSounds&) const = default;
};

/// Queues one effect. Dropped without a word when the queue is full.
void EnqueueSound(QueuedSounds& sounds, SoundEvent event);

/// Queues what has happened in the run between PreviousSnapshot, which must be valid, and
/// `snapshot`: deliveries and losses up to three times each, corruptions up to twice, a spread of
/// the virus and the end of the run once. Nothing at all when one of the three counts has fallen,
/// which means that a new level or run has begun.
void DetectGameSounds(SlicesOf<QueuedSounds, const RunStatus> game, const RunSnapshot& snapshot);

} // namespace Wirefall
