// Once warm, the batches that a frame is made of allocate nothing.

#include "base/Clock.h"
#include "draw/BinaryRain.h"
#include "draw/Text.h"
#include "draw/TileArt.h"
#include "screens/BoardScreen.h"
#include "sim/Simulation.h"
#include "support/Allocations.h"
#include "support/SoftwareCanvas.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace Wirefall {

namespace {

// Of the second time.
template <typename Draw>
std::size_t WarmAllocationsOf(const Draw& draw) {
    draw();
    return Testing::AllocationsOf(draw);
}

TEST(WarmFrame, AllocatesNothingForText) {
    Testing::SoftwareCanvas canvas;
    EXPECT_EQ(WarmAllocationsOf([&] {
                  DrawText(canvas.Renderer(), "FAST FORWARD", 3.0F, 4.0F, 2, Rgba(0xffffffff));
              }),
              0U);
}

TEST(WarmFrame, AllocatesNothingForTiles) {
    Testing::SoftwareCanvas canvas;
    EXPECT_EQ(WarmAllocationsOf([&] {
                  DrawTile(canvas.Renderer(), MakeTile(TileType::Cross, 0), 0.0F, 0.0F, 56.0F,
                           56.0F);
              }),
              0U);
}

TEST(WarmFrame, AllocatesNothingForTheRain) {
    Testing::SoftwareCanvas canvas;
    FreezeClock(5000);
    EXPECT_EQ(WarmAllocationsOf([&] {
                  RainCache.Valid = false;
                  DrawBinaryRain(canvas.Renderer(), 1280.0F, true);
              }),
              0U);
    ResumeClock();
}

// The HUD makes its strings anew in every frame; what grows with the canvas must not.
TEST(WarmFrame, AllocatesTheSameForABoardOfAnySize) {
    Testing::SoftwareCanvas canvas;
    ResetRun();
    const auto allocationsAt = [&](std::int32_t width) {
        return WarmAllocationsOf([&] { DrawBoardScreen(canvas.Renderer(), width, 720); });
    };
    EXPECT_EQ(allocationsAt(2560), allocationsAt(960));
}

} // namespace

} // namespace Wirefall
