// The time of one frame of each screen on the software renderer at 1280 by 720, beside two
// yardsticks that draw the same picture: its rectangles in ready-made batches of one colour (what
// the frame would cost if nothing had to be computed), and a call of SDL for each rectangle (what
// it would cost without batches). Each is measured twice: with the pixels, which SDL's software
// renderer fills one by one and which are the same for all three, and up to where SDL has taken
// the calls into its queue, which is the part that the game has in its hands.

#include "FrameRecorder.h"
#include "base/Clock.h"
#include "draw/BinaryRain.h"
#include "support/Scenes.h"
#include "support/SoftwareCanvas.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Wirefall::Benchmarks {

namespace {

using Testing::Picture;
using Testing::Scene;
using Testing::SceneWorld;
using Testing::SoftwareCanvas;

constexpr std::int32_t CanvasWidth = 1280;
constexpr benchmark::IterationCount QueueingTurns = 25;

struct BenchmarkedFrame {
    const char* Name;
    std::string_view SceneName;
    // The digits of the menu's background are drawn anew in each frame, which the game does every
    // tenth frame or so.
    bool RedrawRain = false;
};

constexpr auto Frames = std::to_array<BenchmarkedFrame>({
    {"Playing", "board-busy"},
    {"PlayingFirstBoard", "board-first"},
    {"MainMenu", "menu-saved-run"},
    {"MainMenuNewDigits", "menu-saved-run", true},
    {"NoteBoxes", "notes"},
    {"Pause", "pause"},
    {"Help", "help-from-menu"},
    {"Credits", "credits-middle"},
    {"LevelComplete", "level-complete"},
    {"GameOver", "game-over"},
    {"OptionsControls", "options-controls-gamepad-first"},
    {"OptionsGraphics", "options-graphics-first"},
});

const Scene& SceneByName(std::string_view name) {
    const auto scenes = Testing::AllScenes();
    const auto found = std::find_if(scenes.begin(), scenes.end(),
                                    [name](const Scene& scene) { return scene.Name == name; });
    if (found == scenes.end()) {
        throw std::runtime_error("no scene of the name " + std::string(name));
    }
    return *found;
}

// One frame of the game on a canvas that has drawn it before, so that every cache is warm.
class FrameUnderTest {
public:
    explicit FrameUnderTest(const BenchmarkedFrame& frame)
        : Shown(SceneByName(frame.SceneName)), RedrawRain(frame.RedrawRain) {
        Testing::EnterScene(Shown, CanvasWidth, World);
        Draw();
        Flush();
        Recorded = Record([this] { Draw(); });
        Flush();
    }

    void Draw() {
        if (RedrawRain) {
            RainCache.Valid = false;
        }
        Shown.Draw(Canvas.Renderer(), World);
    }

    void ReplayFrame(const Recording& recording) { Replay(Canvas.Renderer(), recording); }

    const Recording& Calls() const { return Recorded; }

    // Executes what the renderer has queued.
    void Flush() { SDL_FlushRenderer(Canvas.Renderer()); }

    Picture PictureOf(const std::function<void()>& draw) {
        Canvas.Clear();
        draw();
        return Canvas.Read();
    }

private:
    SoftwareCanvas Canvas;
    SceneWorld World;
    const Scene& Shown;
    bool RedrawRain;
    Recording Recorded;
};

// Times the drawing of the same picture over and over, with its pixels or without. In processor
// time, so that it does not matter what else the machine does.
void Repeat(benchmark::State& state, FrameUnderTest& test, bool withPixels,
            const std::function<void()>& draw) {
    for ([[maybe_unused]] auto _ : state) {
        const std::clock_t start = std::clock();
        draw();
        if (withPixels) {
            test.Flush();
        }
        const std::clock_t end = std::clock();
        state.SetIterationTime(static_cast<double>(end - start) / CLOCKS_PER_SEC);
        test.Flush();
    }
}

void MeasureFrame(benchmark::State& state, const BenchmarkedFrame& frame, bool withPixels) {
    FrameUnderTest test(frame);
    Repeat(state, test, withPixels, [&] { test.Draw(); });
}

void MeasureReplay(benchmark::State& state, const BenchmarkedFrame& frame, bool withPixels,
                   Recording (*arrange)(const Recording&)) {
    FrameUnderTest test(frame);
    const Recording recording = arrange(test.Calls());
    if (test.PictureOf([&] { test.ReplayFrame(recording); }) !=
        test.PictureOf([&] { test.Draw(); })) {
        state.SkipWithError("the replay is another picture than the frame");
        return;
    }
    Repeat(state, test, withPixels, [&] { test.ReplayFrame(recording); });
    state.counters["calls"] = static_cast<double>(recording.size());
}

void RegisterAll() {
    for (const BenchmarkedFrame& frame : Frames) {
        for (const bool withPixels : {true, false}) {
            const std::string name = std::string(frame.Name) + (withPixels ? "/" : "/Queueing/");
            const auto add = [&](const char* what, const auto& measure) {
                auto* const added = benchmark::RegisterBenchmark((name + what).c_str(), measure);
                added->Unit(benchmark::kMicrosecond)->UseManualTime();
                if (!withPixels) {
                    // Left to itself it would wait for its minimum of measured time, of which each
                    // turn has little beside the pixels that are not measured.
                    added->Iterations(QueueingTurns);
                }
            };
            add("Frame", [&frame, withPixels](benchmark::State& state) {
                MeasureFrame(state, frame, withPixels);
            });
            add("ReplayedBatches", [&frame, withPixels](benchmark::State& state) {
                MeasureReplay(state, frame, withPixels, Batched);
            });
            add("OneCallPerRectangle", [&frame, withPixels](benchmark::State& state) {
                MeasureReplay(state, frame, withPixels, Unbatched);
            });
        }
    }
}

[[maybe_unused]] const bool Registered = (RegisterAll(), true);

} // namespace

} // namespace Wirefall::Benchmarks
