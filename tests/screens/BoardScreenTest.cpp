#include "screens/BoardScreen.h"

#include "base/Clock.h"
#include "screens/BoardLayout.h"
#include "sim/Simulation.h"
#include "support/Scenes.h"
#include "support/SoftwareCanvas.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace Wirefall {

namespace {

using Testing::CanvasSize;
using Testing::Picture;
using Testing::Rgb;
using Testing::SoftwareCanvas;

constexpr Rgb GridLine = {0x2c, 0x60, 0x58};
constexpr Rgb EmptyCell = {0x09, 0x12, 0x14};
constexpr Rgb Cyan = {0x54, 0xce, 0xe0};
constexpr Rgb Green = {0x70, 0xf6, 0x9e};
constexpr Rgb CorruptedRed = {0xf6, 0x74, 0x74};
constexpr Rgb CursorFree = {0xea, 0xda, 0x96};
constexpr Rgb CursorBlocked = {0xe6, 0x7e, 0x66};

TEST(BoardPlacement, OnTheUsualCanvas) {
    const BoardLayout layout = PlaceBoard(1280, 720);
    EXPECT_EQ(layout, (BoardLayout{.CellSize = 56,
                                   .ScreenWidth = 1280,
                                   .ScreenHeight = 720,
                                   .BoardX = 235,
                                   .BoardY = 80,
                                   .PanelX = 1030,
                                   .PanelY = 20,
                                   .PanelWidth = 230}));
    EXPECT_EQ(BoardExtent(layout), 560);
}

TEST(BoardPlacement, NarrowsThePanelBelowAWidthOf490) {
    EXPECT_EQ(PlaceBoard(490, 720).PanelWidth, 230);
    EXPECT_EQ(PlaceBoard(489, 720).PanelWidth, 229);
    EXPECT_EQ(PlaceBoard(381, 720).PanelWidth, 121);
    EXPECT_EQ(PlaceBoard(380, 720).PanelWidth, 120);
    EXPECT_EQ(PlaceBoard(100, 720).PanelWidth, 120);
}

TEST(BoardPlacement, HasACellOfAtLeast18ByHeight) {
    EXPECT_EQ(PlaceBoard(1280, 221).CellSize, 18);
    EXPECT_EQ(PlaceBoard(1280, 220).CellSize, 18);
    EXPECT_EQ(PlaceBoard(1280, 1).CellSize, 18);
    EXPECT_EQ(PlaceBoard(1280, 230).CellSize, 19);
}

TEST(BoardPlacement, HasRoomForTwentyPixelCellsOnTheNarrowestCanvas) {
    EXPECT_EQ(PlaceBoard(100, 720).CellSize, 20);
    EXPECT_EQ(PlaceBoard(100, 720).BoardX, 20);
}

TEST(BoardPlacement, StandsAtTheTopMarginWhereTheHeightIsShort) {
    // Cells of 36 leave 40 and then 41 pixels; at 402, one pixel more.
    EXPECT_EQ(PlaceBoard(1280, 400).BoardY, 20);
    EXPECT_EQ(PlaceBoard(1280, 401).BoardY, 20);
    EXPECT_EQ(PlaceBoard(1280, 402).BoardY, 21);
}

// A run with an empty board, so that a test adds only what it looks at.
class BoardPicture : public testing::Test {
protected:
    BoardPicture() {
        ResetRun();
        RunState& run = LiveRun();
        run.Tiles.assign(run.Tiles.size(), Tile{});
        run.Sources.clear();
        run.Sinks.clear();
        run.CursorX = -1;
    }

    static Picture Drawn() {
        SoftwareCanvas canvas;
        DrawBoardScreen(canvas.Renderer(), 1280, 720);
        return canvas.Read();
    }

    // A pixel of the cell (x, y), from its top left corner.
    static Rgb PixelIn(const Picture& picture, std::int32_t x, std::int32_t y, std::int32_t dx,
                       std::int32_t dy) {
        return picture.At(235 + 56 * x + dx, 80 + 56 * y + dy);
    }
};

TEST_F(BoardPicture, OutlinesEachCell) {
    const Picture picture = Drawn();
    EXPECT_EQ(PixelIn(picture, 3, 4, 0, 0), GridLine);
    EXPECT_EQ(PixelIn(picture, 3, 4, 55, 55), GridLine);
    EXPECT_EQ(PixelIn(picture, 3, 4, 1, 1), EmptyCell);
    EXPECT_EQ(PixelIn(picture, 3, 4, 54, 54), EmptyCell);
}

TEST_F(BoardPicture, FramesTheGrid) {
    const Picture picture = Drawn();
    EXPECT_EQ(picture.At(300, 74), (Rgb{0x46, 0x84, 0x7a}));
    EXPECT_EQ(picture.At(300, 75), (Rgb{0x46, 0x84, 0x7a}));
    EXPECT_EQ(picture.At(229, 300), GridLine);
    EXPECT_EQ(picture.At(300, 645), GridLine);
    EXPECT_EQ(picture.At(800, 300), GridLine);
}

TEST_F(BoardPicture, HasBarsAtTheBoardsEdge) {
    RunState& run = LiveRun();
    run.Sources = {{0, 4, Direction::Right}, {3, 0, Direction::Down}};
    run.Sinks = {{9, 4, Direction::Left}, {3, 9, Direction::Up}};
    const Picture picture = Drawn();
    // Bars are 0.16 cells thick, that is 8 whole pixels, and lie under the outline.
    EXPECT_EQ(PixelIn(picture, 0, 4, 1, 28), Cyan);
    EXPECT_EQ(PixelIn(picture, 0, 4, 7, 28), Cyan);
    EXPECT_EQ(PixelIn(picture, 0, 4, 9, 28), EmptyCell);
    EXPECT_EQ(PixelIn(picture, 3, 0, 28, 7), Cyan);
    EXPECT_EQ(PixelIn(picture, 3, 0, 28, 9), EmptyCell);
    EXPECT_EQ(PixelIn(picture, 9, 4, 54, 28), Green);
    EXPECT_EQ(PixelIn(picture, 9, 4, 46, 28), EmptyCell);
    EXPECT_EQ(PixelIn(picture, 3, 9, 28, 54), Green);
    EXPECT_EQ(PixelIn(picture, 3, 9, 28, 46), EmptyCell);
}

TEST_F(BoardPicture, PutsTheBarOfADamagedDirectionOnTop) {
    LiveRun().Sources = {{4, 4, static_cast<Direction>(7)}};
    EXPECT_EQ(PixelIn(Drawn(), 4, 4, 28, 4), Cyan);
}

TEST_F(BoardPicture, TintsInfectedCellsUnderTheirWires) {
    RunState& run = LiveRun();
    TileAt(run, 2, 2) = MakeTile(TileType::Cross, 0);
    TileAt(run, 2, 2).VirusInfected = true;
    const Picture picture = Drawn();
    EXPECT_GT(PixelIn(picture, 2, 2, 10, 10).R, 80);
    EXPECT_EQ(PixelIn(picture, 2, 2, 28, 28), Cyan);
    EXPECT_EQ(PixelIn(picture, 2, 2, 0, 0), GridLine);
}

TEST_F(BoardPicture, ShowsPacketsByTheirHealth) {
    RunState& run = LiveRun();
    TileAt(run, 5, 5).VirusInfected = true;
    run.Packets = {{.X = 4, .Y = 5}, {.X = 5, .Y = 5, .Corrupted = true}};
    const Picture picture = Drawn();
    EXPECT_EQ(PixelIn(picture, 4, 5, 28, 28), Cyan);
    EXPECT_EQ(PixelIn(picture, 5, 5, 28, 28), CorruptedRed);
}

TEST_F(BoardPicture, SkipsPacketsThatAreNotOnTheBoard) {
    const Picture empty = Drawn();
    LiveRun().Packets = {{.X = 10, .Y = 0}, {.X = 0, .Y = -1}, {.X = -1, .Y = 3}};
    EXPECT_EQ(Drawn(), empty);
}

TEST_F(BoardPicture, HasNoCursorOutsideTheBoard) {
    const Picture empty = Drawn();
    LiveRun().CursorX = 10;
    EXPECT_EQ(Drawn(), empty);
}

TEST_F(BoardPicture, ShowsTheTileInHandUnderTheCursor) {
    RunState& run = LiveRun();
    run.CursorX = 6;
    run.CursorY = 6;
    run.TileQueue[0] = TileType::Straight;
    run.PreviewRotation = 1;
    const Picture picture = Drawn();
    EXPECT_EQ(PixelIn(picture, 6, 6, 0, 0), CursorFree);
    EXPECT_EQ(PixelIn(picture, 6, 6, 15, 28), Cyan);
    EXPECT_EQ(PixelIn(picture, 6, 6, 28, 15), PixelIn(picture, 6, 6, 15, 15));
    EXPECT_EQ(PixelIn(picture, 6, 6, 1, 1), EmptyCell) << "the preview leaves a rim";
    EXPECT_NE(PixelIn(picture, 6, 6, 2, 2), EmptyCell);
}

TEST_F(BoardPicture, WarnsWithTheCursorOnAnEndpoint) {
    RunState& run = LiveRun();
    run.Sinks = {{6, 6, Direction::Left}};
    run.CursorX = 6;
    run.CursorY = 6;
    run.TileQueue[0] = TileType::Cross;
    const Picture picture = Drawn();
    EXPECT_EQ(PixelIn(picture, 6, 6, 0, 0), CursorBlocked);
    EXPECT_EQ(PixelIn(picture, 6, 6, 28, 28), EmptyCell);
}

TEST_F(BoardPicture, KeepsTheCursorWithoutAPreviewAfterTheRunIsOver) {
    RunState& run = LiveRun();
    run.CursorX = 6;
    run.CursorY = 6;
    run.TileQueue[0] = TileType::Cross;
    run.GameOver = true;
    const Picture picture = Drawn();
    EXPECT_EQ(PixelIn(picture, 6, 6, 0, 0), CursorFree);
    EXPECT_EQ(PixelIn(picture, 6, 6, 28, 28), EmptyCell);
}

TEST_F(BoardPicture, WalksTheGridThatTheRunHas) {
    RunState& run = LiveRun();
    run.GridWidth = 2;
    run.GridHeight = 3;
    run.Tiles.assign(6, Tile{});
    const Picture picture = Drawn();
    EXPECT_EQ(PixelIn(picture, 1, 2, 10, 10), EmptyCell);
    EXPECT_NE(PixelIn(picture, 2, 2, 10, 10), EmptyCell);
    EXPECT_NE(PixelIn(picture, 1, 3, 10, 10), EmptyCell);
}

TEST_F(BoardPicture, KeepsPacketsFivePixelsWideInTinyCells) {
    LiveRun().Packets = {{.X = 0, .Y = 0}};
    SoftwareCanvas canvas;
    DrawBoardScreen(canvas.Renderer(), 1280, 150);
    const Picture picture = canvas.Read();
    // A cell of 18 at (425, 20): the packet is 5.04 wide and stands 6.48 in, so it covers the
    // pixels 431 to 435, the outer ones under its rim.
    for (std::int32_t x = 426; x < 442; ++x) {
        EXPECT_EQ(picture.At(x, 28) == Cyan, x >= 432 && x <= 434) << x;
        EXPECT_EQ(picture.At(x, 28) == EmptyCell, x < 431 || x > 435) << x;
    }
}

TEST_F(BoardPicture, ChangesNothingInTheRun) {
    const RunState before = LiveRun();
    Drawn();
    EXPECT_EQ(LiveRun(), before);
}

TEST_F(BoardPicture, HasTheSameBackgroundInEveryFrame) {
    FreezeClock(1000);
    const Picture picture = Drawn();
    FreezeClock(98765);
    EXPECT_EQ(Drawn(), picture);
    ResumeClock();
}

TEST_F(BoardPicture, HasNoBackgroundOnACanvasWithoutASize) {
    constexpr std::array<std::array<std::int32_t, 2>, 4> Sizes = {
        {{0, 720}, {1280, 0}, {-1280, 720}, {1280, -720}}};
    for (const auto& [width, height] : Sizes) {
        SoftwareCanvas canvas;
        SDL_ClearError();
        DrawBoardScreen(canvas.Renderer(), width, height);
        const Picture picture = canvas.Read();
        EXPECT_EQ(picture.At(2, 2), (Rgb{0, 0, 0})) << width << " by " << height;
        EXPECT_EQ(picture.At(1000, 719), (Rgb{0, 0, 0})) << width << " by " << height;
    }
}

TEST(BoardScreen, StartsARunIfThereIsNoneEvenWithoutARenderer) {
    LiveSimulation().RunInitialised = false;
    DrawBoardScreen(nullptr, 1280, 720);
    EXPECT_TRUE(LiveSimulation().RunInitialised);
}

constexpr CanvasSize SmallCanvas = {
    .LogicalWidth = 60, .LogicalHeight = 40, .SurfaceWidth = 60, .SurfaceHeight = 40};

// How many pixels of a bar in the cell (5, 5, w, h) lie on the cell's two middle lines.
struct BarReach {
    std::int32_t Across = 0;
    std::int32_t Down = 0;
    bool operator==(const BarReach&) const = default;
};

BarReach ReachOf(Direction side, float w, float h) {
    SoftwareCanvas canvas(SmallCanvas);
    DrawEndpointBar(canvas.Renderer(), {5.0F, 5.0F, w, h}, side, Rgba(0xffffffff));
    const Picture picture = canvas.Read();
    BarReach reach;
    for (std::int32_t x = 0; x < picture.Width; ++x) {
        reach.Across += picture.At(x, 5 + static_cast<std::int32_t>(h) / 2).R != 0 ? 1 : 0;
    }
    for (std::int32_t y = 0; y < picture.Height; ++y) {
        reach.Down += picture.At(5 + static_cast<std::int32_t>(w) / 2, y).R != 0 ? 1 : 0;
    }
    return reach;
}

TEST(EndpointBars, LieAlongTheirSide) {
    EXPECT_EQ(ReachOf(Direction::Up, 50.0F, 30.0F), (BarReach{0, 4}));
    EXPECT_EQ(ReachOf(Direction::Right, 50.0F, 30.0F), (BarReach{4, 0}));
    EXPECT_EQ(ReachOf(Direction::Down, 50.0F, 30.0F), (BarReach{0, 4}));
    EXPECT_EQ(ReachOf(Direction::Left, 50.0F, 30.0F), (BarReach{4, 0}));
}

TEST(EndpointBars, AreAtLeastFourPixelsThick) {
    EXPECT_EQ(ReachOf(Direction::Left, 20.0F, 20.0F), (BarReach{4, 0}));
}

TEST(EndpointBars, TakeADamagedSideAsTheTop) {
    EXPECT_EQ(ReachOf(static_cast<Direction>(4), 50.0F, 30.0F), (BarReach{0, 4}));
    EXPECT_EQ(ReachOf(static_cast<Direction>(255), 50.0F, 30.0F), (BarReach{0, 4}));
}

} // namespace

} // namespace Wirefall
