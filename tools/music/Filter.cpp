#include "music/Filter.h"

#include "music/Sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Wirefall::Music {

void VoiceFilter::Tune(double cutoff, double q) {
    const double g = std::tan(std::numbers::pi * std::min(cutoff / SampleRate, 0.45));
    K = 1 / q;
    a1_ = 1 / (1 + g * (g + K));
    a2_ = g * a1_;
    a3_ = g * a2_;
}

double VoiceFilter::Process(FilterKind kind, double sample) {
    if (kind == FilterKind::None) {
        return sample;
    }
    const double v3 = sample - s2_;
    const double band = a1_ * s1_ + a2_ * v3;
    const double low = s2_ + a2_ * s1_ + a3_ * v3;
    s1_ = 2 * band - s1_;
    s2_ = 2 * low - s2_;
    switch (kind) {
    case FilterKind::Lowpass:
        return low;
    case FilterKind::Bandpass:
        return K * band;
    default:
        return sample - K * band - low;
    }
}

Damper::Damper(double cutoff) : Part(1 - std::exp(-2 * std::numbers::pi * cutoff / SampleRate)) {}

} // namespace Wirefall::Music
