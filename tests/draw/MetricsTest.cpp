#include "draw/Metrics.h"

#include "support/SoftwareCanvas.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace Wirefall {

namespace {

using Testing::SoftwareCanvas;

UiMetrics MeasuredAt(std::int32_t logical, std::int32_t surface) {
    SoftwareCanvas canvas({.LogicalWidth = logical,
                           .LogicalHeight = logical,
                           .SurfaceWidth = surface,
                           .SurfaceHeight = surface});
    return MeasureUiMetrics(canvas.Renderer(), logical, logical);
}

TEST(UiMetrics, AreRoomyFromAScaleOfSeventyEightPercent) {
    EXPECT_EQ(MeasuredAt(1000, 1000).Density, 0);
    EXPECT_EQ(MeasuredAt(1000, 780).Density, 0);
    EXPECT_EQ(MeasuredAt(1000, 779).Density, 1);
}

TEST(UiMetrics, AreTightestBelowAScaleOfSixtyTwoPercent) {
    EXPECT_EQ(MeasuredAt(1000, 620).Density, 1);
    EXPECT_EQ(MeasuredAt(1000, 619).Density, 2);
}

TEST(UiMetrics, GoByTheScaleAtWhichTheCanvasIsShown) {
    EXPECT_FLOAT_EQ(MeasuredAt(1000, 2000).Scale, 2.0F);
    EXPECT_FLOAT_EQ(MeasuredAt(1000, 500).Scale, 0.5F);
}

TEST(UiMetrics, DoNotFallBelowOnePercent) {
    const UiMetrics metrics = MeasuredAt(1000, 5);
    EXPECT_FLOAT_EQ(metrics.Scale, 0.01F);
    EXPECT_EQ(metrics.Density, 2);
}

TEST(UiMetrics, AreRoomyWithoutARendererOrACanvas) {
    SoftwareCanvas canvas({.SurfaceWidth = 128, .SurfaceHeight = 72});
    for (const UiMetrics& metrics :
         {MeasureUiMetrics(nullptr, 1280, 720), MeasureUiMetrics(canvas.Renderer(), 0, 720),
          MeasureUiMetrics(canvas.Renderer(), 1280, 0)}) {
        EXPECT_FLOAT_EQ(metrics.Scale, 1.0F);
        EXPECT_EQ(metrics.Density, 0);
    }
}

TEST(UiMetrics, HaveSmallerMenusAndALargerHudInASmallerPicture) {
    struct Row {
        std::int32_t UiMetrics::*Field;
        std::int32_t Scales[3];
    };
    constexpr Row Rows[] = {
        {&UiMetrics::MenuTitleScale, {10, 9, 7}},  {&UiMetrics::MenuItemScale, {4, 3, 2}},
        {&UiMetrics::MenuCursorScale, {3, 2, 2}},  {&UiMetrics::MenuFooterScale, {3, 2, 2}},
        {&UiMetrics::ScreenTitleScale, {6, 5, 4}}, {&UiMetrics::SectionScale, {4, 3, 2}},
        {&UiMetrics::RowScale, {3, 2, 2}},         {&UiMetrics::BodyScale, {2, 2, 1}},
        {&UiMetrics::HintScale, {2, 2, 1}},        {&UiMetrics::CursorScale, {3, 2, 2}},
        {&UiMetrics::HudTitleScale, {2, 3, 3}},    {&UiMetrics::HudTextScale, {1, 2, 2}},
    };
    const UiMetrics measured[3] = {MeasuredAt(100, 100), MeasuredAt(100, 70), MeasuredAt(100, 50)};
    for (std::size_t density = 0; density < 3; ++density) {
        EXPECT_EQ(measured[density].Density, static_cast<std::int32_t>(density));
        EXPECT_EQ(measured[density].HudCompact, density != 0);
        for (const Row& row : Rows) {
            EXPECT_EQ(measured[density].*row.Field, row.Scales[density]);
        }
    }
}

TEST(DensitySpacing, DrawsInByTenAndEighteenPercent) {
    EXPECT_FLOAT_EQ(DensityPx(0, 18.0F), 18.0F);
    EXPECT_FLOAT_EQ(DensityPx(1, 18.0F), 16.2F);
    EXPECT_FLOAT_EQ(DensityPx(2, 18.0F), 14.76F);
}

constexpr OptionListArea RoomyList = {.ListAreaTop = 100.0F,
                                      .SectionScale = 4,
                                      .RowScale = 3,
                                      .HintTop = 600.0F,
                                      .PreferredPitch = 40.0F,
                                      .Density = 0};

TEST(OptionList, KeepsThePreferredPitchWhileTheRowsFit) {
    // From 150 to 580; the rows are 24 high.
    EXPECT_FLOAT_EQ(OptionRowPitch(RoomyList, 4), 40.0F);
    EXPECT_FLOAT_EQ(OptionRowPitch(RoomyList, 11), 40.0F);
}

TEST(OptionList, DrawsALongListTogether) {
    EXPECT_FLOAT_EQ(OptionRowPitch(RoomyList, 15), (430.0F - 24.0F) / 14.0F);
}

TEST(OptionList, LeavesTwoPixelsBetweenRowsThatDoNotFit) {
    EXPECT_FLOAT_EQ(OptionRowPitch(RoomyList, 100), 26.0F);
    EXPECT_FLOAT_EQ(OptionListTop(RoomyList, 100, 26.0F), 150.0F);
}

TEST(OptionList, SetsAShortListInTheMiddle) {
    EXPECT_FLOAT_EQ(OptionListTop(RoomyList, 4, 40.0F), 150.0F + (430.0F - 144.0F) / 2.0F);
    EXPECT_FLOAT_EQ(OptionListTop(RoomyList, 1, 40.0F), 150.0F + (430.0F - 24.0F) / 2.0F);
}

TEST(OptionList, GivesASingleRowThePreferredPitch) {
    EXPECT_FLOAT_EQ(OptionRowPitch(RoomyList, 1), 40.0F);
}

TEST(OptionList, HasNoRoomWhereTheHintsStandAboveIt) {
    OptionListArea area = RoomyList;
    area.HintTop = 120.0F;
    EXPECT_FLOAT_EQ(OptionRowPitch(area, 4), 26.0F);
    EXPECT_FLOAT_EQ(OptionListTop(area, 4, 26.0F), 150.0F);
}

TEST(OptionList, DrawsInItsSpacingWithTheDensity) {
    OptionListArea area = RoomyList;
    area.Density = 2;
    EXPECT_FLOAT_EQ(OptionListTop(area, 100, 26.0F), 132.0F + 14.76F);
}

TEST(Percents, RoundHalvesAwayFromZero) {
    EXPECT_EQ(PercentText(0.125F), "13%");
    EXPECT_EQ(PercentText(-0.125F), "-13%");
    EXPECT_EQ(PercentText(0.124F), "12%");
    EXPECT_EQ(PercentText(0.0F), "0%");
    EXPECT_EQ(PercentText(1.0F), "100%");
}

} // namespace

} // namespace Wirefall
