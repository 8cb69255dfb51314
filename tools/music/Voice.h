#pragma once

// One oscillator of a note, with all that moves in it.

#include "music/Filter.h"
#include "music/Oscillator.h"
#include "music/Score.h"

#include <cstddef>

namespace Wirefall::Music {

/// An exponential fall from 1 that loses 60 dB in `ms`; without a time it is down at once.
class Fall {
public:
    explicit Fall(double ms);

    double Value() const { return Current; }
    void Step();

private:
    double Factor;
    double Current;
};

/// How loud a note is from frame to frame.
class Envelope {
public:
    Envelope(const Instrument& instrument, std::size_t heldFrames);

    double Next();

private:
    std::size_t HeldFrames;
    double AttackFrames;
    double Sustain;
    Fall Decay;
    Fall Release;
    std::size_t Frame = 0;
    double Level = 0; // without the release
};

/// Which note a voice plays, and when. Pitches are MIDI numbers with fractions.
struct VoiceNote {
    double Pitch = 0;
    double From = 0; ///< Where a glide begins; the pitch itself without one.
    double StartBar = 0;
    double BarsPerFrame = 0;
    std::size_t HeldFrames = 0;
    unsigned Seed = 0; ///< Of the noise.
};

/// A sine of so many cycles in a bar, from the beginning of the piece on.
double Cycle(double cycles, double bars);

/// The frequency of a pitch.
double Hertz(double pitch);

/// One oscillator of a note with its filter and envelope. Instrument and table have to outlive it.
class Voice {
public:
    Voice(const Instrument& instrument, const WaveTable& table, const VoiceNote& note);

    double Next();

private:
    void Tune();
    double Oscillate();

    const Instrument& Played;
    const WaveTable& Table;
    VoiceNote Note;
    double WaveGain; // brings a pulse back to the power of its wave
    NoiseSource Noise;
    VoiceFilter Filter;
    Envelope Strength;
    Fall Fm;
    Fall Sweep;
    Fall Cutoff;
    int Frame = 0;
    double Phase = 0;
    double Step = 0;
    double PulseWidth = 0;
};

} // namespace Wirefall::Music
