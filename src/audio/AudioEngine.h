#pragma once

// The audio engine: started once before the first frame, asked once a frame to follow the game, and
// stopped after the last. The game runs on without a sound where it cannot start.

#include "persist/GameOptions.h"

namespace Wirefall {

struct GameApp;

/// The engine's record, owned by the game for the life of the process.
struct MusicRuntime {
    bool Ready = false; ///< The engine has started.
};

/// Starts the engine. False when there is none to be had; the game goes on silent then.
bool InitAudio(const GameOptions& options, MusicRuntime& music);

/// Stops the engine, after a fade of the music if `fadeOut`.
void ShutdownAudio(MusicRuntime& music, bool fadeOut);

/// Moves the music and the volumes towards what the game situation and the options want.
void UpdateMusic(const GameApp& app, MusicRuntime& music);

/// Plays the queued effects and empties the queue. Without an engine they are discarded, not kept.
void DrainSoundQueue(GameApp& app, MusicRuntime& music);

} // namespace Wirefall
