#pragma once

// One period of a wave, made of sines.

#include <span>
#include <vector>

namespace Wirefall::Music {

/// A period of the sum of harmonics, read by phase. Harmonics too high for the sample rate are left
/// out, so nothing is aliased. Its mean square is that of a sine of amplitude 1, whatever the
/// harmonics.
class WaveTable {
public:
    /// `partials` are the amplitudes of the harmonics from the first on; `hertz` is the highest
    /// frequency that the table will be played at.
    WaveTable(std::span<const double> partials, double hertz);

    /// The value at a phase, of which 1 is a whole period.
    double At(double phase) const;

private:
    std::vector<double> Samples; // and the first once more
};

/// White noise from -1 to 1; the same for the same seed.
class NoiseSource {
public:
    explicit NoiseSource(unsigned seed) : State(seed * 2654435769U | 1U) {}

    double Next();

private:
    unsigned State;
};

} // namespace Wirefall::Music
