// How fast velINI reads and writes beside two well-known libraries, how its time grows with the
// file, and how much memory a document takes.
//
// Each comparison runs its parties in turn on the same file in the same run and reports the best
// processor time of each, so that the ratio holds on a busy machine too. Each measurement starts
// with a heap that has given its free memory back, as in a program that has just started: what an
// earlier one left behind would make more of a difference than the libraries do. The numbers to
// look at are the counters at the end of each line; the times are those of a whole round. With
// --benchmark_min_time=5 there are rounds enough for one without a disturbance.

#include "velini/VelINIStream.h"
#include "velini/support/SampleFiles.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <ini.h>
#include <iostream>
#include <limits>
#include <malloc.h>
#include <string>

// Both libraries deal in bytes here, with no conversion in the other one's way.
#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION
#include <SimpleIni.h>

namespace {

using velINI::TextEncoding;
using velINI::velINIStream;

constexpr std::size_t FileSize = 1'000'000;

/// A file in the temporary folder, gone in the end.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& text = {})
        : path_((std::filesystem::temp_directory_path() /
                 ("bench_velini_" + std::to_string(++count) + ".ini"))
                    .string()) {
        std::ofstream(path_, std::ios::binary) << text;
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }

    const std::string& Path() const { return path_; }

private:
    static inline int count = 0;
    std::string path_;
};

/// The shortest processor time that one party took.
class BestTime {
public:
    template <class Action>
    void Measure(const Action& action) {
        malloc_trim(0);
        const std::clock_t start = std::clock();
        action();
        const std::clock_t time = std::clock() - start;
        seconds_ = std::min(seconds_, static_cast<double>(time) / CLOCKS_PER_SEC);
    }

    double Seconds() const { return seconds_; }
    double MegabytesPerSecond(std::size_t bytes) const {
        return static_cast<double>(bytes) / 1e6 / seconds_;
    }

private:
    double seconds_ = std::numeric_limits<double>::max();
};

void Require(bool worked) {
    if (!worked) {
        std::cerr << "A library could not handle the benchmark's file.\n";
        std::exit(EXIT_FAILURE);
    }
}

/// Counts the entries: the C library builds no document, this is the least a user can do with it.
int CountEntry(void* count, const char* /*section*/, const char* /*name*/, const char* /*value*/) {
    ++*static_cast<std::size_t*>(count);
    return 1;
}

void ReadSideBySide(benchmark::State& state) {
    const std::string text = velINI::Testing::MakeRealisticFile(FileSize);
    const ScratchFile file(text);
    BestTime own;
    BestTime simpleIni;
    BestTime inih;
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
    state.counters["times_SimpleIni"] = simpleIni.Seconds() / own.Seconds();
}
BENCHMARK(ReadSideBySide)->Unit(benchmark::kMillisecond);

/// The C library cannot write.
void WriteSideBySide(benchmark::State& state) {
    const std::string text = velINI::Testing::MakeRealisticFile(FileSize);
    const ScratchFile file(text);
    const ScratchFile ownOutput;
    const ScratchFile simpleIniOutput;
    velINIStream document;
    Require(document.ReadFile(file.Path()));
    CSimpleIniCaseA peer(true);
    Require(peer.LoadFile(file.Path().c_str()) == SI_OK);

    BestTime own;
    BestTime simpleIni;
    while (state.KeepRunning()) {
        own.Measure(
            [&] { Require(document.WriteFile(ownOutput.Path(), false, TextEncoding::None)); });
        simpleIni.Measure(
            [&] { Require(peer.SaveFile(simpleIniOutput.Path().c_str(), false) == SI_OK); });
    }
    state.counters["velINI_MBps"] = own.MegabytesPerSecond(text.size());
    state.counters["SimpleIni_MBps"] = simpleIni.MegabytesPerSecond(text.size());
    state.counters["times_SimpleIni"] = simpleIni.Seconds() / own.Seconds();
}
BENCHMARK(WriteSideBySide)->Unit(benchmark::kMillisecond);

/// What the program holds of the heap, the heap's own overhead included.
std::size_t HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void MemoryOfDocument(benchmark::State& state) {
    const std::string text = velINI::Testing::MakeRealisticFile(FileSize);
    const ScratchFile file(text);
    std::size_t bytes = 0;
    while (state.KeepRunning()) {
        const std::size_t before = HeapInUse();
        velINIStream document;
        Require(document.ReadFile(file.Path()));
        bytes = HeapInUse() - before;
    }
    state.counters["file_bytes"] = static_cast<double>(text.size());
    state.counters["document_bytes"] = static_cast<double>(bytes);
    state.counters["times_file"] = static_cast<double>(bytes) / static_cast<double>(text.size());
}
BENCHMARK(MemoryOfDocument)->Unit(benchmark::kMillisecond);

/// Ten times the lines should take about ten times as long.
void Growth(benchmark::State& state, std::string (*makeText)(std::size_t)) {
    constexpr std::size_t FewLines = 10'000;
    constexpr std::size_t ManyLines = 100'000;
    const ScratchFile fewFile(makeText(FewLines));
    const ScratchFile manyFile(makeText(ManyLines));
    const ScratchFile output;
    BestTime readFew;
    BestTime readMany;
    BestTime writeFew;
    BestTime writeMany;
    const auto measure = [&](const ScratchFile& file, BestTime& read, BestTime& write) {
        velINIStream document;
        read.Measure([&] { Require(document.ReadFile(file.Path())); });
        write.Measure(
            [&] { Require(document.WriteFile(output.Path(), false, TextEncoding::None)); });
    };
    while (state.KeepRunning()) {
        measure(fewFile, readFew, writeFew);
        measure(manyFile, readMany, writeMany);
    }
    state.counters["read_few_ms"] = readFew.Seconds() * 1e3;
    state.counters["read_many_ms"] = readMany.Seconds() * 1e3;
    state.counters["read_growth"] = readMany.Seconds() / readFew.Seconds();
    state.counters["write_growth"] = writeMany.Seconds() / writeFew.Seconds();
}
BENCHMARK_CAPTURE(Growth, Keys, velINI::Testing::MakeKeys)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, Sections, velINI::Testing::MakeSections)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, Comments, velINI::Testing::MakeComments)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, BlankLines, velINI::Testing::MakeBlankLines)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Growth, Elements, velINI::Testing::MakeElements)->Unit(benchmark::kMillisecond);

} // namespace
