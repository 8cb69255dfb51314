#include "audio/Volumes.h"

#include <algorithm>

namespace Wirefall {

namespace {

std::int32_t ChannelPercent(bool enabled, std::int32_t master, std::int32_t channel) {
    if (!enabled) {
        return 0;
    }
    const std::int64_t percent = std::int64_t{master} * channel / MaxVolume;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(percent, 0, MaxVolume));
}

} // namespace

float VolumeToGain(std::int32_t percent) {
    return static_cast<float>(std::clamp(percent, 0, MaxVolume)) / static_cast<float>(MaxVolume);
}

std::int32_t MusicGainFromOptions(const AudioSettings& settings) {
    return ChannelPercent(settings.MusicEnabled, settings.MasterVolume, settings.MusicVolume);
}

std::int32_t SfxGainFromOptions(const AudioSettings& settings) {
    return ChannelPercent(settings.SfxEnabled, settings.MasterVolume, settings.SfxVolume);
}

} // namespace Wirefall
