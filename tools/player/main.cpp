// wirefall-player: plays the game by itself, keeps what it has played, and plays that again.

#include "player/Play.h"
#include "player/Report.h"
#include "player/Trace.h"
#include "player/Workers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace {

using namespace Wirefall;

constexpr const char* Usage =
    R"(Usage: wirefall-player [OPTION VALUE]...

Plays runs of the game, prints how they went, and exits with 0.

  --style perfect|person  all presses between two ticks, or a person's hands (perfect)
  --presses NUMBER        presses a second of the person; 0 for any number between two ticks
  --delay MS              how long the person takes to see what to do
  --seed NUMBER           of the first run (1337, with which the game starts); each further run
                          takes the next number
  --runs NUMBER           how many runs (1)
  --first-level NUMBER    the levels before it are complete by decree (1)
  --last-level NUMBER     a run that has completed this level is over (120)
  --jobs NUMBER           how many processes share the runs (one for each core)
  --csv FILE              a line of comma-separated values for each run
  --levels FILE           a line for each level of each run
  --infection FILE        a line for each second of each level of each run
  --record FILE           keep the one run as a play, with its trace beside it

  --replay FILE           play the play FILE (*.play) again and compare it with its trace; exits
                          with 1, after the first step and field that differ, if it does not match
  --trace FILE            write the trace of the play FILE anew
)";

struct Options {
    MatchSettings Match;
    std::uint32_t Runs = 1;
    std::uint32_t Jobs = std::max(std::thread::hardware_concurrency(), 1U);
    std::string RunsFile;
    std::string LevelsFile;
    std::string InfectionFile;
    std::string RecordFile;
    std::vector<std::string> Replays;
    std::vector<std::string> Traces;
};

std::uint32_t ParseNumber(const std::string& text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) {
        throw std::runtime_error("'" + text + "' is no number");
    }
    return number;
}

std::int32_t ParseSmallNumber(const std::string& text) {
    constexpr std::uint32_t Most = 1000000;
    const std::uint32_t number = ParseNumber(text);
    if (number > Most) {
        throw std::runtime_error(text + " is too large");
    }
    return static_cast<std::int32_t>(number);
}

PlayStyle ParseStyle(const std::string& name) {
    if (name != "perfect" && name != "person") {
        throw std::runtime_error("'" + name + "' is no style");
    }
    return name == "perfect" ? PerfectStyle : PersonStyle;
}

struct OptionRow {
    std::string_view Name;
    void (*Take)(Options& options, const std::string& value);
};

constexpr std::array<OptionRow, 14> OptionRows = {{
    {"--style", [](Options& o, const std::string& v) { o.Match.Style = ParseStyle(v); }},
    {"--presses",
     [](Options& o, const std::string& v) {
         o.Match.Style.PressesPerSecond = ParseSmallNumber(v);
     }},
    {"--delay",
     [](Options& o, const std::string& v) { o.Match.Style.DelayMs = ParseSmallNumber(v); }},
    {"--seed", [](Options& o, const std::string& v) { o.Match.Seed = ParseNumber(v); }},
    {"--runs", [](Options& o, const std::string& v) { o.Runs = ParseNumber(v); }},
    {"--first-level",
     [](Options& o, const std::string& v) { o.Match.FirstLevel = ParseSmallNumber(v); }},
    {"--last-level",
     [](Options& o, const std::string& v) { o.Match.LastLevel = ParseSmallNumber(v); }},
    {"--jobs", [](Options& o, const std::string& v) { o.Jobs = std::max(ParseNumber(v), 1U); }},
    {"--csv", [](Options& o, const std::string& v) { o.RunsFile = v; }},
    {"--levels", [](Options& o, const std::string& v) { o.LevelsFile = v; }},
    {"--infection", [](Options& o, const std::string& v) { o.InfectionFile = v; }},
    {"--record", [](Options& o, const std::string& v) { o.RecordFile = v; }},
    {"--replay", [](Options& o, const std::string& v) { o.Replays.push_back(v); }},
    {"--trace", [](Options& o, const std::string& v) { o.Traces.push_back(v); }},
}};

Options ParseOptions(std::span<char*> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const std::string name = arguments[i];
        const auto row = std::ranges::find(OptionRows, name, &OptionRow::Name);
        if (row == OptionRows.end() || i + 1 == arguments.size()) {
            throw std::runtime_error(row == OptionRows.end() ? "There is no option " + name
                                                             : name + " needs a value");
        }
        row->Take(options, arguments[i + 1]);
    }
    return options;
}

std::string ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("Unable to read " + path);
    }
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void WriteWholeFile(const std::string& path, const std::string& content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    if (!file) {
        throw std::runtime_error("Unable to write " + path);
    }
}

std::string TracePath(const std::string& play) {
    return play.substr(0, play.rfind(".play")) + ".trace";
}

std::vector<PlayCommand> ReadPlay(const std::string& path) {
    try {
        return ParsePlay(ReadWholeFile(path));
    } catch (const PlayError& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

RunReport Record(const MatchSettings& match, const std::string& path) {
    PlayWriter writer;
    writer.Add('s', match.Seed);
    for (std::int32_t level = 1; level < match.FirstLevel; ++level) {
        writer.Add('c');
        writer.Add('n');
    }
    MatchObserver observer;
    observer.OnPress = [&writer](std::uint32_t code) { writer.AddPress(code); };
    observer.OnStep = [&writer] { writer.Add('t'); };
    observer.OnLevel = [&writer] { writer.Add('n'); };
    RunReport report = PlayMatch(match, observer);
    WriteWholeFile(path, FormatPlay(writer.Play()));
    WriteWholeFile(TracePath(path), MakeTrace(writer.Play()));
    return report;
}

// False when it comes out differently.
bool Replay(const std::string& path) {
    const std::vector<PlayCommand> play = ReadPlay(path);
    const auto difference = CompareWithTrace(play, ReadWholeFile(TracePath(path)));
    std::printf("%s: %s\n", path.c_str(),
                difference ? Describe(*difference).c_str() : "the same to the end");
    return !difference;
}

void PlayRuns(const Options& options) {
    std::vector<RunReport> reports;
    if (!options.RecordFile.empty()) {
        reports.push_back(Record(options.Match, options.RecordFile));
    } else {
        std::vector<MatchSettings> matches(options.Runs, options.Match);
        for (std::size_t i = 0; i < matches.size(); ++i) {
            matches[i].Seed += static_cast<std::uint32_t>(i);
        }
        reports = PlayMatches(matches, options.Jobs);
    }
    const auto write = [&](const std::string& path, auto makeText) {
        if (!path.empty()) {
            WriteWholeFile(path, makeText(options.Match.Style, reports));
        }
    };
    write(options.RunsFile, RunsCsv);
    write(options.LevelsFile, LevelsCsv);
    write(options.InfectionFile, InfectionCsv);
    std::printf("%s", RunsTable(reports).c_str());
}

} // namespace

int main(int argc, char* argv[]) {
    try {
        const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
        if (argc == 2 && std::string_view(arguments[1]) == "--help") {
            std::printf("%s", Usage);
            return EXIT_SUCCESS;
        }
        const Options options = ParseOptions(arguments.subspan(1));
        for (const std::string& path : options.Traces) {
            WriteWholeFile(TracePath(path), MakeTrace(ReadPlay(path)));
        }
        bool same = true;
        for (const std::string& path : options.Replays) {
            same = Replay(path) && same;
        }
        if (options.Traces.empty() && options.Replays.empty()) {
            PlayRuns(options);
        }
        return same ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "wirefall-player: %s\n", error.what()));
        return EXIT_FAILURE;
    }
}
