#include "music/Loudness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <vector>

namespace Wirefall::Music {
namespace {

constexpr double BlockSeconds = 0.4;
constexpr std::size_t StepsPerBlock = 4;
constexpr double AbsoluteGate = -70;
constexpr double RelativeGate = -10;

double LoudnessOf(double power) { return -0.691 + 10 * std::log10(power); }

void Apply(const Biquad& filter, std::vector<double>& samples) {
    double s1 = 0;
    double s2 = 0;
    for (double& sample : samples) {
        const double out = filter.B0 * sample + s1;
        s1 = filter.B1 * sample - filter.A1 * out + s2;
        s2 = filter.B2 * sample - filter.A2 * out;
        sample = out;
    }
}

// The mean square of each step of a quarter block, of the weighted channel.
std::vector<double> StepPowers(const std::vector<float>& channel) {
    std::vector<double> weighted(channel.begin(), channel.end());
    Apply(HeadFilter(SampleRate), weighted);
    Apply(LowCutFilter(SampleRate), weighted);
    const auto step = static_cast<std::size_t>(SampleRate * BlockSeconds / StepsPerBlock);
    std::vector<double> powers(weighted.size() / step);
    for (std::size_t i = 0; i < powers.size(); ++i) {
        double sum = 0;
        for (std::size_t k = 0; k < step; ++k) {
            sum += weighted[i * step + k] * weighted[i * step + k];
        }
        powers[i] = sum / static_cast<double>(step);
    }
    return powers;
}

// The mean of the powers whose loudness is above the gate; 0 when there is none.
double GatedMean(const std::vector<double>& powers, double gate) {
    double sum = 0;
    std::size_t count = 0;
    for (const double power : powers) {
        if (LoudnessOf(power) > gate) {
            sum += power;
            ++count;
        }
    }
    return count == 0 ? 0 : sum / static_cast<double>(count);
}

double Decibels(double amplitude) { return 20 * std::log10(amplitude); }

} // namespace

Biquad HeadFilter(double sampleRate) {
    const double k = std::tan(std::numbers::pi * 1681.974450955533 / sampleRate);
    const double q = 0.7071752369554196;
    const double vh = FactorFromDecibels(3.999843853973347);
    const double vb = std::pow(vh, 0.4996667741545416);
    const double a0 = 1 + k / q + k * k;
    return {.B0 = (vh + vb * k / q + k * k) / a0,
            .B1 = 2 * (k * k - vh) / a0,
            .B2 = (vh - vb * k / q + k * k) / a0,
            .A1 = 2 * (k * k - 1) / a0,
            .A2 = (1 - k / q + k * k) / a0};
}

Biquad LowCutFilter(double sampleRate) {
    const double k = std::tan(std::numbers::pi * 38.13547087602444 / sampleRate);
    const double q = 0.5003270373238773;
    const double a0 = 1 + k / q + k * k;
    return {.B0 = 1, .B1 = -2, .B2 = 1, .A1 = 2 * (k * k - 1) / a0, .A2 = (1 - k / q + k * k) / a0};
}

double IntegratedLoudness(const Sound& sound) {
    const std::vector<double> left = StepPowers(sound.Left);
    const std::vector<double> right = StepPowers(sound.Right);
    std::vector<double> blocks;
    for (std::size_t end = StepsPerBlock; end <= left.size(); ++end) {
        double sum = 0;
        for (std::size_t i = end - StepsPerBlock; i < end; ++i) {
            sum += left[i] + right[i];
        }
        blocks.push_back(sum / static_cast<double>(StepsPerBlock));
    }
    const double ungated = GatedMean(blocks, AbsoluteGate);
    if (ungated == 0) {
        return -std::numeric_limits<double>::infinity();
    }
    const double gate = std::max(AbsoluteGate, LoudnessOf(ungated) + RelativeGate);
    return LoudnessOf(GatedMean(blocks, gate));
}

double SamplePeak(const Sound& sound) {
    float peak = 0;
    for (const std::vector<float>* channel : {&sound.Left, &sound.Right}) {
        for (const float sample : *channel) {
            peak = std::max(peak, std::abs(sample));
        }
    }
    return Decibels(static_cast<double>(peak));
}

double TruePeak(const Sound& sound) {
    constexpr std::size_t Oversampling = 4;
    constexpr std::size_t Reach = 12; // samples to each side that the interpolation looks at
    std::array<std::array<double, 2 * Reach>, Oversampling> kernels{};
    for (std::size_t phase = 0; phase < Oversampling; ++phase) {
        for (std::size_t k = 0; k < 2 * Reach; ++k) {
            const double x =
                static_cast<double>(k) - (Reach - 1.0) - static_cast<double>(phase) / Oversampling;
            const double sinc =
                x == 0 ? 1 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
            const double window = 0.5 + 0.5 * std::cos(std::numbers::pi * x / Reach);
            kernels[phase][k] = sinc * window;
        }
    }
    double peak = 0;
    for (const std::vector<float>* channel : {&sound.Left, &sound.Right}) {
        const std::size_t frames = channel->size();
        for (std::size_t i = 0; i < frames; ++i) {
            for (const auto& kernel : kernels) {
                double value = 0;
                for (std::size_t k = 0; k < kernel.size(); ++k) {
                    // One turn is added to stay above zero.
                    const std::size_t at = (i + frames + k - (Reach - 1)) % frames;
                    value += kernel[k] * static_cast<double>((*channel)[at]);
                }
                peak = std::max(peak, std::abs(value));
            }
        }
    }
    return Decibels(peak);
}

} // namespace Wirefall::Music
