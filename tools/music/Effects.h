#pragma once

// What makes a room of dry voices: an echo and a reverb. Both run around the loop until what comes
// in at the seam is what goes out there, so that the wet sound is as seamless as the dry.

#include "music/Score.h"
#include "music/Sound.h"

namespace Wirefall::Music {

/// Adds the repeats of `send` to `out`, by turns left and right.
void AddEcho(const Score& score, const Sound& send, Sound& out);

/// Adds the room around `send` to `out`.
void AddReverb(const Score& score, const Sound& send, Sound& out);

} // namespace Wirefall::Music
