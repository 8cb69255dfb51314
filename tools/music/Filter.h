#pragma once

// The filters of voices and effects.

#include "music/Score.h"

namespace Wirefall::Music {

/// A state-variable filter of the second order, in the form of A. Simper, "Linear Trapezoidal
/// Integrated State Variable Filter", 2013. It stays stable while its cutoff moves.
class VoiceFilter {
public:
    /// `cutoff` in hertz is kept below half the sample rate; `q` of 0.7 has no resonance.
    void Tune(double cutoff, double q);

    /// The next sample through the filter of that kind; None passes it on as it is.
    double Process(FilterKind kind, double sample);

private:
    double K = 0, A1 = 0, A2 = 0, A3 = 0; // coefficients
    double S1 = 0, S2 = 0;                // state
};

/// A lowpass of the first order, for what goes around in echo and reverb.
class Damper {
public:
    explicit Damper(double cutoff);

    double Process(double sample) {
        State += Part * (sample - State);
        return State;
    }

private:
    double Part;
    double State = 0;
};

} // namespace Wirefall::Music
