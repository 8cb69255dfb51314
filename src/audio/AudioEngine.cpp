#include "audio/AudioEngine.h"

#include "app/GameApp.h"

namespace Wirefall {

// This build has effects to queue but no synthesiser and no music, so the engine never starts.

bool InitAudio(const GameOptions& /*options*/, MusicRuntime& music) { return music.Ready; }

void ShutdownAudio(MusicRuntime& music, bool /*fadeOut*/) { music.Ready = false; }

void UpdateMusic(const GameApp& /*app*/, MusicRuntime& /*music*/) {}

void DrainSoundQueue(GameApp& app, MusicRuntime& /*music*/) { app.SoundQueueCount = 0; }

} // namespace Wirefall
