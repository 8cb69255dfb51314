// What sound costs: the start beside the opening of a bare mixer, a frame in which nothing happens,
// the synthesis of the effects, and the memory of it all. On SDL's dummy driver, with the music
// that ships.

#include "audio/AudioEngine.h"
#include "audio/MusicPlayer.h"
#include "audio/SoundEffects.h"
#include "game/GameApp.h"
#include "support/BoardDrawing.h"
#include "support/TestHome.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <malloc.h>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace Wirefall;

constexpr SDL_AudioSpec DeviceFormat = {SDL_AUDIO_S16LE, 2, 44100};

double Seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double HeapBytes() {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks) + static_cast<double>(heap.hblkhd);
}

// An engine in a home of its own, and the bare mixer that it is compared with.
class Audio : public benchmark::Fixture {
protected:
    void Open() {
        MIX_Init();
        Bare.reset(MIX_CreateMixerDevice(SDL_AUDIO_DEVICE_DEFAULT_PLAYBACK, &DeviceFormat));
    }
    void Close() {
        Bare.reset();
        MIX_Quit();
    }

    bool Init() { return InitAudio(App, Music) && !Music.Patterns.empty(); }

    std::set<std::string> Files() const {
        std::set<std::string> files;
        for (const auto& pattern : Music.Patterns) {
            files.insert(pattern->ResolvedPath);
        }
        return files;
    }

    Testing::TestHome Home;
    GameApp App;
    MusicRuntime Music;
    MixerHandle Bare;
};

// The engine, a bare mixer, and a bare mixer that opens the same files, in turn. The time is that
// of the engine; the counters have the best of each.
BENCHMARK_DEFINE_F(Audio, Start)(benchmark::State& state) {
    double bestInit = 1e9;
    double bestBare = 1e9;
    double bestFiles = 1e9;
    for (auto _ : state) {
        double start = Seconds();
        if (!Init()) {
            state.SkipWithError("There is no music");
            break;
        }
        const double init = Seconds() - start;
        bestInit = std::min(bestInit, init);
        state.SetIterationTime(init);
        const std::set<std::string> files = Files();
        ShutdownAudio(Music, false);

        start = Seconds();
        Open();
        bestBare = std::min(bestBare, Seconds() - start);
        std::vector<AudioHandle> loaded;
        loaded.reserve(files.size());
        for (const std::string& file : files) {
            loaded.emplace_back(MIX_LoadAudio(Bare.get(), file.c_str(), false));
        }
        bestFiles = std::min(bestFiles, Seconds() - start);
        loaded.clear();
        Close();
    }
    state.counters["init_ms"] = bestInit * 1e3;
    state.counters["bare_ms"] = bestBare * 1e3;
    state.counters["files_ms"] = bestFiles * 1e3;
    state.counters["over_bare"] = bestInit / bestBare;
    state.counters["over_files"] = bestInit / bestFiles;
}
BENCHMARK_REGISTER_F(Audio, Start)->UseManualTime();

// What the heap holds beyond that of a bare mixer, with the music playing.
BENCHMARK_DEFINE_F(Audio, Memory)(benchmark::State& state) {
    for (auto _ : state) {
        double before = HeapBytes();
        Open();
        const double bare = HeapBytes() - before;
        Close();
        before = HeapBytes();
        if (!Init()) {
            state.SkipWithError("There is no music");
            break;
        }
        UpdateMusic(App, Music);
        const double engine = HeapBytes() - before;
        double files = 0.0;
        for (const std::string& file : Files()) {
            files += static_cast<double>(std::filesystem::file_size(file));
        }
        ShutdownAudio(Music, false);
        state.counters["files"] = files;
        state.counters["over_bare"] = engine - bare;
        state.counters["over_files"] = engine - bare - files;
    }
}
BENCHMARK_REGISTER_F(Audio, Memory)->Iterations(1);

// A frame of the menu and one of a board, with music and no news.
BENCHMARK_DEFINE_F(Audio, QuietFrame)(benchmark::State& state) {
    Testing::InstallLiveRun(Testing::DrawnRun({"→────────⇐"}));
    App.Screen = state.range(0) == 0 ? AppScreen::MainMenu : AppScreen::Playing;
    if (!Init()) {
        state.SkipWithError("There is no music");
    }
    Music.FadeInMs = 0;
    UpdateMusic(App, Music);
    for (auto _ : state) {
        UpdateMusic(App, Music);
        DrainSoundQueue(App, Music);
    }
    ShutdownAudio(Music, false);
}
BENCHMARK_REGISTER_F(Audio, QuietFrame)->Arg(0)->Arg(1)->ArgName("board");

void SynthesizeAllEffects(benchmark::State& state) {
    for (auto _ : state) {
        for (const SfxSpec& row : SfxSpecs) {
            benchmark::DoNotOptimize(SynthesizeSfx(row, DeviceFormat.freq, DeviceFormat.channels));
        }
    }
}
BENCHMARK(SynthesizeAllEffects);

} // namespace
