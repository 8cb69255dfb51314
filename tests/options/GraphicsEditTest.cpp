#include "display/DisplayModes.h"
#include "display/LogicalCanvas.h"
#include "game/GameApp.h"
#include "options/GraphicsPage.h"
#include "options/OptionsScreen.h"
#include "options/XModes.h"
#include "support/SameApp.h"
#include "support/VideoFixture.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace Wirefall {

namespace {

using Testing::SameApp;

constexpr std::int32_t ResolutionRow = 0;
constexpr std::int32_t AspectRow = 1;
constexpr std::int32_t RefreshRow = 2;
constexpr std::int32_t FullscreenRow = 3;
constexpr std::int32_t VSyncRow = 4;

// What the display offered when it was asked.
GameApp AppWithModes(const std::vector<DisplayMode>& modes) {
    GameApp app;
    app.DisplayModes = modes;
    app.Resolutions = SelectResolutions(modes, app.AspectMode);
    RefreshRefreshRates(app);
    return app;
}

void Adjust(GameApp& app, std::int32_t row, std::int32_t direction) {
    app.Rows.GraphicsRow = row;
    AdjustGraphicsRow(app, nullptr, direction);
}

// SDL's video is not up here, so the display has nothing to offer and the built-in lists serve.

TEST(GraphicsEditTest, BeginsWithASnapshotOfTheLiveOptions) {
    GameApp app;
    app.AspectMode = AspectMode::Classic4x3;
    app.ResolutionIndex = 2;
    app.Fullscreen = false;
    app.VSync = false;
    BeginGraphicsEdit(app, nullptr);
    EXPECT_EQ(app.GraphicsEdit.Width, 1600);
    EXPECT_EQ(app.GraphicsEdit.Height, 1200);
    EXPECT_EQ(app.GraphicsEdit.AspectMode, AspectMode::Classic4x3);
    EXPECT_EQ(app.GraphicsEdit.RefreshRate, 0);
    EXPECT_FALSE(app.GraphicsEdit.Fullscreen);
    EXPECT_FALSE(app.GraphicsEdit.VSync);
    EXPECT_TRUE(app.GraphicsEdit.Valid);
    EXPECT_FALSE(GraphicsEditIsDirty(app));
}

TEST(GraphicsEditTest, BeginningFillsTheListsAndKeepsTheResolution) {
    GameApp app;
    app.Resolutions = {{1920, 1080}};
    app.ResolutionIndex = 0;
    BeginGraphicsEdit(app, nullptr);
    EXPECT_EQ(app.Resolutions.size(), BuiltInResolutions(AspectMode::Widescreen).size());
    EXPECT_EQ(CurrentResolution(app), (Resolution{1920, 1080}));
    EXPECT_EQ(app.RefreshRates, std::vector<std::int32_t>{0});
}

TEST(GraphicsEditTest, AResolutionThatIsNotOfferedMakesItDirtyAtOnce) {
    GameApp app;
    app.Resolutions = {{1921, 1081}};
    BeginGraphicsEdit(app, nullptr);
    EXPECT_EQ(app.GraphicsEdit.Width, 1921);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 720}));
    EXPECT_TRUE(GraphicsEditIsDirty(app));
}

TEST(GraphicsEditTest, IsNeverDirtyWhileThereIsNone) {
    GameApp app;
    app.VSync = false;
    app.Fullscreen = false;
    app.ResolutionIndex = 5;
    EXPECT_FALSE(GraphicsEditIsDirty(app));
}

TEST(GraphicsEditTest, EachSettingMakesItDirty) {
    for (const std::int32_t row : {ResolutionRow, AspectRow, FullscreenRow, VSyncRow}) {
        GameApp app;
        BeginGraphicsEdit(app, nullptr);
        Adjust(app, row, 1);
        EXPECT_TRUE(GraphicsEditIsDirty(app)) << row;
    }
    GameApp app;
    BeginGraphicsEdit(app, nullptr);
    app.RefreshRate = 60;
    EXPECT_TRUE(GraphicsEditIsDirty(app));
    app.RefreshRate = 0;
    app.AspectMode = AspectMode::Classic4x3;
    EXPECT_TRUE(GraphicsEditIsDirty(app)) << "though the resolution is the same";
}

TEST(GraphicsEditTest, ChangesThatEndWhereTheyBeganAreNone) {
    GameApp app;
    BeginGraphicsEdit(app, nullptr);
    Adjust(app, ResolutionRow, 1);
    Adjust(app, ResolutionRow, -1);
    Adjust(app, VSyncRow, 1);
    Adjust(app, VSyncRow, 1);
    EXPECT_FALSE(GraphicsEditIsDirty(app));
}

TEST(GraphicsEditTest, RevertingGoesBackToTheSnapshot) {
    GameApp app;
    app.ResolutionIndex = 6;
    BeginGraphicsEdit(app, nullptr);
    const GameApp before = app;
    for (const std::int32_t row : {AspectRow, ResolutionRow, FullscreenRow, VSyncRow}) {
        Adjust(app, row, 1);
    }
    EXPECT_NE(CurrentResolution(app), CurrentResolution(before));
    RevertGraphicsEdit(app, nullptr);
    app.Rows.GraphicsRow = 0;
    EXPECT_TRUE(SameApp(before, app));
}

TEST(GraphicsEditTest, RevertingToAResolutionThatIsNotOfferedKeepsTheChosenOne) {
    GameApp app;
    app.Resolutions = {{1921, 1081}};
    BeginGraphicsEdit(app, nullptr);
    Adjust(app, ResolutionRow, 1);
    RevertGraphicsEdit(app, nullptr);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 800}));
}

TEST(GraphicsEditTest, RevertingWithoutASnapshotDoesNothing) {
    GameApp app;
    app.VSync = false;
    app.ResolutionIndex = 3;
    const GameApp before = app;
    RevertGraphicsEdit(app, nullptr);
    EXPECT_TRUE(SameApp(before, app));
}

TEST(GraphicsEditTest, TheResolutionsRunInACircle) {
    GameApp app;
    BeginGraphicsEdit(app, nullptr);
    const auto count = static_cast<std::int32_t>(app.Resolutions.size());
    Adjust(app, ResolutionRow, -1);
    EXPECT_EQ(app.ResolutionIndex, count - 1);
    Adjust(app, ResolutionRow, 1);
    EXPECT_EQ(app.ResolutionIndex, 0);
    for (std::int32_t i = 1; i < count; ++i) {
        Adjust(app, ResolutionRow, 1);
        EXPECT_EQ(app.ResolutionIndex, i);
    }
}

TEST(GraphicsEditTest, AnIndexOutsideTheListCountsAsItsNearestEnd) {
    GameApp app;
    BeginGraphicsEdit(app, nullptr);
    const auto last = static_cast<std::int32_t>(app.Resolutions.size()) - 1;
    for (const std::int32_t index : {-1, std::numeric_limits<std::int32_t>::min()}) {
        app.ResolutionIndex = index;
        Adjust(app, ResolutionRow, 1);
        EXPECT_EQ(app.ResolutionIndex, 1);
    }
    for (const std::int32_t index : {last + 1, std::numeric_limits<std::int32_t>::max()}) {
        app.ResolutionIndex = index;
        Adjust(app, ResolutionRow, -1);
        EXPECT_EQ(app.ResolutionIndex, last - 1);
    }
}

TEST(GraphicsEditTest, WithAnEmptyListTheBuiltInOneIsGoneThrough) {
    GameApp app;
    app.AspectMode = AspectMode::Classic4x3;
    ASSERT_TRUE(app.Resolutions.empty());
    Adjust(app, ResolutionRow, -1);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1920, 1440}));
    Adjust(app, ResolutionRow, 1);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1024, 768}));
}

TEST(GraphicsEditTest, AnotherResolutionHasItsOwnRefreshRates) {
    GameApp app = AppWithModes({{1280, 720, 60}, {1280, 720, 144}, {1920, 1080, 75}});
    app.RefreshRate = 144;
    Adjust(app, ResolutionRow, 1);
    EXPECT_EQ(app.RefreshRates, (std::vector<std::int32_t>{0, 75}));
    EXPECT_EQ(app.RefreshRate, 0);
}

TEST(GraphicsEditTest, TheAspectModeGoesBackAndForthEitherWay) {
    for (const std::int32_t direction : {-1, 1, 0, 7}) {
        GameApp app;
        Adjust(app, AspectRow, direction);
        EXPECT_EQ(app.AspectMode, AspectMode::Classic4x3);
        EXPECT_EQ(app.Resolutions.size(), BuiltInResolutions(AspectMode::Classic4x3).size());
        Adjust(app, AspectRow, direction);
        EXPECT_EQ(app.AspectMode, AspectMode::Widescreen);
        EXPECT_EQ(app.Resolutions.size(), BuiltInResolutions(AspectMode::Widescreen).size());
    }
}

TEST(GraphicsEditTest, TheRefreshRatesRunInACircle) {
    GameApp app = AppWithModes({{1280, 720, 60}, {1280, 720, 144}});
    for (const std::int32_t expected : {60, 144, 0}) {
        Adjust(app, RefreshRow, 1);
        EXPECT_EQ(app.RefreshRate, expected);
    }
    for (const std::int32_t expected : {144, 60, 0}) {
        Adjust(app, RefreshRow, -1);
        EXPECT_EQ(app.RefreshRate, expected);
    }
}

TEST(GraphicsEditTest, ARateThatIsNotInTheListCountsAsTheFirst) {
    GameApp app = AppWithModes({{1280, 720, 60}, {1280, 720, 144}});
    app.RefreshRate = 50;
    Adjust(app, RefreshRow, 1);
    EXPECT_EQ(app.RefreshRate, 60);
}

TEST(GraphicsEditTest, WithoutRatesTheRefreshRateIsAutomatic) {
    GameApp app;
    ASSERT_TRUE(app.RefreshRates.empty());
    app.RefreshRate = 60;
    Adjust(app, RefreshRow, 1);
    EXPECT_EQ(app.RefreshRate, 0);
}

TEST(GraphicsEditTest, LeavingFullscreenMakesTheRefreshRateAutomatic) {
    GameApp app = AppWithModes({{1280, 720, 60}});
    app.RefreshRate = 60;
    Adjust(app, FullscreenRow, 1);
    EXPECT_FALSE(app.Fullscreen);
    EXPECT_EQ(app.RefreshRate, 0);
    EXPECT_TRUE(app.DisplayModes.empty()) << "the display was asked anew, and there is none";
    Adjust(app, FullscreenRow, -1);
    EXPECT_TRUE(app.Fullscreen);
}

TEST(GraphicsEditTest, TheOtherRowsAreNoSettings) {
    for (const std::int32_t row : {5, 6, 7, 8, 9, -1}) {
        GameApp app;
        GameApp expected = app;
        expected.Rows.GraphicsRow = row;
        Adjust(app, row, 1);
        EXPECT_TRUE(SameApp(expected, app));
    }
}

TEST(GraphicsEditTest, TheFactorySettings) {
    GameApp app;
    app.ResolutionIndex = 4;
    BeginGraphicsEdit(app, nullptr);
    for (const std::int32_t row : {ResolutionRow, FullscreenRow, VSyncRow}) {
        Adjust(app, row, 1);
    }
    ResetGraphicsEdit(app, nullptr);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 720}));
    EXPECT_EQ(app.AspectMode, AspectMode::Widescreen);
    EXPECT_EQ(app.RefreshRate, 0);
    EXPECT_TRUE(app.Fullscreen);
    EXPECT_TRUE(app.VSync);
    EXPECT_FALSE(app.OptionsDirty);
}

TEST(GraphicsEditTest, FromAClassicListTheFactoryResolutionIsTheFirstWidescreenOne) {
    GameApp app;
    app.AspectMode = AspectMode::Classic4x3;
    app.ResolutionIndex = 3;
    BeginGraphicsEdit(app, nullptr);
    app.Resolutions = {{1024, 768}, {1280, 960}, {1920, 1440}};
    ResetGraphicsEdit(app, nullptr);
    EXPECT_EQ(app.ResolutionIndex, 0);
    EXPECT_EQ(CurrentResolution(app), BuiltInResolutions(AspectMode::Widescreen).front());
}

// It is looked for in the list of before, whose first entry stands for it, and that is found again.
TEST(GraphicsEditTest, TheFactoryResolutionIsTheFirstOneOfAListWithoutIt) {
    GameApp app;
    app.Resolutions = {{1366, 768}, {1920, 1080}};
    app.ResolutionIndex = 1;
    ResetGraphicsEdit(app, nullptr);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1366, 768}));
}

TEST(GraphicsEditTest, ApplyingNothingSavesNothing) {
    GameApp app;
    BeginGraphicsEdit(app, nullptr);
    app.GraphicsEdit.Valid = false;
    ApplyGraphicsEdit(app, nullptr, nullptr);
    EXPECT_FALSE(app.OptionsDirty);
    EXPECT_TRUE(app.GraphicsEdit.Valid) << "the edit begins anew all the same";
}

// --- Lists that no display should give

TEST(GraphicsEditTest, ThousandsOfModesCanBeGoneThrough) {
    constexpr std::int32_t Count = 4000;
    std::vector<DisplayMode> modes;
    for (std::int32_t i = 0; i < Count; ++i) {
        modes.push_back({1600 + 16 * i, 900 + 9 * i, 0});
        modes.push_back({1600, 900, i + 1});
    }
    GameApp app = AppWithModes(modes);
    ASSERT_EQ(app.Resolutions.size(), static_cast<std::size_t>(Count));
    ASSERT_EQ(app.RefreshRates.size(), static_cast<std::size_t>(Count) + 1);
    Adjust(app, RefreshRow, -1);
    EXPECT_EQ(app.RefreshRate, Count);
    for (std::int32_t i = 1; i < Count; ++i) {
        Adjust(app, ResolutionRow, 1);
    }
    EXPECT_EQ(CurrentResolution(app).Width, 1600 + 16 * (Count - 1));
    Adjust(app, ResolutionRow, 1);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1600, 900}));
}

TEST(GraphicsEditTest, ModesWithoutASizeAreNeverChosen) {
    GameApp app = AppWithModes({{0, 0, 60}, {-1280, -720, 60}, {1280, 0, 60}, {-1, 720, 60}});
    const std::vector<Resolution> offered = app.Resolutions;
    EXPECT_EQ(offered.size(), BuiltInResolutions(AspectMode::Widescreen).size());
    for (std::size_t i = 0; i < offered.size(); ++i) {
        Adjust(app, ResolutionRow, 1);
        EXPECT_GE(CurrentResolution(app).Width, 1024);
        EXPECT_GE(CurrentResolution(app).Height, 1);
    }
}

// A list that was spoilt by hand lasts until the page is opened.
TEST(GraphicsEditTest, BeginningCuresASpoiltList) {
    GameApp app;
    app.Resolutions = {{0, 0}, {-5, 3}};
    app.RefreshRates = {-7, 5};
    app.RefreshRate = -7;
    app.ResolutionIndex = 1;
    BeginGraphicsEdit(app, nullptr);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 720}));
    EXPECT_EQ(app.RefreshRate, 0);
    EXPECT_EQ(app.RefreshRates, std::vector<std::int32_t>{0});
}

// --- With a display that offers more than one resolution and rate

class GraphicsEditDisplayTest : public testing::Test {
protected:
    GraphicsEditDisplayTest() {
        RefreshDisplayModes(App, nullptr);
        App.ResolutionIndex = FindResolutionIndex(App, 1920, 1080, 0);
        RefreshRefreshRates(App);
        App.RefreshRate = 60;
        BeginGraphicsEdit(App, nullptr);
    }

    XServer Server{{{1920, 1080}}};
    XModes Modes{{{1280, 720, 60}, {1600, 900, 75}, {1920, 1080, 60}, {1920, 1080, 144}}};
    Video X11{"x11"};
    GameApp App;
};

TEST_F(GraphicsEditDisplayTest, BeginningKeepsTheRefreshRate) {
    EXPECT_EQ(App.Resolutions, (std::vector<Resolution>{{1280, 720}, {1600, 900}, {1920, 1080}}));
    EXPECT_EQ(App.RefreshRates, (std::vector<std::int32_t>{0, 60, 144}));
    EXPECT_EQ(App.GraphicsEdit.RefreshRate, 60);
    EXPECT_EQ(App.RefreshRate, 60);
    EXPECT_FALSE(GraphicsEditIsDirty(App));
}

TEST_F(GraphicsEditDisplayTest, RevertingGoesBackToTheRefreshRate) {
    const GameApp before = App;
    for (const std::int32_t row : {RefreshRow, ResolutionRow, AspectRow, FullscreenRow}) {
        Adjust(App, row, -1);
        EXPECT_NE(App.RefreshRate, 60) << row;
        RevertGraphicsEdit(App, nullptr);
        App.Rows.GraphicsRow = 0;
        EXPECT_TRUE(SameApp(before, App)) << row;
    }
}

TEST_F(GraphicsEditDisplayTest, TheFactoryRefreshRateIsAutomatic) {
    App.ResolutionIndex = 0;
    RefreshRefreshRates(App);
    ASSERT_EQ(CurrentResolution(App), (Resolution{1280, 720}));
    ASSERT_EQ(App.RefreshRate, 60);
    ResetGraphicsEdit(App, nullptr);
    EXPECT_EQ(App.RefreshRates, (std::vector<std::int32_t>{0, 60})) << "60 would be offered";
    EXPECT_EQ(App.RefreshRate, 0);
}

TEST_F(GraphicsEditDisplayTest, InAWindowNoRefreshRateIsOffered) {
    Adjust(App, FullscreenRow, 1);
    EXPECT_EQ(App.RefreshRates, std::vector<std::int32_t>{0});
    EXPECT_EQ(App.RefreshRate, 0);
    Adjust(App, RefreshRow, 1);
    EXPECT_EQ(App.RefreshRate, 0);
}

// --- With a window

class GraphicsEditWindowTest : public testing::Test {
protected:
    GraphicsEditWindowTest() {
        App.Fullscreen = false;
        BeginGraphicsEdit(App, Window.get());
        ApplyGraphicsEdit(App, Window.get(), Renderer.get());
    }

    Resolution WindowSize() const {
        Resolution size;
        EXPECT_TRUE(SDL_GetWindowSize(Window.get(), &size.Width, &size.Height));
        return size;
    }

    Video Dummy{"dummy"};
    WindowPointer Window = MakeWindow(1280, 720);
    RendererPointer Renderer{SDL_CreateRenderer(Window.get(), SDL_SOFTWARE_RENDERER)};
    GameApp App;
};

TEST_F(GraphicsEditWindowTest, TheWindowLearnsOfAChangeWhenItIsApplied) {
    App.Rows.GraphicsRow = ResolutionRow;
    AdjustGraphicsRow(App, Window.get(), 1);
    EXPECT_EQ(WindowSize(), (Resolution{1280, 720}));
    ApplyGraphicsEdit(App, Window.get(), Renderer.get());
    EXPECT_EQ(WindowSize(), (Resolution{1280, 800}));
    EXPECT_EQ(LogicalWidth, 1152);
    EXPECT_TRUE(App.OptionsDirty);
    EXPECT_FALSE(GraphicsEditIsDirty(App));
    EXPECT_EQ(App.GraphicsEdit.Height, 800);
}

TEST_F(GraphicsEditWindowTest, ApplyingNothingLeavesTheWindowAlone) {
    App.OptionsDirty = false;
    App.ResetFrameClock = false;
    ASSERT_TRUE(SDL_SetWindowSize(Window.get(), 900, 600));
    ApplyGraphicsEdit(App, Window.get(), Renderer.get());
    EXPECT_EQ(WindowSize(), (Resolution{900, 600}));
    EXPECT_FALSE(App.ResetFrameClock);
    EXPECT_FALSE(App.OptionsDirty);
}

TEST_F(GraphicsEditWindowTest, TheRowForItIsOnTheOptionsScreen) {
    App.OptionsPage = OptionsPage::Graphics;
    App.ResolutionIndex = 1;
    App.Rows.GraphicsRow = 6;
    PressOnOptions(App, Window.get(), Renderer.get(), Press::Confirm);
    EXPECT_EQ(WindowSize(), (Resolution{1280, 800}));
    EXPECT_TRUE(App.OptionsDirty);
}

TEST_F(GraphicsEditWindowTest, ResettingAndRevertingDoNotReachTheWindow) {
    App.Rows.GraphicsRow = ResolutionRow;
    AdjustGraphicsRow(App, Window.get(), 1);
    ApplyGraphicsEdit(App, Window.get(), Renderer.get());
    App.OptionsDirty = false;
    ResetGraphicsEdit(App, Window.get());
    EXPECT_TRUE(GraphicsEditIsDirty(App));
    EXPECT_EQ(WindowSize(), (Resolution{1280, 800}));
    EXPECT_EQ(SDL_GetWindowFlags(Window.get()) & SDL_WINDOW_FULLSCREEN, 0U);
    RevertGraphicsEdit(App, Window.get());
    EXPECT_FALSE(GraphicsEditIsDirty(App));
    EXPECT_EQ(CurrentResolution(App), (Resolution{1280, 800}));
    EXPECT_EQ(WindowSize(), (Resolution{1280, 800}));
    EXPECT_FALSE(App.OptionsDirty);
}

TEST_F(GraphicsEditWindowTest, FullscreenComesAndGoes) {
    App.Rows.GraphicsRow = FullscreenRow;
    for (const bool fullscreen : {true, false}) {
        AdjustGraphicsRow(App, Window.get(), 1);
        ApplyGraphicsEdit(App, Window.get(), Renderer.get());
        EXPECT_EQ((SDL_GetWindowFlags(Window.get()) & SDL_WINDOW_FULLSCREEN) != 0, fullscreen);
        EXPECT_EQ(WindowSize(), fullscreen ? (Resolution{1024, 768}) : (Resolution{1280, 720}));
    }
}

} // namespace

} // namespace Wirefall
