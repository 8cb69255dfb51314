#pragma once

// A piece of music as data: what docs/music.md calls a score, once ParseScore has read it. Times
// are in bars, so that a change of tempo changes nothing else.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Wirefall::Music {

enum class FilterKind : std::uint8_t { None, Lowpass, Highpass, Bandpass };

/// How one voice sounds. Times are in milliseconds, frequencies in hertz. A fall is exponential,
/// and its time is the one in which it comes down by 60 dB. What moves to and fro does so in
/// sines of so many cycles in a bar, which start with the piece and not with the note.
struct Instrument {
    std::string Name;

    std::vector<double> Partials; ///< Amplitudes of the harmonics from the first on; none is noise.
    double PulseWidth = 0;        ///< Above 0 the wave is less itself so much of a period later.
    double PulseCycles = 0;
    double PulseDepth = 0; ///< How far the width moves to each side.
    double FmRatio = 0;    ///< Of the modulator's frequency to the note's.
    double FmIndex = 0;    ///< Depth in radians at the start of the note.
    double FmFall = 0;
    double SweepSemitones = 0; ///< How far above its pitch the note starts.
    double SweepFall = 0;
    double GlideMs = 0; ///< A note that the one before leads to comes from its pitch in that time.
    double VibratoHz = 0;
    double VibratoCents = 0;
    double VibratoDelay = 0;
    double DetuneCents = 0; ///< Distance between two oscillators, one to each side; 0 is one alone.
    int FixedPitch = -1;    ///< What an x in a pattern plays, a MIDI number; -1 is nothing.

    double Attack = 2; ///< Linear.
    double Decay = 1000;
    double Sustain = 1; ///< The level that the decay falls to, 0 to 1.
    double Release = 100;
    double Gate = 1;    ///< The part of its length for which a note is held.
    double ShiftMs = 0; ///< How much later than written its notes begin.
    double LooseMs = 0; ///< And each by up to so much earlier or later than that.

    FilterKind Filter = FilterKind::None;
    double FilterOpen = 0; ///< Cutoff at the start of the note.
    double FilterRest = 0; ///< What it falls to.
    double FilterFall = 0;
    double FilterQ = 0.7;
    double WahCycles = 0;
    double WahOctaves = 0; ///< How far the cutoff moves up and down.

    double Level = 0;  ///< In dB.
    double Pan = 0;    ///< -1 is left, 1 is right.
    double Spread = 0; ///< Notes go by turns this far to the left and to the right of Pan.
    double TremoloCycles = 0;
    double TremoloDecibels = 0; ///< How far the level moves up and down.
    double AutopanCycles = 0;
    double AutopanWidth = 0; ///< How far the place moves to each side.
    double Echo = 0;         ///< How much goes to the echo, 0 to 1.
    double Reverb = 0;       ///< How much goes to the reverb, 0 to 1.
};

/// One note of an instrument, somewhere in the loop.
struct Note {
    std::size_t Instrument = 0;
    double Start = 0;  ///< In bars from the first.
    double Length = 0; ///< In bars.
    int Pitch = 0;     ///< MIDI number; 69 is the A of 440 Hz.
    double Level = 0;  ///< In dB.
};

/// Where a section of the song starts, and what it is called.
struct SectionStart {
    std::string Name;
    int Bar = 0;
};

struct Score {
    std::string Title;
    double QuartersPerMinute = 120;
    double QuartersPerBar = 4;
    int Bars = 0;
    double Upbeat = 0;      ///< The file begins this part of a bar before the first bar.
    double Transpose = 0;   ///< Whole semitones that the notes have been moved by.
    double TuneCents = 0;   ///< How much higher than written everything sounds.
    double SwingPart = 0.5; ///< Where the second half of each pair begins, as a part of the pair.
    double SwingQuarters = 0.5; ///< How long a pair is.
    double Loudness = -18;      ///< What the piece is brought to, in LUFS.
    double TiltDecibels = 0;    ///< How much more of the treble than of the bass.
    double TiltHertz = 700;     ///< Where one goes over into the other.
    double BreathMs = 0; ///< The piece fades in that time to its end, and does not begin at once.
    double EchoQuarters = 0.75;
    double EchoFeedback = 0.35;
    double EchoCutoff = 3000;   ///< Each repeat loses what lies above, in hertz.
    double ReverbSeconds = 1.6; ///< In which it falls by 60 dB.
    double ReverbCutoff = 5000; ///< What lies above dies away sooner, in hertz.
    std::vector<Instrument> Instruments;
    std::vector<Note> Notes; ///< Ordered by instrument, each in the order of the score.
    std::vector<SectionStart> Sections;
};

} // namespace Wirefall::Music
