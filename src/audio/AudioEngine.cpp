#include "audio/AudioEngine.h"

#include "audio/MusicPatterns.h"
#include "audio/MusicPlayer.h"
#include "audio/SoundEffects.h"
#include "base/Clock.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_timer.h>

#include <algorithm>

namespace Wirefall {

namespace {

constexpr SDL_AudioSpec DeviceFormat = {SDL_AUDIO_S16LE, 2, 44100};

// How much longer than its length a fade may take before it is given up.
constexpr std::uint64_t FadeOutGraceMs = 250;

bool OpenMixer(MusicRuntime& music) {
    if (!MIX_Init()) {
        SDL_Log("MIX_Init failed: %s", SDL_GetError());
        return false;
    }
    music.Mixer.reset(MIX_CreateMixerDevice(SDL_AUDIO_DEVICE_DEFAULT_PLAYBACK, &DeviceFormat));
    if (!music.Mixer) {
        SDL_Log("MIX_CreateMixerDevice failed: %s", SDL_GetError());
        MIX_Quit();
        return false;
    }
    return true;
}

bool MakeMusicTrack(const AudioSettings& settings, MusicRuntime& music) {
    music.MusicTrack = MIX_CreateTrack(music.Mixer.get());
    if (music.MusicTrack == nullptr) {
        SDL_Log("MIX_CreateTrack failed: %s", SDL_GetError());
        return false;
    }
    if (!MIX_TagTrack(music.MusicTrack, "music")) {
        SDL_Log("MIX_TagTrack failed: %s", SDL_GetError());
    }
    music.MusicGainPercent = MusicGainFromOptions(settings);
    music.MusicGainReference = &music.MusicGainPercent;
    if (!ApplyMusicGain(music)) {
        SDL_Log("MIX_SetTrackGain failed: %s", SDL_GetError());
        return false;
    }
    return true;
}

// The delays are counted too, so that a clock that stands still cannot hold up the end.
void FadeMusicOut(const MusicRuntime& music) {
    if (!MIX_TrackPlaying(music.MusicTrack)) {
        return;
    }
    const std::int64_t frames = MIX_TrackMSToFrames(music.MusicTrack, music.FadeOutMs);
    MIX_StopTrack(music.MusicTrack, std::max<std::int64_t>(frames, 0));
    if (music.FadeOutMs <= 0) {
        return;
    }
    const std::uint64_t limit = static_cast<std::uint64_t>(music.FadeOutMs) + FadeOutGraceMs;
    const std::uint64_t start = ClockMs();
    for (std::uint64_t delays = 0;
         delays < limit && ClockMs() - start < limit && MIX_TrackPlaying(music.MusicTrack);
         ++delays) {
        SDL_Delay(1);
    }
}

} // namespace

bool InitAudio(const AudioSettings& settings, MusicRuntime& music) {
    if (!OpenMixer(music)) {
        return false;
    }
    if (!MakeMusicTrack(settings, music)) {
        ShutdownAudio(music, false);
        return false;
    }
    LoadSfx(music);
    music.SfxGainPercent = SfxGainFromOptions(settings);
    SetSfxTrackGains(music, VolumeToGain(music.SfxGainPercent));
    LoadMusic(music);
    music.Ready = true;
    return true;
}

void ShutdownAudio(MusicRuntime& music, bool fadeOut) {
    const bool started = music.Ready || music.Mixer || music.MusicTrack != nullptr;
    if (fadeOut && music.MusicTrack != nullptr) {
        FadeMusicOut(music);
    }
    music.RequestedPattern = nullptr;
    music.Patterns.clear();
    UnloadSfx(music);
    music.MusicTrack = nullptr;
    music.Mixer.reset();
    if (started) {
        MIX_Quit();
    }
    music.Ready = false;
}

} // namespace Wirefall
