#include "music/Voice.h"

#include "music/Sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Wirefall::Music {
namespace {

constexpr double Turn = 2 * std::numbers::pi;

// Cutoffs and pitches move slowly; computing them anew every so many frames is enough.
constexpr int FramesPerTuning = 16;

// What keeps a wave at its power when it is taken from itself so much of a period later.
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
    : Factor(ms > 0 ? std::pow(10.0, -3000 / (ms * SampleRate)) : 0), Current(ms > 0 ? 1 : 0) {}

void Fall::Step() {
    // Slow denormals begin far below what can be heard.
    constexpr double Nothing = 1e-12;
    Current = Current < Nothing ? 0 : Current * Factor;
}

Envelope::Envelope(const Instrument& instrument, std::size_t heldFrames)
    : HeldFrames(heldFrames),
      AttackFrames(instrument.Attack * SampleRate / 1000),
      Sustain(instrument.Sustain),
      Decay(instrument.Decay),
      Release(instrument.Release) {}

double Envelope::Next() {
    const bool held = Frame < HeldFrames;
    if (held) {
        const auto frame = static_cast<double>(Frame);
        if (frame < AttackFrames) {
            Level = frame / AttackFrames;
        } else {
            Level = Sustain + (1 - Sustain) * Decay.Value();
            Decay.Step();
        }
    } else {
        Release.Step();
    }
    ++Frame;
    return held ? Level : Level * Release.Value();
}

double Cycle(double cycles, double bars) { return std::sin(Turn * cycles * bars); }

double Hertz(double pitch) { return 440 * std::exp2((pitch - 69) / 12); }

Voice::Voice(const Instrument& instrument, const WaveTable& table, const VoiceNote& note)
    : Played(instrument),
      Table(table),
      Note(note),
      WaveGain(instrument.PulseWidth > 0 ? PulseGain(instrument) : 1),
      Noise(note.Seed),
      Strength(instrument, note.HeldFrames),
      Fm(instrument.FmFall),
      Sweep(instrument.SweepFall),
      Cutoff(instrument.FilterFall) {}

double Voice::Next() {
    if (Frame % FramesPerTuning == 0) {
        Tune();
    }
    ++Frame;
    Sweep.Step();
    Cutoff.Step();
    const double raw = Played.Partials.empty() ? Noise.Next() : Oscillate();
    return Filter.Process(Played.Filter, raw) * Strength.Next();
}

void Voice::Tune() {
    const double ms = Frame * 1000.0 / SampleRate;
    const double bars = Note.StartBar + Frame * Note.BarsPerFrame;
    double pitch = Note.Pitch + Played.SweepSemitones * Sweep.Value();
    if (ms < Played.GlideMs) {
        pitch += (Note.From - Note.Pitch) * (1 - ms / Played.GlideMs);
    }
    if (ms > Played.VibratoDelay) {
        const double seconds = (ms - Played.VibratoDelay) / 1000;
        pitch += Played.VibratoCents / 100 * std::sin(Turn * Played.VibratoHz * seconds);
    }
    Step = Hertz(pitch) / SampleRate;
    PulseWidth = Played.PulseWidth + Played.PulseDepth * Cycle(Played.PulseCycles, bars);
    if (Played.Filter != FilterKind::None) {
        const double above = Played.FilterOpen - Played.FilterRest;
        const double cutoff = Played.FilterRest + above * Cutoff.Value();
        const double octaves = Played.WahOctaves * Cycle(Played.WahCycles, bars);
        Filter.Tune(cutoff * std::exp2(octaves), Played.FilterQ);
    }
}

double Voice::Oscillate() {
    double phase = Phase;
    if (Played.FmIndex > 0) {
        const double depth = Played.FmIndex / Turn * Fm.Value();
        phase += depth * std::sin(Turn * Played.FmRatio * Phase);
        Fm.Step();
    }
    Phase += Step;
    const double wave = Table.At(phase);
    if (Played.PulseWidth == 0) {
        return wave;
    }
    return WaveGain * (wave - Table.At(phase + PulseWidth));
}

} // namespace Wirefall::Music
