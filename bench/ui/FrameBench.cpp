// The time of one frame of each screen on the software renderer at 1280 by 720, beside two
// yardsticks that draw the same picture: its rectangles in ready-made batches of one colour (what
// the frame would cost if nothing had to be computed), and a call of SDL for each rectangle (what
// it would cost without batches).

#include "FrameRecorder.h"
#include "base/Clock.h"
#include "support/Scenes.h"
#include "support/SoftwareCanvas.h"
#include "ui/BinaryRain.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
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

struct BenchmarkedFrame {
    const char* Name;
    std::string_view SceneName;
    /// The digits of the menu's background are drawn anew in each frame, which the game does every
    /// tenth frame or so.
    bool RedrawRain = false;
};

constexpr BenchmarkedFrame Frames[] = {
    {"Playing", "board-busy"},      {"PlayingFirstBoard", "board-first"},
    {"MainMenu", "menu-saved-run"}, {"MainMenuNewDigits", "menu-saved-run", true},
    {"NoteBoxes", "notes"},
};

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

    /// Executes what the renderer has queued.
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

void MeasureFrame(benchmark::State& state, const BenchmarkedFrame& frame) {
    FrameUnderTest test(frame);
    for ([[maybe_unused]] auto _ : state) {
        test.Draw();
        test.Flush();
    }
}

void MeasureReplay(benchmark::State& state, const BenchmarkedFrame& frame,
                   Recording (*arrange)(const Recording&)) {
    FrameUnderTest test(frame);
    const Recording recording = arrange(test.Calls());
    if (test.PictureOf([&] { test.ReplayFrame(recording); }) !=
        test.PictureOf([&] { test.Draw(); })) {
        state.SkipWithError("the replay is another picture than the frame");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        test.ReplayFrame(recording);
        test.Flush();
    }
    state.counters["calls"] = static_cast<double>(recording.size());
}

void RegisterAll() {
    for (const BenchmarkedFrame& frame : Frames) {
        const std::string name = frame.Name;
        const auto add = [&](const char* what, const auto& measure) {
            benchmark::RegisterBenchmark((name + "/" + what).c_str(), measure)
                ->Unit(benchmark::kMicrosecond);
        };
        add("Frame", [&frame](benchmark::State& state) { MeasureFrame(state, frame); });
        add("ReplayedBatches",
            [&frame](benchmark::State& state) { MeasureReplay(state, frame, Batched); });
        add("OneCallPerRectangle",
            [&frame](benchmark::State& state) { MeasureReplay(state, frame, Unbatched); });
    }
}

const bool Registered = (RegisterAll(), true);

} // namespace

} // namespace Wirefall::Benchmarks
