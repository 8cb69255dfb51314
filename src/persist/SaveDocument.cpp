#include "persist/SaveDocument.h"

#include <algorithm>
#include <bitset>
#include <limits>
#include <string_view>
#include <variant>

namespace Wirefall {

namespace {

constexpr std::int32_t FormatVersion = 1;

// A pointer to a member of any of the types.
template <typename Record, typename... Types>
using FieldOf = std::variant<Types Record::*...>;

template <typename Record>
struct Member {
    std::string_view Key;
    FieldOf<Record, std::int32_t, bool> Field;
};

constexpr std::int32_t AnyNumber = std::numeric_limits<std::int32_t>::min();

template <>
struct Member<SaveDocument> {
    std::string_view Key;
    FieldOf<SaveDocument, std::int32_t, std::uint32_t, std::uint64_t, bool, std::string,
            std::array<std::int32_t, 3>, std::vector<DocumentTile>, std::vector<DocumentEndpoint>,
            std::vector<DocumentPacket>>
        Field;
    std::int32_t Minimum = AnyNumber; // Of a 32-bit number; a lesser one makes the run bad.
};

// The members of each kind of object, in the order in which they are written. Reader and writer
// both walk these tables.
template <typename Record>
constexpr std::array<Member<Record>, 0> Members{};

template <>
constexpr std::array<Member<DocumentTile>, 7> Members<DocumentTile> = {{
    {"Type", &DocumentTile::Type},
    {"Connections", &DocumentTile::Connections},
    {"VirusInfected", &DocumentTile::VirusInfected},
    {"OccupiedBySource", &DocumentTile::OccupiedBySource},
    {"OccupiedBySink", &DocumentTile::OccupiedBySink},
    {"Consumed", &DocumentTile::Consumed},
    {"CooldownTicks", &DocumentTile::CooldownTicks},
}};

template <>
constexpr std::array<Member<DocumentEndpoint>, 3> Members<DocumentEndpoint> = {{
    {"X", &DocumentEndpoint::X},
    {"Y", &DocumentEndpoint::Y},
    {"Dir", &DocumentEndpoint::Dir},
}};

template <>
constexpr std::array<Member<DocumentPacket>, 5> Members<DocumentPacket> = {{
    {"X", &DocumentPacket::X},
    {"Y", &DocumentPacket::Y},
    {"Dir", &DocumentPacket::Dir},
    {"Corrupted", &DocumentPacket::Corrupted},
    {"DelayTicks", &DocumentPacket::DelayTicks},
}};

template <>
constexpr std::array<Member<SaveDocument>, 31> Members<SaveDocument> = {{
    {"Revision", &SaveDocument::Revision},
    {"AccumulatorMs", &SaveDocument::AccumulatorMs},
    {"CursorX", &SaveDocument::CursorX},
    {"CursorY", &SaveDocument::CursorY},
    {"PreviewRotation", &SaveDocument::PreviewRotation},
    {"Tick", &SaveDocument::Tick},
    {"SpawnIntervalTicks", &SaveDocument::SpawnIntervalTicks},
    {"VirusSpreadIntervalTicks", &SaveDocument::VirusSpreadIntervalTicks},
    {"NextSpawnTick", &SaveDocument::NextSpawnTick},
    {"PacketGraceTicks", &SaveDocument::PacketGraceTicks, 0},
    {"VirusGraceTicks", &SaveDocument::VirusGraceTicks, 0},
    {"PacketGraceRemaining", &SaveDocument::PacketGraceRemaining, 0},
    {"VirusGraceRemaining", &SaveDocument::VirusGraceRemaining, 0},
    {"VirusActiveTicks", &SaveDocument::VirusActiveTicks},
    {"Level", &SaveDocument::Level, 1},
    {"TotalScore", &SaveDocument::TotalScore},
    {"LevelTargetPackets", &SaveDocument::LevelTargetPackets, 1},
    {"FailureThreshold", &SaveDocument::FailureThreshold, 1},
    {"LostPackets", &SaveDocument::LostPackets, 0},
    {"CorruptedPackets", &SaveDocument::CorruptedPackets, 0},
    {"DeliveredPackets", &SaveDocument::DeliveredPackets, 0},
    {"GameOver", &SaveDocument::GameOver},
    {"Seed", &SaveDocument::Seed},
    {"GridWidth", &SaveDocument::GridWidth, 1},
    {"GridHeight", &SaveDocument::GridHeight, 1},
    {"RandomState", &SaveDocument::RandomState},
    {"TileQueue", &SaveDocument::TileQueue},
    {"Tiles", &SaveDocument::Tiles},
    {"Sources", &SaveDocument::Sources},
    {"Sinks", &SaveDocument::Sinks},
    {"Packets", &SaveDocument::Packets},
}};

// One overload for each type of field writes the key and the value.

void WriteMember(TaggedWriter& writer, std::string_view key, std::int32_t value) {
    writer.WriteMemberInt32(key, value);
}

void WriteMember(TaggedWriter& writer, std::string_view key, std::uint32_t value) {
    writer.WriteString(key);
    writer.WriteValue({0, TagKind::UInt32, value});
}

void WriteMember(TaggedWriter& writer, std::string_view key, std::uint64_t value) {
    writer.WriteMemberUInt64(key, value);
}

void WriteMember(TaggedWriter& writer, std::string_view key, bool value) {
    writer.WriteMemberBool(key, value);
}

void WriteMember(TaggedWriter& writer, std::string_view key, const std::string& value) {
    writer.WriteString(key);
    writer.WriteString(value);
}

void WriteMember(TaggedWriter& writer, std::string_view key,
                 const std::array<std::int32_t, 3>& values) {
    writer.WriteString(key);
    writer.BeginArray();
    for (const std::int32_t value : values) {
        writer.WriteInt32(value);
    }
    writer.EndContainer();
}

template <typename Record>
void WriteRecord(TaggedWriter& writer, const Record& record);

template <typename Record>
void WriteMember(TaggedWriter& writer, std::string_view key, const std::vector<Record>& list) {
    writer.WriteString(key);
    writer.BeginArray();
    for (const Record& record : list) {
        WriteRecord(writer, record);
    }
    writer.EndContainer();
}

template <typename Record>
void WriteRecord(TaggedWriter& writer, const Record& record) {
    writer.BeginObject();
    for (const Member<Record>& member : Members<Record>) {
        std::visit([&](auto field) { WriteMember(writer, member.Key, record.*field); },
                   member.Field);
    }
    writer.EndContainer();
}

// One overload for each type of field takes its value, and walks it when it is an array. False when
// the value does not serve.

bool ReadMember(TaggedReader& /*reader*/, const TaggedValue& value, std::int32_t& number) {
    return ReadAsInt32(value, number);
}

bool ReadMember(TaggedReader& /*reader*/, const TaggedValue& value, std::uint32_t& number) {
    if (const std::optional<std::uint32_t> exact = ExactUInt32(value)) {
        number = *exact;
        return true;
    }
    std::int64_t wide = 0;
    if (!ReadAsInt64(value, wide) || wide < 0) {
        return false;
    }
    number = static_cast<std::uint32_t>(wide);
    return true;
}

bool ReadMember(TaggedReader& /*reader*/, const TaggedValue& value, std::uint64_t& number) {
    return ReadAsUInt64(value, number);
}

bool ReadMember(TaggedReader& /*reader*/, const TaggedValue& value, bool& flag) {
    return ReadAsBool(value, flag);
}

bool ReadMember(TaggedReader& /*reader*/, const TaggedValue& value, std::string& text) {
    return ReadAsString(value, text);
}

bool ReadMember(TaggedReader& reader, const TaggedValue& array,
                std::array<std::int32_t, 3>& numbers) {
    if (array.Tag != TagKind::Array) {
        return false;
    }
    TaggedValue element;
    for (std::int32_t& number : numbers) {
        if (!reader.NextElement(array, element) || !ReadAsInt32(element, number)) {
            return false;
        }
    }
    return !reader.NextElement(array, element);
}

template <typename Record>
bool ReadRecord(TaggedReader& reader, const TaggedValue& object, Record& record);

template <typename Record>
bool ReadMember(TaggedReader& reader, const TaggedValue& array, std::vector<Record>& list) {
    list.clear();
    if (array.Tag != TagKind::Array) {
        return false;
    }
    TaggedValue element;
    while (reader.NextElement(array, element)) {
        if (!ReadRecord(reader, element, list.emplace_back())) {
            return false;
        }
    }
    return true;
}

template <typename Record>
bool ReadRecord(TaggedReader& reader, const TaggedValue& object, Record& record) {
    if (object.Tag != TagKind::Object) {
        return false;
    }
    constexpr auto& Table = Members<Record>;
    std::bitset<Table.size()> seen;
    const auto* expected = Table.begin(); // The usual file has the members in the table's order.
    std::string_view name;
    TaggedValue value;
    while (reader.NextNamedMember(object, name, value) == MemberStep::Pair) {
        const auto* member = expected;
        if (member == Table.end() || member->Key != name) {
            member = std::ranges::find(Table, name, &Member<Record>::Key);
        }
        if (member != Table.end()) {
            seen[static_cast<std::size_t>(member - Table.begin())] =
                std::visit([&](auto field) { return ReadMember(reader, value, record.*field); },
                           member->Field);
            expected = member + 1;
        }
    }
    return seen.all();
}

} // namespace

void WriteSaveDocument(TaggedWriter& writer, const SaveDocument* run) {
    writer.BeginObject();
    writer.WriteMemberInt32("FormatVersion", FormatVersion);
    writer.WriteMemberBool("HasRunState", run != nullptr);
    writer.WriteString("RunState");
    if (run != nullptr) {
        WriteRecord(writer, *run);
    } else {
        writer.BeginObject();
        writer.EndContainer();
    }
    writer.EndContainer();
}

SavedGame ReadSavedGame(TaggedReader& reader) {
    SavedGame saved;
    const TaggedValue root = reader.ReadValue();
    saved.RootIsObject = root.Tag == TagKind::Object;
    if (!saved.RootIsObject) {
        return saved;
    }
    std::string_view name;
    TaggedValue value;
    MemberStep step = MemberStep::Pair;
    while ((step = reader.NextNamedMember(root, name, value)) == MemberStep::Pair) {
        if (name == "HasRunState") {
            bool flag = false;
            saved.HasRunState = ReadAsBool(value, flag) && flag;
        } else if (name == "RunState") {
            saved.Run = {};
            saved.RunIsGood = ReadRecord(reader, value, saved.Run) && MeetsLimits(saved.Run);
        }
    }
    const bool ended = step == MemberStep::End;
    saved.Complete = ended && !reader.Failed;
    saved.RunIsGood = saved.RunIsGood && ended;
    return saved;
}

bool MeetsLimits(const SaveDocument& document) {
    const auto meetsMinimum = [&document](const Member<SaveDocument>& member) {
        const auto* const number = std::get_if<std::int32_t SaveDocument::*>(&member.Field);
        return number == nullptr || document.*(*number) >= member.Minimum;
    };
    const std::int64_t cells = std::int64_t{document.GridWidth} * document.GridHeight;
    return std::ranges::all_of(Members<SaveDocument>, meetsMinimum) &&
           document.PacketGraceRemaining <= document.PacketGraceTicks &&
           document.VirusGraceRemaining <= document.VirusGraceTicks &&
           static_cast<std::int64_t>(document.Tiles.size()) == cells;
}

bool ReadEndpointObject(TaggedReader& reader, const TaggedValue& element,
                        DocumentEndpoint& endpoint) {
    return ReadRecord(reader, element, endpoint);
}

} // namespace Wirefall
