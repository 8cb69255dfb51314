#include "audio/Volumes.h"

#include <algorithm>

namespace Wirefall {

namespace {

constexpr std::int32_t FullPercent = 100;

std::int32_t ChannelPercent(bool enabled, std::int32_t master, std::int32_t channel) {
    if (!enabled) {
        return 0;
    }
    const std::int64_t percent = std::int64_t{master} * channel / FullPercent;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(percent, 0, FullPercent));
}

} // namespace

float VolumeToGain(std::int32_t percent) {
    return static_cast<float>(std::clamp(percent, 0, FullPercent)) /
           static_cast<float>(FullPercent);
}

std::int32_t MusicGainFromOptions(const GameOptions& options) {
    return ChannelPercent(options.MusicEnabled, options.MasterVolume, options.MusicVolume);
}

std::int32_t SfxGainFromOptions(const GameOptions& options) {
    return ChannelPercent(options.SfxEnabled, options.MasterVolume, options.SfxVolume);
}

} // namespace Wirefall
