#include "screens/Hud.h"

#include "draw/Text.h"
#include "screens/HudLayout.h"
#include "sim/Simulation.h"
#include "support/Scenes.h"
#include "support/SoftwareCanvas.h"
#include "words/CommandHints.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace Wirefall {

namespace {

using Testing::Picture;
using Testing::Rgb;
using Testing::SoftwareCanvas;

using Lines = std::vector<std::string>;

const UiMetrics RoomyMetrics = {};

UiMetrics CompactMetrics() {
    UiMetrics metrics;
    metrics.Density = 1;
    metrics.HudTitleScale = 3;
    metrics.HudTextScale = 2;
    metrics.HudCompact = true;
    return metrics;
}

HudLayout PlacedAt(std::int32_t height, const UiMetrics& metrics) {
    return PlaceHud(PlaceBoard(1280, height), metrics);
}

TEST(HudPlacement, ReachesItsWantedHeightsOnTheUsualCanvas) {
    const HudLayout hud = PlacedAt(720, RoomyMetrics);
    EXPECT_FLOAT_EQ(hud.PanelHeight, 680.0F);
    EXPECT_FLOAT_EQ(hud.TileSide, 72.0F);
    EXPECT_FLOAT_EQ(hud.QueueHeight, 278.0F);
    EXPECT_FLOAT_EQ(hud.StatusY, 318.0F);
    EXPECT_FLOAT_EQ(hud.StatusHeight, 178.0F);
    EXPECT_FLOAT_EQ(hud.CommandsY, 506.0F);
    EXPECT_FLOAT_EQ(hud.CommandsHeight, 184.0F);
    EXPECT_FLOAT_EQ(hud.CommandsY + hud.CommandsHeight, hud.PanelY + hud.PanelHeight - 10.0F);
}

TEST(HudPlacement, StacksTheStatusLinesFromTheTitleDown) {
    const HudLayout hud = PlacedAt(720, RoomyMetrics);
    EXPECT_FLOAT_EQ(hud.StatusTitleY, 326.0F);
    EXPECT_FLOAT_EQ(hud.LevelY, 346.0F);
    EXPECT_FLOAT_EQ(hud.ScoreY, 357.0F);
    EXPECT_FLOAT_EQ(hud.TargetY, 368.0F);
    EXPECT_FLOAT_EQ(hud.FailureLabelY, 382.0F);
    EXPECT_FLOAT_EQ(hud.FailureBarY, 394.0F);
    EXPECT_FLOAT_EQ(hud.InfectionLabelY, 414.0F);
    EXPECT_FLOAT_EQ(hud.InfectionBarY, 426.0F);
}

TEST(HudPlacement, SpreadsTheCommandRowsOverTheirBox) {
    const HudLayout hud = PlacedAt(720, RoomyMetrics);
    const float bottom = hud.RowsTop + 4.0F * hud.RowHeight + 3.0F * hud.RowGap;
    EXPECT_GT(hud.RowGap, 6.0F);
    EXPECT_FLOAT_EQ(hud.RowsTop, hud.CommandsTitleY + hud.TitleHeight + 8.0F);
    EXPECT_FLOAT_EQ(bottom, hud.CommandsY + hud.CommandsHeight - 8.0F);
}

TEST(HudPlacement, HasRoomForChipsOfFullHeightButNotForTheirGaps) {
    // 40 pixels for three chips of 12: the gaps of 6 shrink to 2.
    const HudLayout hud = PlacedAt(720, RoomyMetrics);
    EXPECT_EQ(hud.ChipScale, 1);
    EXPECT_FLOAT_EQ(hud.ChipHeight, 12.0F);
    EXPECT_FLOAT_EQ(hud.ChipY[1] - hud.ChipY[0], 14.0F);
    EXPECT_FLOAT_EQ(hud.ChipY[0], 448.0F);
}

TEST(HudPlacement, GivesTheCommandsWhatTheStatusCanSpare) {
    // Heights between the floor of the status box and what it wants: the commands get their need.
    const HudLayout hud = PlacedAt(690, RoomyMetrics);
    EXPECT_LT(hud.StatusHeight, 178.0F);
    EXPECT_GT(hud.StatusHeight, 112.0F);
    EXPECT_NEAR(hud.CommandsHeight, 4.0F * 28.8F + 18.0F + 16.0F + 24.0F, 1e-3F);
}

TEST(HudPlacement, KeepsTheStatusAboveItsFloorWhileThereIsRoom) {
    const HudLayout hud = PlacedAt(400, RoomyMetrics);
    EXPECT_FLOAT_EQ(hud.StatusHeight, 112.0F);
    EXPECT_FLOAT_EQ(hud.ChipHeight, 10.0F);
}

TEST(HudPlacement, LetsTheStatusHaveAllButTheGapOnTheLowestCanvas) {
    const HudLayout hud = PlacedAt(100, RoomyMetrics);
    EXPECT_FLOAT_EQ(hud.PanelHeight, 180.0F);
    EXPECT_FLOAT_EQ(hud.QueueHeight, 152.0F);
    EXPECT_FLOAT_EQ(hud.StatusHeight, 0.0F);
    EXPECT_FLOAT_EQ(hud.CommandsHeight, 0.0F);
    EXPECT_FLOAT_EQ(hud.ChipHeight, 10.0F);
}

TEST(HudPlacement, GivesAllToTheStatusWhereLessThanItsFloorIsLeft) {
    // The column below the queue is 100 high here, so the status box has 90.
    const HudLayout hud = PlacedAt(322, RoomyMetrics);
    EXPECT_FLOAT_EQ(hud.StatusHeight, 90.0F);
    EXPECT_FLOAT_EQ(hud.CommandsHeight, 0.0F);
}

TEST(HudPlacement, HasTallerBarsAndLargerChipsWhenCompact) {
    const HudLayout hud = PlacedAt(720, CompactMetrics());
    EXPECT_FLOAT_EQ(hud.BarHeight, 14.0F);
    EXPECT_FLOAT_EQ(hud.LineHeight, 16.0F);
    EXPECT_FLOAT_EQ(hud.TitleHeight, 24.0F);
    EXPECT_EQ(hud.ChipScale, 2);
    EXPECT_FLOAT_EQ(hud.RowHeight, 0.35F * 16.0F + 48.0F + 4.0F);
    EXPECT_FLOAT_EQ(hud.StatusHeight, 112.0F);
}

TEST(HudPlacement, ShrinksTheChipsTextAndTheirGaps) {
    // There are 40 pixels for the chips whatever the size of the other lines. Those of text 2 would
    // need 54 even without gaps, so their text shrinks to 1 as well.
    for (const std::int32_t textScale : {1, 2}) {
        UiMetrics metrics;
        metrics.HudTextScale = textScale;
        const HudLayout hud = PlacedAt(1000, metrics);
        EXPECT_EQ(hud.ChipScale, 1) << textScale;
        EXPECT_FLOAT_EQ(hud.ChipHeight, 12.0F) << textScale;
        EXPECT_FLOAT_EQ(hud.ChipY[1] - hud.ChipY[0], 14.0F) << textScale;
        EXPECT_FLOAT_EQ(hud.ChipY[2] - hud.ChipY[1], 14.0F) << textScale;
    }
}

TEST(HudPlacement, KeepsItsColumnsWideOnANarrowPanel) {
    BoardLayout board = PlaceBoard(1280, 720);
    board.PanelWidth = 10;
    const HudLayout hud = PlaceHud(board, RoomyMetrics);
    EXPECT_FLOAT_EQ(hud.BoxWidth, 40.0F);
    EXPECT_FLOAT_EQ(hud.InnerWidth, 32.0F);
    EXPECT_FLOAT_EQ(hud.TextWidth, 20.0F);
}

TEST(CommandKeys, StayOnOneLineWhileTheyFit) {
    EXPECT_EQ(SplitCommandValue("UP/DN/LT/RT", 166.0F, 1), (Lines{"UP/DN/LT/RT"}));
    EXPECT_EQ(SplitCommandValue("  Q/E ", 166.0F, 1), (Lines{"Q/E"}));
}

TEST(CommandKeys, BreakAfterASeparator) {
    for (const std::string separator : {"+", "-", "/", "|"}) {
        EXPECT_EQ(SplitCommandValue("ABCD" + separator + "EFGH", 42.0F, 1),
                  (Lines{"ABCD" + separator, "EFGH"}));
    }
    EXPECT_EQ(SplitCommandValue("ABCD EFGH", 42.0F, 1), (Lines{"ABCD", "EFGH"}));
}

TEST(CommandKeys, BreakAfterTheLastSeparatorThatFits) {
    EXPECT_EQ(SplitCommandValue("A/B/CDEF", 42.0F, 1), (Lines{"A/B/", "CDEF"}));
}

TEST(CommandKeys, FillALineThatASeparatorFollows) {
    EXPECT_EQ(SplitCommandValue("AB CDE FGH", 42.0F, 1), (Lines{"AB CDE", "FGH"}));
}

TEST(CommandKeys, BreakAnywhereWithoutASeparator) {
    EXPECT_EQ(SplitCommandValue("ABCDEFGHIJ", 42.0F, 1), (Lines{"ABCDEF", "GHIJ"}));
}

TEST(CommandKeys, EndTheSecondLineInDotsWhenThereIsMore) {
    EXPECT_EQ(SplitCommandValue("ABCDEF GHIJKL MNOP", 42.0F, 1), (Lines{"ABCDEF", "GHI..."}));
}

TEST(CommandKeys, OfEightyLettersEndInDots) {
    const Lines lines = SplitCommandValue(std::string(80, 'X'), 166.0F, 1);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], std::string(23, 'X'));
    EXPECT_EQ(lines[1], std::string(20, 'X') + "...");
}

TEST(CommandKeys, DropOnlyBlanksAtTheEnd) {
    EXPECT_EQ(SplitCommandValue("ABCDEF   ", 42.0F, 1), (Lines{"ABCDEF"}));
    EXPECT_EQ(SplitCommandValue("ABCDEF GHIJKL  ", 42.0F, 1), (Lines{"ABCDEF", "GHIJKL"}));
}

TEST(CommandKeys, AreOneEmptyLineWhenThereAreNone) {
    EXPECT_EQ(SplitCommandValue("", 42.0F, 1), (Lines{""}));
    EXPECT_EQ(SplitCommandValue("   ", 42.0F, 1), (Lines{""}));
}

TEST(CommandKeys, TakeAtLeastOneByteALine) {
    // Not one byte fits, nor do the dots.
    EXPECT_EQ(SplitCommandValue("ABC", 3.0F, 1), (Lines{"", ""}));
}

// The panel of a run as it stands, drawn alone.
class HudPicture : public testing::Test {
protected:
    HudPicture() {
        LocalizationCatalog = {};
        StoreHudHintLines("MOVE UP", "ROTATE Q/E", "PLACE ENT", "FAST FORWARD X", "ESC MENU");
        ResetRun();
    }

    static Picture Drawn() {
        SoftwareCanvas canvas;
        DrawHud(canvas.Renderer(), PlaceBoard(1280, 720), RoomyMetrics);
        return canvas.Read();
    }

    static HudLayout Layout() { return PlacedAt(720, RoomyMetrics); }

    // How far a bar is filled, in pixels inside its outline.
    static std::int32_t FilledTo(const Picture& picture, float barY, Rgb color) {
        const auto y = static_cast<std::int32_t>(barY) + 6;
        std::int32_t filled = 0;
        for (std::int32_t x = 1052; x < 1238; ++x) {
            filled += picture.At(x, y) == color ? 1 : 0;
        }
        return filled;
    }

    static constexpr Rgb FailureColor = {0xe4, 0x92, 0x68};
    static constexpr Rgb InfectionColor = {0xe6, 0x7e, 0x66};
};

TEST_F(HudPicture, FillsTheFailureBarByWhatIsLostAndCorrupted) {
    RunState& run = LiveRun();
    run.LostPackets = 2;
    run.CorruptedPackets = 3;
    // Half of 186, of which the outline covers the first.
    EXPECT_EQ(FilledTo(Drawn(), Layout().FailureBarY, FailureColor), 92);
}

TEST_F(HudPicture, KeepsBarsInsideTheirEndsWhenCountersOvershoot) {
    RunState& run = LiveRun();
    run.LostPackets = std::numeric_limits<std::int32_t>::max();
    run.CorruptedPackets = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(FilledTo(Drawn(), Layout().FailureBarY, FailureColor), 184);
    run.LostPackets = std::numeric_limits<std::int32_t>::min();
    run.CorruptedPackets = 0;
    EXPECT_EQ(FilledTo(Drawn(), Layout().FailureBarY, FailureColor), 0);
}

TEST_F(HudPicture, TakesAThresholdBelowOneAsOneOnTheBar) {
    RunState& run = LiveRun();
    run.FailureThreshold = -5;
    run.LostPackets = 1;
    EXPECT_EQ(FilledTo(Drawn(), Layout().FailureBarY, FailureColor), 184);
    run.LostPackets = 0;
    EXPECT_EQ(FilledTo(Drawn(), Layout().FailureBarY, FailureColor), 0);
}

TEST_F(HudPicture, FillsTheInfectionBarByTheShareOfInfectedTiles) {
    for (Tile& tile : LiveRun().Tiles) {
        tile.VirusInfected = true;
    }
    EXPECT_EQ(FilledTo(Drawn(), Layout().InfectionBarY, InfectionColor), 184);
}

TEST_F(HudPicture, PrintsTheRawCounters) {
    RunState& run = LiveRun();
    run.FailureThreshold = 0;
    run.LostPackets = 7;
    run.CorruptedPackets = 5;
    const Picture picture = Drawn();
    SoftwareCanvas canvas;
    const std::string value = "12/0";
    const float x = 1052.0F + 186.0F - ByteWidth(value.size(), 1) - 2.0F;
    DrawText(canvas.Renderer(), value, x, Layout().FailureLabelY, 1, Rgba(0xcaece0ff));
    const Picture expected = canvas.Read();
    constexpr Rgb Bright = {0xca, 0xec, 0xe0};
    for (std::int32_t py = 382; py < 390; ++py) {
        for (std::int32_t px = 1052; px < 1238; ++px) {
            EXPECT_EQ(picture.At(px, py) == Bright, expected.At(px, py) == Bright) << px;
        }
    }
}

TEST_F(HudPicture, MarksTheTileInHandAndTurnsOnlyThat) {
    RunState& run = LiveRun();
    run.TileQueue = {TileType::Straight, TileType::Straight, TileType::Straight};
    run.PreviewRotation = 1;
    const Picture picture = Drawn();
    const HudLayout hud = Layout();
    const auto left = static_cast<std::int32_t>(hud.TileX);
    const auto top = static_cast<std::int32_t>(hud.TileY);
    constexpr Rgb Wire = {0x54, 0xce, 0xe0};
    EXPECT_EQ(picture.At(left, top), (Rgb{0xec, 0xd6, 0x88}));
    EXPECT_EQ(picture.At(left, top + 82), (Rgb{0x2c, 0x60, 0x58}));
    EXPECT_EQ(picture.At(left + 20, top + 36), Wire);
    EXPECT_EQ(picture.At(left + 36, top + 82 + 20), Wire);
    EXPECT_NE(picture.At(left + 20, top + 82 + 36), Wire);
}

TEST_F(HudPicture, ShowsChevronsInTheStatusTitleWhileFastForwardIsHeld) {
    const Picture calm = Drawn();
    LiveRun().FastForward = true;
    const Picture fast = Drawn();
    std::int32_t top = 720;
    std::int32_t bottom = -1;
    std::int32_t left = 1280;
    for (std::int32_t y = 0; y < 720; ++y) {
        for (std::int32_t x = 0; x < 1280; ++x) {
            if (calm.At(x, y) != fast.At(x, y)) {
                top = std::min(top, y);
                bottom = std::max(bottom, y);
                left = std::min(left, x);
            }
        }
    }
    // The sprite of 16 stands at (1220, 325); its rows 5 to 10 and columns from 3 have pixels.
    EXPECT_EQ(top, 330);
    EXPECT_EQ(bottom, 335);
    EXPECT_EQ(left, 1223);
}

TEST_F(HudPicture, LeavesTheCommandsWordOutOfItsKeys) {
    const Picture plain = Drawn();
    StoreHudHintLines("UP", "Q/E", "ENT", "X", "");
    EXPECT_EQ(Drawn(), plain);
}

TEST_F(HudPicture, CentersTheTextOfAChip) {
    SoftwareCanvas canvas;
    const HudLayout hud = Layout();
    DrawChipText({canvas.Renderer(), hud}, "AB", hud.InnerX, 100.0F, Rgba(0xffffffff), 1);
    SoftwareCanvas expected;
    DrawText(expected.Renderer(), "AB", hud.InnerX + (186.0F - 14.0F) / 2.0F, 102.0F, 1,
             Rgba(0xffffffff));
    EXPECT_EQ(canvas.Read(), expected.Read());
}

TEST_F(HudPicture, ShrinksTheTextOfAChipUntilItFits) {
    SoftwareCanvas canvas;
    const HudLayout hud = Layout();
    const std::string text(13, 'A'); // 182 at scale 2, for 176
    DrawChipText({canvas.Renderer(), hud}, text, hud.InnerX, 100.0F, Rgba(0xffffffff), 2);
    SoftwareCanvas expected;
    DrawText(expected.Renderer(), text, hud.InnerX + (186.0F - 91.0F) / 2.0F, 102.0F, 1,
             Rgba(0xffffffff));
    EXPECT_EQ(canvas.Read(), expected.Read());
}

} // namespace

} // namespace Wirefall
