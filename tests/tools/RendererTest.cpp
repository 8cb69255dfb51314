#include "music/Renderer.h"

#include "music/Loudness.h"
#include "music/ScoreParser.h"
#include "tools/Seam.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace Wirefall::Music {
namespace {

using Testing::Seam;
using Testing::SeamOf;

/// A bit of everything: tones, chords, noise, every kind of setting, and notes across the end.
const std::string Everything = R"(
tempo 120
upbeat 0.0625
echo 0.75 0.4 3000
reverb 1.5 4000
instrument lead
  wave saw
  fm 2 1 200
  lowpass 800 3000 150 1
  vibrato 5 10 100
  detune 8
  echo 0.3
  reverb 0.3
instrument pad
  wave 1 0.5
  envelope 300 500 0.8 900
  reverb 0.3
instrument drum
  wave noise
  pitch A4
  highpass 5000
  envelope 1 100 0 50
  spread 0.5
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

/// One instrument and one pattern of whole bars at 120 quarters a minute, two seconds each.
Score OneVoice(const std::string& instrument, const std::string& pattern, int bars) {
    return ParseScore("instrument voice\n" + instrument + "\npattern line\n" + pattern +
                          "\nsection all " + std::to_string(bars) + "\n voice line\nsong all\n",
                      "test");
}

/// The frames from the first on whose level is above a small threshold.
std::size_t FirstSound(const Sound& sound) {
    const auto first = std::find_if(sound.Left.begin(), sound.Left.end(),
                                    [](float sample) { return std::abs(sample) > 0.001F; });
    return static_cast<std::size_t>(first - sound.Left.begin());
}

float LoudestIn(const Sound& sound, double fromSecond, double toSecond) {
    float loudest = 0;
    for (auto i = static_cast<std::size_t>(fromSecond * SampleRate);
         i < static_cast<std::size_t>(toSecond * SampleRate); ++i) {
        loudest = std::max(loudest, std::abs(sound.Left[i]));
    }
    return loudest;
}

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
    constexpr std::size_t period =
        std::size_t{4} * 441; // of 25 Hz; no harmonic of the note falls below 3520
    double sum = 0;
    for (std::size_t i = SampleRate / 2; i < SampleRate / 2 + 10 * period; ++i) {
        sum += static_cast<double>(sound.Left[i]);
    }
    EXPECT_NEAR(sum / static_cast<double>(10 * period), 0, 1e-3);
    double squares = 0;
    // One period of the note is 12.53 samples; 176 of them are 2205 samples.
    for (std::size_t i = SampleRate / 2; i < SampleRate; ++i) {
        const double change =
            static_cast<double>(sound.Left[i]) - static_cast<double>(sound.Left[i + 2205]);
        squares += change * change;
    }
    EXPECT_LT(squares / (SampleRate / 2.0), 1e-6) << "it repeats with the note and nothing else";
}

} // namespace
} // namespace Wirefall::Music
