#include "music/ScoreParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Wirefall::Music {
namespace {

// Instruments a and x (which has a pitch), and the line of a pattern played by a in one section.
Score WithPattern(const std::string& line, int bars = 1, const std::string& options = "") {
    return ParseScore("instrument a\ninstrument x\n pitch C2\npattern p\n" + line + "\nsection s " +
                          std::to_string(bars) + "\n a p " + options + "\nsong s\n",
                      "test");
}

// What the parser says about a text that it refuses.
std::string ErrorOf(const std::string& text) {
    try {
        ParseScore(text, "tune.score");
    } catch (const ScoreError& error) {
        return error.what();
    }
    return "no error";
}

TEST(ScoreParser, ReadsWhatBelongsToThePiece) {
    const Score score = ParseScore("title A  Small Piece ; and a comment\n"
                                   "tempo 90\nbeats 3\nupbeat 0.125\nloudness -20\n"
                                   "echo 1.5 0.2 2000\nreverb 2 4000\n"
                                   "transpose -4\ntune 16\nswing 0.6 1\ntilt 3 900\nbreath 250\n"
                                   "instrument a\npattern p\nA4\nsection s 2\na p\nsong s s\n",
                                   "test");
    EXPECT_EQ(score.Title, "A Small Piece");
    EXPECT_EQ(score.QuartersPerMinute, 90);
    EXPECT_EQ(score.QuartersPerBar, 3);
    EXPECT_EQ(score.Upbeat, 0.125);
    EXPECT_EQ(score.Loudness, -20);
    EXPECT_EQ(score.EchoQuarters, 1.5);
    EXPECT_EQ(score.EchoFeedback, 0.2);
    EXPECT_EQ(score.EchoCutoff, 2000);
    EXPECT_EQ(score.ReverbSeconds, 2);
    EXPECT_EQ(score.ReverbCutoff, 4000);
    EXPECT_EQ(score.Transpose, -4);
    EXPECT_EQ(score.TuneCents, 16);
    EXPECT_EQ(score.SwingPart, 0.6);
    EXPECT_EQ(score.SwingQuarters, 1);
    EXPECT_EQ(score.TiltDecibels, 3);
    EXPECT_EQ(score.TiltHertz, 900);
    EXPECT_EQ(score.BreathMs, 250);
    EXPECT_EQ(score.Bars, 4);
    ASSERT_EQ(score.Sections.size(), 2U);
    EXPECT_EQ(score.Sections[1].Name, "s");
    EXPECT_EQ(score.Sections[1].Bar, 2);
}

TEST(ScoreParser, ReadsInstruments) {
    const Score score = ParseScore("instrument a\n"
                                   " wave 1 0 0.5\n envelope 1 2 0.3 4\n fm 2 3 400\n"
                                   " sweep 12 50\n vibrato 5 10 200\n detune 7\n gate 0.5\n"
                                   " lowpass 500 900 100 2\n level -6\n pan -0.5\n spread 0.2\n"
                                   " echo 0.1\n reverb 0.4\n pitch F#2\n"
                                   " glide 40\n pulse 0.3 0.5 0.1\n shift -5 3\n"
                                   " wah 0.25 1.5\n tremolo 4 6\n autopan 2 0.7\n"
                                   "instrument b\n wave noise\n highpass 3000\n"
                                   "pattern p\nA4\nsection s 1\na p\nsong s\n",
                                   "test");
    ASSERT_EQ(score.Instruments.size(), 2U);
    const Instrument& a = score.Instruments[0];
    EXPECT_EQ(a.Name, "a");
    EXPECT_EQ(a.Partials, (std::vector<double>{1, 0, 0.5}));
    EXPECT_EQ(a.Attack, 1);
    EXPECT_EQ(a.Decay, 2);
    EXPECT_EQ(a.Sustain, 0.3);
    EXPECT_EQ(a.Release, 4);
    EXPECT_EQ(a.FmRatio, 2);
    EXPECT_EQ(a.FmIndex, 3);
    EXPECT_EQ(a.FmFall, 400);
    EXPECT_EQ(a.SweepSemitones, 12);
    EXPECT_EQ(a.SweepFall, 50);
    EXPECT_EQ(a.VibratoHz, 5);
    EXPECT_EQ(a.VibratoCents, 10);
    EXPECT_EQ(a.VibratoDelay, 200);
    EXPECT_EQ(a.DetuneCents, 7);
    EXPECT_EQ(a.Gate, 0.5);
    EXPECT_EQ(a.Filter, FilterKind::Lowpass);
    EXPECT_EQ(a.FilterRest, 500);
    EXPECT_EQ(a.FilterOpen, 900);
    EXPECT_EQ(a.FilterFall, 100);
    EXPECT_EQ(a.FilterQ, 2);
    EXPECT_EQ(a.Level, -6);
    EXPECT_EQ(a.Pan, -0.5);
    EXPECT_EQ(a.Spread, 0.2);
    EXPECT_EQ(a.Echo, 0.1);
    EXPECT_EQ(a.Reverb, 0.4);
    EXPECT_EQ(a.FixedPitch, 42);
    EXPECT_EQ(a.GlideMs, 40);
    EXPECT_EQ(a.PulseWidth, 0.3);
    EXPECT_EQ(a.PulseCycles, 0.5);
    EXPECT_EQ(a.PulseDepth, 0.1);
    EXPECT_EQ(a.ShiftMs, -5);
    EXPECT_EQ(a.LooseMs, 3);
    EXPECT_EQ(a.WahCycles, 0.25);
    EXPECT_EQ(a.WahOctaves, 1.5);
    EXPECT_EQ(a.TremoloCycles, 4);
    EXPECT_EQ(a.TremoloDecibels, 6);
    EXPECT_EQ(a.AutopanCycles, 2);
    EXPECT_EQ(a.AutopanWidth, 0.7);
    EXPECT_TRUE(score.Instruments[1].Partials.empty());
    EXPECT_EQ(score.Instruments[1].Filter, FilterKind::Highpass);
}

TEST(ScoreParser, KnowsTheNotes) {
    const Score score = WithPattern("C4 A4 Bb3 F#5 C0 G8 Cb4");
    std::vector<int> pitches;
    for (const Note& note : score.Notes) {
        pitches.push_back(note.Pitch);
    }
    EXPECT_EQ(pitches, (std::vector<int>{60, 69, 58, 78, 12, 115, 59}));
}

TEST(ScoreParser, SharesABarAmongItsWords) {
    const Score score = WithPattern("A4 - . B4 | C5 - - | - D5", 3);
    ASSERT_EQ(score.Notes.size(), 4U);
    EXPECT_EQ(score.Notes[0].Start, 0);
    EXPECT_EQ(score.Notes[0].Length, 0.5);
    EXPECT_EQ(score.Notes[1].Start, 0.75);
    EXPECT_EQ(score.Notes[1].Length, 0.25);
    EXPECT_EQ(score.Notes[2].Start, 1);
    EXPECT_DOUBLE_EQ(score.Notes[2].Length, 1.5) << "held over the bar line";
    EXPECT_EQ(score.Notes[3].Start, 2.5);
}

TEST(ScoreParser, HoldsWholeChords) {
    const Score score = WithPattern("A3+C4+E4! -");
    ASSERT_EQ(score.Notes.size(), 3U);
    for (const Note& note : score.Notes) {
        EXPECT_EQ(note.Length, 1);
        EXPECT_EQ(note.Level, 3);
    }
}

TEST(ScoreParser, RepeatsPatternsToTheEndOfTheSection) {
    const Score score = WithPattern("A4", 3);
    ASSERT_EQ(score.Notes.size(), 3U);
    EXPECT_EQ(score.Notes[2].Start, 2);
}

TEST(ScoreParser, MovesPartsInPitchAndLevel) {
    const Score score = WithPattern("A4? A4", 1, "up -12 level -4");
    EXPECT_EQ(score.Notes[0].Pitch, 57);
    EXPECT_EQ(score.Notes[0].Level, -9);
    EXPECT_EQ(score.Notes[1].Level, -4);
}

TEST(ScoreParser, KnowsStrengthsBetweenLoudAndSoft) {
    const Score score = WithPattern("A4:-2.5 A4!! A4!? A3+C4:4 A4?:-1");
    std::vector<double> levels;
    for (const Note& note : score.Notes) {
        levels.push_back(note.Level);
    }
    EXPECT_EQ(levels, (std::vector<double>{-2.5, 6, -2, 4, 4, -6}));
}

TEST(ScoreParser, TransposesWhatIsWrittenAsNotes) {
    const Score score = ParseScore("transpose -4\ninstrument a\npitch C2\npattern p\nA4 x\n"
                                   "section s 1\na p up 12\nsong s\n",
                                   "test");
    EXPECT_EQ(score.Notes.at(0).Pitch, 77);
    EXPECT_EQ(score.Notes.at(1).Pitch, 36) << "drums stay where they are";
}

TEST(ScoreParser, LetsPartsRest) {
    const Score score = ParseScore("instrument a\npattern p\nA4\npattern q\nB4\nsection s 4\n"
                                   "a ~2 p q\nsong s\n",
                                   "test");
    ASSERT_EQ(score.Notes.size(), 2U);
    EXPECT_EQ(score.Notes[0].Start, 2);
    EXPECT_EQ(score.Notes[1].Start, 3);
}

TEST(ScoreParser, PlaysXAtTheInstrumentsPitch) {
    const Score score = ParseScore("instrument a\npitch C2\npattern p\nx\nsection s 1\n"
                                   "a p up 12\nsong s\n",
                                   "test");
    EXPECT_EQ(score.Notes.at(0).Pitch, 36);
}

TEST(ScoreParser, OrdersNotesByInstrumentAndTime) {
    const Score score = ParseScore("instrument a\ninstrument b\npattern p\nA4\npattern q\n. B4\n"
                                   "section s 1\nb p\na q\na p\nsong s\n",
                                   "test");
    ASSERT_EQ(score.Notes.size(), 3U);
    EXPECT_EQ(score.Notes[0].Pitch, 69);
    EXPECT_EQ(score.Notes[1].Pitch, 71);
    EXPECT_EQ(score.Notes[2].Instrument, 1U);
}

struct Mistake {
    std::string Text;
    std::string Message;
};

TEST(ScoreParser, TellsWhereAndWhatIsWrong) {
    const std::string start = "instrument a\npattern p\n  A4\n";
    const std::vector<Mistake> mistakes = {
        {"", "1: there is no song"},
        {"tempo fast\n", "1: 'fast' is not a number"},
        {"tempo 12x\n", "1: '12x' is not a number"},
        {"tempo nan\n", "1: 'nan' is not a number"},
        {"tempo 5000\n", "1: quarters per minute 5000 is not between 20 and 400"},
        {"tempo\n", "1: 'tempo' takes 1: quarters per minute"},
        {"echo 1\n", "1: 'echo' takes 3: quarters, feedback, cutoff"},
        {"colour 1\n", "1: unknown word 'colour'"},
        {"transpose 0.5\n", "1: 'transpose' takes whole semitones"},
        {"swing 0.4\n", "1: part 0.4 is not between 0.5 and 0.8"},
        {"pattern p\n A4:loud\n", "2: 'loud' is not a number"},
        {"pattern p\n A4:\n", "2: '' is not a number"},
        {"pattern p\n A4:40\n", "2: strength 40 is not between -40 and 12"},
        {"\n; fine\ninstrument\n", "3: a name is missing"},
        {"instrument a b\n", "1: unexpected 'b'"},
        {"instrument a\ninstrument a\n", "2: 'a' is already there"},
        {"instrument a\n wave round\n", "2: 'round' is not a number"},
        {"instrument a\n wave 0 0\n",
         "2: 'wave' takes sine, triangle, square, saw, noise, or 1 to 64 amplitudes of harmonics"},
        {"instrument a\n lowpass\n",
         "2: 'lowpass' takes 1 to 4: cutoff, cutoff at the start, fall, Q"},
        {"instrument a\n pitch\n", "2: 'pitch' takes one note"},
        {"instrument a\n pitch H2\n", "2: 'H2' is not a note"},
        {"pattern p\npattern q\n", "2: the pattern in front of this line is empty"},
        {"pattern p\n A4 | | B4\n", "2: a bar is empty; a whole bar of rest is one ."},
        {"pattern p\n - A4\n", "2: there is no note that - could hold"},
        {"pattern p\n A4 . -\n", "2: there is no note that - could hold"},
        {"pattern p\n A4+c5\n", "2: 'c5' is not a note"},
        {"pattern p\n A9\n", "2: 'A9' is not a note"},
        {"pattern p\n A\n", "2: 'A' is not a note"},
        {start + "pattern p\n", "4: 'p' is already there"},
        {start + "section s\n", "4: 'section' takes a name and a number of bars"},
        {start + "section s 0\n", "4: 'section' takes a name and a number of bars"},
        {start + "section s 1\nsection s 1\n", "5: 's' is already there"},
        {start + "section s 1\n b p\n", "5: unknown instrument 'b'"},
        {start + "section s 1\n a q\n", "5: unknown pattern 'q'"},
        {start + "section s 1\n a\n", "5: a pattern is missing"},
        {start + "section s 1\n a ~x\n", "5: '~x' is no number of bars to rest"},
        {start + "section s 1\n a p level\n", "5: unexpected 'level'"},
        {start + "section s 1\n a p up 3 p\n", "5: unexpected 'p'"},
        {start + "section s 1\n a p up 99\n", "5: up 99 is not between -48 and 48"},
        {start + "section s 3\n a p p\n",
         "5: the patterns have 2 bars together, and the 3 of the section are no multiple of that"},
        {"instrument a\npattern p\n x\nsection s 1\n a p\n",
         "5: the instrument 'a' has no pitch that x could play"},
        {start + "section s 1\n a p\nsong s t\n", "6: unknown section 't'"},
    };
    for (const Mistake& mistake : mistakes) {
        EXPECT_EQ(ErrorOf(mistake.Text), "tune.score:" + mistake.Message) << mistake.Text;
    }
}

} // namespace
} // namespace Wirefall::Music
