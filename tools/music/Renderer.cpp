#include "music/Renderer.h"

#include "music/Effects.h"
#include "music/Loudness.h"
#include "music/Oscillator.h"
#include "music/Voice.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <numbers>
#include <utility>

namespace Wirefall::Music {
namespace {

/// A note is over once its release has come down by so much.
constexpr double InaudibleDecibels = 90;

double SecondsPerBar(const Score& score) {
    return score.QuartersPerBar * 60 / score.QuartersPerMinute;
}

/// Where a time of the score comes to lie once the second half of each pair comes later.
double Swung(const Score& score, double bars) {
    const double pairsPerBar = score.QuartersPerBar / score.SwingQuarters;
    const double pairs = bars * pairsPerBar;
    const double whole = std::floor(pairs);
    const double part = pairs - whole;
    const double swung = part < 0.5 ? 2 * part * score.SwingPart
                                    : score.SwingPart + (2 * part - 1) * (1 - score.SwingPart);
    return (whole + swung) / pairsPerBar;
}

/// The wave tables of one instrument, one for each highest pitch that it is played at.
class WaveTables {
public:
    explicit WaveTables(const Instrument& instrument) : instrument_(instrument) {}

    const WaveTable& For(double pitch) {
        const double highest = pitch + std::max(0.0, instrument_.SweepSemitones);
        return tables_.try_emplace(pitch, instrument_.Partials, Hertz(highest)).first->second;
    }

private:
    const Instrument& instrument_;
    std::map<double, WaveTable> tables_;
};

/// Plays the notes of one instrument into its part.
class Player {
public:
    Player(const Score& score, std::size_t index)
        : score_(score),
          instrument_(score.Instruments[index]),
          index_(static_cast<unsigned>(index)),
          framesPerBar_(SecondsPerBar(score) * SampleRate),
          tables_(instrument_),
          part_(LoopFrames(score)) {}

    void Play(const Note& note) {
        const double start = Swung(score_, note.Start);
        const double bars = Swung(score_, note.Start + note.Length) - start;
        VoiceNote voice;
        voice.Pitch = note.Pitch + score_.TuneCents / 100;
        voice.From = voice.Pitch + GlideFrom(note);
        voice.StartBar = start + LateFrames() / framesPerBar_;
        voice.BarsPerFrame = 1 / framesPerBar_;
        voice.HeldFrames = static_cast<std::size_t>(bars * instrument_.Gate * framesPerBar_);
        voice.Seed = 2 * count_;
        const double turn = count_ % 2 == 0 ? -1 : 1;
        const double pan = instrument_.Pan + instrument_.Spread * turn;
        const double level = FactorFromDecibels(instrument_.Level + note.Level);
        if (instrument_.DetuneCents > 0) {
            // A pair of oscillators stands half-way out on both sides.
            constexpr double HalfWay = 0.5;
            for (const double side : {-1.0, 1.0}) {
                VoiceNote one = voice;
                one.Pitch += side * instrument_.DetuneCents / 200;
                one.Seed += side > 0 ? 1U : 0U;
                Add(one, pan + HalfWay * side, level * std::numbers::sqrt2 / 2);
            }
        } else {
            Add(voice, pan, level);
        }
        previous_ = note;
        ++count_;
    }

    Sound Take() { return std::move(part_); }

private:
    /// How far from its own pitch a note begins that the one before leads to.
    double GlideFrom(const Note& note) const {
        constexpr double Touch = 1e-6; // in bars
        const bool leads = instrument_.GlideMs > 0 && count_ > 0 && previous_.Start < note.Start &&
                           previous_.Start + previous_.Length > note.Start - Touch;
        return leads ? previous_.Pitch - note.Pitch : 0;
    }

    double LateFrames() const {
        NoiseSource chance(count_ + (index_ + 1) * 65536U);
        chance.Next(); // The first of neighbouring seeds are alike.
        const double ms = instrument_.ShiftMs + instrument_.LooseMs * chance.Next();
        return ms * SampleRate / 1000;
    }

    /// Adds one oscillator. What does not fit before the end goes on at the start.
    void Add(const VoiceNote& note, double pan, double level) {
        Voice voice(instrument_, tables_.For(std::max(note.Pitch, note.From)), note);
        const double releaseMs = instrument_.Release * InaudibleDecibels / 60;
        const std::size_t frames =
            note.HeldFrames + static_cast<std::size_t>(releaseMs * SampleRate / 1000);
        const auto length = static_cast<std::int64_t>(part_.Frames());
        const std::int64_t start = std::llround((note.StartBar + score_.Upbeat) * framesPerBar_);
        auto at = static_cast<std::size_t>((start % length + length) % length);
        const bool moves = instrument_.TremoloDecibels > 0 || instrument_.AutopanWidth > 0;
        double left = 0;
        double right = 0;
        for (std::size_t i = 0; i < frames; ++i) {
            if (i == 0 || moves) {
                const double bars = note.StartBar + static_cast<double>(i) * note.BarsPerFrame;
                const double each =
                    level * FactorFromDecibels(instrument_.TremoloDecibels *
                                               Cycle(instrument_.TremoloCycles, bars));
                const double place =
                    pan + instrument_.AutopanWidth * Cycle(instrument_.AutopanCycles, bars);
                // Equal power wherever it stands.
                const double angle = (std::clamp(place, -1.0, 1.0) + 1) * std::numbers::pi / 4;
                left = each * std::cos(angle);
                right = each * std::sin(angle);
            }
            const double value = voice.Next();
            part_.Left[at] += static_cast<float>(value * left);
            part_.Right[at] += static_cast<float>(value * right);
            at = at + 1 < part_.Frames() ? at + 1 : 0;
        }
    }

    const Score& score_;
    const Instrument& instrument_;
    unsigned index_;
    double framesPerBar_;
    WaveTables tables_;
    Sound part_;
    Note previous_;
    unsigned count_ = 0;
};

Sound RenderPart(const Score& score, std::size_t index) {
    Player player(score, index);
    for (const Note& note : score.Notes) {
        if (note.Instrument == index) {
            player.Play(note);
        }
    }
    return player.Take();
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
    Tilt(score, rendering.Mix);
    Breathe(score, rendering.Mix);

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
