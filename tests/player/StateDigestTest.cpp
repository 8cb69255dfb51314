#include "player/StateDigest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace Wirefall {
namespace {

Simulation SampleState() {
    Simulation simulation;
    simulation.Run.Packets.push_back({1, 2, Direction::Down, false, 0});
    simulation.Run.TotalScore = -5;
    return simulation;
}

struct Change {
    const char* Field;
    const char* What;
    std::function<void(Simulation&)> Make;
};

template <typename Number>
Change Number1(const char* field, Number RunState::*member) {
    return {field, "Value",
            [member](Simulation& s) { s.Run.*member = static_cast<Number>(s.Run.*member + 1); }};
}

auto Flipped(bool Tile::*member) {
    return [member](Simulation& s) { s.Run.Tiles[3].*member = !(s.Run.Tiles[3].*member); };
}

// Every member of the state, and every member of what it is made of.
std::vector<Change> AllChanges() {
    return {
        Number1("GridWidth", &RunState::GridWidth),
        Number1("GridHeight", &RunState::GridHeight),
        {"Tiles", "Type", [](Simulation& s) { s.Run.Tiles[3].Type = TileType::Buffer; }},
        {"Tiles", "Connections", [](Simulation& s) { s.Run.Tiles[3].Connections ^= 4; }},
        {"Tiles", "VirusInfected", Flipped(&Tile::VirusInfected)},
        {"Tiles", "Source", Flipped(&Tile::OccupiedBySource)},
        {"Tiles", "Sink", Flipped(&Tile::OccupiedBySink)},
        {"Tiles", "Consumed", Flipped(&Tile::Consumed)},
        {"Tiles", "Cooldown", [](Simulation& s) { s.Run.Tiles[3].CooldownTicks = 1 << 24; }},
        {"Tiles", "Order", [](Simulation& s) { std::swap(s.Run.Tiles[55], s.Run.Tiles[53]); }},
        {"Packets", "Count", [](Simulation& s) { s.Run.Packets.emplace_back(); }},
        {"Packets", "X", [](Simulation& s) { s.Run.Packets[0].X = -1; }},
        {"Packets", "Y", [](Simulation& s) { s.Run.Packets[0].Y = 1; }},
        {"Packets", "Dir", [](Simulation& s) { s.Run.Packets[0].Dir = Direction::Up; }},
        {"Packets", "Corrupted", [](Simulation& s) { s.Run.Packets[0].Corrupted = true; }},
        {"Packets", "DelayTicks", [](Simulation& s) { s.Run.Packets[0].DelayTicks = 1; }},
        {"Sources", "Count", [](Simulation& s) { s.Run.Sources.clear(); }},
        {"Sources", "X", [](Simulation& s) { s.Run.Sources[0].X = 1; }},
        {"Sources", "Y", [](Simulation& s) { s.Run.Sources[0].Y = 1; }},
        {"Sources", "Dir", [](Simulation& s) { s.Run.Sources[0].Dir = Direction::Up; }},
        {"Sinks", "Y", [](Simulation& s) { s.Run.Sinks[0].Y = 5; }},
        {"TileQueue", "Last", [](Simulation& s) { s.Run.TileQueue[2] = TileType::Buffer; }},
        Number1("CursorX", &RunState::CursorX),
        Number1("CursorY", &RunState::CursorY),
        Number1("PreviewRotation", &RunState::PreviewRotation),
        Number1("Level", &RunState::Level),
        Number1("TotalScore", &RunState::TotalScore),
        Number1("LevelTargetPackets", &RunState::LevelTargetPackets),
        Number1("FailureThreshold", &RunState::FailureThreshold),
        Number1("Tick", &RunState::Tick),
        Number1("SpawnIntervalTicks", &RunState::SpawnIntervalTicks),
        Number1("VirusSpreadIntervalTicks", &RunState::VirusSpreadIntervalTicks),
        Number1("NextSpawnTick", &RunState::NextSpawnTick),
        Number1("PacketGraceTicks", &RunState::PacketGraceTicks),
        Number1("VirusGraceTicks", &RunState::VirusGraceTicks),
        Number1("PacketGraceRemaining", &RunState::PacketGraceRemaining),
        Number1("VirusGraceRemaining", &RunState::VirusGraceRemaining),
        Number1("VirusActiveTicks", &RunState::VirusActiveTicks),
        Number1("LostPackets", &RunState::LostPackets),
        Number1("CorruptedPackets", &RunState::CorruptedPackets),
        Number1("DeliveredPackets", &RunState::DeliveredPackets),
        {"GameOver", "Value", [](Simulation& s) { s.Run.GameOver = true; }},
        {"FastForward", "Value", [](Simulation& s) { s.Run.FastForward = true; }},
        Number1("Seed", &RunState::Seed),
        {"RandomEngine", "Word", [](Simulation& s) { s.Run.RandomEngine.Words[623] ^= 1; }},
        {"RandomEngine", "Position", [](Simulation& s) { --s.Run.RandomEngine.Position; }},
        {"AccumulatorMs", "Value", [](Simulation& s) { ++s.AccumulatorMs; }},
        {"Revision", "Value", [](Simulation& s) { ++s.Revision; }},
        {"RunInitialised", "Value", [](Simulation& s) { s.RunInitialised = true; }},
    };
}

class StateDigestChange : public testing::TestWithParam<Change> {};

TEST_P(StateDigestChange, ShowsInItsFieldAlone) {
    Simulation simulation = SampleState();
    const StateDigest before = DigestOf(simulation);
    GetParam().Make(simulation);
    const StateDigest after = DigestOf(simulation);
    for (std::size_t field = 0; field < StateFieldCount; ++field) {
        EXPECT_EQ(after[field] != before[field], StateFieldName(field) == GetParam().Field)
            << StateFieldName(field);
    }
    EXPECT_NE(ChecksumOf(after), ChecksumOf(before));
}

INSTANTIATE_TEST_SUITE_P(Members, StateDigestChange, testing::ValuesIn(AllChanges()),
                         [](const auto& test) {
                             return std::string(test.param.Field) + test.param.What;
                         });

TEST(StateDigest, HasNoFieldThatNoChangeIsTriedOn) {
    const std::vector<Change> changes = AllChanges();
    for (std::size_t field = 0; field < StateFieldCount; ++field) {
        EXPECT_TRUE(std::ranges::any_of(changes, [field](const Change& change) {
            return StateFieldName(field) == change.Field;
        })) << StateFieldName(field);
    }
}

// In one state after the other, each with one change more.
TEST(Digester, ComesToTheSameAsADigestFromTheGroundUp) {
    Digester digester;
    Simulation simulation = SampleState();
    EXPECT_EQ(digester.Next(simulation), DigestOf(simulation));
    for (const Change& change : AllChanges()) {
        change.Make(simulation);
        if (simulation.Run.Packets.empty() || simulation.Run.Sources.empty()) {
            simulation.Run = SampleState().Run;
        }
        EXPECT_EQ(digester.Next(simulation), DigestOf(simulation)) << change.Field << change.What;
    }
}

std::size_t FieldNamed(std::string_view name) {
    std::size_t field = 0;
    while (StateFieldName(field) != name) {
        ++field;
    }
    return field;
}

TEST(StateDigest, HoldsNumbersAsTheyAre) {
    const StateDigest digest = DigestOf(SampleState());
    EXPECT_EQ(digest[FieldNamed("Seed")], 1337U);
    EXPECT_EQ(static_cast<std::int64_t>(digest[FieldNamed("TotalScore")]), -5);
    EXPECT_TRUE(StateFieldIsNumber(FieldNamed("GameOver")));
    EXPECT_FALSE(StateFieldIsNumber(FieldNamed("Packets")));
    EXPECT_FALSE(StateFieldIsNumber(FieldNamed("RandomEngine")));
}

// Reckoned apart, from the description of the form.
TEST(StateDigest, HashesListsByteByByte) {
    Simulation simulation;
    simulation.Run.Packets = {{-2, 3, Direction::Left, true, 258}};
    EXPECT_EQ(DigestOf(simulation)[FieldNamed("Packets")], 0x2c87976a4d1d0f8fU);
    simulation.Run.Packets.clear();
    EXPECT_EQ(DigestOf(simulation)[FieldNamed("Packets")], 0x4d25767f9dce13f5U);
    simulation.Run.TileQueue = {TileType::Buffer, TileType::Straight, TileType::Cross};
    EXPECT_EQ(DigestOf(simulation)[FieldNamed("TileQueue")], 0xbf5403185d5a1013U);
}

TEST(StateDigest, ChecksumsAreThoseOfEveryPlatform) {
    StateDigest digest{};
    EXPECT_EQ(ChecksumOf(digest), 0x92184cc8715e4dc5U);
    digest[0] = 0x0102030405060708;
    EXPECT_EQ(ChecksumOf(digest), 0x9061b6429eccadd5U);
}

} // namespace
} // namespace Wirefall
