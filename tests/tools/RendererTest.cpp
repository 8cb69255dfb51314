#include "music/Renderer.h"

#include "music/Loudness.h"
#include "music/Oscillator.h"
#include "music/ScoreParser.h"
#include "tools/Seam.h"
#include "tools/Spectrum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>
#include <string>
#include <vector>

namespace Wirefall::Music {
namespace {

using Testing::Seam;
using Testing::SeamOf;

// A bit of everything: tones, chords, noise, every kind of setting, and notes across the end.
const std::string Everything = R"(
tempo 120
upbeat 0.0625
transpose -4
tune 16
swing 0.6
tilt 3
breath 100
echo 0.75 0.4 3000
reverb 1.5 4000
instrument lead
  wave saw
  fm 2 1 200
  lowpass 800 3000 150 1
  vibrato 5 10 100
  glide 30
  wah 0.5 1
  tremolo 2 3
  autopan 1 0.3
  detune 8
  echo 0.3
  reverb 0.3
instrument pad
  wave saw
  pulse 0.3 0.5 0.1
  envelope 300 500 0.8 900
  reverb 0.3
instrument drum
  wave noise
  pitch A4
  highpass 5000
  envelope 1 100 0 50
  spread 0.5
  shift 5 4
pattern tune
  A4 - E5! D5 | C5? . . A4 | - - B4 - | A4 - - -
pattern chord
  A3+C4+E4 | - | F3+A3+C4 | -
pattern beat
  x . x x
section all 4
  lead tune
  pad chord level -6
  drum beat
song all
)";

// One instrument and one pattern of whole bars at 120 quarters a minute, two seconds each.
Score OneVoice(const std::string& instrument, const std::string& pattern, int bars) {
    return ParseScore("instrument voice\n" + instrument + "\npattern line\n" + pattern +
                          "\nsection all " + std::to_string(bars) + "\n voice line\nsong all\n",
                      "test");
}

// The frames from the first on whose level is above a small threshold.
std::size_t FirstSound(const Sound& sound) {
    const auto first = std::find_if(sound.Left.begin(), sound.Left.end(),
                                    [](float sample) { return std::abs(sample) > 0.001F; });
    return static_cast<std::size_t>(first - sound.Left.begin());
}

// When the rendered score begins to sound, in seconds.
double Onset(const Score& score) {
    return static_cast<double>(FirstSound(Render(score).Mix)) / SampleRate;
}

float LoudestIn(const Sound& sound, double fromSecond, double toSecond) {
    float loudest = 0;
    for (auto i = static_cast<std::size_t>(fromSecond * SampleRate);
         i < static_cast<std::size_t>(toSecond * SampleRate); ++i) {
        loudest = std::max(loudest, std::abs(sound.Left[i]));
    }
    return loudest;
}

// The samples of the left channel from a time on, for a time.
std::span<const float> Part(const Sound& sound, double fromSecond, double seconds) {
    return std::span(sound.Left)
        .subspan(static_cast<std::size_t>(fromSecond * SampleRate),
                 static_cast<std::size_t>(seconds * SampleRate));
}

// The power of one channel in a part of it.
double Power(std::span<const float> samples) {
    double sum = 0;
    for (const float sample : samples) {
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    }
    return sum / static_cast<double>(samples.size());
}

double Decibels(double amplitudes) { return 20 * std::log10(amplitudes); }

TEST(Renderer, GivesTheSameSamplesEachTime) {
    const Score score = ParseScore(Everything, "test");
    const Rendering first = Render(score);
    const Rendering second = Render(score);
    EXPECT_EQ(first.Mix.Left, second.Mix.Left);
    EXPECT_EQ(first.Mix.Right, second.Mix.Right);
}

TEST(Renderer, MakesTheLoopAsLongAsItsBars) {
    EXPECT_EQ(Render(ParseScore(Everything, "test")).Mix.Frames(), 4U * 2 * SampleRate);
}

TEST(Renderer, BringsThePieceToItsLoudness) {
    EXPECT_NEAR(IntegratedLoudness(Render(ParseScore(Everything, "test")).Mix), -18, 0.01);
}

TEST(Renderer, LeavesASilentPieceSilent) {
    const Rendering rendering = Render(OneVoice("", ".", 1));
    EXPECT_EQ(SamplePeak(rendering.Mix), -HUGE_VAL);
    EXPECT_EQ(rendering.Gain, 1);
}

TEST(Renderer, TunesTo440Hertz) {
    const Sound sound = Render(OneVoice("envelope 1 1000 1 10", "A4", 1)).Mix;
    int rises = 0;
    for (std::size_t i = SampleRate / 2; i < SampleRate * 3 / 2; ++i) {
        rises += sound.Left[i - 1] < 0 && sound.Left[i] >= 0 ? 1 : 0;
    }
    EXPECT_NEAR(rises, 440, 1);
}

TEST(Renderer, StartsTheFileTheUpbeatBeforeTheFirstBar) {
    Score score = OneVoice("envelope 1 100 0 10", "A4 . . .", 1);
    EXPECT_LT(FirstSound(Render(score).Mix), 100U);
    score.Upbeat = 0.25;
    const std::size_t first = FirstSound(Render(score).Mix);
    EXPECT_GE(first, SampleRate / 2U);
    EXPECT_LT(first, SampleRate / 2U + 100);
}

TEST(Renderer, LetsWhatSoundsAtTheEndGoOnAtTheBeginning) {
    const Sound sound = Render(OneVoice("envelope 1 100 1 1000", ". . . A4", 1)).Mix;
    EXPECT_GT(LoudestIn(sound, 0, 0.1), 0.01F) << "the release of the last note";
    EXPECT_LT(LoudestIn(sound, 1.4, 1.49), 0.001F) << "and then silence";
}

TEST(Renderer, LetsEchoesGoOnAtTheBeginning) {
    // A note at 1.5 s; its repeats on the left come 0.375 s and 1.125 s later.
    const Sound sound = Render(OneVoice("envelope 1 60 0 10\necho 1", ". . . A4", 1)).Mix;
    const float note = LoudestIn(sound, 1.5, 1.6);
    EXPECT_GT(LoudestIn(sound, 1.87, 1.97), note / 10);
    EXPECT_GT(LoudestIn(sound, 0.62, 0.72), note / 100);
    EXPECT_LT(LoudestIn(sound, 1.0, 1.3), note / 100);
}

TEST(Renderer, HasNoStepAtTheSeam) {
    // A tone and its reverb across the whole seam.
    const Sound sound =
        Render(OneVoice("envelope 100 500 0.8 900\nreverb 0.5", "A4 - . E5 C5 D5 -", 1)).Mix;
    const Seam seam = SeamOf(sound);
    EXPECT_GT(seam.Largest, 0.0001F) << "it sounds there";
    EXPECT_LE(seam.Step, seam.Largest);
}

TEST(Renderer, PutsVoicesWhereTheyBelong) {
    const Sound left = Render(OneVoice("pan -1", "A4", 1)).Mix;
    EXPECT_LT(*std::max_element(left.Right.begin(), left.Right.end()), 1e-6F);
    const Sound middle = Render(OneVoice("", "A4", 1)).Mix;
    EXPECT_EQ(middle.Left, middle.Right);
}

TEST(Renderer, LeavesOutHarmonicsThatTheRateCannotHold) {
    // Aliases of a saw at 3520 Hz would lie between its harmonics, and below the first as well.
    const Sound sound = Render(OneVoice("wave saw\nenvelope 1 100 1 10", "A7", 1)).Mix;
    constexpr std::size_t Period =
        std::size_t{4} * 441; // of 25 Hz; no harmonic of the note falls below 3520
    double sum = 0;
    for (std::size_t i = SampleRate / 2; i < SampleRate / 2 + 10 * Period; ++i) {
        sum += static_cast<double>(sound.Left[i]);
    }
    EXPECT_NEAR(sum / static_cast<double>(10 * Period), 0, 1e-3);
    double squares = 0;
    // One period of the note is 12.53 samples; 176 of them are 2205 samples.
    for (std::size_t i = SampleRate / 2; i < SampleRate; ++i) {
        const double change =
            static_cast<double>(sound.Left[i]) - static_cast<double>(sound.Left[i + 2205]);
        squares += change * change;
    }
    EXPECT_LT(squares / (SampleRate / 2.0), 1e-6) << "it repeats with the note and nothing else";
}

TEST(WaveTable, IsReadAtAnyPhase) {
    const std::vector<double> sine = {1};
    const WaveTable table(sine, 100);
    EXPECT_DOUBLE_EQ(table.At(-0.75), table.At(0.25));
    EXPECT_DOUBLE_EQ(table.At(7.25), table.At(0.25));
    EXPECT_NEAR(table.At(-1e-20), table.At(0), 1e-9);
}

TEST(Renderer, TunesByCents) {
    Score tuned = OneVoice("", "A4 C5", 1);
    tuned.TuneCents = 100;
    EXPECT_EQ(Render(tuned).Mix.Left, Render(OneVoice("", "Bb4 C#5", 1)).Mix.Left);
}

TEST(Renderer, SwingsTheSecondHalfOfEachPair) {
    // Pairs of eighths at 120 quarters a minute: half a second each.
    Score score = OneVoice("envelope 1 30 0 10", ". A4 . . . . . .", 1);
    score.SwingQuarters = 1;
    EXPECT_NEAR(Onset(score), 0.25, 0.001);
    score.SwingPart = 0.7;
    EXPECT_NEAR(Onset(score), 0.35, 0.001);
    Score onTheBeat = OneVoice("envelope 1 30 0 10", ". . A4 . . . . .", 1);
    onTheBeat.SwingQuarters = 1;
    onTheBeat.SwingPart = 0.7;
    EXPECT_NEAR(Onset(onTheBeat), 0.5, 0.001);
}

TEST(Renderer, ShiftsAnInstrumentInTime) {
    const auto onset = [](const std::string& shift) {
        return Onset(OneVoice("envelope 1 30 0 10\n" + shift, ". A4 . .", 1));
    };
    EXPECT_DOUBLE_EQ(onset("shift 20"), onset("") + 0.02);
    EXPECT_DOUBLE_EQ(onset("shift -20"), onset("") - 0.02);
    // Before the first bar lies the end of the loop.
    const Sound early = Render(OneVoice("envelope 1 30 0 10\nshift -20", "A4 . . .", 1)).Mix;
    EXPECT_GT(LoudestIn(early, 1.975, 2), 0.01F);
}

TEST(Renderer, LoosensTheNotesOfAnInstrument) {
    const auto onsets = [] {
        const Score score = OneVoice("envelope 1 20 0 5\nshift 10 8", "A4 A4 A4 A4", 2);
        const Sound sound = Render(score).Mix;
        std::vector<double> late;
        for (int beat = 0; beat < 8; ++beat) {
            Sound rest;
            const std::span<const float> part = Part(sound, beat * 0.5, 0.4);
            rest.Left.assign(part.begin(), part.end());
            late.push_back(static_cast<double>(FirstSound(rest)) * 1000 / SampleRate);
        }
        return late;
    };
    const std::vector<double> late = onsets();
    for (const double ms : late) {
        EXPECT_GE(ms, 2);
        EXPECT_LE(ms, 18.1);
    }
    EXPECT_GT(*std::max_element(late.begin(), late.end()) -
                  *std::min_element(late.begin(), late.end()),
              4)
        << "not all are late by the same";
    EXPECT_EQ(late, onsets());
}

TEST(Renderer, SubtractsAWaveFromItselfForAPulse) {
    const auto harmonic = [](const std::string& pulse, int number) {
        const Score score = OneVoice("wave saw\n" + pulse + "\nenvelope 1 100 1 10", "A3", 1);
        return Testing::AmplitudeAt(Part(Render(score).Mix, 0.5, 1), 220.0 * number);
    };
    EXPECT_LT(harmonic("pulse 0.5", 2), harmonic("pulse 0.5", 1) / 1000) << "a square";
    EXPECT_NEAR(harmonic("pulse 0.5", 3), harmonic("pulse 0.5", 1) / 3, 0.001);
    EXPECT_LT(harmonic("pulse 0.25", 4), harmonic("pulse 0.25", 1) / 1000);
    // The amplitudes of a pulse are those of the saw times the sine of its width.
    const double sines = std::sin(0.25 * 2 * std::numbers::pi) / std::sin(0.25 * std::numbers::pi);
    EXPECT_NEAR(harmonic("pulse 0.25", 2), harmonic("pulse 0.25", 1) / 2 * sines, 0.001);
}

TEST(Renderer, KeepsThePowerOfAPulse) {
    const std::string held = "\nenvelope 1 100 1 10";
    const double saw = Render(OneVoice("wave saw" + held, "A3", 1)).Gain;
    for (const std::string pulse : {"pulse 0.1", "pulse 0.3", "pulse 0.5", "pulse 0.9"}) {
        std::string instrument = pulse;
        instrument += "\nwave saw" + held;
        const double gain = Render(OneVoice(instrument, "A3", 1)).Gain;
        // The treble counts more in the loudness, and a pulse has more of it.
        EXPECT_NEAR(Decibels(gain / saw), 0, 2.5) << pulse;
    }
}

TEST(Renderer, MovesTheWidthOfAPulse) {
    const Score score = OneVoice("wave saw\npulse 0.5 1 0.25\nenvelope 1 100 1 10", "A3", 1);
    const Sound sound = Render(score).Mix;
    const auto second = [&](double from) {
        return Testing::AmplitudeAt(Part(sound, from, 0.1), 440) /
               Testing::AmplitudeAt(Part(sound, from, 0.1), 220);
    };
    EXPECT_GT(second(0.45), 0.5) << "a quarter of the bar: three quarters wide";
    EXPECT_LT(second(0.95), 0.15) << "half of it: a square again";
    EXPECT_GT(second(1.45), 0.5);
}

TEST(Renderer, GlidesFromTheNoteThatLeadsToTheNext) {
    const auto tones = [](const std::string& pattern) {
        const Sound sound = Render(OneVoice("envelope 1 100 1 10\nglide 400", pattern, 1)).Mix;
        const std::span<const float> start = Part(sound, 1, 0.06);
        const std::span<const float> end = Part(sound, 1.6, 0.3);
        EXPECT_GT(Testing::AmplitudeAt(end, 880), 10 * Testing::AmplitudeAt(end, 440));
        return Testing::AmplitudeAt(start, 880) / Testing::AmplitudeAt(start, 460);
    };
    EXPECT_LT(tones("A4 A5"), 0.2) << "from below";
    EXPECT_GT(tones("A4 . A5 -"), 5) << "after a rest at once";
}

TEST(Renderer, MovesTheCutoff) {
    const Sound sound = Render(OneVoice("wave saw\nlowpass 1000\nwah 1 2\n"
                                        "envelope 1 100 1 10",
                                        "A3", 1))
                            .Mix;
    const auto treble = [&](double from) {
        return Testing::AmplitudeAt(Part(sound, from, 0.1), 2200);
    };
    EXPECT_GT(treble(0.45), 20 * treble(1.45)) << "open at a quarter of the bar";
}

TEST(Renderer, MovesTheLevel) {
    const Sound sound = Render(OneVoice("tremolo 1 6\nenvelope 1 100 1 10", "A4", 1)).Mix;
    EXPECT_NEAR(10 * std::log10(Power(Part(sound, 0.475, 0.05)) / Power(Part(sound, 1.475, 0.05))),
                12, 0.2);
}

TEST(Renderer, MovesThePlace) {
    const Sound sound = Render(OneVoice("autopan 1 1\nenvelope 1 100 1 10", "A4", 1)).Mix;
    EXPECT_LT(LoudestIn(sound, 0.49, 0.51), 0.01F) << "at the right";
    EXPECT_GT(LoudestIn(sound, 1.49, 1.51), 0.1F) << "at the left";
}

TEST(Renderer, TiltsTheWhole) {
    const auto slope = [](double tilt) {
        Score score = OneVoice("envelope 1 100 1 10", "A1+A8", 1);
        score.TiltDecibels = tilt;
        const Sound sound = Render(score).Mix;
        return Decibels(Testing::AmplitudeAt(Part(sound, 0.5, 1), 7040) /
                        Testing::AmplitudeAt(Part(sound, 0.5, 1), 55));
    };
    EXPECT_NEAR(slope(0), 0, 0.1);
    // The slope is gentle: three octaves from its middle a little is missing.
    EXPECT_NEAR(slope(12), 11.5, 0.5);
    EXPECT_NEAR(slope(-6), -5.5, 0.5);
}

TEST(Renderer, BreathesAtTheSeam) {
    Score score = OneVoice("envelope 1 100 1 500", "A4", 1);
    const Sound held = Render(score).Mix;
    EXPECT_GT(LoudestIn(held, 1.99, 2), 0.05F);
    score.BreathMs = 200;
    const Sound sound = Render(score).Mix;
    EXPECT_EQ(LoudestIn(sound, 0, 0.05), 0.0F);
    EXPECT_LT(LoudestIn(sound, 1.99, 2), 0.003F);
    EXPECT_NEAR(LoudestIn(sound, 1.7, 1.8), LoudestIn(sound, 1, 1.1), 0.001) << "not too soon";
}

} // namespace
} // namespace Wirefall::Music
