#include "music/Filter.h"

#include "music/Sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Wirefall::Music {

void VoiceFilter::Tune(double cutoff, double q) {
    const double g = std::tan(std::numbers::pi * std::min(cutoff / SampleRate, 0.45));
    K = 1 / q;
    A1 = 1 / (1 + g * (g + K));
    A2 = g * A1;
    A3 = g * A2;
}

double VoiceFilter::Process(FilterKind kind, double sample) {
    if (kind == FilterKind::None) {
        return sample;
    }
    const double v3 = sample - S2;
    const double band = A1 * S1 + A2 * v3;
    const double low = S2 + A2 * S1 + A3 * v3;
    S1 = 2 * band - S1;
    S2 = 2 * low - S2;
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
