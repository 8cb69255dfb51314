#include "persist/TaggedStream.h"

#include "support/CapturedOutput.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <sys/stat.h>
#include <thread>

namespace Wirefall {
namespace {

using Testing::CapturedErrors;
using Testing::FromHex;
using Testing::FullDisk;
using Testing::ReadFileBytes;
using Testing::WriteFileBytes;

using Bytes = Testing::Bytes;

// The object {"Version": 2, "Name": "Ab", "Open": true, "Id": 5, "List": [7, 8]}.
const Bytes WorkedExample = FromHex("0A"
                                    "08 07000000 56657273696F6E"
                                    "03 02000000"
                                    "08 04000000 4E616D65"
                                    "08 02000000 4162"
                                    "08 04000000 4F70656E"
                                    "02 01"
                                    "08 02000000 4964"
                                    "06 0500000000000000"
                                    "08 04000000 4C697374"
                                    "09"
                                    "03 07000000"
                                    "03 08000000"
                                    "01"
                                    "01");

TaggedReader ReaderOf(const Bytes& bytes) {
    TaggedReader reader;
    reader.LoadBytes(bytes);
    return reader;
}

TaggedValue Value(TagKind tag, TaggedPayload payload) { return {0, tag, std::move(payload)}; }

TaggedValue Int32Value(std::int32_t number) { return Value(TagKind::Int32, number); }

// What `write` makes of an empty file.
template <typename Write>
Bytes Written(Write write) {
    const Testing::TemporaryFolder folder;
    {
        TaggedWriter writer;
        EXPECT_TRUE(writer.OpenForWriting(folder.File("stream")));
        write(writer);
    }
    return ReadFileBytes(folder.File("stream"));
}

std::string KeyOf(const TaggedValue& key) { return std::get<std::string>(key.Value); }

TEST(TaggedValue, IsNoValueUntilItIsGivenOne) {
    const TaggedValue value;
    EXPECT_EQ(value.Depth, 0U);
    EXPECT_EQ(value.Tag, TagKind::None);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(value.Value));
}

TEST(TaggedWriter, WritesTheWorkedExampleByteForByte) {
    EXPECT_EQ(Written([](TaggedWriter& writer) {
                  writer.BeginObject();
                  writer.WriteMemberInt32("Version", 2);
                  writer.WriteString("Name");
                  writer.WriteString("Ab");
                  writer.WriteMemberBool("Open", true);
                  writer.WriteMemberUInt64("Id", 5);
                  writer.WriteString("List");
                  writer.BeginArray();
                  writer.WriteInt32(7);
                  writer.WriteInt32(8);
                  writer.EndContainer();
                  writer.EndContainer();
              }),
              WorkedExample);
    EXPECT_EQ(WorkedExample.size(), 83U);
}

TEST(TaggedWriter, WritesEveryKindOfValueLittleEndian) {
    EXPECT_EQ(Written([](TaggedWriter& writer) {
                  writer.WriteValue(Value(TagKind::Bool, false));
                  writer.WriteValue(Value(TagKind::Int32, std::int32_t{-2}));
                  writer.WriteValue(Value(TagKind::UInt32, std::uint32_t{0x89ABCDEF}));
                  writer.WriteValue(Value(TagKind::Int64, std::int64_t{-2}));
                  writer.WriteValue(Value(TagKind::UInt64, std::uint64_t{0x0123456789ABCDEF}));
                  writer.WriteValue(Value(TagKind::Double, -2.5));
                  writer.WriteValue(Value(TagKind::String, std::string("\0\xff", 2)));
              }),
              FromHex("02 00"
                      "03 FEFFFFFF"
                      "04 EFCDAB89"
                      "05 FEFFFFFFFFFFFFFF"
                      "06 EFCDAB8967452301"
                      "07 00000000000004C0"
                      "08 02000000 00FF"));
}

TEST(TaggedWriter, WritesTagsWithoutAPayloadAlone) {
    EXPECT_EQ(Written([](TaggedWriter& writer) {
                  for (const int tag : {0, 1, 9, 10, 11, 255}) {
                      writer.WriteValue(Value(static_cast<TagKind>(tag), std::string("unused")));
                  }
              }),
              FromHex("00 01 09 0A 0B FF"));
}

TEST(TaggedWriter, RaisesAfterTheTagWhenAValueContradictsIt) {
    EXPECT_EQ(Written([](TaggedWriter& writer) {
                  EXPECT_THROW(writer.WriteValue(Value(TagKind::Int32, std::string("5"))),
                               std::bad_variant_access);
              }),
              FromHex("03"));
}

TEST(TaggedWriter, ReplacesWhatTheFileHeldBefore) {
    const Testing::TemporaryFolder folder;
    WriteFileBytes(folder.File("stream"), WorkedExample);
    TaggedWriter writer;
    ASSERT_TRUE(writer.OpenForWriting(folder.File("stream")));
    writer.WriteInt32(1);
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(ReadFileBytes(folder.File("stream")), FromHex("03 01000000"));
}

TEST(TaggedWriter, ANewFileCompletesTheOneBefore) {
    const Testing::TemporaryFolder folder;
    TaggedWriter writer;
    ASSERT_TRUE(writer.OpenForWriting(folder.File("first")));
    writer.WriteInt32(1);
    ASSERT_TRUE(writer.OpenForWriting(folder.File("second")));
    writer.WriteInt32(2);
    EXPECT_EQ(ReadFileBytes(folder.File("first")), FromHex("03 01000000"));
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(ReadFileBytes(folder.File("second")), FromHex("03 02000000"));
}

TEST(TaggedWriter, TakesPathsInUtf8) {
    const Testing::TemporaryFolder folder;
    TaggedWriter writer;
    ASSERT_TRUE(writer.OpenForWriting(folder.File("sp\xc3\xa4ter \xf0\x9f\x98\x80")));
    writer.WriteInt32(1);
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(Testing::NamesIn(folder.Path()),
              std::vector<std::string>{"sp\xc3\xa4ter \xf0\x9f\x98\x80"});
}

TEST(TaggedWriter, SaysWhichFileItCannotWrite) {
    const Testing::TemporaryFolder folder;
    const std::string path = folder.File("missing/stream");
    TaggedWriter writer;
    const CapturedErrors errors;
    EXPECT_FALSE(writer.OpenForWriting(path));
    EXPECT_EQ(errors.Text(), "Unable to write file: " + path + "\n");
    writer.WriteInt32(1);
    EXPECT_FALSE(writer.Close());
    EXPECT_TRUE(Testing::NamesIn(folder.Path()).empty());
}

TEST(TaggedWriter, LosesItsFileWhenTheNextCannotBeOpened) {
    const Testing::TemporaryFolder folder;
    TaggedWriter writer;
    ASSERT_TRUE(writer.OpenForWriting(folder.File("first")));
    writer.WriteInt32(1);
    const CapturedErrors quiet;
    EXPECT_FALSE(writer.OpenForWriting(folder.File("missing/stream")));
    writer.WriteInt32(2);
    EXPECT_FALSE(writer.Close());
    EXPECT_EQ(ReadFileBytes(folder.File("first")), FromHex("03 01000000"));
}

TEST(TaggedWriter, CloseTellsOfEveryByteThatDidNotFit) {
    const Testing::TemporaryFolder folder;
    for (std::size_t limit = 0; limit <= 10; ++limit) {
        TaggedWriter writer;
        ASSERT_TRUE(writer.OpenForWriting(folder.File("stream")));
        const FullDisk disk(limit);
        writer.WriteInt32(1);
        writer.WriteInt32(2);
        EXPECT_EQ(writer.Close(), limit == 10) << limit;
    }
}

TEST(TaggedWriter, RemembersAFailureLongBeforeTheEnd) {
    const Testing::TemporaryFolder folder;
    TaggedWriter writer;
    ASSERT_TRUE(writer.OpenForWriting(folder.File("stream")));
    {
        const FullDisk disk(1000);
        writer.WriteString(std::string(100000, 'x'));
    }
    writer.WriteInt32(1);
    EXPECT_FALSE(writer.Close());
}

TEST(TaggedWriter, WritesMoreThanItHoldsBack) {
    const std::string text(300000, 'x');
    Bytes expected = FromHex("08 E0930400");
    expected.insert(expected.end(), text.begin(), text.end());
    const Bytes number = FromHex("03 01000000");
    expected.insert(expected.end(), number.begin(), number.end());
    EXPECT_EQ(Written([&text](TaggedWriter& writer) {
                  writer.WriteString(text);
                  writer.WriteInt32(1);
              }),
              expected);
}

TEST(TaggedReader, WalksTheWorkedExample) {
    TaggedReader reader = ReaderOf(WorkedExample);
    const TaggedValue root = reader.ReadValue();
    ASSERT_EQ(root.Tag, TagKind::Object);
    EXPECT_EQ(root.Depth, 1U);
    TaggedValue key;
    TaggedValue member;

    ASSERT_TRUE(reader.NextMember(root, key, member));
    EXPECT_EQ(KeyOf(key), "Version");
    EXPECT_EQ(key.Depth, 0U);
    EXPECT_EQ(std::get<std::int32_t>(member.Value), 2);
    ASSERT_TRUE(reader.NextMember(root, key, member));
    EXPECT_EQ(KeyOf(key), "Name");
    EXPECT_EQ(std::get<std::string>(member.Value), "Ab");
    ASSERT_TRUE(reader.NextMember(root, key, member));
    EXPECT_EQ(KeyOf(key), "Open");
    EXPECT_TRUE(std::get<bool>(member.Value));
    ASSERT_TRUE(reader.NextMember(root, key, member));
    EXPECT_EQ(KeyOf(key), "Id");
    EXPECT_EQ(std::get<std::uint64_t>(member.Value), 5U);
    ASSERT_TRUE(reader.NextMember(root, key, member));
    EXPECT_EQ(KeyOf(key), "List");
    ASSERT_EQ(member.Tag, TagKind::Array);
    EXPECT_EQ(member.Depth, 2U);
    EXPECT_EQ(reader.Depth, 2U);

    TaggedValue element;
    ASSERT_TRUE(reader.NextElement(member, element));
    EXPECT_EQ(std::get<std::int32_t>(element.Value), 7);
    ASSERT_TRUE(reader.NextElement(member, element));
    EXPECT_EQ(std::get<std::int32_t>(element.Value), 8);
    EXPECT_FALSE(reader.NextElement(member, element));
    EXPECT_EQ(reader.Depth, 1U);

    EXPECT_FALSE(reader.NextMember(root, key, member));
    EXPECT_EQ(key.Tag, TagKind::End);
    EXPECT_EQ(member.Tag, TagKind::Array) << "The value of the pair before stays";
    EXPECT_EQ(reader.Depth, 0U);
    EXPECT_EQ(reader.Position, 83U);
    EXPECT_FALSE(reader.Failed);
    EXPECT_EQ(reader.ReadValue().Tag, TagKind::None);
    EXPECT_TRUE(reader.Failed);
}

TEST(TaggedReader, ReadsBackEveryKindOfValue) {
    const std::vector<TaggedValue> values = {
        Value(TagKind::Bool, true),
        Value(TagKind::Bool, false),
        Value(TagKind::Int32, std::numeric_limits<std::int32_t>::min()),
        Value(TagKind::UInt32, std::numeric_limits<std::uint32_t>::max()),
        Value(TagKind::Int64, std::numeric_limits<std::int64_t>::min()),
        Value(TagKind::UInt64, std::numeric_limits<std::uint64_t>::max()),
        Value(TagKind::Double, 1.0 / 3.0),
        Value(TagKind::String, std::string("text \0 and \xff", 12)),
    };
    TaggedReader reader = ReaderOf(Written([&values](TaggedWriter& writer) {
        for (const TaggedValue& value : values) {
            writer.WriteValue(value);
        }
    }));
    for (const TaggedValue& value : values) {
        const TaggedValue read = reader.ReadValue();
        EXPECT_EQ(read.Tag, value.Tag);
        EXPECT_EQ(read.Depth, 0U);
        EXPECT_EQ(read.Value, value.Value);
    }
    EXPECT_EQ(reader.Position, reader.Size);
}

TEST(TaggedReader, TakesEveryByteButZeroOfABoolAsTrue) {
    TaggedReader reader = ReaderOf(FromHex("02 02 02 FF 02 00"));
    EXPECT_TRUE(std::get<bool>(reader.ReadValue().Value));
    EXPECT_TRUE(std::get<bool>(reader.ReadValue().Value));
    EXPECT_FALSE(std::get<bool>(reader.ReadValue().Value));
}

TEST(TaggedReader, AnEmptyStringIsFollowedDirectlyByTheNextTag) {
    TaggedReader reader = ReaderOf(FromHex("08 00000000 03 05000000"));
    const TaggedValue empty = reader.ReadValue();
    EXPECT_EQ(empty.Tag, TagKind::String);
    EXPECT_EQ(std::get<std::string>(empty.Value), "");
    EXPECT_EQ(std::get<std::int32_t>(reader.ReadValue().Value), 5);
}

TEST(TaggedReader, AnArrayWithoutElementsEndsAtOnce) {
    TaggedReader reader = ReaderOf(FromHex("09 01"));
    const TaggedValue array = reader.ReadValue();
    TaggedValue element;
    EXPECT_FALSE(reader.NextElement(array, element));
    EXPECT_EQ(element.Tag, TagKind::End);
}

TEST(TaggedReader, PassesOverNestedContentHoweverDeep) {
    const Bytes bytes = Written([](TaggedWriter& writer) {
        writer.BeginObject();
        writer.WriteString("Deep");
        writer.BeginObject();
        for (int i = 0; i < 1000; ++i) {
            writer.WriteString("Inner");
            writer.BeginArray();
            writer.WriteInt32(i);
            writer.BeginObject();
        }
        for (int i = 0; i < 1000; ++i) {
            writer.EndContainer();
            writer.EndContainer();
        }
        writer.EndContainer();
        writer.WriteMemberInt32("Next", 7);
        writer.EndContainer();
    });
    TaggedReader reader = ReaderOf(bytes);
    const TaggedValue root = reader.ReadValue();
    TaggedValue key;
    TaggedValue value;
    ASSERT_TRUE(reader.NextMember(root, key, value));
    EXPECT_EQ(value.Tag, TagKind::Object);
    ASSERT_TRUE(reader.NextMember(root, key, value));
    EXPECT_EQ(KeyOf(key), "Next");
    EXPECT_EQ(std::get<std::int32_t>(value.Value), 7);
    EXPECT_FALSE(reader.NextMember(root, key, value));
}

TEST(TaggedReader, PassesOverTheRestOfAHalfWalkedArray) {
    TaggedReader reader = ReaderOf(FromHex("09 09 03 01000000 03 02000000 01 03 09000000 01"));
    const TaggedValue outer = reader.ReadValue();
    TaggedValue inner;
    ASSERT_TRUE(reader.NextElement(outer, inner));
    TaggedValue element;
    ASSERT_TRUE(reader.NextElement(inner, element));
    ASSERT_TRUE(reader.NextElement(outer, element));
    EXPECT_EQ(std::get<std::int32_t>(element.Value), 9);
    EXPECT_FALSE(reader.NextElement(outer, element));
}

TEST(TaggedReader, AByteThatIsNoTagGivesNoneAndTheNextIsTakenForATag) {
    TaggedReader reader = ReaderOf(FromHex("00 0B FF 03 05000000"));
    for (const std::uint32_t position : {1U, 2U, 3U}) {
        const TaggedValue none = reader.ReadValue();
        EXPECT_EQ(none.Tag, TagKind::None);
        EXPECT_TRUE(std::holds_alternative<std::monostate>(none.Value));
        EXPECT_EQ(reader.Position, position);
    }
    EXPECT_EQ(std::get<std::int32_t>(reader.ReadValue().Value), 5);
}

TEST(TaggedReader, AValueCutShortGivesNoneBehindItsTag) {
    for (const char* const hex : {"02", "03 010203", "04 010203", "05 01020304050607",
                                  "06 01020304050607", "07 01020304050607", "08 010000"}) {
        TaggedReader reader = ReaderOf(FromHex(hex));
        const TaggedValue none = reader.ReadValue();
        EXPECT_EQ(none.Tag, TagKind::None) << hex;
        EXPECT_TRUE(std::holds_alternative<std::monostate>(none.Value)) << hex;
        EXPECT_EQ(reader.Position, 1U) << hex;
    }
}

TEST(TaggedReader, AStringLongerThanTheRestGivesNoneBehindItsCount) {
    for (const char* const hex : {"08 04000000 414243", "08 FFFFFFFF 414243"}) {
        TaggedReader reader = ReaderOf(FromHex(hex));
        EXPECT_EQ(reader.ReadValue().Tag, TagKind::None);
        EXPECT_EQ(reader.Position, 5U);
        EXPECT_EQ(reader.Depth, 0U);
    }
}

TEST(TaggedReader, DataThatRunsOutIsNotAnEnd) {
    TaggedReader reader = ReaderOf(FromHex("0A"));
    const TaggedValue root = reader.ReadValue();
    TaggedValue key = Int32Value(1);
    TaggedValue value = Int32Value(2);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(reader.NextMember(root, key, value));
        EXPECT_EQ(key.Tag, TagKind::None);
        EXPECT_EQ(value.Tag, TagKind::None);
        EXPECT_TRUE(reader.NextElement(root, value));
        EXPECT_EQ(value.Tag, TagKind::None);
    }
    EXPECT_EQ(reader.Position, reader.Size);
}

// Keys: a number, "A", a Bool, "B".
TEST(TaggedReader, FindsTheNamedMembersAmongOthers) {
    TaggedReader reader = ReaderOf(FromHex("0A 03 07000000 02 01 08 01000000 41 03 05000000"
                                           "02 01 09 03 01000000 01"
                                           "08 01000000 42 08 03000000 434445 01"));
    const TaggedValue root = reader.ReadValue();
    std::string_view name;
    TaggedValue value;
    ASSERT_EQ(reader.NextNamedMember(root, name, value), MemberStep::Pair);
    EXPECT_EQ(name, "A");
    EXPECT_EQ(std::get<std::int32_t>(value.Value), 5);
    ASSERT_EQ(reader.NextNamedMember(root, name, value), MemberStep::Pair);
    EXPECT_EQ(name, "B");
    EXPECT_EQ(std::get<std::string>(value.Value), "CDE");
    EXPECT_EQ(reader.NextNamedMember(root, name, value), MemberStep::End);
    EXPECT_EQ(name, "B");
    EXPECT_EQ(reader.Depth, 0U);
    EXPECT_FALSE(reader.Failed);
}

TEST(TaggedReader, TellsANamedMemberThatNothingFollowsFromTheEnd) {
    for (const char* const hex : {"0A", "0A 08 01000000 41", "0A 08 01000000 41 03 05000000",
                                  "0A 08 FFFFFFFF 41", "0A 08 01000000 41 01"}) {
        TaggedReader reader = ReaderOf(FromHex(hex));
        const TaggedValue root = reader.ReadValue();
        std::string_view name = "before";
        TaggedValue value;
        EXPECT_EQ(reader.NextNamedMember(root, name, value), MemberStep::DataRanOut) << hex;
    }
}

TEST(TaggedReader, StopsPassingOverAtTheFirstByteThatIsNoTag) {
    // In the inner array stands a 00, behind it the outer object seems to go on.
    TaggedReader reader = ReaderOf(FromHex("0A 08 00000000 09 00 08 01000000 41 03 05000000 01"));
    const TaggedValue root = reader.ReadValue();
    TaggedValue key;
    TaggedValue value;
    ASSERT_TRUE(reader.NextMember(root, key, value));
    ASSERT_TRUE(reader.NextMember(root, key, value));
    EXPECT_EQ(KeyOf(key), "A");
    EXPECT_EQ(std::get<std::int32_t>(value.Value), 5);
    EXPECT_EQ(reader.Depth, 2U);
}

// The first byte of a number that is cut short passes for an End.
TEST(TaggedReader, RemembersThatAnOrderlyEndWasNone) {
    TaggedReader reader = ReaderOf(FromHex("0A 08 01000000 41 03 01"));
    const TaggedValue root = reader.ReadValue();
    TaggedValue key;
    TaggedValue value;
    EXPECT_TRUE(reader.NextMember(root, key, value));
    EXPECT_FALSE(reader.NextMember(root, key, value));
    EXPECT_EQ(reader.Depth, 0U);
    EXPECT_TRUE(reader.Failed);
    reader.LoadBytes({});
    EXPECT_FALSE(reader.Failed);
}

TEST(TaggedReader, AnEndTooManyDoesNotStopIt) {
    TaggedReader reader = ReaderOf(FromHex("01 01 03 05000000"));
    EXPECT_EQ(reader.ReadValue().Tag, TagKind::End);
    EXPECT_EQ(reader.ReadValue().Depth, 0U);
    EXPECT_EQ(std::get<std::int32_t>(reader.ReadValue().Value), 5);
}

TEST(TaggedReader, ReadsBytesOnlyWhenAllAreThere) {
    TaggedReader reader = ReaderOf(FromHex("01 02 03"));
    std::array<std::uint8_t, 4> bytes{};
    EXPECT_FALSE(reader.ReadBytes(bytes.data(), 4));
    EXPECT_EQ(reader.Position, 0U);
    EXPECT_TRUE(reader.ReadBytes(bytes.data(), 2));
    EXPECT_EQ(bytes, (std::array<std::uint8_t, 4>{1, 2, 0, 0}));
    EXPECT_TRUE(reader.ReadBytes(nullptr, 1));
    EXPECT_EQ(reader.Position, 3U);
    EXPECT_FALSE(reader.ReadBytes(bytes.data(), 1));
    EXPECT_FALSE(reader.ReadBytes(bytes.data(), std::numeric_limits<std::uint32_t>::max()));
}

TEST(TaggedReader, ReadsNoBytesEvenBehindTheEnd) {
    TaggedReader reader = ReaderOf(FromHex("01"));
    reader.Position = 9;
    EXPECT_TRUE(reader.ReadBytes(nullptr, 0));
    EXPECT_FALSE(reader.ReadBytes(nullptr, 1));
    EXPECT_EQ(reader.Position, 9U);
    EXPECT_EQ(reader.ReadValue().Tag, TagKind::None);
}

TEST(TaggedReader, LoadsAFileAndStartsAtItsBeginning) {
    const Testing::TemporaryFolder folder;
    WriteFileBytes(folder.File("stream"), WorkedExample);
    TaggedReader reader = ReaderOf(FromHex("0A 0A"));
    reader.ReadValue();
    ASSERT_TRUE(reader.LoadFile(folder.File("stream")));
    EXPECT_EQ(reader.Buffer, WorkedExample);
    EXPECT_EQ(reader.Size, 83U);
    EXPECT_EQ(reader.Position, 0U);
    EXPECT_EQ(reader.Depth, 0U);
}

TEST(TaggedReader, LoadsAFileOfManyBlocks) {
    const Testing::TemporaryFolder folder;
    std::mt19937 random(1);
    Bytes bytes(200000);
    std::generate(bytes.begin(), bytes.end(),
                  [&random] { return static_cast<std::uint8_t>(random()); });
    WriteFileBytes(folder.File("stream"), bytes);
    TaggedReader reader;
    ASSERT_TRUE(reader.LoadFile(folder.File("stream")));
    EXPECT_EQ(reader.Buffer, bytes);
    EXPECT_EQ(reader.Size, bytes.size());
}

TEST(TaggedReader, WarnsOfAnEmptyFileAndGivesNone) {
    const Testing::TemporaryFolder folder;
    WriteFileBytes(folder.File("stream"), {});
    TaggedReader reader;
    const CapturedErrors errors;
    EXPECT_TRUE(reader.LoadFile(folder.File("stream")));
    EXPECT_EQ(errors.Text(),
              "Warning: Unable to determine file size, proceeding without reservation!\n");
    EXPECT_EQ(reader.ReadValue().Tag, TagKind::None);
}

TEST(TaggedReader, SaysWhichFileItCannotRead) {
    const Testing::TemporaryFolder folder;
    TaggedReader reader;
    const CapturedErrors errors;
    EXPECT_FALSE(reader.LoadFile(folder.File("missing")));
    EXPECT_EQ(errors.Text(), "Unable to read file: " + folder.File("missing") + "!\n");
}

TEST(TaggedReader, ReadsWhatCannotBeSoughtInFromWhereItStands) {
    const Testing::TemporaryFolder folder;
    const std::string pipe = folder.File("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread feeder([&pipe] { WriteFileBytes(pipe, WorkedExample); });
    TaggedReader reader;
    const CapturedErrors errors;
    EXPECT_TRUE(reader.LoadFile(pipe));
    feeder.join();
    EXPECT_EQ(errors.Text(),
              "Error: Failed to seek to end of file, proceeding without reservation!\n");
    EXPECT_EQ(reader.Buffer, WorkedExample);
}

TEST(TaggedReader, AFolderIsAFileWithoutContent) {
    const Testing::TemporaryFolder folder;
    TaggedReader reader;
    const CapturedErrors quiet;
    EXPECT_TRUE(reader.LoadFile(folder.Path().string()));
    EXPECT_EQ(reader.Size, 0U);
}

TEST(TaggedReader, SurvivesEveryCutAndEveryFlippedByteOfAStream) {
    const auto readAll = [](const Bytes& bytes) {
        TaggedReader reader = ReaderOf(bytes);
        const TaggedValue root = reader.ReadValue();
        TaggedValue key;
        TaggedValue value;
        std::size_t steps = 0;
        while (reader.NextMember(root, key, value) && reader.Position < reader.Size) {
            ASSERT_LE(++steps, bytes.size());
        }
    };
    for (std::size_t size = 0; size < WorkedExample.size(); ++size) {
        readAll({WorkedExample.begin(), WorkedExample.begin() + static_cast<std::ptrdiff_t>(size)});
        for (int byte = 0; byte < 256; ++byte) {
            Bytes flipped = WorkedExample;
            flipped[size] = static_cast<std::uint8_t>(byte);
            readAll(flipped);
        }
    }
}

TEST(TaggedAccess, ExactTakesOnlyTheVeryKind) {
    EXPECT_EQ(ExactUInt64(Value(TagKind::UInt64, std::uint64_t{5})), 5U);
    EXPECT_EQ(ExactUInt64(Value(TagKind::UInt32, std::uint32_t{5})), std::nullopt);
    EXPECT_EQ(ExactUInt64({}), std::nullopt);
    EXPECT_EQ(ExactUInt32(Value(TagKind::UInt32, std::uint32_t{5})), 5U);
    EXPECT_EQ(ExactUInt32(Int32Value(5)), std::nullopt);
    EXPECT_EQ(ExactString(Value(TagKind::String, std::string("a"))), "a");
    EXPECT_EQ(ExactString(Int32Value(5)), std::nullopt);
}

TEST(TaggedAccess, AStringIsReadOnlyFromAString) {
    std::string text = "before";
    EXPECT_FALSE(ReadAsString(Int32Value(5), text));
    EXPECT_EQ(text, "before");
    EXPECT_TRUE(ReadAsString(Value(TagKind::String, std::string("after")), text));
    EXPECT_EQ(text, "after");
}

TEST(TaggedAccess, EveryNumberIsReadAsInt32) {
    const auto read = [](const TaggedValue& value) {
        std::int32_t number = 0;
        EXPECT_TRUE(ReadAsInt32(value, number));
        return number;
    };
    EXPECT_EQ(read(Int32Value(-7)), -7);
    EXPECT_EQ(read(Value(TagKind::UInt32, std::uint32_t{0xFFFFFFFE})), -2);
    EXPECT_EQ(read(Value(TagKind::Int64, std::int64_t{0x100000003})), 3);
    EXPECT_EQ(read(Value(TagKind::UInt64, std::uint64_t{0xFFFFFFFF80000000})),
              std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(read(Value(TagKind::Double, 2.5)), 3);
    EXPECT_EQ(read(Value(TagKind::Double, -2.5)), -3);
    EXPECT_EQ(read(Value(TagKind::Double, 4294967297.0)), 1);
}

TEST(TaggedAccess, NothingElseIsReadAsInt32) {
    for (const TaggedValue& value :
         {Value(TagKind::Bool, true), Value(TagKind::String, std::string("5")), TaggedValue{},
          Value(TagKind::Array, std::monostate{})}) {
        std::int32_t number = 9;
        EXPECT_FALSE(ReadAsInt32(value, number));
        EXPECT_EQ(number, 9);
    }
}

TEST(TaggedAccess, ADoubleBeyondEveryIntegerIsStillRead) {
    for (const double number : {1e300, -1e300, std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
        std::int32_t ignored = 0;
        EXPECT_TRUE(ReadAsInt32(Value(TagKind::Double, number), ignored));
    }
}

TEST(TaggedAccess, FlagsAreReadFromBoolsAndNumbers) {
    const auto read = [](const TaggedValue& value) {
        bool flag = false;
        EXPECT_TRUE(ReadAsBool(value, flag));
        return flag;
    };
    EXPECT_TRUE(read(Value(TagKind::Bool, true)));
    EXPECT_FALSE(read(Value(TagKind::Bool, false)));
    EXPECT_TRUE(read(Int32Value(-1)));
    EXPECT_FALSE(read(Int32Value(0)));
    EXPECT_FALSE(read(Value(TagKind::Double, 0.2)));
    EXPECT_FALSE(read(Value(TagKind::UInt64, std::uint64_t{0x100000000})));
    bool flag = true;
    EXPECT_FALSE(ReadAsBool(Value(TagKind::String, std::string("0")), flag));
    EXPECT_TRUE(flag);
}

TEST(TaggedAccess, EveryIntegerIsReadAsInt64) {
    const auto read = [](const TaggedValue& value) {
        std::int64_t number = 0;
        EXPECT_TRUE(ReadAsInt64(value, number));
        return number;
    };
    EXPECT_EQ(read(Value(TagKind::Int64, std::int64_t{-5})), -5);
    EXPECT_EQ(read(Value(TagKind::UInt64, std::numeric_limits<std::uint64_t>::max())), -1);
    EXPECT_EQ(read(Int32Value(-5)), -5);
    EXPECT_EQ(read(Value(TagKind::UInt32, std::uint32_t{0xFFFFFFFF})), 0xFFFFFFFF);
    std::int64_t number = 9;
    EXPECT_FALSE(ReadAsInt64(Value(TagKind::Double, 5.0), number));
    EXPECT_FALSE(ReadAsInt64(Value(TagKind::Bool, true), number));
    EXPECT_EQ(number, 9);
}

TEST(TaggedAccess, NoNegativeIsReadAsUInt64) {
    const auto read = [](const TaggedValue& value) {
        std::uint64_t number = 0;
        EXPECT_TRUE(ReadAsUInt64(value, number));
        return number;
    };
    EXPECT_EQ(read(Value(TagKind::UInt64, std::numeric_limits<std::uint64_t>::max())),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(read(Int32Value(5)), 5U);
    EXPECT_EQ(read(Value(TagKind::UInt32, std::uint32_t{0xFFFFFFFF})), 0xFFFFFFFF);
    EXPECT_EQ(read(Value(TagKind::Int64, std::int64_t{6})), 6U);
    std::uint64_t number = 9;
    EXPECT_FALSE(ReadAsUInt64(Int32Value(-1), number));
    EXPECT_FALSE(ReadAsUInt64(Value(TagKind::Int64, std::int64_t{-1}), number));
    EXPECT_FALSE(ReadAsUInt64(Value(TagKind::Double, 5.0), number));
    EXPECT_EQ(number, 9U);
}

} // namespace
} // namespace Wirefall
