#pragma once

// The sound effects. There are no files of them: each is a burst of a sine, with a short ramp at
// both ends so that it does not click, made at the start from a row of SfxSpecs. Twelve tracks play
// them in turn.

#include "audio/MusicRuntime.h"
#include "audio/SoundEvent.h"
#include "audio/SoundQueue.h"

#include <cstdint>
#include <vector>

namespace Wirefall {

struct SfxSpec {
    SoundEvent Event;
    std::int32_t FrequencyHz;
    float Amplitude; ///< 0 to 1.
    std::int64_t DurationMs;
    const char* Name = "Unknown"; ///< As the log calls it.
};

inline constexpr auto SfxSpecs = TableBy<SoundEvent, SfxSpec>({
    {SoundEvent::UiMove, 560, 0.16F, 45, "UiMove"},
    {SoundEvent::UiConfirm, 900, 0.24F, 70, "UiConfirm"},
    {SoundEvent::UiBack, 840, 0.22F, 85, "UiBack"},
    {SoundEvent::CursorMove, 470, 0.12F, 34, "CursorMove"},
    {SoundEvent::Rotate, 680, 0.18F, 44, "Rotate"},
    {SoundEvent::Place, 420, 0.22F, 72, "Place"},
    {SoundEvent::PacketDelivered, 1040, 0.23F, 56, "PacketDelivered"},
    {SoundEvent::PacketLost, 280, 0.34F, 120, "PacketLost"},
    {SoundEvent::PacketCorrupted, 520, 0.30F, 135, "PacketCorrupted"},
    {SoundEvent::VirusSpread, 430, 0.26F, 105, "VirusSpread"},
    {SoundEvent::GameOver, 220, 0.48F, 300, "GameOver"},
});

/// The name of the enumerator; "Unknown" for a value that has none.
const char* SoundEventName(SoundEvent event);

/// The interleaved samples of an effect, the same in each of `channels` channels, at `rate` frames
/// a second. The first and the last frame are silent. Rate and channels must be positive.
std::vector<float> SynthesizeSfx(const SfxSpec& spec, int rate, int channels);

/// Makes the effects and their tracks anew. What cannot be made is logged and missing.
void LoadSfx(MusicRuntime& music);

/// Takes the effects and their tracks away again.
void UnloadSfx(MusicRuntime& music);

/// Applies a gain of 0 to 1 to all effects. Failures are logged.
void SetSfxTrackGains(const MusicRuntime& music, float gain);

/// Plays the queued effects and empties the queue. Without an engine they are discarded, not kept.
/// With more effects than tracks the latest cut off the earliest.
void DrainSoundQueue(QueuedSounds& sounds, MusicRuntime& music);

} // namespace Wirefall
