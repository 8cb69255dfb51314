#pragma once

// What a sound is made of, for tests that ask how bright, how wide or how rough it is.

#include "music/Sound.h"

#include <cstddef>
#include <span>
#include <vector>

namespace Wirefall::Testing {

/// The amplitude of one frequency in the samples, under a Hann window.
double AmplitudeAt(std::span<const float> samples, double hertz);

/// The power of each bin on average over the whole, of both channels together, under Hann windows
/// that overlap by half.
struct Spectrum {
    static constexpr std::size_t WindowFrames = 8192;
    static constexpr double BinHertz = static_cast<double>(Music::SampleRate) / WindowFrames;

    std::vector<double> Powers; ///< From 0 hertz to half the sample rate.
};

Spectrum SpectrumOf(const Music::Sound& sound);

/// Below which so large a part of the power lies, in hertz.
double RollOff(const Spectrum& spectrum, double part);

/// How differently the power is spread over thirds of an octave from 50 Hz to 12.8 kHz: the root of
/// the mean square of the differences in dB, once both have the same mean.
double Distance(const Spectrum& a, const Spectrum& b);

/// How rough a sine sounds together with the spectrum, after W. Sethares, "Local consonance and the
/// relationship between timbre and scale", 1993: 0 is not at all.
double Roughness(const Spectrum& spectrum, double hertz);

/// The power of the difference of the channels against that of their sum, in dB.
double SideAgainstMid(const Music::Sound& sound);

} // namespace Wirefall::Testing
