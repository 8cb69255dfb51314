#pragma once

// Stereo sound in memory.

#include <cstddef>
#include <vector>

namespace Wirefall::Music {

inline constexpr int SampleRate = 44100;

/// Two channels of the same length; full scale is 1.
struct Sound {
    std::vector<float> Left;
    std::vector<float> Right;

    Sound() = default;
    explicit Sound(std::size_t frames) : Left(frames), Right(frames) {}

    std::size_t Frames() const { return Left.size(); }
};

/// Multiplies every sample.
void Amplify(Sound& sound, double factor);

/// The factor that is so many decibels.
double FactorFromDecibels(double decibels);

} // namespace Wirefall::Music
