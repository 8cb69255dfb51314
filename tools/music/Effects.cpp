#include "music/Effects.h"

#include "music/Filter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace Wirefall::Music {
namespace {

// A delay of a fixed number of frames.
class DelayLine {
public:
    explicit DelayLine(std::size_t frames) : Samples(std::max<std::size_t>(frames, 1)) {}

    double Out() const { return Samples[Position]; }

    // Puts a sample in, for the one that Out gave.
    void In(double sample) {
        Samples[Position] = sample;
        Position = Position + 1 < Samples.size() ? Position + 1 : 0;
    }

private:
    std::vector<double> Samples;
    std::size_t Position = 0;
};

// One turn around the loop fills the effect with what lies before the seam, the second is kept.
// That is exact as far as the effect has died away within one turn.
template <typename Effect>
void RunAroundLoop(const Sound& send, Sound& out, Effect effect) {
    for (const bool keep : {false, true}) {
        for (std::size_t i = 0; i < send.Frames(); ++i) {
            const auto [left, right] =
                effect(static_cast<double>(send.Left[i]), static_cast<double>(send.Right[i]));
            if (keep) {
                out.Left[i] += static_cast<float>(left);
                out.Right[i] += static_cast<float>(right);
            }
        }
    }
}

struct Frame {
    double Left = 0, Right = 0;
};

// A feedback delay network (Stautner and Puckette, 1982; Jot, 1991): eight delays, mixed by a
// Householder reflection, which loses no energy, so that all fading is in the gains.
class Room {
public:
    Room(double seconds, double cutoff) {
        for (std::size_t i = 0; i < Count; ++i) {
            Lines.emplace_back(LineFrames[i]);
            Dampers.emplace_back(cutoff);
            const double turns = seconds * SampleRate / static_cast<double>(LineFrames[i]);
            Gains[i] = FactorFromDecibels(-60 / turns);
        }
    }

    Frame operator()(double left, double right) {
        std::array<double, Count> outs{};
        for (std::size_t i = 0; i < Count; ++i) {
            outs[i] = Gains[i] * Dampers[i].Process(Lines[i].Out());
        }
        const double mean = std::reduce(outs.begin(), outs.end()) / (Count / 2.0);
        Frame frame;
        for (std::size_t i = 0; i < Count; ++i) {
            const bool even = i % 2 == 0;
            Lines[i].In(outs[i] - mean + (even ? left : right));
            // Signs that differ between neighbours keep the two sides apart.
            const double sign = i / 2 % 2 == 0 ? 1 : -1;
            (even ? frame.Left : frame.Right) += 0.5 * sign * outs[i];
        }
        return frame;
    }

private:
    static constexpr std::size_t Count = 8;
    // Primes between 27 and 60 ms, so that their repeats seldom meet.
    static constexpr std::array<std::size_t, Count> LineFrames = {1193, 1319, 1481, 1657,
                                                                  1867, 2089, 2351, 2633};
    std::vector<DelayLine> Lines;
    std::vector<Damper> Dampers;
    std::array<double, Count> Gains{};
};

} // namespace

void AddEcho(const Score& score, const Sound& send, Sound& out) {
    const auto frames = static_cast<std::size_t>(
        std::llround(score.EchoQuarters * 60 / score.QuartersPerMinute * SampleRate));
    DelayLine leftLine(frames);
    DelayLine rightLine(frames);
    Damper leftDamper(score.EchoCutoff);
    Damper rightDamper(score.EchoCutoff);
    RunAroundLoop(send, out, [&](double left, double right) {
        const double first = leftDamper.Process(leftLine.Out());
        const double second = score.EchoFeedback * rightDamper.Process(rightLine.Out());
        leftLine.In(0.5 * (left + right) + score.EchoFeedback * second);
        rightLine.In(first);
        return Frame{.Left = first, .Right = second};
    });
}

void AddReverb(const Score& score, const Sound& send, Sound& out) {
    RunAroundLoop(send, out, Room(score.ReverbSeconds, score.ReverbCutoff));
}

void Tilt(const Score& score, Sound& mix) {
    if (score.TiltDecibels == 0) {
        return;
    }
    // What lies below gets one half of the slope less, what lies above the other half more.
    const double below = FactorFromDecibels(-score.TiltDecibels / 2);
    const double above = FactorFromDecibels(score.TiltDecibels / 2);
    Sound tilted(mix.Frames());
    RunAroundLoop(mix, tilted,
                  [&, leftLow = Damper(score.TiltHertz),
                   rightLow = Damper(score.TiltHertz)](double left, double right) mutable {
                      const double low = leftLow.Process(left);
                      const double rightPart = rightLow.Process(right);
                      return Frame{.Left = below * low + above * (left - low),
                                   .Right = below * rightPart + above * (right - rightPart)};
                  });
    mix = std::move(tilted);
}

void Breathe(const Score& score, Sound& mix) {
    if (score.BreathMs == 0) {
        return;
    }
    // A switch comes up to a frame late, and until then the beginning is heard.
    constexpr double SilentMs = 55;
    constexpr double RiseMs = 20;
    const std::size_t frames = mix.Frames();
    for (std::size_t i = 0; i < frames; ++i) {
        const double before = static_cast<double>(frames - 1 - i) * 1000 / SampleRate;
        const double after = static_cast<double>(i) * 1000 / SampleRate;
        const double fall = std::clamp(before / score.BreathMs, 0.0, 1.0);
        const double rise = std::clamp((after - SilentMs) / RiseMs, 0.0, 1.0);
        const auto gain = static_cast<float>(fall * fall * rise);
        mix.Left[i] *= gain;
        mix.Right[i] *= gain;
    }
}

} // namespace Wirefall::Music
