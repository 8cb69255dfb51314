#include "music/ScoreParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

namespace Wirefall::Music {
namespace {

using Words = std::span<const std::string_view>;

// One number of a setting.
template <typename Record>
struct Number {
    std::string_view Name;
    double Record::*Field = nullptr;
    double Least = 0;
    double Most = 0;
};

// A line that sets numbers. Those past the first `Required` may be left out.
template <typename Record>
struct Setting {
    std::string_view Word;
    std::size_t Required = 0;
    std::array<Number<Record>, 4> Numbers;
};

constexpr double LongestMs = 20000;
constexpr double HighestHertz = 20000;
constexpr double MostCycles = 64;

constexpr auto ScoreSettings = std::to_array<Setting<Score>>({
    {"tempo", 1, {{{"quarters per minute", &Score::QuartersPerMinute, 20, 400}}}},
    {"beats", 1, {{{"quarters per bar", &Score::QuartersPerBar, 1, 16}}}},
    {"upbeat", 1, {{{"part of a bar", &Score::Upbeat, 0, 0.5}}}},
    {"transpose", 1, {{{"semitones", &Score::Transpose, -24, 24}}}},
    {"tune", 1, {{{"cents", &Score::TuneCents, -100, 100}}}},
    {"swing",
     1,
     {{{"part", &Score::SwingPart, 0.5, 0.8}, {"quarters", &Score::SwingQuarters, 0.1, 4}}}},
    {"tilt",
     1,
     {{{"dB", &Score::TiltDecibels, -24, 24}, {"hertz", &Score::TiltHertz, 50, HighestHertz}}}},
    {"breath", 1, {{{"ms", &Score::BreathMs, 0, 2000}}}},
    {"loudness", 1, {{{"LUFS", &Score::Loudness, -40, -6}}}},
    {"echo",
     3,
     {{{"quarters", &Score::EchoQuarters, 0.05, 8},
       {"feedback", &Score::EchoFeedback, 0, 0.9},
       {"cutoff", &Score::EchoCutoff, 100, HighestHertz}}}},
    {"reverb",
     2,
     {{{"seconds", &Score::ReverbSeconds, 0.1, 10},
       {"cutoff", &Score::ReverbCutoff, 100, HighestHertz}}}},
});

constexpr std::array<Number<Instrument>, 4> FilterNumbers = {{
    {"cutoff", &Instrument::FilterRest, 10, HighestHertz},
    {"cutoff at the start", &Instrument::FilterOpen, 10, HighestHertz},
    {"fall", &Instrument::FilterFall, 1, LongestMs},
    {"Q", &Instrument::FilterQ, 0.3, 20},
}};

constexpr auto InstrumentSettings = std::to_array<Setting<Instrument>>({
    {"envelope",
     4,
     {{{"attack", &Instrument::Attack, 0.1, LongestMs},
       {"decay", &Instrument::Decay, 1, LongestMs},
       {"sustain", &Instrument::Sustain, 0, 1},
       {"release", &Instrument::Release, 1, LongestMs}}}},
    {"fm",
     3,
     {{{"ratio", &Instrument::FmRatio, 0.1, 16},
       {"index", &Instrument::FmIndex, 0, 10},
       {"fall", &Instrument::FmFall, 1, LongestMs}}}},
    {"sweep",
     2,
     {{{"semitones", &Instrument::SweepSemitones, -48, 48},
       {"fall", &Instrument::SweepFall, 1, LongestMs}}}},
    {"vibrato",
     3,
     {{{"hertz", &Instrument::VibratoHz, 0.1, 20},
       {"cents", &Instrument::VibratoCents, 0, 200},
       {"delay", &Instrument::VibratoDelay, 0, LongestMs}}}},
    {"glide", 1, {{{"ms", &Instrument::GlideMs, 1, LongestMs}}}},
    {"pulse",
     1,
     {{{"width", &Instrument::PulseWidth, 0.05, 0.95},
       {"cycles", &Instrument::PulseCycles, 0, MostCycles},
       {"depth", &Instrument::PulseDepth, 0, 0.45}}}},
    {"detune", 1, {{{"cents", &Instrument::DetuneCents, 0, 100}}}},
    {"shift",
     1,
     {{{"ms", &Instrument::ShiftMs, -50, 50}, {"looseness", &Instrument::LooseMs, 0, 20}}}},
    {"gate", 1, {{{"part of the length", &Instrument::Gate, 0.01, 1}}}},
    {"lowpass", 1, FilterNumbers},
    {"highpass", 1, FilterNumbers},
    {"bandpass", 1, FilterNumbers},
    {"level", 1, {{{"dB", &Instrument::Level, -60, 12}}}},
    {"pan", 1, {{{"place", &Instrument::Pan, -1, 1}}}},
    {"spread", 1, {{{"width", &Instrument::Spread, 0, 1}}}},
    {"wah",
     2,
     {{{"cycles", &Instrument::WahCycles, 0, MostCycles},
       {"octaves", &Instrument::WahOctaves, 0, 4}}}},
    {"tremolo",
     2,
     {{{"cycles", &Instrument::TremoloCycles, 0, MostCycles},
       {"dB", &Instrument::TremoloDecibels, 0, 24}}}},
    {"autopan",
     2,
     {{{"cycles", &Instrument::AutopanCycles, 0, MostCycles},
       {"width", &Instrument::AutopanWidth, 0, 1}}}},
    {"echo", 1, {{{"share", &Instrument::Echo, 0, 1}}}},
    {"reverb", 1, {{{"share", &Instrument::Reverb, 0, 1}}}},
});

constexpr auto Filters = std::to_array<std::pair<std::string_view, FilterKind>>({
    {"lowpass", FilterKind::Lowpass},
    {"highpass", FilterKind::Highpass},
    {"bandpass", FilterKind::Bandpass},
});

// How far the waves with infinitely many harmonics go.
constexpr int HarmonicCount = 64;

// The harmonics of the waves that have a name; none for noise.
std::optional<std::vector<double>> NamedWave(std::string_view name) {
    if (name == "noise") {
        return std::vector<double>{};
    }
    if (name == "sine") {
        return std::vector<double>{1};
    }
    std::vector<double> partials;
    for (int n = 1; n <= HarmonicCount; ++n) {
        const bool odd = n % 2 == 1;
        if (name == "saw") {
            partials.push_back(1.0 / n);
        } else if (name == "square") {
            partials.push_back(odd ? 1.0 / n : 0);
        } else if (name == "triangle") {
            partials.push_back(odd ? (n % 4 == 1 ? 1.0 : -1.0) / (n * n) : 0);
        } else {
            return std::nullopt;
        }
    }
    return partials;
}

constexpr double AccentDecibels = 3;
constexpr double SoftDecibels = -5;
constexpr double FaintestNote = -40;
constexpr double LoudestNote = 12;

// What x in a pattern stands for until it is known who plays it.
constexpr int InstrumentsOwnPitch = -1;

struct Pattern {
    int Bars = 0;
    std::vector<Note> Notes;
};

// A line of a section: who plays which patterns.
struct Part {
    std::size_t Instrument = 0;
    std::vector<Note> Notes;
    int Bars = 0;
};

struct Section {
    std::string Name;
    int Bars = 0;
    std::vector<Part> Parts;
};

std::optional<double> ReadNumber(std::string_view word) {
    double value = 0;
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

// A whole number of bars, from 1 on.
std::optional<int> ReadBars(std::string_view word) {
    constexpr int MostBars = 999;
    int value = 0;
    const char* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || value < 1 || value > MostBars) {
        return std::nullopt;
    }
    return value;
}

// The MIDI number of a note like C4, F#3 or Bb5.
std::optional<int> ReadPitch(std::string_view word) {
    constexpr std::array<int, 7> SemitonesFromC = {9, 11, 0, 2, 4, 5, 7}; // A to G
    if (word.size() < 2 || word[0] < 'A' || word[0] > 'G') {
        return std::nullopt;
    }
    int pitch = SemitonesFromC[static_cast<std::size_t>(word[0] - 'A')];
    if (word.size() == 3 && (word[1] == '#' || word[1] == 'b')) {
        pitch += word[1] == '#' ? 1 : -1;
    } else if (word.size() != 2) {
        return std::nullopt;
    }
    const char octave = word.back();
    if (octave < '0' || octave > '8') {
        return std::nullopt;
    }
    return pitch + 12 * (octave - '0' + 1);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string_view> SplitWords(std::string_view line) {
    constexpr std::string_view Blanks = " \t\r";
    std::vector<std::string_view> words;
    std::size_t start = line.find_first_not_of(Blanks);
    while (start != std::string_view::npos) {
        const std::size_t end = std::min(line.find_first_of(Blanks, start), line.size());
        words.push_back(line.substr(start, end - start));
        start = line.find_first_not_of(Blanks, end);
    }
    return words;
}

std::string Quoted(std::string_view word) { return "'" + std::string(word) + "'"; }

std::string Printed(double number) {
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), end};
}

template <typename List>
auto FindNamed(List& list, std::string_view name) {
    return std::find_if(list.begin(), list.end(),
                        [&](const auto& each) { return each.Name == name; });
}

class Parser {
public:
    explicit Parser(const std::string& file) : Name(file) {}

    Score Parse(std::string_view text) {
        for (const std::string_view line : Split(text, '\n')) {
            ++Line;
            const std::string_view content = line.substr(0, line.find(';'));
            const std::vector<std::string_view> words = SplitWords(content);
            if (!words.empty()) {
                ParseLine(words);
            }
        }
        Arrange();
        return std::move(Result);
    }

private:
    enum class Block : std::uint8_t { Piece, Instrument, Pattern, Section, Song };

    [[noreturn]] void Fail(const std::string& what) const {
        throw ScoreError(Name + ":" + std::to_string(Line) + ": " + what);
    }

    void ParseLine(Words words) {
        using Handler = void (Parser::*)(Words);
        constexpr auto Openers = std::to_array<std::tuple<std::string_view, Block, Handler>>({
            {"instrument", Block::Instrument, &Parser::OpenInstrument},
            {"pattern", Block::Pattern, &Parser::OpenPattern},
            {"section", Block::Section, &Parser::OpenSection},
            {"song", Block::Song, &Parser::AddToSong},
        });
        for (const auto& [word, block, open] : Openers) {
            if (words[0] == word) {
                CloseBlock();
                OpenBlock = block;
                (this->*open)(words.subspan(1));
                return;
            }
        }
        // By the order of Block.
        constexpr auto Contents = std::to_array<Handler>(
            {&Parser::ParsePieceLine, &Parser::ParseInstrumentLine, &Parser::ParsePatternLine,
             &Parser::ParsePart, &Parser::AddToSong});
        (this->*Contents[static_cast<std::size_t>(OpenBlock)])(words);
    }

    void CloseBlock() {
        if (OpenBlock == Block::Pattern && Open->Bars == 0) {
            Fail("the pattern in front of this line is empty");
        }
    }

    void ParsePieceLine(Words words) {
        if (words[0] != "title") {
            Set(Result, words, ScoreSettings);
            RefuseHalfSemitones();
            return;
        }
        for (const std::string_view word : words.subspan(1)) {
            Result.Title += (Result.Title.empty() ? "" : " ") + std::string(word);
        }
    }

    // Takes the numbers of a line by the table that knows its first word.
    template <typename Record, std::size_t Count>
    void Set(Record& record, Words words, const std::array<Setting<Record>, Count>& settings) {
        const auto setting = std::find_if(settings.begin(), settings.end(),
                                          [&](const auto& each) { return each.Word == words[0]; });
        if (setting == settings.end()) {
            Fail("unknown word " + Quoted(words[0]));
        }
        const Words values = words.subspan(1);
        std::string names;
        std::size_t most = 0;
        for (const Number<Record>& number : setting->Numbers) {
            if (number.Field != nullptr) {
                names += (most == 0 ? "" : ", ") + std::string(number.Name);
                ++most;
            }
        }
        if (values.size() < setting->Required || values.size() > most) {
            Fail(Quoted(words[0]) + " takes " + std::to_string(setting->Required) +
                 (most > setting->Required ? " to " + std::to_string(most) : "") + ": " + names);
        }
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Number<Record>& number = setting->Numbers[i];
            record.*number.Field = InRange(values[i], number.Name, number.Least, number.Most);
        }
    }

    void RefuseHalfSemitones() const {
        if (Result.Transpose != std::floor(Result.Transpose)) {
            Fail("'transpose' takes whole semitones");
        }
    }

    double InRange(std::string_view word, std::string_view name, double least, double most) const {
        const std::optional<double> value = ReadNumber(word);
        if (!value) {
            Fail(Quoted(word) + " is not a number");
        }
        if (*value < least || *value > most) {
            Fail(std::string(name) + " " + std::string(word) + " is not between " + Printed(least) +
                 " and " + Printed(most));
        }
        return *value;
    }

    // The single word behind an opener.
    std::string NewName(Words words, bool taken) const {
        if (words.empty()) {
            Fail("a name is missing");
        }
        if (taken) {
            Fail(Quoted(words[0]) + " is already there");
        }
        return std::string(words[0]);
    }

    bool HasInstrument(std::string_view name) const {
        return FindNamed(Result.Instruments, name) != Result.Instruments.end();
    }

    void OpenInstrument(Words words) {
        Instrument instrument;
        instrument.Name = NewName(words, !words.empty() && HasInstrument(words[0]));
        RefuseMore(words, 1);
        instrument.Partials = {1};
        Result.Instruments.push_back(std::move(instrument));
    }

    void RefuseMore(Words words, std::size_t expected) const {
        if (words.size() > expected) {
            Fail("unexpected " + Quoted(words[expected]));
        }
    }

    void ParseInstrumentLine(Words words) {
        Instrument& instrument = Result.Instruments.back();
        if (words[0] == "wave") {
            instrument.Partials = ReadWave(words.subspan(1));
        } else if (words[0] == "pitch") {
            if (words.size() != 2) {
                Fail("'pitch' takes one note");
            }
            instrument.FixedPitch = PitchOf(words[1]);
        } else {
            Set(instrument, words, InstrumentSettings);
            for (const auto& [word, kind] : Filters) {
                if (words[0] == word) {
                    instrument.Filter = kind;
                }
            }
        }
    }

    std::vector<double> ReadWave(Words words) const {
        if (words.size() == 1) {
            if (const auto partials = NamedWave(words[0])) {
                return *partials;
            }
        }
        std::vector<double> partials;
        double loudest = 0;
        for (const std::string_view word : words) {
            partials.push_back(InRange(word, "harmonic", -1, 1));
            loudest = std::max(loudest, std::abs(partials.back()));
        }
        if (loudest == 0 || partials.size() > HarmonicCount) {
            Fail("'wave' takes sine, triangle, square, saw, noise, or 1 to " +
                 std::to_string(HarmonicCount) + " amplitudes of harmonics");
        }
        return partials;
    }

    int PitchOf(std::string_view word) const {
        const std::optional<int> pitch = ReadPitch(word);
        if (!pitch) {
            Fail(Quoted(word) + " is not a note");
        }
        return *pitch;
    }

    void OpenPattern(Words words) {
        const std::string name =
            NewName(words, !words.empty() && Patterns.contains(std::string(words[0])));
        RefuseMore(words, 1);
        Open = &Patterns[name];
        Held = 0;
    }

    void ParsePatternLine(Words words) {
        std::vector<std::string_view> bar;
        for (const std::string_view word : words) {
            if (word == "|") {
                AddBar(bar);
                bar.clear();
            } else {
                bar.push_back(word);
            }
        }
        if (!bar.empty()) {
            AddBar(bar);
        }
    }

    // The words of a bar share it equally.
    void AddBar(Words steps) {
        if (steps.empty()) {
            Fail("a bar is empty; a whole bar of rest is one .");
        }
        const double length = 1.0 / static_cast<double>(steps.size());
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const double start = Open->Bars + static_cast<double>(i) * length;
            if (steps[i] == "-") {
                if (Held == 0) {
                    Fail("there is no note that - could hold");
                }
                for (std::size_t k = 1; k <= Held; ++k) {
                    Open->Notes[Open->Notes.size() - k].Length += length;
                }
            } else if (steps[i] == ".") {
                Held = 0;
            } else {
                AddChord(steps[i], start, length);
            }
        }
        ++Open->Bars;
    }

    void AddChord(std::string_view word, double start, double length) {
        double level = 0;
        if (const std::size_t colon = word.find(':'); colon != std::string_view::npos) {
            level = InRange(word.substr(colon + 1), "strength", FaintestNote, LoudestNote);
            word = word.substr(0, colon);
        }
        while (word.ends_with('!') || word.ends_with('?')) {
            level += word.ends_with('!') ? AccentDecibels : SoftDecibels;
            word.remove_suffix(1);
        }
        Held = 0;
        for (const std::string_view name : Split(word, '+')) {
            const int pitch = name == "x" ? InstrumentsOwnPitch : PitchOf(name);
            Open->Notes.push_back(
                {.Start = start, .Length = length, .Pitch = pitch, .Level = level});
            ++Held;
        }
    }

    void OpenSection(Words words) {
        Section section;
        section.Name =
            NewName(words, !words.empty() && FindNamed(Sections, words[0]) != Sections.end());
        const std::optional<int> bars = words.size() == 2 ? ReadBars(words[1]) : std::nullopt;
        if (!bars) {
            Fail("'section' takes a name and a number of bars");
        }
        section.Bars = *bars;
        Sections.push_back(std::move(section));
    }

    // INSTRUMENT PATTERN... [level DB] [up SEMITONES]
    void ParsePart(Words words) {
        const auto instrument = FindNamed(Result.Instruments, words[0]);
        if (instrument == Result.Instruments.end()) {
            Fail("unknown instrument " + Quoted(words[0]));
        }
        Section& section = Sections.back();
        Part part;
        part.Instrument = static_cast<std::size_t>(instrument - Result.Instruments.begin());
        std::size_t i = 1;
        for (; i < words.size() && words[i] != "level" && words[i] != "up"; ++i) {
            AddPattern(words[i], part);
        }
        if (part.Bars == 0) {
            Fail("a pattern is missing");
        }
        double level = 0;
        int up = 0;
        for (; i < words.size(); i += 2) {
            if (i + 1 == words.size() || (words[i] != "level" && words[i] != "up")) {
                Fail("unexpected " + Quoted(words[i]));
            }
            if (words[i] == "level") {
                level = InRange(words[i + 1], "level", -60, 12);
            } else {
                up = static_cast<int>(InRange(words[i + 1], "up", -48, 48));
            }
        }
        if (section.Bars % part.Bars != 0) {
            Fail("the patterns have " + std::to_string(part.Bars) + " bars together, and the " +
                 std::to_string(section.Bars) + " of the section are no multiple of that");
        }
        for (Note& note : part.Notes) {
            note.Instrument = part.Instrument;
            note.Level += level;
            if (note.Pitch != InstrumentsOwnPitch) {
                note.Pitch += up + static_cast<int>(Result.Transpose);
                continue;
            }
            if (instrument->FixedPitch < 0) {
                Fail("the instrument " + Quoted(words[0]) + " has no pitch that x could play");
            }
            note.Pitch = instrument->FixedPitch;
        }
        section.Parts.push_back(std::move(part));
    }

    void AddPattern(std::string_view word, Part& part) {
        if (word.starts_with('~')) {
            const std::optional<int> bars = ReadBars(word.substr(1));
            if (!bars) {
                Fail(Quoted(word) + " is no number of bars to rest");
            }
            part.Bars += *bars;
            return;
        }
        const auto found = Patterns.find(word);
        if (found == Patterns.end()) {
            Fail("unknown pattern " + Quoted(word));
        }
        for (Note note : found->second.Notes) {
            note.Start += part.Bars;
            part.Notes.push_back(note);
        }
        part.Bars += found->second.Bars;
    }

    void AddToSong(Words words) {
        for (const std::string_view name : words) {
            const auto section = FindNamed(Sections, name);
            if (section == Sections.end()) {
                Fail("unknown section " + Quoted(name));
            }
            Song.push_back(static_cast<std::size_t>(section - Sections.begin()));
        }
    }

    // Lays the sections of the song one behind the other.
    void Arrange() {
        CloseBlock();
        if (Song.empty()) {
            Fail("there is no song");
        }
        for (const std::size_t index : Song) {
            const Section& section = Sections[index];
            Result.Sections.push_back({.Name = section.Name, .Bar = Result.Bars});
            for (const Part& part : section.Parts) {
                for (int bar = 0; bar < section.Bars; bar += part.Bars) {
                    for (Note note : part.Notes) {
                        note.Start += Result.Bars + bar;
                        Result.Notes.push_back(note);
                    }
                }
            }
            Result.Bars += section.Bars;
        }
        std::stable_sort(
            Result.Notes.begin(), Result.Notes.end(), [](const Note& a, const Note& b) {
                return std::tie(a.Instrument, a.Start) < std::tie(b.Instrument, b.Start);
            });
    }

    const std::string& Name;
    int Line = 0;
    Score Result;
    Block OpenBlock = Block::Piece;
    std::map<std::string, Pattern, std::less<>> Patterns;
    Pattern* Open = nullptr; // the one that lines are added to
    std::size_t Held = 0;    // how many of its last notes - would hold
    std::vector<Section> Sections;
    std::vector<std::size_t> Song;
};

} // namespace

Score ParseScore(std::string_view text, const std::string& file) {
    return Parser(file).Parse(text);
}

} // namespace Wirefall::Music
