// A window manager may refuse a size. Here SDL itself does, by the window's largest size; how long
// the game waits for the size is counted by the linker's --wrap, and no time passes.

#include "display/DisplaySettings.h"
#include "game/GameApp.h"
#include "support/VideoFixture.h"

#include <SDL3/SDL_timer.h>
#include <gtest/gtest.h>

namespace {

Uint32 WaitedMs = 0;

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the linker's name
extern "C" void __wrap_SDL_Delay(Uint32 ms) { WaitedMs += ms; }

namespace Wirefall {
namespace {

class RefusedSize : public testing::Test {
protected:
    // How long the game waits, with a window that can be no larger than that.
    Uint32 WaitWithAtMost(int width, int height) const {
        SDL_SetWindowMaximumSize(Window.get(), width, height);
        GameApp app;
        app.Fullscreen = false;
        app.Resolutions = {{1024, 768}};
        WaitedMs = 0;
        ApplyDisplaySettings(app, Window.get(), Renderer.get());
        return WaitedMs;
    }

    Video Dummy{"dummy"};
    WindowPointer Window = MakeWindow(640, 480);
    RendererPointer Renderer{SDL_CreateRenderer(Window.get(), SDL_SOFTWARE_RENDERER)};
};

TEST_F(RefusedSize, HoldsUpTheFrameForATenthOfASecondAtMost) {
    const Uint32 waited = WaitWithAtMost(800, 600);
    EXPECT_GT(waited, 0U);
    EXPECT_LE(waited, 100U);
}

TEST_F(RefusedSize, IsTheOnlyOneThatIsWaitedFor) { EXPECT_EQ(WaitWithAtMost(2000, 2000), 0U); }

} // namespace
} // namespace Wirefall
