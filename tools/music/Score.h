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
/// and its time is the one in which it comes down by 60 dB.
struct Instrument {
    std::string Name;

    std::vector<double> Partials; ///< Amplitudes of the harmonics from the first on; none is noise.
    double FmRatio = 0;           ///< Of the modulator's frequency to the note's.
    double FmIndex = 0;           ///< Depth in radians at the start of the note.
    double FmFall = 0;
    double SweepSemitones = 0; ///< How far above its pitch the note starts.
    double SweepFall = 0;
    double VibratoHz = 0;
    double VibratoCents = 0;
    double VibratoDelay = 0;
    double DetuneCents = 0; ///< Distance between two oscillators, one to each side; 0 is one alone.
    int FixedPitch = -1;    ///< What an x in a pattern plays, a MIDI number; -1 is nothing.

    double Attack = 2; ///< Linear.
    double Decay = 1000;
    double Sustain = 1; ///< The level that the decay falls to, 0 to 1.
    double Release = 100;
    double Gate = 1; ///< The part of its length for which a note is held.

    FilterKind Filter = FilterKind::None;
    double FilterOpen = 0; ///< Cutoff at the start of the note.
    double FilterRest = 0; ///< What it falls to.
    double FilterFall = 0;
    double FilterQ = 0.7;

    double Level = 0;  ///< In dB.
    double Pan = 0;    ///< -1 is left, 1 is right.
    double Spread = 0; ///< Notes go by turns this far to the left and to the right of Pan.
    double Echo = 0;   ///< How much goes to the echo, 0 to 1.
    double Reverb = 0; ///< How much goes to the reverb, 0 to 1.
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
    double Upbeat = 0;     ///< The file begins this part of a bar before the first bar.
    double Loudness = -18; ///< What the piece is brought to, in LUFS.
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
