#include "e2e/ScreenReader.h"

#include <gtest/gtest.h>

#include <string>

namespace Wirefall::Testing {

namespace {

constexpr WindowSize Wide = {1280, 720, 1280};
constexpr WindowSize Classic = {1024, 768, 960};

RunState BoardOf(std::uint32_t seed) {
    RunState run;
    run.Seed = seed;
    SeedEngine(run.RandomEngine, seed);
    GenerateLevel(run);
    run.CursorX = static_cast<std::int32_t>(seed % BoardSide);
    run.CursorY = static_cast<std::int32_t>(seed / 3 % BoardSide);
    run.DeliveredPackets = static_cast<std::int32_t>(seed % 20);
    run.LostPackets = static_cast<std::int32_t>(seed % 4);
    run.CorruptedPackets = static_cast<std::int32_t>(seed % 3);
    run.TotalScore = run.DeliveredPackets * 10 - run.LostPackets * 5 - run.CorruptedPackets * 10;
    run.FastForward = seed % 2 == 1;
    run.Packets.resize(2);
    run.Packets[0].X = 3;
    run.Packets[1].Y = 7;
    run.Packets[1].Corrupted = true;
    return run;
}

void ExpectReadsBack(const WindowSize& size) {
    ScreenReader reader(size);
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const RunState run = BoardOf(seed);
        const ReadResult read = reader.ReadRun(reader.DrawRun(run), &run);
        ASSERT_TRUE(read.Run) << read.Trouble;
        for (std::size_t i = 0; i < run.Tiles.size(); ++i) {
            ASSERT_EQ(run.Tiles[i], read.Run->Tiles[i]) << "cell " << i;
        }
        EXPECT_EQ(run.Sources, read.Run->Sources);
        EXPECT_EQ(run.Sinks, read.Run->Sinks);
        EXPECT_EQ(run.TileQueue, read.Run->TileQueue);
        EXPECT_EQ(run.CursorX, read.Run->CursorX);
        EXPECT_EQ(run.CursorY, read.Run->CursorY);
        EXPECT_EQ(run.DeliveredPackets, read.Run->DeliveredPackets);
        EXPECT_EQ(run.LostPackets, read.Run->LostPackets);
        EXPECT_EQ(run.CorruptedPackets, read.Run->CorruptedPackets);
        EXPECT_EQ(run.FastForward, read.Run->FastForward);
        EXPECT_EQ(2U, read.Run->Packets.size());
    }
}

} // namespace

TEST(ScreenReaderTest, ReadsBackWhatTheGameDraws) { ExpectReadsBack(Wide); }

TEST(ScreenReaderTest, ReadsBackWhatTheGameDrawsScaled) { ExpectReadsBack(Classic); }

// Whatever pixel is not as it should be, the picture is refused.
TEST(ScreenReaderTest, RefusesAPictureWithOneWrongPixel) {
    ScreenReader reader(Wide);
    const RunState run = BoardOf(1);
    const Screenshot picture = reader.DrawRun(run);
    for (const auto& [x, y] : {std::pair{0, 0}, {300, 300}, {236, 81}, {1060, 350}, {1150, 100}}) {
        Screenshot wrong = picture;
        wrong.Pixels[static_cast<std::size_t>(y) * 1280 + static_cast<std::size_t>(x)].G ^= 1U;
        EXPECT_FALSE(reader.ReadRun(wrong, &run).Run) << x << ", " << y;
    }
}

TEST(ScreenReaderTest, AMenuIsNoPlayScreenAndABoardIsNoMenu) {
    ScreenReader reader(Wide);
    const Screenshot board = reader.DrawRun(BoardOf(2));
    EXPECT_FALSE(reader.ReadMenu(board));
    EXPECT_TRUE(reader.ReadCursor(board));
    Screenshot black = board;
    black.Pixels.assign(black.Pixels.size(), Rgb{});
    EXPECT_FALSE(reader.ReadMenu(black));
    EXPECT_FALSE(reader.ReadCursor(black));
}

} // namespace Wirefall::Testing
