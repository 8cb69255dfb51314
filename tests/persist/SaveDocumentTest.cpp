#include "persist/SaveDocument.h"

#include "persist/RunConversion.h"
#include "persist/TaggedTree.h"
#include "support/SampleRuns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace Wirefall {
namespace {

using Testing::Bytes;
using Testing::FromHex;
using Testing::StreamOf;
using Testing::TaggedTree;
using Testing::TreeOf;

constexpr std::array<const char*, 31> RunKeys = {"Revision",
                                                 "AccumulatorMs",
                                                 "CursorX",
                                                 "CursorY",
                                                 "PreviewRotation",
                                                 "Tick",
                                                 "SpawnIntervalTicks",
                                                 "VirusSpreadIntervalTicks",
                                                 "NextSpawnTick",
                                                 "PacketGraceTicks",
                                                 "VirusGraceTicks",
                                                 "PacketGraceRemaining",
                                                 "VirusGraceRemaining",
                                                 "VirusActiveTicks",
                                                 "Level",
                                                 "TotalScore",
                                                 "LevelTargetPackets",
                                                 "FailureThreshold",
                                                 "LostPackets",
                                                 "CorruptedPackets",
                                                 "DeliveredPackets",
                                                 "GameOver",
                                                 "Seed",
                                                 "GridWidth",
                                                 "GridHeight",
                                                 "RandomState",
                                                 "TileQueue",
                                                 "Tiles",
                                                 "Sources",
                                                 "Sinks",
                                                 "Packets"};

SavedGame Read(const Bytes& stream) {
    TaggedReader reader;
    reader.LoadBytes(stream);
    return ReadSavedGame(reader);
}

SavedGame Read(const TaggedTree& tree) { return Read(StreamOf(tree)); }

Bytes Write(const SaveDocument* run) {
    return Testing::WrittenStream([run](TaggedWriter& writer) { WriteSaveDocument(writer, run); });
}

std::vector<std::string> KeysOf(const TaggedTree& object) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : object.Members) {
        keys.push_back(key);
    }
    return keys;
}

std::vector<TagKind> TagsOf(const TaggedTree& object) {
    std::vector<TagKind> tags;
    for (const auto& [key, value] : object.Members) {
        tags.push_back(value.Tag);
    }
    return tags;
}

class Document : public testing::Test {
protected:
    Document() {
        Testing::StartSampleRun(4, 21, 200);
        Run = MakeSaveDocument();
        Run.Packets = {{1, -2, 3, true, 4}, {5, 6, 0, false, 0}};
        Tree = TreeOf(Write(&Run));
    }

    TaggedTree& RunTree() { return Tree["RunState"]; }
    void ExpectBad() {
        const SavedGame saved = Read(Tree);
        EXPECT_TRUE(saved.RootIsObject);
        EXPECT_TRUE(saved.Complete);
        EXPECT_FALSE(saved.RunIsGood);
        EXPECT_FALSE(saved.IsWhole());
    }
    void ExpectGood() {
        const SavedGame saved = Read(Tree);
        EXPECT_TRUE(saved.RunIsGood);
        EXPECT_TRUE(saved.IsWhole());
    }

    SaveDocument Run;
    TaggedTree Tree;
};

TEST(NewDocument, HasTheNumbersOfANewRun) {
    const SaveDocument document;
    EXPECT_EQ(document.Revision, 1U);
    EXPECT_EQ(document.Level, 1);
    EXPECT_EQ(document.LevelTargetPackets, 20);
    EXPECT_EQ(document.FailureThreshold, 10);
    EXPECT_EQ(document.GridWidth, 0);
    EXPECT_EQ(document.SpawnIntervalTicks, 0);
    EXPECT_TRUE(document.Tiles.empty());
}

TEST_F(Document, ComesBackFromItsFile) {
    const SavedGame saved = Read(Write(&Run));
    EXPECT_TRUE(saved.RootIsObject);
    EXPECT_TRUE(saved.Complete);
    EXPECT_TRUE(saved.HasRunState);
    EXPECT_TRUE(saved.RunIsGood);
    EXPECT_EQ(saved.Run, Run);
}

TEST_F(Document, IsWrittenInItsOrder) {
    EXPECT_EQ(KeysOf(Tree), (std::vector<std::string>{"FormatVersion", "HasRunState", "RunState"}));
    EXPECT_EQ(std::get<std::int32_t>(Tree["FormatVersion"].Value), 1);
    EXPECT_TRUE(std::get<bool>(Tree["HasRunState"].Value));
    EXPECT_EQ(KeysOf(RunTree()), std::vector<std::string>(RunKeys.begin(), RunKeys.end()));
    EXPECT_EQ(KeysOf(RunTree()["Tiles"].Elements.at(0)),
              (std::vector<std::string>{"Type", "Connections", "VirusInfected", "OccupiedBySource",
                                        "OccupiedBySink", "Consumed", "CooldownTicks"}));
    for (const char* const key : {"Sources", "Sinks"}) {
        EXPECT_EQ(KeysOf(RunTree()[key].Elements.at(0)),
                  (std::vector<std::string>{"X", "Y", "Dir"}));
    }
    EXPECT_EQ(KeysOf(RunTree()["Packets"].Elements.at(0)),
              (std::vector<std::string>{"X", "Y", "Dir", "Corrupted", "DelayTicks"}));
}

TEST_F(Document, IsWrittenWithItsTags) {
    using enum TagKind;
    EXPECT_EQ(TagsOf(Tree), (std::vector<TagKind>{Int32, Bool, Object}));
    std::vector<TagKind> expected(RunKeys.size(), Int32);
    for (const std::size_t index : {0U, 1U, 5U, 8U, 13U}) {
        expected[index] = UInt64;
    }
    expected[21] = Bool;
    expected[22] = UInt32;
    expected[25] = String;
    std::fill(expected.begin() + 26, expected.end(), Array);
    EXPECT_EQ(TagsOf(RunTree()), expected);
    EXPECT_EQ(TagsOf(RunTree()["Tiles"].Elements.at(0)),
              (std::vector<TagKind>{Int32, Int32, Bool, Bool, Bool, Bool, Int32}));
    EXPECT_EQ(TagsOf(RunTree()["Sources"].Elements.at(0)),
              (std::vector<TagKind>{Int32, Int32, Int32}));
    EXPECT_EQ(TagsOf(RunTree()["Packets"].Elements.at(0)),
              (std::vector<TagKind>{Int32, Int32, Int32, Bool, Int32}));
    EXPECT_EQ(TagsOf(RunTree()), expected);
    EXPECT_EQ(RunTree()["TileQueue"].Elements.size(), 3U);
    EXPECT_EQ(RunTree()["TileQueue"].Elements.at(2).Tag, Int32);
    EXPECT_EQ(RunTree()["Tiles"].Elements.size(), 100U);
}

TEST_F(Document, ReadsTheSameInAnyOrder) {
    std::ranges::reverse(Tree.Members);
    std::ranges::reverse(RunTree().Members);
    for (TaggedTree& tile : RunTree()["Tiles"].Elements) {
        std::ranges::reverse(tile.Members);
    }
    const SavedGame saved = Read(Tree);
    EXPECT_TRUE(saved.HasRunState);
    EXPECT_TRUE(saved.RunIsGood);
    EXPECT_EQ(saved.Run, Run);
}

TEST_F(Document, PassesOverWhatItDoesNotKnow) {
    TaggedTree nested = TaggedTree::Object();
    nested.Add("List", TaggedTree::Array());
    nested["List"].Elements = {TaggedTree::Array(), TaggedTree::Object(), TaggedTree::Int32(4)};
    nested.Add("Level", TaggedTree::Int32(0));
    // From the inside out, because each insertion moves what is inside.
    for (TaggedTree* const object :
         {&RunTree()["Packets"].Elements.at(0), &RunTree()["Sinks"].Elements.at(0),
          &RunTree()["Tiles"].Elements.at(5), &RunTree(), &Tree}) {
        object->Members.insert(object->Members.begin() + 1, {"Unknown", nested});
        object->Add("Other", TaggedTree::String("text"));
    }
    const SavedGame saved = Read(Tree);
    EXPECT_TRUE(saved.RunIsGood);
    EXPECT_EQ(saved.Run, Run);
}

TEST_F(Document, PassesOverKeysThatAreNoStrings) {
    // {5: 6, "RunState": {}} with the run's object left empty.
    const SavedGame saved = Read(FromHex("0A 03 05000000 03 06000000 "
                                         "08 0B000000 48617352756E5374617465 02 01 01"));
    EXPECT_TRUE(saved.Complete);
    EXPECT_TRUE(saved.HasRunState);
}

TEST_F(Document, IsReadWhateverVersionItNames) {
    Tree["FormatVersion"] = TaggedTree::Int32(99);
    ExpectGood();
    Tree["FormatVersion"] = TaggedTree::String("new");
    ExpectGood();
    Tree.Remove("FormatVersion");
    ExpectGood();
}

TEST_F(Document, NeedsEveryMember) {
    const TaggedTree whole = Tree;
    for (const char* const key : RunKeys) {
        Tree = whole;
        RunTree().Remove(key);
        SCOPED_TRACE(key);
        ExpectBad();
    }
}

TEST_F(Document, NeedsEveryMemberOfEveryElement) {
    const TaggedTree whole = Tree;
    for (const char* const list : {"Tiles", "Sources", "Sinks", "Packets"}) {
        for (const std::string& key : KeysOf(RunTree()[list].Elements.front())) {
            SCOPED_TRACE(std::string(list) + " " + key);
            Tree = whole;
            RunTree()[list].Elements.back().Remove(key);
            ExpectBad();
            Tree = whole;
            RunTree()[list].Elements.back()[key] = TaggedTree::String("text");
            ExpectBad();
        }
    }
}

TEST_F(Document, NeedsMembersOfTheirKind) {
    const TaggedTree whole = Tree;
    for (const std::string key : RunKeys) {
        SCOPED_TRACE(key);
        Tree = whole;
        RunTree()[key] = TaggedTree::Object();
        ExpectBad();
        RunTree()[key] = key == "RandomState" ? TaggedTree::Int32(5) : TaggedTree::String("5");
        ExpectBad();
    }
}

TEST_F(Document, NeedsElementsThatAreObjects) {
    const TaggedTree whole = Tree;
    for (const char* const list : {"Tiles", "Sources", "Sinks", "Packets"}) {
        SCOPED_TRACE(list);
        for (const TaggedTree& wrong : {TaggedTree::Array(), TaggedTree::Int32(5)}) {
            Tree = whole;
            RunTree()[list].Elements.front() = wrong;
            ExpectBad();
        }
    }
}

TEST_F(Document, TakesAnEmptyListOfEndpointsAndPackets) {
    for (const char* const list : {"Sources", "Sinks", "Packets"}) {
        RunTree()[list].Elements.clear();
    }
    ExpectGood();
}

TEST_F(Document, TakesListsOfAnyLength) {
    for (const char* const list : {"Sources", "Sinks", "Packets"}) {
        std::vector<TaggedTree>& elements = RunTree()[list].Elements;
        elements.resize(20000, elements.front());
    }
    ExpectGood();
}

TEST_F(Document, HasThreeTilesInItsQueue) {
    std::vector<TaggedTree>& queue = RunTree()["TileQueue"].Elements;
    queue.pop_back();
    ExpectBad();
    queue.push_back(TaggedTree::Int32(1));
    ExpectGood();
    queue.push_back(TaggedTree::Int32(1));
    ExpectBad();
    queue.pop_back();
    queue.back() = TaggedTree::String("1");
    ExpectBad();
}

TEST_F(Document, TakesEveryNumberThatConverts) {
    RunTree()["CursorX"] = TaggedTree::Of(TagKind::Double, 3.6);
    RunTree()["Level"] = TaggedTree::Of(TagKind::Int64, std::int64_t{0x100000005});
    RunTree()["Tick"] = TaggedTree::Int32(7);
    RunTree()["GameOver"] = TaggedTree::Int32(1);
    RunTree()["Tiles"].Elements.at(0)["Type"] = TaggedTree::Of(TagKind::UInt64, std::uint64_t{2});
    const SavedGame saved = Read(Tree);
    EXPECT_TRUE(saved.RunIsGood);
    EXPECT_EQ(saved.Run.CursorX, 4);
    EXPECT_EQ(saved.Run.Level, 5);
    EXPECT_EQ(saved.Run.Tick, 7U);
    EXPECT_TRUE(saved.Run.GameOver);
    EXPECT_EQ(saved.Run.Tiles.at(0).Type, 2);
}

TEST_F(Document, TakesNoNegativeWhereACounterIsUnsigned) {
    RunTree()["Tick"] = TaggedTree::Int32(-7);
    ExpectBad();
}

TEST_F(Document, SeedIsAnyNaturalNumber) {
    RunTree()["Seed"] = TaggedTree::Int32(5);
    EXPECT_EQ(Read(Tree).Run.Seed, 5U);
    ExpectGood();
    RunTree()["Seed"] = TaggedTree::Of(TagKind::UInt64, std::uint64_t{0x500000006});
    EXPECT_EQ(Read(Tree).Run.Seed, 6U);
    ExpectGood();
    RunTree()["Seed"] = TaggedTree::Int32(-5);
    ExpectBad();
    RunTree()["Seed"] = TaggedTree::Of(TagKind::Double, 5.0);
    ExpectBad();
}

TEST_F(Document, OfTwoMembersWithOneKeyTheLastCounts) {
    RunTree().Add("Level", TaggedTree::Int32(8));
    RunTree().Add("TileQueue", TaggedTree::Array());
    RunTree()["TileQueue"].Elements.clear();
    RunTree().Members.back().Value.Elements = {TaggedTree::Int32(1), TaggedTree::Int32(2),
                                               TaggedTree::Int32(3)};
    RunTree()["Tiles"].Elements.at(0).Add("Type", TaggedTree::Int32(6));
    RunTree().Add("Packets", TaggedTree::Array());
    const SavedGame saved = Read(Tree);
    EXPECT_TRUE(saved.RunIsGood);
    EXPECT_EQ(saved.Run.Level, 8);
    EXPECT_EQ(saved.Run.TileQueue, (std::array<std::int32_t, 3>{1, 2, 3}));
    EXPECT_EQ(saved.Run.Tiles.at(0).Type, 6);
    EXPECT_TRUE(saved.Run.Packets.empty());
    RunTree().Add("Level", TaggedTree::String("x"));
    ExpectBad();
}

TEST_F(Document, OfTwoRunsTheLastCounts) {
    const TaggedTree run = RunTree();
    RunTree()["Level"] = TaggedTree::Int32(0);
    Tree.Add("RunState", run);
    ExpectGood();
    Tree.Add("RunState", TaggedTree::Int32(5));
    ExpectBad();
    Tree.Add("HasRunState", TaggedTree::Of(TagKind::Bool, false));
    EXPECT_TRUE(Read(Tree).IsWhole());
}

struct NumberLimit {
    const char* Key;
    std::int32_t Lowest;
};

TEST_F(Document, RefusesNumbersBelowTheirLimit) {
    const TaggedTree whole = Tree;
    for (const NumberLimit& limit : std::initializer_list<NumberLimit>{
             {"Level", 1},
             {"LevelTargetPackets", 1},
             {"FailureThreshold", 1},
             {"LostPackets", 0},
             {"CorruptedPackets", 0},
             {"DeliveredPackets", 0},
             {"PacketGraceRemaining", 0},
             {"VirusGraceRemaining", 0},
         }) {
        SCOPED_TRACE(limit.Key);
        Tree = whole;
        RunTree()[limit.Key] = TaggedTree::Int32(limit.Lowest);
        ExpectGood();
        for (const std::int32_t number :
             {limit.Lowest - 1, std::numeric_limits<std::int32_t>::min()}) {
            RunTree()[limit.Key] = TaggedTree::Int32(number);
            ExpectBad();
        }
    }
}

TEST_F(Document, RefusesNegativeGraces) {
    for (const char* const key : {"PacketGrace", "VirusGrace"}) {
        RunTree()[std::string(key) + "Ticks"] = TaggedTree::Int32(0);
        RunTree()[std::string(key) + "Remaining"] = TaggedTree::Int32(0);
        ExpectGood();
        RunTree()[std::string(key) + "Ticks"] = TaggedTree::Int32(-1);
        RunTree()[std::string(key) + "Remaining"] = TaggedTree::Int32(-1);
        ExpectBad();
        RunTree()[std::string(key) + "Ticks"] = TaggedTree::Int32(5);
        RunTree()[std::string(key) + "Remaining"] = TaggedTree::Int32(5);
        ExpectGood();
    }
}

TEST_F(Document, RefusesAGraceLongerThanItStarted) {
    for (const char* const key : {"PacketGrace", "VirusGrace"}) {
        const TaggedTree whole = Tree;
        RunTree()[std::string(key) + "Ticks"] = TaggedTree::Int32(10);
        RunTree()[std::string(key) + "Remaining"] = TaggedTree::Int32(11);
        ExpectBad();
        Tree = whole;
    }
}

TEST_F(Document, NeedsATileForEachCell) {
    RunTree()["GridWidth"] = TaggedTree::Int32(12);
    RunTree()["GridHeight"] = TaggedTree::Int32(12);
    ExpectBad();
    std::vector<TaggedTree>& tiles = RunTree()["Tiles"].Elements;
    tiles.resize(144, tiles.front());
    ExpectGood();
    RunTree()["GridWidth"] = TaggedTree::Int32(-12);
    RunTree()["GridHeight"] = TaggedTree::Int32(-12);
    ExpectBad();
}

TEST_F(Document, CutAnywhereIsNotWholeAndReadingEnds) {
    const Bytes whole = Write(&Run);
    for (std::size_t size = 1; size < whole.size(); ++size) {
        const SavedGame saved =
            Read(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        ASSERT_TRUE(saved.RootIsObject) << size;
        ASSERT_FALSE(saved.Complete) << size;
        ASSERT_FALSE(saved.RunIsGood) << size;
    }
}

// A damaged value that nobody asks for does not cost the run.
TEST_F(Document, WithADamagedUnknownMemberKeepsItsRun) {
    Tree.Members.insert(Tree.Members.begin(), {"New", TaggedTree::Of(TagKind::None, {})});
    const SavedGame saved = Read(Tree);
    EXPECT_FALSE(saved.Complete);
    EXPECT_TRUE(saved.RunIsGood);
    EXPECT_EQ(saved.Run, Run);
}

TEST_F(Document, DamagedInAnyByteIsReadToSomeEnd) {
    const Bytes whole = Write(&Run);
    for (std::size_t position = 1; position < whole.size(); ++position) {
        Bytes damaged = whole;
        damaged[position] = static_cast<std::uint8_t>(damaged[position] ^ 0x08);
        ASSERT_TRUE(Read(damaged).RootIsObject) << position;
    }
}

TEST_F(Document, OfZerosBehindItsHeadIsNotWhole) {
    Bytes damaged = Write(&Run);
    std::fill(damaged.begin() + 4096, damaged.end(), 0);
    const SavedGame saved = Read(damaged);
    EXPECT_FALSE(saved.Complete);
    EXPECT_FALSE(saved.IsWhole());
}

TEST(EndpointObject, NeedsAllThreeNumbers) {
    const auto read = [](const TaggedTree& tree, DocumentEndpoint& endpoint) {
        TaggedReader reader;
        reader.LoadBytes(StreamOf(tree));
        return ReadEndpointObject(reader, reader.ReadValue(), endpoint);
    };
    TaggedTree tree = TaggedTree::Object();
    tree.Add("Dir", TaggedTree::Int32(3));
    tree.Add("X", TaggedTree::Int32(-1));
    DocumentEndpoint endpoint;
    EXPECT_FALSE(read(tree, endpoint));
    tree.Add("Y", TaggedTree::Of(TagKind::Double, 2.5));
    EXPECT_TRUE(read(tree, endpoint));
    EXPECT_EQ(endpoint, (DocumentEndpoint{-1, 3, 3}));
    tree["Dir"] = TaggedTree::Of(TagKind::Bool, true);
    EXPECT_FALSE(read(tree, endpoint));
    EXPECT_FALSE(read(TaggedTree::Array(), endpoint));
    EXPECT_FALSE(read(TaggedTree::Int32(5), endpoint));
}

} // namespace
} // namespace Wirefall
