#include "audio/SoundEffects.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_properties.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Wirefall {

namespace {

constexpr int SfxTrackCount = 12;
constexpr float TwoPi = 6.2831855F;
constexpr std::int64_t MsPerSecond = 1000;

// How many frames the sound takes to rise and to fall: about 2 and 6 milliseconds.
int AttackFrames(int rate) { return rate >= 1000 ? rate / 500 : 1; }
int ReleaseFrames(int rate) { return rate >= 320 ? rate / 160 : 1; }

std::int64_t FrameCount(const SfxSpec& spec, int rate) {
    return rate * spec.DurationMs / MsPerSecond;
}

// Null when the effect cannot be synthesised in the mixer's format.
AudioHandle MakeSynthesizedAudio(MIX_Mixer* mixer, const SfxSpec& row) {
    SDL_AudioSpec format = {};
    if (mixer == nullptr || row.FrequencyHz <= 0 || row.DurationMs <= 0 ||
        !MIX_GetMixerFormat(mixer, &format) || format.freq <= 0 ||
        FrameCount(row, format.freq) < 1) {
        return nullptr;
    }
    format.format = SDL_AUDIO_F32;
    format.channels = std::max(format.channels, 1);
    const std::vector<float> samples = SynthesizeSfx(row, format.freq, format.channels);
    return AudioHandle(
        MIX_LoadRawAudio(mixer, samples.data(), samples.size() * sizeof(float), &format));
}

AudioHandle MakeAudio(MIX_Mixer* mixer, const SfxSpec& row) {
    if (AudioHandle audio = MakeSynthesizedAudio(mixer, row)) {
        return audio;
    }
    AudioHandle plain(
        MIX_CreateSineWaveAudio(mixer, row.FrequencyHz, row.Amplitude, row.DurationMs));
    if (!plain) {
        SDL_Log("MIX_CreateSineWaveAudio failed for SFX '%s': %s", row.Name, SDL_GetError());
    }
    return plain;
}

// The track whose turn it is, passing over those that are busy; if all are, the one whose turn it
// is all the same. May be null.
MIX_Track* TakeSfxTrack(MusicRuntime& music) {
    const std::size_t count = music.SfxTracks.size();
    const std::size_t start = music.NextSfxTrack % count;
    std::size_t chosen = start;
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t place = (start + step) % count;
        MIX_Track* const track = music.SfxTracks[place].get();
        if (track != nullptr && !MIX_TrackPlaying(track)) {
            chosen = place;
            break;
        }
    }
    music.NextSfxTrack = (chosen + 1) % count;
    return music.SfxTracks[chosen].get();
}

void PlaySfx(MusicRuntime& music, SoundEvent event) {
    const auto index = static_cast<std::size_t>(event);
    if (!music.Ready || !music.Mixer || index >= music.SfxAudio.size() || !music.SfxAudio[index] ||
        music.SfxTracks.empty()) {
        return;
    }
    MIX_Track* const track = TakeSfxTrack(music);
    if (track == nullptr) {
        return;
    }
    const char* const name = SoundEventName(event);
    if (!MIX_SetTrackAudio(track, music.SfxAudio[index].get())) {
        SDL_Log("MIX_SetTrackAudio failed for SFX '%s': %s", name, SDL_GetError());
        return;
    }
    const SDL_PropertiesID options = SDL_CreateProperties();
    if (options == 0) {
        SDL_Log("SDL_CreateProperties failed for SFX '%s': %s", name, SDL_GetError());
        return;
    }
    SDL_SetNumberProperty(options, MIX_PROP_PLAY_LOOPS_NUMBER, 0);
    const bool played = MIX_PlayTrack(track, options);
    SDL_DestroyProperties(options);
    if (!played) {
        SDL_Log("MIX_PlayTrack failed for SFX '%s': %s", name, SDL_GetError());
    }
}

} // namespace

const char* SoundEventName(SoundEvent event) {
    const SfxSpec* const spec = SfxSpecs.Find(event);
    return spec != nullptr ? spec->Name : "Unknown";
}

std::vector<float> SynthesizeSfx(const SfxSpec& spec, int rate, int channels) {
    const float amplitude = std::clamp(spec.Amplitude, 0.0F, 1.0F);
    const float angularFrequency = static_cast<float>(spec.FrequencyHz) * TwoPi;
    const int attack = AttackFrames(rate);
    const int release = ReleaseFrames(rate);
    const std::int64_t frames = FrameCount(spec, rate);
    std::vector<float> samples;
    samples.reserve(static_cast<std::size_t>(frames * channels));
    for (std::int64_t i = 0; i < frames; ++i) {
        float envelope = 1.0F;
        if (i < attack) {
            envelope = static_cast<float>(i) / static_cast<float>(attack);
        }
        if (release + i >= frames) {
            envelope = std::min(static_cast<float>(frames - 1 - i) / static_cast<float>(release),
                                envelope);
        }
        const float phase = static_cast<float>(i) * angularFrequency / static_cast<float>(rate);
        const float sample = envelope * (std::sin(phase) * amplitude);
        samples.insert(samples.end(), static_cast<std::size_t>(channels), sample);
    }
    return samples;
}

void LoadSfx(MusicRuntime& music) {
    UnloadSfx(music);
    MIX_Mixer* const mixer = music.Mixer.get();
    for (const SfxSpec& row : SfxSpecs) {
        music.SfxAudio.at(static_cast<std::size_t>(row.Event)) = MakeAudio(mixer, row);
    }
    for (int i = 0; i < SfxTrackCount; ++i) {
        TrackHandle track(MIX_CreateTrack(mixer));
        if (!track) {
            SDL_Log("MIX_CreateTrack failed for SFX track %d: %s", i, SDL_GetError());
            continue;
        }
        if (!MIX_TagTrack(track.get(), "sfx")) {
            SDL_Log("MIX_TagTrack failed for SFX track %d: %s", i, SDL_GetError());
        }
        music.SfxTracks.push_back(std::move(track));
    }
}

void UnloadSfx(MusicRuntime& music) {
    music.SfxTracks.clear();
    music.NextSfxTrack = 0;
    for (AudioHandle& audio : music.SfxAudio) {
        audio.reset();
    }
}

void SetSfxTrackGains(const MusicRuntime& music, float gain) {
    for (const TrackHandle& track : music.SfxTracks) {
        if (track && !MIX_SetTrackGain(track.get(), gain)) {
            SDL_Log("MIX_SetTrackGain failed for SFX track: %s", SDL_GetError());
        }
    }
}

void DrainSoundQueue(QueuedSounds& sounds, MusicRuntime& music) {
    for (std::size_t i = 0; i < sounds.SoundQueueCount; ++i) {
        PlaySfx(music, sounds.SoundQueue[i]);
    }
    sounds.SoundQueueCount = 0;
}

} // namespace Wirefall
