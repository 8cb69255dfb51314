#include "music/Oscillator.h"

#include "music/Sound.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace Wirefall::Music {
namespace {

constexpr std::size_t TableSize = 4096;
constexpr double HighestPartial = 0.4 * SampleRate;

} // namespace

WaveTable::WaveTable(std::span<const double> partials, double hertz) : Samples(TableSize + 1) {
    double power = 0;
    for (std::size_t i = 0; i < partials.size(); ++i) {
        const auto harmonic = static_cast<double>(i + 1);
        if (partials[i] == 0 || harmonic * hertz > HighestPartial) {
            continue;
        }
        power += partials[i] * partials[i];
        for (std::size_t k = 0; k < TableSize; ++k) {
            const double phase = static_cast<double>(k) / static_cast<double>(TableSize);
            Samples[k] += partials[i] * std::sin(2 * std::numbers::pi * harmonic * phase);
        }
    }
    Samples[TableSize] = Samples[0];
    if (power > 0) {
        for (double& sample : Samples) {
            sample /= std::sqrt(power);
        }
    }
}

double WaveTable::At(double phase) const {
    const double position = (phase - std::floor(phase)) * static_cast<double>(TableSize);
    // Just below a whole period the difference rounds up to one.
    const std::size_t index = std::min(static_cast<std::size_t>(position), TableSize - 1);
    const double part = position - static_cast<double>(index);
    return Samples[index] + part * (Samples[index + 1] - Samples[index]);
}

double NoiseSource::Next() {
    // Marsaglia's xorshift, "Xorshift RNGs", 2003.
    State ^= State << 13U;
    State ^= State >> 17U;
    State ^= State << 5U;
    return static_cast<double>(State) / 2147483648.0 - 1.0;
}

} // namespace Wirefall::Music
