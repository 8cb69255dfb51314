#include "music/Renderer.h"

#include "music/Effects.h"
#include "music/Filter.h"
#include "music/Loudness.h"
#include "music/Oscillator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <numbers>
#include <span>

namespace Wirefall::Music {
namespace {

/// A note is over once its release has come down by so much.
constexpr double InaudibleDecibels = 90;

/// Cutoffs move slowly; computing them anew every so many frames is enough.
constexpr int FramesPerTuning = 16;

/// An exponential fall from 1 that loses 60 dB in `ms`; without a time it is down at once.
class Fall {
public:
    explicit Fall(double ms) : factor_(ms > 0 ? std::pow(10.0, -3000 / (ms * SampleRate)) : 0) {
        value_ = ms > 0 ? 1 : 0;
    }

    double Value() const { return value_; }

    void Step() {
        // Slow denormals begin far below what can be heard.
        constexpr double Nothing = 1e-12;
        value_ = value_ < Nothing ? 0 : value_ * factor_;
    }

private:
    double factor_;
    double value_;
};

double Hertz(double pitch) { return 440 * std::exp2((pitch - 69) / 12); }

double SecondsPerBar(const Score& score) {
    return score.QuartersPerBar * 60 / score.QuartersPerMinute;
}

/// How loud a note is from frame to frame.
class Envelope {
public:
    Envelope(const Instrument& instrument, std::size_t heldFrames)
        : heldFrames_(heldFrames),
          attackFrames_(instrument.Attack * SampleRate / 1000),
          sustain_(instrument.Sustain),
          decay_(instrument.Decay),
          release_(instrument.Release) {}

    double Next() {
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

private:
    std::size_t heldFrames_;
    double attackFrames_;
    double sustain_;
    Fall decay_;
    Fall release_;
    std::size_t frame_ = 0;
    double level_ = 0; // without the release
};

/// The wave tables of one instrument, one for each pitch that it plays.
class WaveTables {
public:
    explicit WaveTables(const Instrument& instrument) : instrument_(instrument) {}

    const WaveTable& For(int pitch) {
        const double highest = pitch + std::max(0.0, instrument_.SweepSemitones);
        return tables_.try_emplace(pitch, instrument_.Partials, Hertz(highest)).first->second;
    }

private:
    const Instrument& instrument_;
    std::map<int, WaveTable> tables_;
};

/// One oscillator of a note with its filter and envelope.
class Voice {
public:
    Voice(const Instrument& instrument, const WaveTable& table, double pitch,
          std::size_t heldFrames, unsigned seed)
        : instrument_(instrument),
          table_(table),
          pitch_(pitch),
          noise_(seed),
          envelope_(instrument, heldFrames),
          fm_(instrument.FmFall),
          sweep_(instrument.SweepFall),
          cutoff_(instrument.FilterFall) {}

    double Next() {
        if (frame_ % FramesPerTuning == 0) {
            Tune();
        }
        ++frame_;
        sweep_.Step();
        cutoff_.Step();
        const double raw = instrument_.Partials.empty() ? noise_.Next() : Oscillate();
        return filter_.Process(instrument_.Filter, raw) * envelope_.Next();
    }

private:
    void Tune() {
        double pitch = pitch_ + instrument_.SweepSemitones * sweep_.Value();
        const double ms = frame_ * 1000.0 / SampleRate;
        if (ms > instrument_.VibratoDelay) {
            const double seconds = (ms - instrument_.VibratoDelay) / 1000;
            pitch += instrument_.VibratoCents / 100 *
                     std::sin(2 * std::numbers::pi * instrument_.VibratoHz * seconds);
        }
        step_ = Hertz(pitch) / SampleRate;
        if (instrument_.Filter != FilterKind::None) {
            const double above = instrument_.FilterOpen - instrument_.FilterRest;
            filter_.Tune(instrument_.FilterRest + above * cutoff_.Value(), instrument_.FilterQ);
        }
    }

    double Oscillate() {
        double phase = phase_;
        if (instrument_.FmIndex > 0) {
            const double turn = 2 * std::numbers::pi;
            const double depth = instrument_.FmIndex / turn * fm_.Value();
            phase += depth * std::sin(turn * instrument_.FmRatio * phase_);
            fm_.Step();
        }
        phase_ += step_;
        return table_.At(phase);
    }

    const Instrument& instrument_;
    const WaveTable& table_;
    double pitch_;
    NoiseSource noise_;
    VoiceFilter filter_;
    Envelope envelope_;
    Fall fm_;
    Fall sweep_;
    Fall cutoff_;
    int frame_ = 0;
    double phase_ = 0;
    double step_ = 0;
};

/// Adds one note to its instrument's part. What does not fit before the end goes on at the start.
void AddNote(const Score& score, const Note& note, double pan, unsigned seed, WaveTables& tables,
             Sound& part) {
    const Instrument& instrument = score.Instruments[note.Instrument];
    const double framesPerBar = SecondsPerBar(score) * SampleRate;
    const auto held = static_cast<std::size_t>(note.Length * instrument.Gate * framesPerBar);
    const double releaseMs = instrument.Release * InaudibleDecibels / 60;
    const auto frames = held + static_cast<std::size_t>(releaseMs * SampleRate / 1000);
    const auto start =
        static_cast<std::size_t>(std::llround((note.Start + score.Upbeat) * framesPerBar));
    const WaveTable& table = tables.For(note.Pitch);
    const double level = FactorFromDecibels(instrument.Level + note.Level);

    const bool pair = instrument.DetuneCents > 0;
    for (const double side : pair ? std::vector{-1.0, 1.0} : std::vector{0.0}) {
        Voice voice(instrument, table, note.Pitch + side * instrument.DetuneCents / 200, held,
                    seed + (side > 0 ? 1U : 0U));
        // Equal power on both sides; a pair of oscillators stands half-way out.
        const double place = std::clamp(pan + 0.5 * side, -1.0, 1.0);
        const double angle = (place + 1) * std::numbers::pi / 4;
        const double each = pair ? level * std::numbers::sqrt2 / 2 : level;
        const double left = std::cos(angle);
        const double right = std::sin(angle);
        std::size_t at = start % part.Frames();
        for (std::size_t i = 0; i < frames; ++i) {
            const double value = each * voice.Next();
            part.Left[at] += static_cast<float>(value * left);
            part.Right[at] += static_cast<float>(value * right);
            at = at + 1 < part.Frames() ? at + 1 : 0;
        }
    }
}

Sound RenderPart(const Score& score, std::size_t index) {
    const Instrument& instrument = score.Instruments[index];
    Sound part(LoopFrames(score));
    WaveTables tables(instrument);
    unsigned count = 0;
    for (const Note& note : score.Notes) {
        if (note.Instrument != index) {
            continue;
        }
        const double pan = instrument.Pan + instrument.Spread * (count % 2 == 0 ? -1 : 1);
        AddNote(score, note, pan, 2 * count, tables, part);
        ++count;
    }
    return part;
}

void Add(const Sound& from, double factor, Sound& to) {
    const auto share = static_cast<float>(factor);
    for (std::size_t i = 0; i < to.Frames(); ++i) {
        to.Left[i] += share * from.Left[i];
        to.Right[i] += share * from.Right[i];
    }
}

} // namespace

std::size_t LoopFrames(const Score& score) {
    return static_cast<std::size_t>(std::llround(score.Bars * SecondsPerBar(score) * SampleRate));
}

Rendering Render(const Score& score) {
    const std::size_t frames = LoopFrames(score);
    Rendering rendering;
    rendering.Mix = Sound(frames);
    Sound echo(frames);
    Sound reverb(frames);
    for (std::size_t i = 0; i < score.Instruments.size(); ++i) {
        const Sound part = RenderPart(score, i);
        rendering.Parts.push_back(IntegratedLoudness(part));
        Add(part, 1, rendering.Mix);
        Add(part, score.Instruments[i].Echo, echo);
        Add(part, score.Instruments[i].Reverb, reverb);
    }
    AddEcho(score, echo, rendering.Mix);
    AddReverb(score, reverb, rendering.Mix);

    const double decibels = score.Loudness - IntegratedLoudness(rendering.Mix);
    if (std::isfinite(decibels)) {
        rendering.Gain = FactorFromDecibels(decibels);
        Amplify(rendering.Mix, rendering.Gain);
        for (double& loudness : rendering.Parts) {
            loudness += decibels;
        }
    }
    return rendering;
}

} // namespace Wirefall::Music
