#pragma once

// The music while the game runs: one track, one pattern at a time. UpdateMusic looks once a frame
// at what is on the screen and how the run is going. The patterns of the board - normal play,
// infection and danger - change places where the one that plays comes to its end and would begin
// again; everything else changes at once. Nothing is ever cross-faded, but the first pattern of a
// run of the program may rise from a lower volume.

#include "audio/MusicRuntime.h"
#include "audio/Volumes.h"
#include "base/AppScreen.h"
#include "base/Slices.h"

#include <cstdint>
#include <string>

namespace Wirefall {

/// Moves the music and the volumes towards what the game and the options want. Once a frame, and
/// once before the first. Does nothing while the engine is not ready.
void UpdateMusic(SlicesOf<const AudioSettings, const Navigation> game, MusicRuntime& music);

/// The name of the pattern for a screen. The danger level counts only on the board and its pause.
/// Empty when the role is.
const std::string& DesiredMusicPattern(const MusicRuntime& music, AppScreen screen,
                                       std::uint8_t dangerLevel);

/// Whether the name is that of one of the patterns that change places only where they end.
bool IsInGameFamily(const MusicRuntime& music, const std::string& name);

/// Lets RequestedPattern be the pattern of that name. Raises std::runtime_error when there is none,
/// and RequestedPattern is null then.
void RequestMusicPattern(MusicRuntime& music, const std::string& name);

/// Plays the pattern in place of whatever plays, over and over, after a fade if fadeInMs is above
/// 0. False when there is no pattern or no track, and when SDL fails.
bool PlayMusicPattern(MusicRuntime& music, const MusicPattern* pattern, std::int32_t fadeInMs);

/// Gives the music track the gain that MusicGainReference points to, none if it is null. False when
/// SDL fails; without a track there is nothing to do, which is true.
bool ApplyMusicGain(const MusicRuntime& music);

/// One step of the rise of the first pattern.
void UpdateStartupFade(MusicRuntime& music);

} // namespace Wirefall
