#include "display/Aspect.h"

#include "display/DisplayModes.h"
#include "display/LogicalCanvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <ostream>

namespace Wirefall {

namespace {

constexpr std::int32_t Largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Smallest = std::numeric_limits<std::int32_t>::min();

std::int32_t CanvasWidthFor(AspectMode aspectMode, std::int32_t width, std::int32_t height) {
    LogicalWidth = -1;
    UpdateLogicalWidth(aspectMode, width, height);
    return LogicalWidth;
}

TEST(AspectTest, ExactRatiosMatch) {
    EXPECT_TRUE(AspectMatches(1920, 1080, 16, 9));
    EXPECT_TRUE(AspectMatches(1024, 768, 4, 3));
    EXPECT_TRUE(AspectMatches(16, 9, 16, 9));
}

TEST(AspectTest, WidthAndHeightAreNotInterchangeable) {
    EXPECT_FALSE(AspectMatches(1080, 1920, 16, 9));
    EXPECT_FALSE(AspectMatches(768, 1024, 4, 3));
}

TEST(AspectTest, NearlyWidescreenPanelsCount) {
    // 12240 and 12288 differ by 48, and 61 are allowed.
    EXPECT_TRUE(AspectMatches(1360, 768, 16, 9));
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Widescreen, 1360, 768));
    EXPECT_EQ(CanvasWidthFor(AspectMode::Widescreen, 1360, 768), 1280);
    EXPECT_TRUE(AspectMatches(1366, 768, 16, 9));
}

// Compared with 1:1 the sizes are the products themselves.
TEST(AspectTest, HalfAPercentIsTheLimit) {
    EXPECT_TRUE(AspectMatches(2000, 1990, 1, 1)); // 10 of 10
    EXPECT_FALSE(AspectMatches(2000, 1989, 1, 1));
    EXPECT_TRUE(AspectMatches(1990, 2000, 1, 1));
    EXPECT_FALSE(AspectMatches(1989, 2000, 1, 1));
}

TEST(AspectTest, TheToleranceIsTruncated) {
    EXPECT_TRUE(AspectMatches(599, 597, 1, 1)); // 2 of 2.995
    EXPECT_FALSE(AspectMatches(599, 596, 1, 1));
    EXPECT_TRUE(AspectMatches(600, 597, 1, 1)); // 3 of 3
}

TEST(AspectTest, SmallSizesAreAllowedADifferenceOfOne) {
    EXPECT_TRUE(AspectMatches(399, 398, 1, 1)); // Half a percent of 399 would be 1 as well ...
    EXPECT_TRUE(AspectMatches(100, 99, 1, 1));  // ... but of 100 it would be none.
    EXPECT_FALSE(AspectMatches(100, 98, 1, 1));
    EXPECT_TRUE(AspectMatches(400, 398, 1, 1));
    EXPECT_FALSE(AspectMatches(399, 397, 1, 1));
    EXPECT_TRUE(AspectMatches(1, 1, 2, 1)); // 1 against 2
    EXPECT_FALSE(AspectMatches(1, 1, 3, 1));
}

TEST(AspectTest, ASizeBelowOneMatchesNothing) {
    for (const std::int32_t bad : {0, -1, Smallest}) {
        EXPECT_FALSE(AspectMatches(bad, 1080, 16, 9)) << bad;
        EXPECT_FALSE(AspectMatches(1920, bad, 16, 9)) << bad;
        EXPECT_FALSE(AspectMatches(bad, bad, 1, 1)) << bad;
    }
    // As near as 1 to 1, where a difference of one is allowed.
    EXPECT_FALSE(AspectMatches(0, 1, 1, 1));
    EXPECT_FALSE(AspectMatches(1, 0, 1, 1));
}

TEST(AspectTest, TheLargestSizesGetATrueAnswer) {
    EXPECT_TRUE(AspectMatches(Largest, Largest, 1, 1));
    EXPECT_TRUE(AspectMatches(Largest, Largest, 64, 64));
    EXPECT_FALSE(AspectMatches(Largest, 1, 64, 27));
    EXPECT_FALSE(AspectMatches(1, Largest, 64, 27));
    EXPECT_TRUE(AspectMatches(Largest, Largest / 16 * 9, 16, 9));
    // The products differ by exactly 2 to the power of 32.
    EXPECT_FALSE(AspectMatches(1 << 30, 1, 4, 1));
    EXPECT_EQ(CanvasWidthFor(AspectMode::Widescreen, Largest, Largest), 1280);
    EXPECT_FALSE(IsResolutionAllowed(AspectMode::Widescreen, Largest, Largest));
}

TEST(AspectTest, EachUltrawideRatioCounts) {
    EXPECT_TRUE(IsUltrawide(2560, 1080)); // 64:27
    EXPECT_TRUE(IsUltrawide(3440, 1440)); // 43:18
    EXPECT_TRUE(IsUltrawide(2100, 900));  // 21:9
    EXPECT_TRUE(IsUltrawide(3840, 1600)); // 12:5
    EXPECT_FALSE(IsUltrawide(1920, 1080));
    EXPECT_FALSE(IsUltrawide(3840, 1080));
    EXPECT_FALSE(IsUltrawide(2300, 1000)); // Narrower than all of them,
    EXPECT_FALSE(IsUltrawide(2420, 1000)); // and wider.
}

// The four ratios lie so near one another that only pairs on the far side of one tell it from the
// next.
TEST(AspectTest, TheUltrawideRatiosReachFrom21To9To12To5) {
    EXPECT_TRUE(IsUltrawide(23330, 10000)); // 21:9 alone
    EXPECT_FALSE(IsUltrawide(23210, 10000));
    EXPECT_TRUE(IsUltrawide(23810, 10000)); // 64:27 and 43:18
    EXPECT_TRUE(IsUltrawide(24110, 10000)); // 12:5 alone
    EXPECT_FALSE(IsUltrawide(24130, 10000));
}

TEST(AspectTest, ClassicModeAllowsOnlyFourToThree) {
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Classic4x3, 1024, 768));
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Classic4x3, 1600, 1200));
    EXPECT_FALSE(IsResolutionAllowed(AspectMode::Classic4x3, 1280, 1024));
    EXPECT_FALSE(IsResolutionAllowed(AspectMode::Classic4x3, 1920, 1080));
    EXPECT_FALSE(IsResolutionAllowed(AspectMode::Classic4x3, 1920, 1280));
}

TEST(AspectTest, WidescreenModeAllowsEachOfItsFamilies) {
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Widescreen, 1920, 1080)); // 16:9
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Widescreen, 1920, 1200)); // 16:10
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Widescreen, 2160, 1440)); // 3:2
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Widescreen, 3440, 1440)); // ultrawide
    EXPECT_TRUE(IsResolutionAllowed(AspectMode::Widescreen, 5120, 1440)); // 32:9
    EXPECT_FALSE(IsResolutionAllowed(AspectMode::Widescreen, 1024, 768));
    EXPECT_FALSE(IsResolutionAllowed(AspectMode::Widescreen, 1280, 1024));
    EXPECT_FALSE(IsResolutionAllowed(AspectMode::Widescreen, 1080, 1920));
}

TEST(AspectTest, EveryBuiltInResolutionIsAllowedInItsMode) {
    for (const AspectMode mode : {AspectMode::Widescreen, AspectMode::Classic4x3}) {
        for (const Resolution& resolution : BuiltInResolutions(mode)) {
            EXPECT_TRUE(IsResolutionAllowed(mode, resolution.Width, resolution.Height))
                << resolution.Width << "x" << resolution.Height;
        }
    }
}

struct CanvasCase {
    AspectMode Mode;
    std::int32_t Width;
    std::int32_t Height;
    std::int32_t CanvasWidth;
};

std::ostream& operator<<(std::ostream& out, const CanvasCase& c) {
    return out << c.Width << "x" << c.Height;
}

class LogicalCanvasTest : public testing::TestWithParam<CanvasCase> {};

TEST_P(LogicalCanvasTest, ItsWidthFollowsTheResolution) {
    const CanvasCase& c = GetParam();
    EXPECT_EQ(CanvasWidthFor(c.Mode, c.Width, c.Height), c.CanvasWidth);
}

INSTANTIATE_TEST_SUITE_P(Families, LogicalCanvasTest,
                         testing::Values(CanvasCase{AspectMode::Widescreen, 1280, 720, 1280},
                                         CanvasCase{AspectMode::Widescreen, 3840, 2160, 1280},
                                         CanvasCase{AspectMode::Widescreen, 2560, 1080, 1728},
                                         CanvasCase{AspectMode::Widescreen, 3440, 1440, 1728},
                                         CanvasCase{AspectMode::Widescreen, 2100, 900, 1728},
                                         CanvasCase{AspectMode::Widescreen, 3840, 1600, 1728},
                                         CanvasCase{AspectMode::Widescreen, 3840, 1080, 2560},
                                         CanvasCase{AspectMode::Widescreen, 1920, 1280, 1080},
                                         CanvasCase{AspectMode::Widescreen, 1920, 1200, 1152},
                                         CanvasCase{AspectMode::Classic4x3, 1024, 768, 960}));

INSTANTIATE_TEST_SUITE_P(Misfits, LogicalCanvasTest,
                         testing::Values(CanvasCase{AspectMode::Widescreen, 1024, 768, 1280},
                                         CanvasCase{AspectMode::Widescreen, 1280, 1024, 1280},
                                         CanvasCase{AspectMode::Widescreen, 0, 0, 1280},
                                         CanvasCase{AspectMode::Widescreen, -5, Smallest, 1280},
                                         CanvasCase{AspectMode::Classic4x3, 3840, 1080, 960},
                                         CanvasCase{AspectMode::Classic4x3, 0, 0, 960}));

TEST(LogicalCanvasHeightTest, IsAlways720) { EXPECT_EQ(LogicalHeight, 720); }

// Lines of the board that lie beside each other are drawn by colour and not in their order, which
// would show where several of them share a pixel of the window.
TEST(AspectTest, NoWindowOnOfferShowsTheCanvasAtLessThanTwoFifthsOfItsSize) {
    double smallest = 1.0;
    for (const AspectMode mode : {AspectMode::Widescreen, AspectMode::Classic4x3}) {
        for (std::int32_t width = 1; width <= 2560; ++width) {
            for (std::int32_t height = 1; height <= 1600; ++height) {
                if (IsPlayable(width, height) && IsResolutionAllowed(mode, width, height)) {
                    const double scale =
                        std::min(static_cast<double>(width) / CanvasWidthFor(mode, width, height),
                                 static_cast<double>(height) / LogicalHeight);
                    smallest = std::min(smallest, scale);
                }
            }
        }
    }
    EXPECT_GE(smallest, 0.39);
    EXPECT_LT(smallest, 0.41);
}

} // namespace

} // namespace Wirefall
