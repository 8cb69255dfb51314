// Once warm, the batches that a frame is made of allocate nothing. Every allocation through the
// program's operator new is counted here, which is why this test is a program of its own.

#include "base/Clock.h"
#include "draw/BinaryRain.h"
#include "draw/Text.h"
#include "draw/TileArt.h"
#include "screens/BoardScreen.h"
#include "sim/Simulation.h"
#include "support/SoftwareCanvas.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> Allocations = 0;

} // namespace

void* operator new(std::size_t size) {
    ++Allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace Wirefall {

namespace {

template <typename Draw>
std::size_t AllocationsOf(const Draw& draw) {
    draw();
    const std::size_t before = Allocations;
    draw();
    return Allocations - before;
}

TEST(WarmFrame, AllocatesNothingForText) {
    Testing::SoftwareCanvas canvas;
    EXPECT_EQ(AllocationsOf([&] {
                  DrawText(canvas.Renderer(), "FAST FORWARD", 3.0F, 4.0F, 2, Rgba(0xffffffff));
              }),
              0U);
}

TEST(WarmFrame, AllocatesNothingForTiles) {
    Testing::SoftwareCanvas canvas;
    EXPECT_EQ(AllocationsOf([&] {
                  DrawTile(canvas.Renderer(), MakeTile(TileType::Cross, 0), 0.0F, 0.0F, 56.0F,
                           56.0F);
              }),
              0U);
}

TEST(WarmFrame, AllocatesNothingForTheRain) {
    Testing::SoftwareCanvas canvas;
    FreezeClock(5000);
    EXPECT_EQ(AllocationsOf([&] {
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
        return AllocationsOf([&] { DrawBoardScreen(canvas.Renderer(), width, 720); });
    };
    EXPECT_EQ(allocationsAt(2560), allocationsAt(960));
}

} // namespace

} // namespace Wirefall
