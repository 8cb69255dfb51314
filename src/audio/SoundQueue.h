#pragma once

// What is to be heard in this frame. The screens queue the sounds of presses, DetectGameSounds
// those of the simulation; the audio engine plays the queue and empties it.

#include "audio/SoundEvent.h"
#include "sim/LevelRules.h"

namespace Wirefall {

struct GameApp;

/// Queues one effect. Dropped without a word when the queue is full.
void EnqueueSound(GameApp& app, SoundEvent event);

/// Queues what has happened in the run between app.PreviousSnapshot, which must be valid, and
/// `snapshot`: deliveries and losses up to three times each, corruptions up to twice, a spread of
/// the virus and the end of the run once. Nothing at all when one of the three counts has fallen,
/// which means that a new level or run has begun.
void DetectGameSounds(GameApp& app, const RunSnapshot& snapshot);

} // namespace Wirefall
