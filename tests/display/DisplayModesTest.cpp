#include "display/DisplayModes.h"

#include "display/LogicalCanvas.h"
#include "game/GameApp.h"
#include "support/VideoFixture.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <utility>
#include <vector>

namespace Wirefall {

void PrintTo(const Resolution& r, std::ostream* out) { *out << r.Width << "x" << r.Height; }
void PrintTo(const DisplayMode& m, std::ostream* out) {
    *out << m.Width << "x" << m.Height << "@" << m.Hz;
}

namespace {

constexpr std::int32_t Largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Smallest = std::numeric_limits<std::int32_t>::min();

using Resolutions = std::vector<Resolution>;
using Rates = std::vector<std::int32_t>;
using Modes = std::vector<DisplayMode>;

const Resolutions BuiltInClassic = {{1024, 768}, {1280, 960}, {1600, 1200}, {1920, 1440}};
const Resolutions BuiltInWidescreen = {
    {1280, 720},  {1280, 800},  {1366, 768},  {1440, 900},  {1600, 900},  {1680, 1050},
    {1920, 1080}, {1920, 1200}, {2160, 1440}, {2560, 1080}, {2560, 1440}, {2560, 1600},
    {2880, 1800}, {3000, 2000}, {3440, 1440}, {3840, 1600}, {3840, 2160}, {5120, 1440}};

SDL_DisplayMode SdlMode(int width, int height, float rate, int numerator = 0, int denominator = 0) {
    SDL_DisplayMode mode = {};
    mode.w = width;
    mode.h = height;
    mode.refresh_rate = rate;
    mode.refresh_rate_numerator = numerator;
    mode.refresh_rate_denominator = denominator;
    return mode;
}

Modes Collect(const std::vector<SDL_DisplayMode>& modes) {
    std::vector<const SDL_DisplayMode*> pointers;
    pointers.reserve(modes.size());
    for (const SDL_DisplayMode& mode : modes) {
        pointers.push_back(&mode);
    }
    return CollectDisplayModes(pointers);
}

std::int32_t HzOf(const SDL_DisplayMode& mode) {
    const Modes modes = Collect({mode});
    return modes.size() == 1 ? modes[0].Hz : -1;
}

// The lists of a display

TEST(DisplayModeListTest, KeepsTheOrderOfTheDisplay) {
    EXPECT_EQ(Collect({SdlMode(3840, 2160, 60), SdlMode(1920, 1080, 144), SdlMode(1920, 1080, 60)}),
              (Modes{{3840, 2160, 60}, {1920, 1080, 144}, {1920, 1080, 60}}));
}

TEST(DisplayModeListTest, KeepsEachModeOnce) {
    EXPECT_EQ(Collect({SdlMode(1920, 1080, 60), SdlMode(1280, 720, 60), SdlMode(1920, 1080, 60),
                       SdlMode(1920, 1080, 59.94F)}),
              (Modes{{1920, 1080, 60}, {1280, 720, 60}}));
}

TEST(DisplayModeListTest, IsEmptyForADisplayWithoutModes) { EXPECT_TRUE(Collect({}).empty()); }

TEST(DisplayModeListTest, SkipsMissingEntries) {
    const SDL_DisplayMode mode = SdlMode(1920, 1080, 60);
    const std::array<const SDL_DisplayMode*, 4> modes = {nullptr, &mode, nullptr, nullptr};
    EXPECT_EQ(CollectDisplayModes(modes), (Modes{{1920, 1080, 60}}));
}

TEST(DisplayModeListTest, SkipsModesWithoutASize) {
    EXPECT_TRUE(Collect({SdlMode(0, 1080, 60), SdlMode(1920, 0, 60), SdlMode(-1920, 1080, 60),
                         SdlMode(1920, -1080, 60), SdlMode(Smallest, Smallest, 60)})
                    .empty());
    EXPECT_EQ(Collect({SdlMode(1, 1, 60)}), (Modes{{1, 1, 60}}));
}

TEST(DisplayModeListTest, RoundsTheRate) {
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 59.94F)), 60);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 59.4F)), 59);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 74.5F)), 75);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 0.4F)), 0);
}

TEST(DisplayModeListTest, PrefersTheRateAsAFraction) {
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 30.0F, 144000, 1001)), 144);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 30.0F, 5, 2)), 3);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 0.0F, 60, 1)), 60);
}

TEST(DisplayModeListTest, IgnoresAFractionThatIsNone) {
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 75.0F, 60, 0)), 75);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 75.0F, 0, 1)), 75);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 75.0F, -60, -1)), 75);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 75.0F, 60, -1)), 75);
}

TEST(DisplayModeListTest, ARateThatIsNoneIsUnknown) {
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 0.0F)), 0);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, -60.0F)), 0);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, std::numeric_limits<float>::quiet_NaN())), 0);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, std::numeric_limits<float>::infinity())), 0);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, std::numeric_limits<float>::max())), 0);
    EXPECT_EQ(HzOf(SdlMode(1920, 1080, 0.0F, Largest, 1)), Largest);
}

// A list that grew by searching itself would need ten thousand million comparisons here.
TEST(DisplayModeListTest, TakesAHundredThousandModesInItsStride) {
    std::vector<SDL_DisplayMode> modes;
    constexpr int Count = 100000;
    modes.reserve(std::size_t{2} * Count);
    for (int copy = 0; copy < 2; ++copy) {
        for (int i = 0; i < Count; ++i) {
            modes.push_back(SdlMode(1600 + i, 900, 60.0F));
        }
    }
    const auto start = std::chrono::steady_clock::now();
    const Modes collected = Collect(modes);
    const Resolutions resolutions = SelectResolutions(collected, AspectMode::Widescreen);
    EXPECT_EQ(collected.size(), std::size_t{Count});
    EXPECT_TRUE(std::ranges::is_sorted(resolutions));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

// What the player may choose

TEST(ResolutionListTest, OffersWhatTheAspectModeAllows) {
    const Modes modes = {{1920, 1080, 60}, {1600, 1200, 60}, {1280, 1024, 60}, {2560, 1080, 60}};
    EXPECT_EQ(SelectResolutions(modes, AspectMode::Widescreen),
              (Resolutions{{1920, 1080}, {2560, 1080}}));
    EXPECT_EQ(SelectResolutions(modes, AspectMode::Classic4x3), (Resolutions{{1600, 1200}}));
}

TEST(ResolutionListTest, SortsByWidthThenHeight) {
    const Modes modes = {
        {2560, 1600, 60}, {1280, 800, 60}, {2560, 1080, 60}, {1280, 720, 60}, {2560, 1440, 60}};
    EXPECT_EQ(SelectResolutions(modes, AspectMode::Widescreen),
              (Resolutions{{1280, 720}, {1280, 800}, {2560, 1080}, {2560, 1440}, {2560, 1600}}));
}

TEST(ResolutionListTest, OffersAResolutionOfSeveralRatesOnce) {
    const Modes modes = {{1920, 1080, 60}, {1920, 1080, 144}, {1920, 1080, 0}};
    EXPECT_EQ(SelectResolutions(modes, AspectMode::Widescreen), (Resolutions{{1920, 1080}}));
}

TEST(ResolutionListTest, NeverOffersLessThan1024Pixels) {
    const Modes modes = {{1023, 767, 60}, {800, 600, 60},  {960, 540, 60},
                         {1022, 575, 60}, {1024, 576, 60}, {1024, 768, 60}};
    EXPECT_EQ(SelectResolutions(modes, AspectMode::Widescreen), (Resolutions{{1024, 576}}));
    EXPECT_EQ(SelectResolutions(modes, AspectMode::Classic4x3), (Resolutions{{1024, 768}}));
}

TEST(ResolutionListTest, FallsBackOnTheBuiltInTables) {
    EXPECT_EQ(SelectResolutions({}, AspectMode::Widescreen), BuiltInWidescreen);
    EXPECT_EQ(SelectResolutions({}, AspectMode::Classic4x3), BuiltInClassic);
    EXPECT_EQ(SelectResolutions(Modes{{1280, 1024, 60}, {800, 600, 60}}, AspectMode::Widescreen),
              BuiltInWidescreen);
}

TEST(RefreshRateListTest, BeginsWithAutomaticAndAscends) {
    const Modes modes = {{1920, 1080, 144}, {1920, 1080, 60}, {1280, 720, 75}, {1920, 1080, 120}};
    EXPECT_EQ(SelectRefreshRates(modes, {1920, 1080}), (Rates{0, 60, 120, 144}));
}

TEST(RefreshRateListTest, HasEachRateOnce) {
    const Modes modes = {{1920, 1080, 60}, {1920, 1080, 60}, {1920, 1080, 0}};
    EXPECT_EQ(SelectRefreshRates(modes, {1920, 1080}), (Rates{0, 60}));
}

TEST(RefreshRateListTest, LeavesOutUnknownAndNegativeRates) {
    const Modes modes = {{1920, 1080, 0}, {1920, 1080, -60}, {1920, 1200, 60}, {2560, 1080, 60}};
    EXPECT_EQ(SelectRefreshRates(modes, {1920, 1080}), (Rates{0}));
}

// The choice

TEST(ResolutionChoiceTest, IsInTheBuiltInTableWhileNothingElseIsKnown) {
    GameApp app;
    app.ResolutionIndex = 6;
    EXPECT_EQ(CurrentResolution(app), (Resolution{1920, 1080}));
    app.AspectMode = AspectMode::Classic4x3;
    app.ResolutionIndex = 1;
    EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 960}));
}

TEST(ResolutionChoiceTest, IsClampedIntoTheList) {
    GameApp app;
    app.Resolutions = {{1280, 720}, {1920, 1080}};
    for (const std::int32_t index : {-1, Smallest, 0}) {
        app.ResolutionIndex = index;
        EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 720})) << index;
    }
    for (const std::int32_t index : {1, 2, Largest}) {
        app.ResolutionIndex = index;
        EXPECT_EQ(CurrentResolution(app), (Resolution{1920, 1080})) << index;
    }
    app.Resolutions.clear();
    EXPECT_EQ(CurrentResolution(app), (Resolution{5120, 1440}));
    app.ResolutionIndex = -1;
    EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 720}));
}

TEST(ResolutionChoiceTest, IsFoundInTheList) {
    GameApp app;
    app.Resolutions = {{1280, 720}, {1280, 800}, {1920, 1080}};
    EXPECT_EQ(FindResolutionIndex(app, 1280, 800, 2), 1);
    EXPECT_EQ(FindResolutionIndex(app, 1920, 1080, 0), 2);
    app.Resolutions.clear();
    EXPECT_EQ(FindResolutionIndex(app, 5120, 1440, 0), 17);
    app.AspectMode = AspectMode::Classic4x3;
    EXPECT_EQ(FindResolutionIndex(app, 1600, 1200, 0), 2);
}

TEST(ResolutionChoiceTest, FallsBackWithinTheList) {
    GameApp app;
    app.Resolutions = {{1280, 720}, {1280, 800}, {1920, 1080}};
    EXPECT_EQ(FindResolutionIndex(app, 1024, 768, 1), 1);
    EXPECT_EQ(FindResolutionIndex(app, 1024, 768, 2), 2);
    EXPECT_EQ(FindResolutionIndex(app, 1024, 768, 3), 2);
    EXPECT_EQ(FindResolutionIndex(app, 1024, 768, Largest), 2);
    EXPECT_EQ(FindResolutionIndex(app, 1024, 768, -1), 0);
    EXPECT_EQ(FindResolutionIndex(app, 1024, 768, Smallest), 0);
    app.Resolutions.clear();
    EXPECT_EQ(FindResolutionIndex(app, 1024, 768, 99), 17);
}

TEST(ResolutionChoiceTest, ASizeBelowOneIsNeverFound) {
    GameApp app;
    app.Resolutions = {{0, 0}, {1280, -1}, {1280, 720}};
    EXPECT_EQ(FindResolutionIndex(app, 0, 0, 2), 2);
    EXPECT_EQ(FindResolutionIndex(app, 1280, -1, 2), 2);
}

// Refreshing the rates

GameApp AppWithRates() {
    GameApp app;
    app.Resolutions = {{1280, 720}, {1920, 1080}};
    app.DisplayModes = {{1920, 1080, 144}, {1920, 1080, 60}, {1280, 720, 75}};
    app.ResolutionIndex = 1;
    return app;
}

TEST(RefreshRateTest, FullscreenOffersThoseOfTheResolution) {
    GameApp app = AppWithRates();
    RefreshRefreshRates(app);
    EXPECT_EQ(app.RefreshRates, (Rates{0, 60, 144}));
    app.ResolutionIndex = 0;
    RefreshRefreshRates(app);
    EXPECT_EQ(app.RefreshRates, (Rates{0, 75}));
}

TEST(RefreshRateTest, AChoiceThatIsOfferedStays) {
    GameApp app = AppWithRates();
    app.RefreshRate = 144;
    RefreshRefreshRates(app);
    EXPECT_EQ(app.RefreshRate, 144);
}

TEST(RefreshRateTest, AChoiceThatIsNotOfferedBecomesAutomatic) {
    GameApp app = AppWithRates();
    for (const std::int32_t rate : {75, 61, -60, Smallest, Largest}) {
        app.RefreshRate = rate;
        RefreshRefreshRates(app);
        EXPECT_EQ(app.RefreshRate, 0) << rate;
    }
}

TEST(RefreshRateTest, InAWindow144BecomesAutomatic) {
    GameApp app = AppWithRates();
    app.Fullscreen = false;
    app.RefreshRate = 144;
    RefreshRefreshRates(app);
    EXPECT_EQ(app.RefreshRates, (Rates{0}));
    EXPECT_EQ(app.RefreshRate, 0);
}

// Asking the display

// A choice that no display below has made.
void FillWithStaleLists(GameApp& app) {
    app.Resolutions = {{1280, 720}, {1366, 768}};
    app.ResolutionIndex = 1;
    app.DisplayModes = {{1366, 768, 50}};
    app.RefreshRates = {0, 50};
    app.RefreshRate = 50;
}

TEST(DisplayRefreshTest, WithoutADisplayTheBuiltInResolutionsAreOffered) {
    ASSERT_FALSE(SDL_WasInit(SDL_INIT_VIDEO));
    GameApp app;
    FillWithStaleLists(app);
    RefreshDisplayModes(app, nullptr);
    EXPECT_TRUE(app.DisplayModes.empty());
    EXPECT_EQ(app.Resolutions, BuiltInWidescreen);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1366, 768})) << "The choice is found again.";
    EXPECT_EQ(app.RefreshRates, (Rates{0}));
    EXPECT_EQ(app.RefreshRate, 0);
}

TEST(DisplayRefreshTest, ADisplayWithoutModesOffersTheBuiltInResolutions) {
    const Video video("dummy");
    GameApp app;
    FillWithStaleLists(app);
    RefreshDisplayModes(app, nullptr);
    EXPECT_TRUE(app.DisplayModes.empty());
    EXPECT_EQ(app.Resolutions, BuiltInWidescreen);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1366, 768}));
}

TEST(DisplayRefreshTest, FromClassicToWidescreenTheChoiceFallsToTheSmallest) {
    const Video video("dummy");
    GameApp app;
    app.AspectMode = AspectMode::Classic4x3;
    RefreshDisplayModes(app, nullptr);
    app.ResolutionIndex = 2;
    app.AspectMode = AspectMode::Widescreen;
    ASSERT_EQ(CurrentResolution(app), (Resolution{1600, 1200}));
    RefreshDisplayModes(app, nullptr);
    EXPECT_EQ(app.ResolutionIndex, 0);
    EXPECT_EQ(CurrentResolution(app), (Resolution{1280, 720}));
}

TEST(DisplayRefreshTest, ARealDisplayOffersItsModes) {
    const XServer server({{1920, 1080}});
    const Video video("x11");
    GameApp app;
    FillWithStaleLists(app);
    RefreshDisplayModes(app, nullptr);
    EXPECT_EQ(app.DisplayModes, (Modes{{1920, 1080, 0}}));
    EXPECT_EQ(app.Resolutions, (Resolutions{{1920, 1080}}));
    EXPECT_EQ(app.ResolutionIndex, 0);
    EXPECT_EQ(app.RefreshRates, (Rates{0}));
    EXPECT_EQ(app.RefreshRate, 0);

    app.AspectMode = AspectMode::Classic4x3;
    RefreshDisplayModes(app, nullptr);
    EXPECT_EQ(app.Resolutions, BuiltInClassic) << "Nothing of the display's is 4:3.";
}

TEST(DisplayRefreshTest, ADisplayTooSmallToPlayOnOffersTheBuiltInResolutions) {
    const XServer server({{800, 600}});
    const Video video("x11");
    GameApp app;
    app.AspectMode = AspectMode::Classic4x3;
    RefreshDisplayModes(app, nullptr);
    EXPECT_EQ(app.DisplayModes, (Modes{{800, 600, 0}}));
    EXPECT_EQ(app.Resolutions, BuiltInClassic);
}

TEST(DisplayRefreshTest, TheWindowsDisplayIsAsked) {
    const XServer server({{1920, 1080}, {2560, 1440}});
    const Video video("x11");
    // Both screens begin at the same corner; this place is on the second one alone.
    const SDL_PropertiesID properties = SDL_CreateProperties();
    SDL_SetNumberProperty(properties, SDL_PROP_WINDOW_CREATE_X_NUMBER, 2000);
    SDL_SetNumberProperty(properties, SDL_PROP_WINDOW_CREATE_Y_NUMBER, 1150);
    SDL_SetNumberProperty(properties, SDL_PROP_WINDOW_CREATE_WIDTH_NUMBER, 200);
    SDL_SetNumberProperty(properties, SDL_PROP_WINDOW_CREATE_HEIGHT_NUMBER, 200);
    const WindowPointer window(SDL_CreateWindowWithProperties(properties));
    SDL_DestroyProperties(properties);
    ASSERT_TRUE(window) << SDL_GetError();

    GameApp app;
    RefreshDisplayModes(app, window.get());
    EXPECT_EQ(app.Resolutions, (Resolutions{{2560, 1440}}));
    RefreshDisplayModes(app, nullptr);
    EXPECT_EQ(app.Resolutions, (Resolutions{{1920, 1080}})) << "Without a window, the first one.";
}

// The first start

TEST(DesktopTest, ADesktopOfFourToThreeIsAdopted) {
    const Video video("dummy"); // 1024x768
    GameApp app;
    FillWithStaleLists(app);
    LogicalWidth = -1;
    AdoptDesktopMode(app);
    EXPECT_EQ(app.AspectMode, AspectMode::Classic4x3);
    EXPECT_EQ(app.Resolutions, (Resolutions{{1024, 768}}));
    EXPECT_EQ(app.ResolutionIndex, 0);
    EXPECT_EQ(LogicalWidth, 960);
}

TEST(DesktopTest, AnyOtherDesktopIsWidescreen) {
    for (const auto& [size, canvasWidth] :
         {std::pair{ScreenSize{2560, 1080}, 1728}, std::pair{ScreenSize{1280, 1024}, 1280}}) {
        const XServer server({size});
        const Video video("x11");
        GameApp app;
        app.AspectMode = AspectMode::Classic4x3;
        app.ResolutionIndex = 3;
        AdoptDesktopMode(app);
        EXPECT_EQ(app.AspectMode, AspectMode::Widescreen);
        EXPECT_EQ(app.Resolutions, (Resolutions{{size.Width, size.Height}}));
        EXPECT_EQ(app.ResolutionIndex, 0);
        EXPECT_EQ(LogicalWidth, canvasWidth);
    }
}

void ExpectNothingAdopted() {
    GameApp app;
    app.AspectMode = AspectMode::Classic4x3;
    FillWithStaleLists(app);
    LogicalWidth = 1152;
    AdoptDesktopMode(app);
    EXPECT_EQ(app.AspectMode, AspectMode::Classic4x3);
    EXPECT_EQ(app.Resolutions, (Resolutions{{1280, 720}, {1366, 768}}));
    EXPECT_EQ(app.ResolutionIndex, 1);
    EXPECT_EQ(LogicalWidth, 1152);
}

TEST(DesktopTest, ADesktopTooSmallToPlayOnIsNotAdopted) {
    const XServer server({{1016, 762}});
    const Video video("x11");
    ExpectNothingAdopted();
}

TEST(DesktopTest, WithoutADisplayNothingIsAdopted) {
    ASSERT_FALSE(SDL_WasInit(SDL_INIT_VIDEO));
    ExpectNothingAdopted();
}

} // namespace

} // namespace Wirefall
