#include "music/Voice.h"

#include "music/Sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Wirefall::Music {
namespace {

constexpr double Turn = 2 * std::numbers::pi;

/// Cutoffs and pitches move slowly; computing them anew every so many frames is enough.
constexpr int FramesPerTuning = 16;

/// What keeps a wave at its power when it is taken from itself so much of a period later.
double PulseGain(const Instrument& instrument) {
    double before = 0;
    double after = 0;
    for (std::size_t i = 0; i < instrument.Partials.size(); ++i) {
        const double amplitude = instrument.Partials[i];
        const double left =
            2 * std::sin(Turn / 2 * static_cast<double>(i + 1) * instrument.PulseWidth);
        before += amplitude * amplitude;
        after += amplitude * amplitude * left * left;
    }
    constexpr double Least = 0.01; // Nearly nothing is left of a wave whose harmonics all cancel.
    return std::sqrt(before / std::max(after, Least * before));
}

} // namespace

Fall::Fall(double ms)
    : factor_(ms > 0 ? std::pow(10.0, -3000 / (ms * SampleRate)) : 0), value_(ms > 0 ? 1 : 0) {}

void Fall::Step() {
    // Slow denormals begin far below what can be heard.
    constexpr double Nothing = 1e-12;
    value_ = value_ < Nothing ? 0 : value_ * factor_;
}

Envelope::Envelope(const Instrument& instrument, std::size_t heldFrames)
    : heldFrames_(heldFrames),
      attackFrames_(instrument.Attack * SampleRate / 1000),
      sustain_(instrument.Sustain),
      decay_(instrument.Decay),
      release_(instrument.Release) {}

double Envelope::Next() {
    const bool held = frame_ < heldFrames_;
    if (held) {
        const auto frame = static_cast<double>(frame_);
        if (frame < attackFrames_) {
            level_ = frame / attackFrames_;
        } else {
            level_ = sustain_ + (1 - sustain_) * decay_.Value();
            decay_.Step();
        }
    } else {
        release_.Step();
    }
    ++frame_;
    return held ? level_ : level_ * release_.Value();
}

double Cycle(double cycles, double bars) { return std::sin(Turn * cycles * bars); }

double Hertz(double pitch) { return 440 * std::exp2((pitch - 69) / 12); }

Voice::Voice(const Instrument& instrument, const WaveTable& table, const VoiceNote& note)
    : instrument_(instrument),
      table_(table),
      note_(note),
      pulseGain_(instrument.PulseWidth > 0 ? PulseGain(instrument) : 1),
      noise_(note.Seed),
      envelope_(instrument, note.HeldFrames),
      fm_(instrument.FmFall),
      sweep_(instrument.SweepFall),
      cutoff_(instrument.FilterFall) {}

double Voice::Next() {
    if (frame_ % FramesPerTuning == 0) {
        Tune();
    }
    ++frame_;
    sweep_.Step();
    cutoff_.Step();
    const double raw = instrument_.Partials.empty() ? noise_.Next() : Oscillate();
    return filter_.Process(instrument_.Filter, raw) * envelope_.Next();
}

void Voice::Tune() {
    const double ms = frame_ * 1000.0 / SampleRate;
    const double bars = note_.StartBar + frame_ * note_.BarsPerFrame;
    double pitch = note_.Pitch + instrument_.SweepSemitones * sweep_.Value();
    if (ms < instrument_.GlideMs) {
        pitch += (note_.From - note_.Pitch) * (1 - ms / instrument_.GlideMs);
    }
    if (ms > instrument_.VibratoDelay) {
        const double seconds = (ms - instrument_.VibratoDelay) / 1000;
        pitch += instrument_.VibratoCents / 100 * std::sin(Turn * instrument_.VibratoHz * seconds);
    }
    step_ = Hertz(pitch) / SampleRate;
    pulseWidth_ =
        instrument_.PulseWidth + instrument_.PulseDepth * Cycle(instrument_.PulseCycles, bars);
    if (instrument_.Filter != FilterKind::None) {
        const double above = instrument_.FilterOpen - instrument_.FilterRest;
        const double cutoff = instrument_.FilterRest + above * cutoff_.Value();
        const double octaves = instrument_.WahOctaves * Cycle(instrument_.WahCycles, bars);
        filter_.Tune(cutoff * std::exp2(octaves), instrument_.FilterQ);
    }
}

double Voice::Oscillate() {
    double phase = phase_;
    if (instrument_.FmIndex > 0) {
        const double depth = instrument_.FmIndex / Turn * fm_.Value();
        phase += depth * std::sin(Turn * instrument_.FmRatio * phase_);
        fm_.Step();
    }
    phase_ += step_;
    const double wave = table_.At(phase);
    if (instrument_.PulseWidth == 0) {
        return wave;
    }
    return pulseGain_ * (wave - table_.At(phase + pulseWidth_));
}

} // namespace Wirefall::Music
