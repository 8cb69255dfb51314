#pragma once

// The audio record: the mixer with its tracks and effects, the music patterns, and where the music
// player stands. One instance, owned by the game for the life of the process. InitAudio fills it
// and ShutdownAudio empties it; in between it must not be moved. Main thread only.

#include "audio/SoundEvent.h"
#include "base/AppScreen.h"

#include <SDL3_mixer/SDL_mixer.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Wirefall {

template <auto Destroy>
struct MixerDeleter {
    template <typename T>
    void operator()(T* object) const {
        Destroy(object);
    }
};
using MixerHandle = std::unique_ptr<MIX_Mixer, MixerDeleter<MIX_DestroyMixer>>;
using TrackHandle = std::unique_ptr<MIX_Track, MixerDeleter<MIX_DestroyTrack>>;
using AudioHandle = std::unique_ptr<MIX_Audio, MixerDeleter<MIX_DestroyAudio>>;

/// One piece of music and the name of the one that follows it.
struct MusicPattern {
    std::string PatternName;     ///< Unique in its list.
    std::string NextPatternName; ///< Its own name to go on looping.
    std::string ResolvedPath;    ///< The absolute path that was opened.
    AudioHandle Audio;           ///< Never null in a list. Compressed; decoded as it plays.
};

using MusicPatternList = std::vector<std::unique_ptr<MusicPattern>>;

struct MusicRuntime {
    /// The engine has started.
    bool Ready = false;
    MixerHandle Mixer;
    MIX_Track* MusicTrack = nullptr;                   ///< Goes with the mixer.
    std::array<AudioHandle, SoundEventCount> SfxAudio; ///< By SoundEvent; null if it is silent.
    std::vector<TrackHandle> SfxTracks;                ///< Used in turn.
    std::uint64_t NextSfxTrack = 0;                    ///< Whose turn it is.
    std::int32_t MusicGainPercent = 0;                 ///< As applied last, 0 to 100.
    std::int32_t SfxGainPercent = 0;                   ///< As applied last, 0 to 100.
    const std::int32_t* MusicGainReference = nullptr;  ///< What the music track's gain is from.

    MusicPatternList Patterns;

    // Which pattern plays when.
    std::string MenuPatternName = "MENU";
    std::string GameplayPatternName = "GAMEPLAY";
    std::string GameOverPatternName = "GAMEOVER";
    std::string DangerPatternName = "DANGER";
    std::string InfectionPatternName = "INFECTION";

    std::int32_t FadeInMs = 360;  ///< Of the first pattern, if that is the menu's; 0 to 5000.
    std::int32_t FadeOutMs = 360; ///< At the end of the program, 0 to 5000.

    std::string CurrentPatternName;                 ///< What plays; empty before the first start.
    std::string PendingNextPatternName;             ///< What follows it.
    const MusicPattern* RequestedPattern = nullptr; ///< Waits for its switch; one of Patterns.
    std::int32_t CurrentDurationMs = 0;         ///< Of what plays; the largest value if not known.
    std::int64_t LastPositionFrames = -1;       ///< Where the track was last seen; -1 if not yet.
    AppScreen LastScreen = AppScreen::MainMenu; ///< In the last update.

    /// Nothing has played yet.
    bool StartupFadePending = true;
    bool StartupFadeActive = false;
    std::uint64_t StartupFadeStartTicks = 0; ///< Clock milliseconds.
};

} // namespace Wirefall
