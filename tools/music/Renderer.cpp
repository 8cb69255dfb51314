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

// A note is over once its release has come down by so much.
constexpr double InaudibleDecibels = 90;

double SecondsPerBar(const Score& score) {
    return score.QuartersPerBar * 60 / score.QuartersPerMinute;
}

// Where a time of the score comes to lie once the second half of each pair comes later.
double Swung(const Score& score, double bars) {
    const double pairsPerBar = score.QuartersPerBar / score.SwingQuarters;
    const double pairs = bars * pairsPerBar;
    const double whole = std::floor(pairs);
    const double part = pairs - whole;
    const double swung = part < 0.5 ? 2 * part * score.SwingPart
                                    : score.SwingPart + (2 * part - 1) * (1 - score.SwingPart);
    return (whole + swung) / pairsPerBar;
}

// The wave tables of one instrument, one for each highest pitch that it is played at.
class WaveTables {
public:
    explicit WaveTables(const Instrument& instrument) : Played(instrument) {}

    const WaveTable& For(double pitch) {
        const double highest = pitch + std::max(0.0, Played.SweepSemitones);
        return Tables.try_emplace(pitch, Played.Partials, Hertz(highest)).first->second;
    }

private:
    const Instrument& Played;
    std::map<double, WaveTable> Tables;
};

// Plays the notes of one instrument into its part.
class Player {
public:
    Player(const Score& score, std::size_t index)
        : Result(score),
          Played(score.Instruments[index]),
          Index(static_cast<unsigned>(index)),
          FramesPerBar(SecondsPerBar(score) * SampleRate),
          Tables(Played),
          Part(LoopFrames(score)) {}

    void Play(const Note& note) {
        const double start = Swung(Result, note.Start);
        const double bars = Swung(Result, note.Start + note.Length) - start;
        VoiceNote voice;
        voice.Pitch = note.Pitch + Result.TuneCents / 100;
        voice.From = voice.Pitch + GlideFrom(note);
        voice.StartBar = start + LateFrames() / FramesPerBar;
        voice.BarsPerFrame = 1 / FramesPerBar;
        voice.HeldFrames = static_cast<std::size_t>(bars * Played.Gate * FramesPerBar);
        voice.Seed = 2 * Count;
        const double turn = Count % 2 == 0 ? -1 : 1;
        const double pan = Played.Pan + Played.Spread * turn;
        const double level = FactorFromDecibels(Played.Level + note.Level);
        if (Played.DetuneCents > 0) {
            // A pair of oscillators stands half-way out on both sides.
            constexpr double HalfWay = 0.5;
            for (const double side : {-1.0, 1.0}) {
                VoiceNote one = voice;
                one.Pitch += side * Played.DetuneCents / 200;
                one.Seed += side > 0 ? 1U : 0U;
                Add(one, pan + HalfWay * side, level * std::numbers::sqrt2 / 2);
            }
        } else {
            Add(voice, pan, level);
        }
        Previous = note;
        ++Count;
    }

    Sound Take() { return std::move(Part); }

private:
    // How far from its own pitch a note begins that the one before leads to.
    double GlideFrom(const Note& note) const {
        constexpr double Touch = 1e-6; // in bars
        const bool leads = Played.GlideMs > 0 && Count > 0 && Previous.Start < note.Start &&
                           Previous.Start + Previous.Length > note.Start - Touch;
        return leads ? Previous.Pitch - note.Pitch : 0;
    }

    double LateFrames() const {
        NoiseSource chance(Count + (Index + 1) * 65536U);
        chance.Next(); // The first of neighbouring seeds are alike.
        const double ms = Played.ShiftMs + Played.LooseMs * chance.Next();
        return ms * SampleRate / 1000;
    }

    // Adds one oscillator. What does not fit before the end goes on at the start.
    void Add(const VoiceNote& note, double pan, double level) {
        Voice voice(Played, Tables.For(std::max(note.Pitch, note.From)), note);
        const double releaseMs = Played.Release * InaudibleDecibels / 60;
        const std::size_t frames =
            note.HeldFrames + static_cast<std::size_t>(releaseMs * SampleRate / 1000);
        const auto length = static_cast<std::int64_t>(Part.Frames());
        const std::int64_t start = std::llround((note.StartBar + Result.Upbeat) * FramesPerBar);
        auto at = static_cast<std::size_t>((start % length + length) % length);
        const bool moves = Played.TremoloDecibels > 0 || Played.AutopanWidth > 0;
        double left = 0;
        double right = 0;
        for (std::size_t i = 0; i < frames; ++i) {
            if (i == 0 || moves) {
                const double bars = note.StartBar + static_cast<double>(i) * note.BarsPerFrame;
                const double each = level * FactorFromDecibels(Played.TremoloDecibels *
                                                               Cycle(Played.TremoloCycles, bars));
                const double place = pan + Played.AutopanWidth * Cycle(Played.AutopanCycles, bars);
                // Equal power wherever it stands.
                const double angle = (std::clamp(place, -1.0, 1.0) + 1) * std::numbers::pi / 4;
                left = each * std::cos(angle);
                right = each * std::sin(angle);
            }
            const double value = voice.Next();
            Part.Left[at] += static_cast<float>(value * left);
            Part.Right[at] += static_cast<float>(value * right);
            at = at + 1 < Part.Frames() ? at + 1 : 0;
        }
    }

    const Score& Result;
    const Instrument& Played;
    unsigned Index;
    double FramesPerBar;
    WaveTables Tables;
    Sound Part;
    Note Previous;
    unsigned Count = 0;
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
