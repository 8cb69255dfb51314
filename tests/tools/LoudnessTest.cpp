#include "music/Loudness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace Wirefall::Music {
namespace {

std::vector<float> Sine(double hertz, double amplitude, double seconds, double phase = 0) {
    std::vector<float> samples(static_cast<std::size_t>(seconds * SampleRate));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double turns = hertz * static_cast<double>(i) / SampleRate;
        samples[i] = static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * turns + phase));
    }
    return samples;
}

TEST(Loudness, FiltersAreThoseOfTheRecommendation) {
    const Biquad head = HeadFilter(48000);
    EXPECT_NEAR(head.B0, 1.53512485958697, 1e-8);
    EXPECT_NEAR(head.B1, -2.69169618940638, 1e-8);
    EXPECT_NEAR(head.B2, 1.19839281085285, 1e-8);
    EXPECT_NEAR(head.A1, -1.69065929318241, 1e-8);
    EXPECT_NEAR(head.A2, 0.73248077421585, 1e-8);
    const Biquad lowCut = LowCutFilter(48000);
    EXPECT_NEAR(lowCut.A1, -1.99004745483398, 1e-8);
    EXPECT_NEAR(lowCut.A2, 0.99007225036621, 1e-8);
}

TEST(Loudness, OfAFullScaleSineInOneChannelIsThatOfTheRecommendation) {
    Sound sound;
    sound.Left = Sine(997, 1, 5);
    sound.Right.resize(sound.Frames());
    EXPECT_NEAR(IntegratedLoudness(sound), -3.01, 0.01);
}

TEST(Loudness, OfBothChannelsAddsUp) {
    Sound sound;
    sound.Left = Sine(997, 0.1, 5);
    sound.Right = sound.Left;
    EXPECT_NEAR(IntegratedLoudness(sound), -20, 0.01);
}

TEST(Loudness, LeavesOutPausesAndWhatIsFarBelowTheRest) {
    Sound sound;
    sound.Left = Sine(997, 0.1, 10);
    const std::vector<float> faint = Sine(997, 0.01, 10);
    sound.Left.insert(sound.Left.end(), faint.begin(), faint.end());
    sound.Left.resize(sound.Frames() + std::size_t{10} * SampleRate);
    sound.Right = sound.Left;
    EXPECT_NEAR(IntegratedLoudness(sound), -20, 0.1);
}

TEST(Loudness, OfSilenceIsMinusInfinity) {
    EXPECT_EQ(IntegratedLoudness(Sound(SampleRate)), -HUGE_VAL);
    EXPECT_EQ(IntegratedLoudness(Sound(10)), -HUGE_VAL);
}

TEST(Loudness, TruePeakSeesWhatLiesBetweenTheSamples) {
    Sound sound;
    sound.Left = Sine(SampleRate / 4.0, 1, 0.1, std::numbers::pi / 4);
    sound.Left.resize(4400);
    sound.Right.resize(sound.Frames());
    EXPECT_NEAR(SamplePeak(sound), -3.01, 0.01);
    EXPECT_NEAR(TruePeak(sound), 0, 0.1);
}

} // namespace
} // namespace Wirefall::Music
