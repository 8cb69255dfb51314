#pragma once

// How loud a piece is, after ITU-R BS.1770-4.

#include "music/Sound.h"

namespace Wirefall::Music {

/// A second-order filter with the feedback coefficient a0 normalised to 1.
struct Biquad {
    double B0 = 1, B1 = 0, B2 = 0, A1 = 0, A2 = 0;
};

/// The two stages of the K-weighting. The recommendation lists coefficients for 48000 Hz only;
/// these are computed from the analogue filters behind them, and are those of the list at 48000 Hz.
Biquad HeadFilter(double sampleRate);
Biquad LowCutFilter(double sampleRate);

/// The gated loudness of the whole, in LUFS: blocks of 400 ms, each overlapping the one before by
/// three quarters, without those below -70 LUFS or 10 LU below the mean of the rest. Minus infinity
/// for silence and for less than one block.
double IntegratedLoudness(const Sound& sound);

/// The largest sample, in dB of full scale.
double SamplePeak(const Sound& sound);

/// The largest value between the samples as well, estimated at four times the rate, in dB of full
/// scale. The sound counts as a loop: its end is followed by its beginning.
double TruePeak(const Sound& sound);

} // namespace Wirefall::Music
