#pragma once

// What makes a piece of dry voices: an echo, a reverb and a tilt of the whole. They run around the
// loop until what comes in at the seam is what goes out there, so that the wet sound is as seamless
// as the dry.

#include "music/Score.h"
#include "music/Sound.h"

namespace Wirefall::Music {

/// Adds the repeats of `send` to `out`, by turns left and right.
void AddEcho(const Score& score, const Sound& send, Sound& out);

/// Adds the room around `send` to `out`.
void AddReverb(const Score& score, const Sound& send, Sound& out);

/// Makes the whole brighter or darker: a slope around one frequency, which keeps its level.
void Tilt(const Score& score, Sound& mix);

/// Where the score asks for it, lets the end fade away and keeps the first moments silent, so that
/// the music can go over into another piece there without a step.
void Breathe(const Score& score, Sound& mix);

} // namespace Wirefall::Music
