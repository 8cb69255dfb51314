#pragma once

// The start and the end of the audio engine. It is started once, before the first frame, and
// stopped after the last; in between MusicPlayer.h moves the music once a frame and SoundEffects.h
// plays what SoundQueue.h has gathered. Where it cannot start the game runs on without a sound.

#include "audio/MusicRuntime.h"
#include "audio/Volumes.h"

namespace Wirefall {

/// Starts the engine: the mixer, the effects and the music, none of it playing yet. False, logged
/// and with nothing left behind, when there is no device, no music track or no gain to be had;
/// everything else that fails is logged and missing. `music` must be as new or shut down.
bool InitAudio(const AudioSettings& settings, MusicRuntime& music);

/// Takes everything down, whatever of it is up. With `fadeOut` music that plays fades away before,
/// which blocks for little longer than FadeOutMs.
void ShutdownAudio(MusicRuntime& music, bool fadeOut);

} // namespace Wirefall
