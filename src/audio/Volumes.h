#pragma once

// The player's choice of volumes, and from it the gains of the mixer.

#include <cstdint>

namespace Wirefall {

inline constexpr std::int32_t MaxVolume = 100;

/// The defaults are those of a first start.
struct AudioSettings {
    std::int32_t MasterVolume = MaxVolume; ///< Percent, as the next two.
    std::int32_t MusicVolume = 50;
    std::int32_t SfxVolume = 75;
    bool MusicEnabled = true;
    bool SfxEnabled = true;

    bool operator==(const AudioSettings&) const = default;
};

/// 0 to 1. Percents outside of 0 to 100 count as the nearest of them.
float VolumeToGain(std::int32_t percent);

/// The channel's volume under the master volume, in percent, 0 to 100; 0 when it is switched off.
std::int32_t MusicGainFromOptions(const AudioSettings& settings);
std::int32_t SfxGainFromOptions(const AudioSettings& settings);

} // namespace Wirefall
