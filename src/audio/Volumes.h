#pragma once

// From the volumes of the options to the gains of the mixer.

#include "persist/GameOptions.h"

#include <cstdint>

namespace Wirefall {

/// 0 to 1. Percents outside of 0 to 100 count as the nearest of them.
float VolumeToGain(std::int32_t percent);

/// The channel's volume under the master volume, in percent, 0 to 100; 0 when it is switched off.
std::int32_t MusicGainFromOptions(const GameOptions& options);
std::int32_t SfxGainFromOptions(const GameOptions& options);

} // namespace Wirefall
