#include "display/DisplaySettings.h"

#include "display/DisplayModes.h"
#include "display/LogicalCanvas.h"
#include "game/GameApp.h"
#include "support/CapturedLog.h"
#include "support/VideoFixture.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace Wirefall {

namespace {

using Testing::CapturedLog;

using Messages = std::vector<std::string>;

struct Placement {
    int X = 0;
    int Y = 0;
    int Width = 0;
    int Height = 0;

    bool operator==(const Placement&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Placement& p) {
    return out << p.Width << "x" << p.Height << " at " << p.X << "," << p.Y;
}

Placement PlacementOf(SDL_Window* window) {
    Placement placement;
    EXPECT_TRUE(SDL_GetWindowPosition(window, &placement.X, &placement.Y));
    EXPECT_TRUE(SDL_GetWindowSize(window, &placement.Width, &placement.Height));
    return placement;
}

bool IsFullscreen(SDL_Window* window) {
    return (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN) != 0;
}

// Windowed at one resolution.
GameApp WindowedApp(std::int32_t width, std::int32_t height) {
    GameApp app;
    app.Fullscreen = false;
    app.Resolutions = {{width, height}};
    return app;
}

GameApp FullscreenApp(std::int32_t width, std::int32_t height) {
    GameApp app = WindowedApp(width, height);
    app.Fullscreen = true;
    return app;
}

// A pointer that is no window to SDL: every call on it fails, as on a window that is gone.
SDL_Window* NotAWindow(SDL_Renderer* renderer) { return reinterpret_cast<SDL_Window*>(renderer); }

// On the dummy driver everything happens at once, on one display of 1024x768 whose usable part a
// hint can narrow.
class DisplaySettingsTest : public testing::Test {
protected:
    void MakeWindowAndRenderer(int width, int height, SDL_WindowFlags flags = 0) {
        Window = MakeWindow(width, height, flags);
        Renderer.reset(SDL_CreateRenderer(Window.get(), SDL_SOFTWARE_RENDERER));
        ASSERT_TRUE(Renderer) << SDL_GetError();
    }

    void Apply(GameApp& app) { ApplyDisplaySettings(app, Window.get(), Renderer.get()); }

    Video Dummy{"dummy"};
    WindowPointer Window;
    RendererPointer Renderer;
    CapturedLog Log;
};

TEST_F(DisplaySettingsTest, TheWindowTakesTheResolution) {
    MakeWindowAndRenderer(800, 600);
    GameApp app = WindowedApp(640, 480);
    Apply(app);
    EXPECT_EQ(PlacementOf(Window.get()).Width, 640);
    EXPECT_EQ(PlacementOf(Window.get()).Height, 480);
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST_F(DisplaySettingsTest, AResizedWindowIsCentred) {
    MakeWindowAndRenderer(800, 600);
    SDL_SetWindowPosition(Window.get(), 3, 4);
    GameApp app = WindowedApp(640, 480);
    Apply(app);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{192, 144, 640, 480}));
}

TEST_F(DisplaySettingsTest, AWindowThatKeepsItsSizeIsNotMoved) {
    MakeWindowAndRenderer(640, 480);
    SDL_SetWindowPosition(Window.get(), 3, 4);
    GameApp app = WindowedApp(640, 480);
    Apply(app);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{3, 4, 640, 480}));
}

TEST_F(DisplaySettingsTest, AChangeOfHeightAloneCentresToo) {
    MakeWindowAndRenderer(640, 400);
    SDL_SetWindowPosition(Window.get(), 3, 4);
    GameApp app = WindowedApp(640, 480);
    Apply(app);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{192, 144, 640, 480}));
}

TEST_F(DisplaySettingsTest, CentringKeepsToTheUsablePartOfTheDisplay) {
    SDL_SetHint(SDL_HINT_DISPLAY_USABLE_BOUNDS, "100,50,800,600");
    MakeWindowAndRenderer(800, 600);
    GameApp app = WindowedApp(641, 483);
    Apply(app);
    // Half of 159 and half of 117, rounded down.
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{179, 108, 641, 483}));
}

TEST_F(DisplaySettingsTest, AWindowLargerThanTheUsablePartBeginsWhereThatBegins) {
    SDL_SetHint(SDL_HINT_DISPLAY_USABLE_BOUNDS, "100,50,800,600");
    MakeWindowAndRenderer(800, 600);
    GameApp wide = WindowedApp(1920, 480);
    Apply(wide);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{100, 110, 1920, 480}));
    GameApp tall = WindowedApp(640, 1440);
    Apply(tall);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{180, 50, 640, 1440}));
}

TEST_F(DisplaySettingsTest, ASparePixelStaysBehindTheWindow) {
    SDL_SetHint(SDL_HINT_DISPLAY_USABLE_BOUNDS, "100,50,800,600");
    MakeWindowAndRenderer(800, 600);
    GameApp app = WindowedApp(799, 598);
    Apply(app);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{100, 51, 799, 598}));
}

TEST_F(DisplaySettingsTest, FullscreenIsBorderlessOnTheDesktop) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = FullscreenApp(1280, 720);
    Apply(app);
    EXPECT_TRUE(IsFullscreen(Window.get()));
    EXPECT_EQ(SDL_GetWindowFullscreenMode(Window.get()), nullptr);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{0, 0, 1024, 768}))
        << "The desktop's size, not the resolution's.";
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST_F(DisplaySettingsTest, FullscreenStaysFullscreen) {
    MakeWindowAndRenderer(1024, 768, SDL_WINDOW_FULLSCREEN);
    ASSERT_TRUE(IsFullscreen(Window.get()));
    GameApp app = FullscreenApp(1280, 720);
    Apply(app);
    EXPECT_TRUE(IsFullscreen(Window.get()));
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{0, 0, 1024, 768}));
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST_F(DisplaySettingsTest, LeavingFullscreenAlwaysCentres) {
    MakeWindowAndRenderer(640, 480);
    SDL_SetWindowPosition(Window.get(), 3, 4);
    GameApp app = FullscreenApp(640, 480);
    Apply(app);
    ASSERT_TRUE(IsFullscreen(Window.get()));
    app.Fullscreen = false;
    Apply(app);
    EXPECT_FALSE(IsFullscreen(Window.get()));
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{192, 144, 640, 480}));
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST_F(DisplaySettingsTest, LeavingFullscreenTakesANewResolution) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = FullscreenApp(640, 480);
    Apply(app);
    app.Fullscreen = false;
    app.Resolutions = {{800, 600}};
    Apply(app);
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{112, 84, 800, 600}));
}

TEST_F(DisplaySettingsTest, TheCanvasFollowsTheResolutionAndIsLetterboxed) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = FullscreenApp(3440, 1440);
    LogicalWidth = -1;
    Apply(app);
    EXPECT_EQ(LogicalWidth, 1728);
    int width = 0;
    int height = 0;
    SDL_RendererLogicalPresentation mode = SDL_LOGICAL_PRESENTATION_DISABLED;
    ASSERT_TRUE(SDL_GetRenderLogicalPresentation(Renderer.get(), &width, &height, &mode));
    EXPECT_EQ(width, 1728);
    EXPECT_EQ(height, 720);
    EXPECT_EQ(mode, SDL_LOGICAL_PRESENTATION_LETTERBOX);
}

TEST_F(DisplaySettingsTest, TheFrameClockIsRestarted) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = WindowedApp(640, 480);
    Apply(app);
    EXPECT_TRUE(app.ResetFrameClock);
}

TEST_F(DisplaySettingsTest, VerticalSyncFollowsTheOption) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = WindowedApp(640, 480);
    Apply(app);
    EXPECT_TRUE(app.VSyncActive);
    app.VSync = false;
    Apply(app);
    EXPECT_FALSE(app.VSyncActive);
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST_F(DisplaySettingsTest, ARendererThatRefusesVerticalSyncIsLogged) {
    MakeWindowAndRenderer(640, 480);
    // A renderer without a window has nothing to wait for.
    const SurfacePointer surface(SDL_CreateSurface(640, 480, SDL_PIXELFORMAT_ARGB8888));
    const RendererPointer refusing(SDL_CreateSoftwareRenderer(surface.get()));
    ASSERT_TRUE(refusing);
    GameApp app = WindowedApp(640, 480);
    app.VSyncActive = true;
    ApplyDisplaySettings(app, Window.get(), refusing.get());
    EXPECT_FALSE(app.VSyncActive);
    EXPECT_EQ(Log.Messages(), Messages{"SDL_SetRenderVSync(1) failed: That operation is not "
                                       "supported"});
    EXPECT_TRUE(app.ResetFrameClock);

    app.VSync = false;
    Log.Clear();
    ApplyDisplaySettings(app, Window.get(), refusing.get());
    EXPECT_EQ(Log.Messages(), Messages{}) << "Nothing was asked of it.";
}

TEST_F(DisplaySettingsTest, ARendererThatTellsNothingHasNoVerticalSync) {
    MakeWindowAndRenderer(800, 600);
    GameApp app = WindowedApp(640, 480);
    app.VSync = false;
    app.VSyncActive = true;
    ApplyDisplaySettings(app, Window.get(), nullptr);
    EXPECT_FALSE(app.VSyncActive);
    EXPECT_EQ(Log.Messages(),
              (Messages{"SDL_SetRenderVSync(0) failed: Parameter 'renderer' is invalid",
                        "SDL_GetRenderVSync failed: Parameter 'renderer' is invalid",
                        "SDL_SetRenderLogicalPresentation failed: Parameter 'renderer' is "
                        "invalid"}));
    EXPECT_EQ(PlacementOf(Window.get()), (Placement{192, 144, 640, 480}))
        << "The window has been dealt with all the same.";
    EXPECT_TRUE(app.ResetFrameClock);
}

TEST_F(DisplaySettingsTest, AWindowThatIsGoneIsLoggedStepByStep) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = WindowedApp(1280, 720);
    LogicalWidth = -1;
    ApplyDisplaySettings(app, NotAWindow(Renderer.get()), Renderer.get());
    EXPECT_EQ(Log.Messages(),
              (Messages{"SDL_GetWindowSize failed before SDL_SetWindowSize: Invalid window",
                        "SDL_SetWindowSize(1280, 720) failed: Invalid window"}));
    EXPECT_EQ(LogicalWidth, 1280);
    EXPECT_TRUE(app.VSyncActive) << "The renderer has been dealt with all the same.";
    EXPECT_TRUE(app.ResetFrameClock);
}

TEST_F(DisplaySettingsTest, AFullscreenWindowThatIsGoneIsLoggedStepByStep) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = FullscreenApp(1280, 720);
    ApplyDisplaySettings(app, NotAWindow(Renderer.get()), Renderer.get());
    EXPECT_EQ(Log.Messages(),
              (Messages{"SDL_SetWindowFullscreenMode(borderless) failed: Invalid window",
                        "SDL_SetWindowFullscreen(true) failed: Invalid window"}));
}

TEST_F(DisplaySettingsTest, WithoutAWindowNothingHappens) {
    MakeWindowAndRenderer(640, 480);
    GameApp app = WindowedApp(3440, 1440);
    LogicalWidth = 1152;
    ApplyDisplaySettings(app, nullptr, Renderer.get());
    ApplyLogicalPresentation(nullptr, nullptr);
    EXPECT_EQ(LogicalWidth, 1152);
    EXPECT_FALSE(app.ResetFrameClock);
    EXPECT_FALSE(app.VSyncActive);
    int width = 0;
    int height = 0;
    SDL_RendererLogicalPresentation mode = SDL_LOGICAL_PRESENTATION_LETTERBOX;
    ASSERT_TRUE(SDL_GetRenderLogicalPresentation(Renderer.get(), &width, &height, &mode));
    EXPECT_EQ(mode, SDL_LOGICAL_PRESENTATION_DISABLED);
    EXPECT_EQ(Log.Messages(), Messages{});
}

TEST(OffscreenDisplaySettingsTest, ADisplayThatPlacesNoWindowsIsLogged) {
    const Video video("offscreen");
    const WindowPointer window = MakeWindow(800, 600);
    const RendererPointer renderer(SDL_CreateRenderer(window.get(), SDL_SOFTWARE_RENDERER));
    GameApp app = WindowedApp(640, 480);
    const CapturedLog log;
    ApplyDisplaySettings(app, window.get(), renderer.get());
    EXPECT_EQ(log.Messages(), Messages{"SDL_SetWindowPosition(192, 144) failed: That operation is "
                                       "not supported"});
    EXPECT_EQ(PlacementOf(window.get()).Width, 640);
}

// On a real window system, where windows change in their own time.

// Handles events until the condition holds. Gives up after a time that no healthy machine needs.
template <typename Condition>
bool WaitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        // Not SDL_WaitEvent: it wakes itself by a message that can outlive the window, which ends
        // an X client.
        SDL_PumpEvents();
        SDL_FlushEvents(SDL_EVENT_FIRST, SDL_EVENT_LAST);
        SDL_Delay(1);
    }
    return true;
}

testing::AssertionResult ComesToStand(SDL_Window* window, const Placement& wanted) {
    if (WaitUntil([window, &wanted] { return PlacementOf(window) == wanted; })) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << PlacementOf(window) << " instead of " << wanted;
}

TEST(RealDisplaySettingsTest, AResizedWindowIsCentred) {
    const XServer server({{1600, 1200}});
    const Video video("x11");
    const WindowPointer window = MakeWindow(800, 600);
    const RendererPointer renderer(SDL_CreateRenderer(window.get(), SDL_SOFTWARE_RENDERER));
    const CapturedLog log;
    GameApp app = WindowedApp(1280, 720);
    ApplyDisplaySettings(app, window.get(), renderer.get());
    EXPECT_TRUE(ComesToStand(window.get(), {160, 240, 1280, 720}));
    EXPECT_EQ(log.Messages(), Messages{});
}

TEST(RealDisplaySettingsTest, AWindowLargerThanTheDisplayBeginsAtItsCorner) {
    const XServer server({{1600, 900}});
    const Video video("x11");
    const WindowPointer window = MakeWindow(800, 600);
    const RendererPointer renderer(SDL_CreateRenderer(window.get(), SDL_SOFTWARE_RENDERER));
    const CapturedLog log;
    GameApp app = WindowedApp(1920, 1440);
    ApplyDisplaySettings(app, window.get(), renderer.get());
    EXPECT_TRUE(ComesToStand(window.get(), {0, 0, 1920, 1440}));
    EXPECT_EQ(log.Messages(), Messages{});
}

TEST(RealDisplaySettingsTest, FullscreenAndBack) {
    const XServer server({{1600, 1200}});
    const WindowManager manager;
    const Video video("x11");
    const WindowPointer window = MakeWindow(1280, 720);
    const RendererPointer renderer(SDL_CreateRenderer(window.get(), SDL_SOFTWARE_RENDERER));
    const CapturedLog log;

    GameApp app = FullscreenApp(1280, 720);
    ApplyDisplaySettings(app, window.get(), renderer.get());
    EXPECT_TRUE(WaitUntil([&window] { return IsFullscreen(window.get()); }));
    EXPECT_TRUE(ComesToStand(window.get(), {0, 0, 1600, 1200}));

    app.Fullscreen = false;
    ApplyDisplaySettings(app, window.get(), renderer.get());
    EXPECT_TRUE(WaitUntil([&window] { return !IsFullscreen(window.get()); }));
    EXPECT_TRUE(ComesToStand(window.get(), {160, 240, 1280, 720}));

    app.Fullscreen = true;
    ApplyDisplaySettings(app, window.get(), renderer.get());
    EXPECT_TRUE(ComesToStand(window.get(), {0, 0, 1600, 1200}));

    app.Fullscreen = false;
    app.Resolutions = {{1024, 768}};
    app.AspectMode = AspectMode::Classic4x3;
    ApplyDisplaySettings(app, window.get(), renderer.get());
    EXPECT_TRUE(ComesToStand(window.get(), {288, 216, 1024, 768}));
    EXPECT_EQ(log.Messages(), Messages{});
}

} // namespace

} // namespace Wirefall
