#include "persist/RunConversion.h"

#include "game/GameApp.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/SampleRuns.h"

#include <gtest/gtest.h>

#include <limits>

namespace Wirefall {
namespace {

constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

class Install : public testing::Test {
protected:
    Install() {
        Testing::StartSampleRun(4, 21, 200);
        Original = LiveRun();
        Document = MakeSaveDocument();
        ResetRun();
        Before = LiveRun();
    }

    const RunState& Installed() {
        EXPECT_TRUE(InstallSaveDocument(App, Document));
        return LiveSimulation().Run;
    }

    void ExpectRefused() {
        App.MenuSelection = 3;
        const std::uint64_t revision = GetRevision();
        EXPECT_FALSE(InstallSaveDocument(App, Document));
        EXPECT_EQ(LiveRun(), Before);
        EXPECT_EQ(GetRevision(), revision);
        EXPECT_EQ(App.MenuSelection, 3);
    }

    RunState Original;
    RunState Before;
    SaveDocument Document;
    GameApp App;
};

TEST_F(Install, GivesTheRunBack) {
    EXPECT_EQ(Installed(), Testing::Normalised(Original));
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 77U);
    EXPECT_TRUE(LiveSimulation().RunInitialised);
}

TEST_F(Install, ShowsTheMenu) {
    App.Screen = AppScreen::GameOver;
    App.MenuSelection = 3;
    App.PauseSelection = 2;
    Installed();
    EXPECT_EQ(App.Screen, AppScreen::MainMenu);
    EXPECT_EQ(App.MenuSelection, 0);
    EXPECT_EQ(App.PauseSelection, 0);
}

TEST_F(Install, WorksBeforeThereIsARun) {
    LiveSimulation() = Simulation{};
    Installed();
    EXPECT_EQ(LiveRun(), Testing::Normalised(Original)) << "No new run takes its place";
}

TEST_F(Install, TakesNoOtherBoardSize) {
    for (const auto& [width, height] :
         {std::pair{12, 12}, std::pair{20, 5}, std::pair{1, 100}, std::pair{0, 0}}) {
        Document.GridWidth = width;
        Document.GridHeight = height;
        Document.Tiles.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        ExpectRefused();
    }
}

TEST_F(Install, NeedsAHundredTiles) {
    Document.Tiles.pop_back();
    ExpectRefused();
    Document.Tiles.resize(101);
    ExpectRefused();
}

TEST_F(Install, RefusesImpossibleCounters) {
    const SaveDocument good = Document;
    const auto expectRefused = [this, &good](std::int32_t SaveDocument::*member,
                                             std::int32_t number) {
        Document = good;
        Document.*member = number;
        ExpectRefused();
    };
    expectRefused(&SaveDocument::Level, 0);
    expectRefused(&SaveDocument::LevelTargetPackets, 0);
    expectRefused(&SaveDocument::FailureThreshold, 0);
    expectRefused(&SaveDocument::LostPackets, -1);
    expectRefused(&SaveDocument::CorruptedPackets, -1);
    expectRefused(&SaveDocument::DeliveredPackets, -1);
    expectRefused(&SaveDocument::PacketGraceTicks, -1);
    expectRefused(&SaveDocument::VirusGraceTicks, -1);
    expectRefused(&SaveDocument::PacketGraceRemaining, -1);
    expectRefused(&SaveDocument::VirusGraceRemaining, -1);
    expectRefused(&SaveDocument::PacketGraceRemaining, good.PacketGraceTicks + 1);
    expectRefused(&SaveDocument::VirusGraceRemaining, good.VirusGraceTicks + 1);
}

TEST_F(Install, TakesEveryScore) {
    for (const std::int32_t score : {Lowest, -5, 0, Highest}) {
        Document.TotalScore = score;
        EXPECT_EQ(Installed().TotalScore, score);
    }
}

TEST_F(Install, BringsTheCursorOntoTheBoard) {
    Document.CursorX = 99;
    Document.CursorY = -4;
    EXPECT_EQ(Installed().CursorX, 9);
    EXPECT_EQ(Installed().CursorY, 0);
    Document.CursorX = Lowest;
    Document.CursorY = Highest;
    EXPECT_EQ(Installed().CursorX, 0);
    EXPECT_EQ(Installed().CursorY, 9);
}

TEST_F(Install, ReducesTheRotation) {
    for (const auto& [stored, rotation] :
         {std::pair{0, 0}, std::pair{3, 3}, std::pair{4, 0}, std::pair{6, 2}, std::pair{-1, 3},
          std::pair{-4, 0}, std::pair{Lowest, 0}, std::pair{Highest, 3}}) {
        Document.PreviewRotation = stored;
        EXPECT_EQ(Installed().PreviewRotation, rotation) << stored;
    }
}

TEST_F(Install, KeepsIntervalsAboveZero) {
    for (const std::int32_t interval : {0, -1, Lowest}) {
        Document.SpawnIntervalTicks = interval;
        Document.VirusSpreadIntervalTicks = interval;
        EXPECT_EQ(Installed().SpawnIntervalTicks, 1);
        EXPECT_EQ(Installed().VirusSpreadIntervalTicks, 1);
    }
}

TEST_F(Install, NeverGivesRevisionZero) {
    Document.Revision = 0;
    Installed();
    EXPECT_EQ(GetRevision(), 1U);
    Document.Revision = std::numeric_limits<std::uint64_t>::max();
    Installed();
    EXPECT_EQ(GetRevision(), std::numeric_limits<std::uint64_t>::max());
}

TEST_F(Install, DoesNotHoldFastForward) {
    SetFastForward(true);
    EXPECT_FALSE(Installed().FastForward);
}

TEST_F(Install, RefusesUnknownTiles) {
    for (const std::int32_t type : {8, -1, 256, Highest, Lowest}) {
        Document.Tiles[42].Type = type;
        ExpectRefused();
    }
    Document.Tiles[42].Type = 0;
    for (const std::int32_t type : {8, -1, 256}) {
        Document.TileQueue[2] = type;
        ExpectRefused();
    }
}

TEST_F(Install, RefusesEndpointsThatAreNotOnTheBoard) {
    const SaveDocument good = Document;
    for (const auto list : {&SaveDocument::Sources, &SaveDocument::Sinks}) {
        for (const DocumentEndpoint& wrong : std::initializer_list<DocumentEndpoint>{
                 {-1, 0, 0}, {0, -1, 0}, {10, 0, 0}, {0, 10, 0}, {0, 0, 4}, {0, 0, -1}}) {
            Document = good;
            (Document.*list).push_back(wrong);
            ExpectRefused();
        }
    }
}

TEST_F(Install, TakesPacketsAnywhereWithAKnownDirection) {
    Document.Packets = {{-50, Highest, 3, true, -7}, {2, 3, 0, false, 4}};
    EXPECT_EQ(Installed().Packets, (std::vector<Packet>{{-50, Highest, Direction::Left, true, 0},
                                                        {2, 3, Direction::Up, false, 4}}));
    LiveSimulation().Run = Before;
    for (const std::int32_t direction : {4, -1}) {
        Document.Packets = {{2, 3, direction, false, 0}};
        ExpectRefused();
    }
}

// What a tile on a cell without a source or a sink becomes.
class InstallTile : public Install {
protected:
    Tile Installs(const DocumentTile& stored) {
        Document.Sources.clear();
        Document.Sinks.clear();
        Document.Tiles[42] = stored;
        return Installed().Tiles[42];
    }
};

TEST_F(InstallTile, KeepsFourBitsOfItsConnections) {
    EXPECT_EQ(Installs({1, 0x7fffff25, false, false, false, false, 0}).Connections, 5);
    EXPECT_EQ(Installs({1, -1, false, false, false, false, 0}).Connections, 15);
}

TEST_F(InstallTile, HasNoNegativeCooldown) {
    EXPECT_EQ(Installs({1, 5, false, false, false, false, -3}).CooldownTicks, 0);
    EXPECT_EQ(Installs({1, 5, false, false, false, false, 3}).CooldownTicks, 3);
}

TEST_F(InstallTile, OccupiesNothingThatNoListNames) {
    const Tile tile = Installs({1, 5, true, true, true, false, 0});
    EXPECT_FALSE(tile.OccupiedBySource);
    EXPECT_FALSE(tile.OccupiedBySink);
    EXPECT_TRUE(tile.VirusInfected);
}

TEST_F(InstallTile, WhenEmptyHasNothingButPerhapsTheVirus) {
    EXPECT_EQ(Installs({0, 15, true, false, false, true, 9}),
              (Tile{TileType::Empty, 0, true, false, false, false, 0}));
}

TEST_F(InstallTile, AFirewallIsCleanAndUnspent) {
    EXPECT_EQ(Installs({5, 15, true, false, false, true, 9}),
              (Tile{TileType::Firewall, 15, false, false, false, false, 9}));
}

TEST_F(InstallTile, ASpentAntivirusIsAPlainTile) {
    constexpr std::array<int, 16> PlainTypes = {0, 4, 4, 2, 4, 1, 2, 3, 4, 2, 1, 3, 2, 3, 3, 4};
    for (std::int32_t mask = 0; mask < 16; ++mask) {
        const Tile tile = Installs({6, mask, true, false, false, true, 9});
        EXPECT_EQ(static_cast<int>(tile.Type), PlainTypes.at(static_cast<std::size_t>(mask)))
            << mask;
        EXPECT_EQ(tile.Connections, mask);
        EXPECT_TRUE(tile.Consumed);
        EXPECT_TRUE(tile.VirusInfected);
        EXPECT_EQ(tile.CooldownTicks, 9);
    }
}

TEST_F(InstallTile, AnUnspentAntivirusStaysOne) {
    EXPECT_EQ(Installs({6, 15, true, false, false, false, 9}),
              (Tile{TileType::Antivirus, 15, true, false, false, false, 9}));
}

TEST_F(InstallTile, OfAnyOtherKindIsUnspent) {
    for (const std::int32_t type : {1, 2, 3, 4, 7}) {
        EXPECT_EQ(Installs({type, 5, true, false, false, true, 9}),
                  (Tile{static_cast<TileType>(type), 5, true, false, false, false, 9}));
    }
}

TEST_F(Install, RebuildsTheCellsOfSourcesAndSinks) {
    Document.Sources = {{2, 4, 1}};
    Document.Sinks = {{2, 5, 3}, {2, 6, 0}};
    Document.Tiles[42] = {6, 15, true, false, true, true, 9};
    Document.Tiles[52] = {0, 0, false, false, false, false, 0};
    Document.Tiles[62] = {5, 15, true, false, false, false, 0};
    const RunState& run = Installed();
    EXPECT_EQ(run.Tiles[42], (Tile{TileType::Straight, 2, true, true, false, false, 0}));
    EXPECT_EQ(run.Tiles[52], (Tile{TileType::Straight, 8, false, false, true, false, 0}));
    EXPECT_EQ(run.Tiles[62], (Tile{TileType::Straight, 1, false, false, true, false, 0}))
        << "As a Firewall it was cleaned first";
}

TEST_F(Install, ASinkOnASourceTakesTheCell) {
    Document.Sources = {{2, 4, 1}};
    Document.Sinks = {{2, 4, 3}};
    EXPECT_EQ(Installed().Tiles[42].OccupiedBySink, true);
    EXPECT_EQ(Installed().Tiles[42].OccupiedBySource, false);
    EXPECT_EQ(Installed().Tiles[42].Connections, 8);
}

TEST_F(Install, SeedsTheEngineWhenItsStateIsOfNoUse) {
    MersenneTwister seeded;
    SeedEngine(seeded, 4711);
    Document.Seed = 4711;
    Document.RandomState = Document.RandomState.substr(0, Document.RandomState.rfind(' '));
    EXPECT_EQ(Installed().RandomEngine, seeded) << "The position is missing";
    Document.RandomState.clear();
    EXPECT_EQ(Installed().RandomEngine, seeded);
}

TEST_F(Install, GoesOnWithTheEngineWhereItStood) {
    RunState twin = Original;
    Installed();
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(NextOutput(LiveRun().RandomEngine), NextOutput(twin.RandomEngine));
    }
}

TEST_F(Install, PlaysOnWithNumbersAtTheEndOfTheirRange) {
    Document.TotalScore = Lowest;
    Document.LostPackets = Highest;
    Document.CorruptedPackets = Highest;
    Document.FailureThreshold = Highest;
    Document.LevelTargetPackets = Highest;
    Document.DeliveredPackets = Highest - 1;
    Document.Level = Highest;
    Document.Tick = std::numeric_limits<std::uint64_t>::max() - 2;
    Document.NextSpawnTick = 0;
    Document.SpawnIntervalTicks = Highest;
    Document.VirusActiveTicks = std::numeric_limits<std::uint64_t>::max() - 2;
    Document.AccumulatorMs = std::numeric_limits<std::uint64_t>::max();
    Document.Packets.assign(1000, {Highest, Lowest, 1, true, Highest});
    Installed();
    for (int frame = 0; frame < 20; ++frame) {
        AdvanceSimulation(MaxFrameMs);
        BuildRunSnapshot();
        if (IsLevelComplete()) {
            AdvanceLevel();
        }
    }
    EXPECT_NE(LiveRun().Tick, Document.Tick);
}

TEST(EngineText, IsTheWordsAndThePosition) {
    MersenneTwister engine;
    for (std::uint32_t i = 0; i < engine.Words.size(); ++i) {
        engine.Words.at(i) = i;
    }
    engine.Words[1] = std::numeric_limits<std::uint32_t>::max();
    engine.Position = 17;
    const std::string text = EngineText(engine);
    EXPECT_EQ(text.substr(0, 23), "0 4294967295 2 3 4 5 6 ");
    EXPECT_EQ(text.substr(text.size() - 11), " 622 623 17");
    EXPECT_EQ(std::count(text.begin(), text.end(), ' '), 624);
    EXPECT_EQ(ParseEngineText(text), engine);
}

TEST(EngineText, TakesTheLongestNumbersThereAre) {
    MersenneTwister engine;
    engine.Words.fill(std::numeric_limits<std::uint32_t>::max());
    engine.Position = std::numeric_limits<std::uint32_t>::max();
    EXPECT_EQ(EngineText(engine).size(), 625 * 10 + 624U);
    EXPECT_EQ(ParseEngineText(EngineText(engine)), engine);
}

std::string Numbers(int count, const std::string& number, const std::string& space) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += space + number;
    }
    return text;
}

TEST(EngineText, MayHaveAnyWhiteSpaceAndAnythingBehind) {
    EXPECT_TRUE(ParseEngineText(Numbers(625, "7", " ")).has_value());
    EXPECT_TRUE(ParseEngineText(Numbers(625, "7", "\r\n\t\v\f ")).has_value());
    EXPECT_TRUE(ParseEngineText(Numbers(625, "7", " ") + "x").has_value());
    EXPECT_TRUE(ParseEngineText(Numbers(700, "7", " ")).has_value());
}

TEST(EngineText, NeedsEveryNumber) {
    EXPECT_FALSE(ParseEngineText("").has_value());
    EXPECT_FALSE(ParseEngineText("   ").has_value());
    EXPECT_FALSE(ParseEngineText(Numbers(623, "7", " ")).has_value());
    EXPECT_FALSE(ParseEngineText(Numbers(624, "7", " ")).has_value());
    EXPECT_FALSE(ParseEngineText(Numbers(624, "7", " ") + "  ").has_value());
    EXPECT_FALSE(ParseEngineText(Numbers(624, "7", " ") + " x").has_value());
    EXPECT_FALSE(ParseEngineText(Numbers(625, "4294967296", " ")).has_value());
    EXPECT_FALSE(ParseEngineText(Numbers(625, "0x7", " ")).has_value());
    EXPECT_FALSE(ParseEngineText("x" + Numbers(625, "7", " ")).has_value());
}

} // namespace
} // namespace Wirefall
