#include "audio/MusicPlayer.h"

#include "audio/MusicPatterns.h"
#include "audio/SoundEffects.h"
#include "base/Clock.h"
#include "sim/Simulation.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_properties.h>

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

namespace Wirefall {

namespace {

constexpr int LoopForever = -1;

constexpr std::int32_t UnknownDuration = std::numeric_limits<std::int32_t>::max();

// Where the startup fade begins, as a share of the full gain.
constexpr float StartupFadeShare = 0.28F;

const std::string& FirstNamed(const std::string& name, const std::string& otherwise) {
    return name.empty() ? otherwise : name;
}

void FollowVolumes(const AudioSettings& settings, MusicRuntime& music) {
    const std::int32_t musicPercent = MusicGainFromOptions(settings);
    if (musicPercent != music.MusicGainPercent) {
        music.MusicGainPercent = musicPercent;
        if (!ApplyMusicGain(music)) {
            SDL_Log("MIX_SetTrackGain failed: %s", SDL_GetError());
        }
    }
    const std::int32_t sfxPercent = SfxGainFromOptions(settings);
    if (sfxPercent != music.SfxGainPercent) {
        music.SfxGainPercent = sfxPercent;
        SetSfxTrackGains(music, VolumeToGain(sfxPercent));
    }
}

void RequestIfFound(MusicRuntime& music, const std::string& name) {
    try {
        RequestMusicPattern(music, name);
    } catch (const std::runtime_error& error) {
        SDL_Log("%s", error.what());
    }
}

float StartupGain(const MusicRuntime& music, float progress) {
    const float full = VolumeToGain(music.MusicGainPercent);
    const float start = StartupFadeShare * full;
    return start + (full - start) * progress;
}

// Starts the requested pattern at once. When that fails the request stays, for the next frame.
void StartRequested(MusicRuntime& music, bool fade) {
    const float startGain = StartupGain(music, 0.0F);
    if (fade && !MIX_SetTrackGain(music.MusicTrack, startGain)) {
        SDL_Log("MIX_SetTrackGain failed during startup fade prime: %s", SDL_GetError());
        fade = false;
    }
    if (!PlayMusicPattern(music, music.RequestedPattern, 0)) {
        SDL_Log("PlayMusicPattern failed: %s", SDL_GetError());
        if (fade && !ApplyMusicGain(music)) {
            SDL_Log("MIX_SetTrackGain failed while restoring volume: %s", SDL_GetError());
        }
        return;
    }
    music.RequestedPattern = nullptr;
    music.StartupFadePending = false;
    music.StartupFadeActive = fade;
    if (fade) {
        music.StartupFadeStartTicks = ClockMs();
        if (!MIX_SetTrackGain(music.MusicTrack, startGain)) {
            SDL_Log("MIX_SetTrackGain failed during startup fade setup: %s", SDL_GetError());
            music.StartupFadeActive = false;
        }
    }
}

void FollowGame(MusicRuntime& music, const std::string& desired) {
    if (desired.empty()) {
        return;
    }
    if (desired == music.CurrentPatternName) {
        music.RequestedPattern = nullptr;
        return;
    }
    RequestIfFound(music, desired);
    if (music.RequestedPattern == nullptr) {
        return;
    }
    if (IsInGameFamily(music, music.CurrentPatternName) && IsInGameFamily(music, desired) &&
        MIX_TrackPlaying(music.MusicTrack)) {
        return;
    }
    const bool first = music.CurrentPatternName.empty() && music.StartupFadePending;
    StartRequested(music, first && desired == music.MenuPatternName && music.FadeInMs > 0);
}

bool IsAtLoopBoundary(const MusicRuntime& music, std::int64_t position) {
    const bool looping = MIX_GetTrackLoops(music.MusicTrack) != 0;
    if (position < 0) {
        return !looping && !MIX_TrackPlaying(music.MusicTrack);
    }
    return looping ? music.LastPositionFrames > position
                   : music.CurrentDurationMs <= MIX_TrackFramesToMS(music.MusicTrack, position);
}

void FollowLoops(MusicRuntime& music) {
    const std::int64_t position = MIX_GetTrackPlaybackPosition(music.MusicTrack);
    const bool boundary = IsAtLoopBoundary(music, position);
    if (boundary || position >= 0) {
        music.LastPositionFrames = position;
    }
    if (!boundary) {
        return;
    }
    if (music.RequestedPattern == nullptr) {
        if (music.PendingNextPatternName.empty() ||
            music.PendingNextPatternName == music.CurrentPatternName) {
            return;
        }
        RequestIfFound(music, music.PendingNextPatternName);
    }
    if (music.RequestedPattern == nullptr) {
        return;
    }
    if (!PlayMusicPattern(music, music.RequestedPattern, 0)) {
        SDL_Log("PlayMusicPattern failed at loop boundary: %s", SDL_GetError());
        return;
    }
    music.RequestedPattern = nullptr;
    music.StartupFadePending = false;
    music.StartupFadeActive = false;
}

} // namespace

void UpdateMusic(SlicesOf<const AudioSettings, const Navigation> game, MusicRuntime& music) {
    if (!music.Ready) {
        return;
    }
    const Navigation& navigation = game;
    const AppScreen screen = navigation.Screen;
    music.LastScreen = screen;
    FollowVolumes(game, music);
    if (music.MusicTrack == nullptr || music.Patterns.empty()) {
        return;
    }
    const bool onBoard = MoodOf(screen) == ScreenMood::Board;
    const std::uint8_t danger = onBoard ? BuildRunSnapshot().DangerLevel : 0;
    FollowGame(music, DesiredMusicPattern(music, screen, danger));
    FollowLoops(music);
    UpdateStartupFade(music);
}

const std::string& DesiredMusicPattern(const MusicRuntime& music, AppScreen screen,
                                       std::uint8_t dangerLevel) {
    switch (MoodOf(screen)) {
    case ScreenMood::Board: {
        const std::array<const std::string*, 4> byDanger = {
            &music.GameplayPatternName, &music.InfectionPatternName, &music.DangerPatternName,
            &music.GameOverPatternName};
        return FirstNamed(*byDanger.at(dangerLevel), music.GameplayPatternName);
    }
    case ScreenMood::LevelComplete:
        return music.GameplayPatternName;
    case ScreenMood::GameOver:
        return FirstNamed(music.GameOverPatternName,
                          FirstNamed(music.InfectionPatternName, music.MenuPatternName));
    case ScreenMood::Menu:
        break;
    }
    return music.MenuPatternName;
}

bool IsInGameFamily(const MusicRuntime& music, const std::string& name) {
    return !name.empty() && (name == music.GameplayPatternName || name == music.DangerPatternName ||
                             name == music.InfectionPatternName);
}

void RequestMusicPattern(MusicRuntime& music, const std::string& name) {
    music.RequestedPattern = FindMusicPattern(music.Patterns, name);
    if (music.RequestedPattern == nullptr) {
        throw std::runtime_error("Requested music pattern could not be found: " + name);
    }
}

bool PlayMusicPattern(MusicRuntime& music, const MusicPattern* pattern, std::int32_t fadeInMs) {
    if (pattern == nullptr || music.MusicTrack == nullptr) {
        return false;
    }
    MIX_Audio* const audio = pattern->Audio.get();
    if (!MIX_SetTrackAudio(music.MusicTrack, audio)) {
        return false;
    }
    const SDL_PropertiesID options = SDL_CreateProperties();
    if (options == 0) {
        return false;
    }
    SDL_SetNumberProperty(options, MIX_PROP_PLAY_LOOPS_NUMBER, LoopForever);
    if (fadeInMs > 0) {
        SDL_SetNumberProperty(options, MIX_PROP_PLAY_FADE_IN_MILLISECONDS_NUMBER, fadeInMs);
    }
    const bool played = MIX_PlayTrack(music.MusicTrack, options);
    SDL_DestroyProperties(options);
    if (!played) {
        return false;
    }
    const std::int64_t frames = MIX_GetAudioDuration(audio);
    music.CurrentDurationMs = frames > 0 ? static_cast<std::int32_t>(std::min<std::int64_t>(
                                               MIX_AudioFramesToMS(audio, frames), UnknownDuration))
                                         : UnknownDuration;
    music.CurrentPatternName = pattern->PatternName;
    music.PendingNextPatternName = pattern->NextPatternName;
    music.LastPositionFrames = -1;
    return true;
}

bool ApplyMusicGain(const MusicRuntime& music) {
    if (music.MusicTrack == nullptr) {
        return true;
    }
    const std::int32_t* const percent = music.MusicGainReference;
    return MIX_SetTrackGain(music.MusicTrack, percent == nullptr ? 0.0F : VolumeToGain(*percent));
}

void UpdateStartupFade(MusicRuntime& music) {
    if (!music.StartupFadeActive || music.MusicTrack == nullptr ||
        !MIX_TrackPlaying(music.MusicTrack)) {
        return;
    }
    if (music.FadeInMs > 0) {
        const auto elapsed = static_cast<float>(ClockMs() - music.StartupFadeStartTicks);
        const float progress = std::clamp(elapsed / static_cast<float>(music.FadeInMs), 0.0F, 1.0F);
        if (!MIX_SetTrackGain(music.MusicTrack, StartupGain(music, progress))) {
            SDL_Log("MIX_SetTrackGain failed during startup fade: %s", SDL_GetError());
            music.StartupFadeActive = false;
            return;
        }
        if (progress < 1.0F) {
            return;
        }
    }
    music.StartupFadeActive = false;
    if (!ApplyMusicGain(music)) {
        SDL_Log("MIX_SetTrackGain failed: %s", SDL_GetError());
    }
}

} // namespace Wirefall
