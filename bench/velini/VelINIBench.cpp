// How fast velINI reads and writes beside two well-known libraries, how its time grows with the
// file, and how much memory a document takes.
//
// Each comparison runs its parties in turn on the same file in the same run and reports the median
// of the processor times of each and their ratio, so that it holds on a busy machine too. Each
// measurement starts with a heap that has given its free memory back, as in a program that has just
// started: what an earlier one left behind would make more of a difference than the libraries do.
// The numbers to look at are the counters at the end of each line; the times are those of a whole
// round. With
// --benchmark_min_time=5 there are rounds enough for one without a disturbance.

#include "velini/VelINIStream.h"
#include "velini/support/EqualHashes.h"
#include "velini/support/SampleFiles.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <ini.h>
#include <iostream>
#include <malloc.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Both libraries deal in bytes here, with no conversion in the other one's way.
#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION
#include <SimpleIni.h>

namespace {

using velINI::TextEncoding;
using velINI::velINIStream;

constexpr std::size_t FileSize = 1'000'000;

// A file in the temporary folder, gone in the end.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& text = {})
        : FilePath((std::filesystem::temp_directory_path() /
                    ("bench_velini_" + std::to_string(++count) + ".ini"))
                       .string()) {
        std::ofstream(FilePath, std::ios::binary) << text;
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(FilePath, ignored);
    }

    const std::string& Path() const { return FilePath; }

private:
    static inline int count = 0;
    std::string FilePath;
};

// The processor times that one party took.
class Times {
public:
    template <class Action>
    void Measure(const Action& action) {
        malloc_trim(0);
        const std::clock_t start = std::clock();
        action();
        const std::clock_t time = std::clock() - start;
        Seconds.push_back(static_cast<double>(time) / CLOCKS_PER_SEC);
    }

    double MedianMs() const {
        std::vector<double> sorted = Seconds;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2] * 1e3;
    }
    double MegabytesPerSecond(std::size_t bytes) const {
        return static_cast<double>(bytes) / 1e3 / MedianMs();
    }

private:
    std::vector<double> Seconds;
};

void Require(bool worked) {
    if (!worked) {
        std::cerr << "A library could not handle the benchmark's file.\n";
        std::exit(EXIT_FAILURE);
    }
}

// Counts the entries: the C library builds no document, this is the least a user can do with it.
int CountEntry(void* count, const char* /*section*/, const char* /*name*/, const char* /*value*/) {
    ++*static_cast<std::size_t*>(count);
    return 1;
}

void ReadSideBySide(benchmark::State& state) {
    const std::string text = velINI::Testing::MakeRealisticFile(FileSize);
    const ScratchFile file(text);
    Times own;
    Times simpleIni;
    Times inih;
    while (state.KeepRunning()) {
        own.Measure([&] {
            velINIStream document;
            Require(document.ReadFile(file.Path()));
        });
        simpleIni.Measure([&] {
            CSimpleIniCaseA document(true);
            Require(document.LoadFile(file.Path().c_str()) == SI_OK);
        });
        inih.Measure([&] {
            std::size_t entries = 0;
            Require(ini_parse(file.Path().c_str(), CountEntry, &entries) == 0);
        });
    }
    state.counters["velINI_MBps"] = own.MegabytesPerSecond(text.size());
    state.counters["SimpleIni_MBps"] = simpleIni.MegabytesPerSecond(text.size());
    state.counters["inih_MBps"] = inih.MegabytesPerSecond(text.size());
    state.counters["times_SimpleIni"] = simpleIni.MedianMs() / own.MedianMs();
}
BENCHMARK(ReadSideBySide)->Unit(benchmark::kMillisecond);

// The C library cannot write.
void WriteSideBySide(benchmark::State& state) {
    const std::string text = velINI::Testing::MakeRealisticFile(FileSize);
    const ScratchFile file(text);
    const ScratchFile ownOutput;
    const ScratchFile simpleIniOutput;
    velINIStream document;
    Require(document.ReadFile(file.Path()));
    CSimpleIniCaseA peer(true);
    Require(peer.LoadFile(file.Path().c_str()) == SI_OK);

    Times own;
    Times simpleIni;
    while (state.KeepRunning()) {
        own.Measure(
            [&] { Require(document.WriteFile(ownOutput.Path(), false, TextEncoding::None)); });
        simpleIni.Measure(
            [&] { Require(peer.SaveFile(simpleIniOutput.Path().c_str(), false) == SI_OK); });
    }
    state.counters["velINI_MBps"] = own.MegabytesPerSecond(text.size());
    state.counters["SimpleIni_MBps"] = simpleIni.MegabytesPerSecond(text.size());
    state.counters["times_SimpleIni"] = simpleIni.MedianMs() / own.MedianMs();
}
BENCHMARK(WriteSideBySide)->Unit(benchmark::kMillisecond);

std::string KeyName(std::size_t number) { return "key" + std::to_string(number); }

// A thousand of the names, all over the list.
std::vector<std::string> SomeNames(std::size_t count) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < 1'000; ++i) {
        names.push_back(KeyName(i * 7'919 % count));
    }
    return names;
}

// A thousand look-ups by name in one section that was read from a file.
void LookUpSideBySide(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const ScratchFile file(velINI::Testing::MakeKeys(count));
    const std::vector<std::string> names = SomeNames(count);
    velINIStream document;
    Require(document.ReadFile(file.Path()));
    CSimpleIniCaseA peer(true);
    Require(peer.LoadFile(file.Path().c_str()) == SI_OK);
    Times own;
    Times simpleIni;
    while (state.KeepRunning()) {
        own.Measure([&] {
            for (const std::string& name : names) {
                Require(!document.GetValue("Section", name, "").empty());
            }
        });
        simpleIni.Measure([&] {
            for (const std::string& name : names) {
                Require(!std::string(peer.GetValue("Section", name.c_str(), "")).empty());
            }
        });
    }
    state.counters["velINI_ms"] = own.MedianMs();
    state.counters["SimpleIni_ms"] = simpleIni.MedianMs();
    state.counters["times_SimpleIni"] = simpleIni.MedianMs() / own.MedianMs();
}
BENCHMARK(LookUpSideBySide)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void SetSideBySide(benchmark::State& state) {
    constexpr std::size_t Count = 32'000;
    Times own;
    Times simpleIni;
    while (state.KeepRunning()) {
        own.Measure([&] {
            velINIStream document;
            for (std::size_t i = 0; i < Count; ++i) {
                document.SetValue("Section", KeyName(i), "value", false);
            }
        });
        simpleIni.Measure([&] {
            CSimpleIniCaseA document(true);
            for (std::size_t i = 0; i < Count; ++i) {
                Require(document.SetValue("Section", KeyName(i).c_str(), "value") >= 0);
            }
        });
    }
    state.counters["velINI_ms"] = own.MedianMs();
    state.counters["SimpleIni_ms"] = simpleIni.MedianMs();
    state.counters["times_SimpleIni"] = simpleIni.MedianMs() / own.MedianMs();
}
BENCHMARK(SetSideBySide)->Unit(benchmark::kMillisecond);

// Four times the elements should take about four times as long.
void NumberElements(benchmark::State& state) {
    constexpr std::size_t Few = 8'000;
    constexpr std::size_t Many = 32'000;
    const auto fill = [](std::size_t count) {
        velINI::IniSection section;
        for (std::size_t i = 0; i < count; ++i) {
            section.SetArrayElement("list", "value", false, false, "", "", false);
        }
    };
    Times few;
    Times many;
    while (state.KeepRunning()) {
        few.Measure([&] { fill(Few); });
        many.Measure([&] { fill(Many); });
    }
    state.counters["many_ms"] = many.MedianMs();
    state.counters["growth"] = many.MedianMs() / few.MedianMs();
}
BENCHMARK(NumberElements)->Unit(benchmark::kMillisecond);

// Names that a hash without a secret would send to one slot, beside as many of the same length.
void HostileNames(benchmark::State& state) {
    constexpr std::size_t Count = 40'000;
    const auto keys = [](const std::vector<std::string>& names, const char* open,
                         const char* close) {
        std::string text;
        for (const std::string& name : names) {
            text.append(open).append(name).append(close);
        }
        return text;
    };
    const std::vector<std::string> hostile = velINI::Testing::NamesOfEqualHash(Count);
    std::vector<std::string> harmless;
    for (std::size_t i = 0; i < Count; ++i) {
        harmless.push_back("harmless" + std::to_string(10'000'000 + i));
    }
    const ScratchFile hostileKeys(keys(hostile, "", "=1\n"));
    const ScratchFile harmlessKeys(keys(harmless, "", "=1\n"));
    const ScratchFile hostileSections(keys(hostile, "[", "]\nk=1\n"));
    const ScratchFile harmlessSections(keys(harmless, "[", "]\nk=1\n"));
    const std::array<const ScratchFile*, 4> files = {&hostileKeys, &harmlessKeys, &hostileSections,
                                                     &harmlessSections};
    std::array<Times, files.size()> times;
    while (state.KeepRunning()) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            times[i].Measure([&] {
                velINIStream document;
                Require(document.ReadFile(files[i]->Path()));
            });
        }
    }
    state.counters["keys_ms"] = times[0].MedianMs();
    state.counters["keys_times_harmless"] = times[0].MedianMs() / times[1].MedianMs();
    state.counters["sections_ms"] = times[2].MedianMs();
    state.counters["sections_times_harmless"] = times[2].MedianMs() / times[3].MedianMs();
}
BENCHMARK(HostileNames)->Unit(benchmark::kMillisecond);

// The most memory that a process of its own ever held while it ran the action, without what it
// holds before.
template <class Action>
double PeakBytes(const Action& action) {
    std::array<int, 2> ends{};
    Require(pipe(ends.data()) == 0);
    malloc_trim(0);
    const pid_t child = fork();
    Require(child >= 0);
    const auto peak = [] {
        struct rusage usage {};
        getrusage(RUSAGE_SELF, &usage);
        return static_cast<double>(usage.ru_maxrss) * 1024;
    };
    if (child == 0) {
        const double before = peak();
        action();
        const double bytes = peak() - before;
        _exit(write(ends[1], &bytes, sizeof bytes) == sizeof bytes ? 0 : 1);
    }
    close(ends[1]);
    double bytes = 0;
    Require(read(ends[0], &bytes, sizeof bytes) == sizeof bytes);
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return bytes;
}

// How much memory it takes to read a file and hold the document, at the most.
void Memory(benchmark::State& state, std::string (*makeText)()) {
    const ScratchFile file(makeText());
    const auto size = static_cast<double>(std::filesystem::file_size(file.Path()));
    double own = 0;
    double simpleIni = 0;
    while (state.KeepRunning()) {
        own = PeakBytes([&] {
            velINIStream document;
            Require(document.ReadFile(file.Path()));
        });
        simpleIni = PeakBytes([&] {
            CSimpleIniCaseA document(true);
            Require(document.LoadFile(file.Path().c_str()) == SI_OK);
        });
    }
    state.counters["file_MB"] = size / 1e6;
    state.counters["velINI_MB"] = own / 1e6;
    state.counters["times_file"] = own / size;
    state.counters["SimpleIni_MB"] = simpleIni / 1e6;
}
BENCHMARK_CAPTURE(Memory, RealisticFile, [] {
    return velINI::Testing::MakeRealisticFile(FileSize);
})->Iterations(1);
BENCHMARK_CAPTURE(Memory, MillionKeys, [] {
    std::string text = "[Section]\n";
    for (int i = 1'000'000; i < 2'000'000; ++i) {
        text += "key" + std::to_string(i) + " = value number " + std::to_string(i) + "....\n";
    }
    return text;
})->Iterations(1);
BENCHMARK_CAPTURE(Memory, BlankLines, [] {
    return velINI::Testing::MakeBlankLines(2'000'000);
})->Iterations(1);

// Ten times the lines should take about ten times as long.
void Growth(benchmark::State& state, std::string (*makeText)(std::size_t)) {
    constexpr std::size_t FewLines = 10'000;
    constexpr std::size_t ManyLines = 100'000;
    const ScratchFile fewFile(makeText(FewLines));
    const ScratchFile manyFile(makeText(ManyLines));
    const ScratchFile output;
    Times readFew;
    Times readMany;
    Times writeFew;
    Times writeMany;
    const auto measure = [&](const ScratchFile& file, Times& read, Times& write) {
        velINIStream document;
        read.Measure([&] { Require(document.ReadFile(file.Path())); });
        write.Measure(
            [&] { Require(document.WriteFile(output.Path(), false, TextEncoding::None)); });
    };
    while (state.KeepRunning()) {
        measure(fewFile, readFew, writeFew);
        measure(manyFile, readMany, writeMany);
    }
    state.counters["read_few_ms"] = readFew.MedianMs();
    state.counters["read_many_ms"] = readMany.MedianMs();
    state.counters["read_growth"] = readMany.MedianMs() / readFew.MedianMs();
    state.counters["write_growth"] = writeMany.MedianMs() / writeFew.MedianMs();
}
BENCHMARK_CAPTURE(Growth, Keys, velINI::Testing::MakeKeys)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, Sections, velINI::Testing::MakeSections)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, Comments, velINI::Testing::MakeComments)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, BlankLines, velINI::Testing::MakeBlankLines)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, Elements, velINI::Testing::MakeElements)->Unit(benchmark::kMillisecond);

} // namespace
