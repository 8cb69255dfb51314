#include "persist/TaggedStream.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <iostream>
#include <type_traits>
#include <utility>

namespace Wirefall {

namespace {

// Beyond this the writer hands its bytes on to the file; the usual stream is shorter.
constexpr std::size_t FlushThreshold = 65536;

constexpr std::size_t ReadChunk = 65536;

static_assert(sizeof(bool) == 1, "A Bool is one byte, in the file and in memory");

template <std::size_t Size>
using UnsignedOfSize =
    std::conditional_t<Size == 1, std::uint8_t,
                       std::conditional_t<Size == 4, std::uint32_t, std::uint64_t>>;

// Little endian, whatever the machine is.
template <typename Number>
void StoreNumber(Number number, char* destination) {
    const auto bits = std::bit_cast<UnsignedOfSize<sizeof(Number)>>(number);
    for (std::size_t i = 0; i < sizeof(Number); ++i) {
        destination[i] = static_cast<char>(bits >> (8 * i));
    }
}

template <typename Alternative>
std::optional<Alternative> Exact(const TaggedValue& value) {
    const auto* const held = std::get_if<Alternative>(&value.Value);
    return held != nullptr ? std::optional<Alternative>(*held) : std::nullopt;
}

} // namespace

std::optional<std::uint64_t> ExactUInt64(const TaggedValue& value) {
    return Exact<std::uint64_t>(value);
}

std::optional<std::uint32_t> ExactUInt32(const TaggedValue& value) {
    return Exact<std::uint32_t>(value);
}

std::optional<std::string> ExactString(const TaggedValue& value) {
    return Exact<std::string>(value);
}

bool ReadAsString(const TaggedValue& value, std::string& text) {
    const auto* const held = std::get_if<std::string>(&value.Value);
    if (held == nullptr) {
        return false;
    }
    text = *held;
    return true;
}

bool ReadAsInt32(const TaggedValue& value, std::int32_t& number) {
    return std::visit(
        [&number](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, double>) {
                number = static_cast<std::int32_t>(std::lround(held));
                return true;
            } else if constexpr (std::is_integral_v<Held> && !std::is_same_v<Held, bool>) {
                number = static_cast<std::int32_t>(held);
                return true;
            } else {
                return false;
            }
        },
        value.Value);
}

bool ReadAsBool(const TaggedValue& value, bool& flag) {
    if (const auto* const held = std::get_if<bool>(&value.Value)) {
        flag = *held;
        return true;
    }
    std::int32_t number = 0;
    if (!ReadAsInt32(value, number)) {
        return false;
    }
    flag = number != 0;
    return true;
}

bool ReadAsInt64(const TaggedValue& value, std::int64_t& number) {
    return std::visit(
        [&number](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_integral_v<Held> && !std::is_same_v<Held, bool>) {
                number = static_cast<std::int64_t>(held);
                return true;
            } else {
                return false;
            }
        },
        value.Value);
}

bool ReadAsUInt64(const TaggedValue& value, std::uint64_t& number) {
    if (const auto* const held = std::get_if<std::uint64_t>(&value.Value)) {
        number = *held;
        return true;
    }
    std::int64_t wide = 0;
    if (!ReadAsInt64(value, wide) || wide < 0) {
        return false;
    }
    number = static_cast<std::uint64_t>(wide);
    return true;
}

TaggedWriter::~TaggedWriter() { Close(); }

bool TaggedWriter::OpenForWriting(const std::string& path) {
    Close();
    File = OpenFile(path, "wb");
    if (!File) {
        std::cerr << "Unable to write file: " << path << '\n';
        return false;
    }
    // The bytes are collected here already.
    static_cast<void>(std::setvbuf(File.get(), nullptr, _IONBF, 0));
    Pending.reserve(FlushThreshold);
    Failed = false;
    return true;
}

bool TaggedWriter::Close() {
    if (!File) {
        return false;
    }
    Flush();
    return std::fclose(File.release()) == 0 && !Failed;
}

void TaggedWriter::WriteValue(const TaggedValue& value) {
    PutTag(value.Tag);
    switch (value.Tag) {
    case TagKind::Bool:
        PutNumber(static_cast<std::uint8_t>(std::get<bool>(value.Value)));
        break;
    case TagKind::Int32:
        PutNumber(std::get<std::int32_t>(value.Value));
        break;
    case TagKind::UInt32:
        PutNumber(std::get<std::uint32_t>(value.Value));
        break;
    case TagKind::Int64:
        PutNumber(std::get<std::int64_t>(value.Value));
        break;
    case TagKind::UInt64:
        PutNumber(std::get<std::uint64_t>(value.Value));
        break;
    case TagKind::Double:
        PutNumber(std::get<double>(value.Value));
        break;
    case TagKind::String: {
        const auto& text = std::get<std::string>(value.Value);
        PutNumber(static_cast<std::uint32_t>(text.size()));
        Put(text);
        break;
    }
    default:
        break;
    }
}

void TaggedWriter::BeginArray() { PutTag(TagKind::Array); }

void TaggedWriter::BeginObject() { PutTag(TagKind::Object); }

void TaggedWriter::EndContainer() { PutTag(TagKind::End); }

void TaggedWriter::WriteInt32(std::int32_t value) { PutTagged(TagKind::Int32, value); }

void TaggedWriter::WriteString(std::string_view text) {
    PutTagged(TagKind::String, static_cast<std::uint32_t>(text.size()));
    Put(text);
}

void TaggedWriter::WriteMemberInt32(std::string_view key, std::int32_t value) {
    WriteString(key);
    WriteInt32(value);
}

void TaggedWriter::WriteMemberUInt64(std::string_view key, std::uint64_t value) {
    WriteString(key);
    PutTagged(TagKind::UInt64, value);
}

void TaggedWriter::WriteMemberBool(std::string_view key, bool value) {
    WriteString(key);
    PutTagged(TagKind::Bool, static_cast<std::uint8_t>(value));
}

void TaggedWriter::PutTag(TagKind tag) { PutNumber(static_cast<std::uint8_t>(tag)); }

template <typename Number>
void TaggedWriter::PutNumber(Number number) {
    std::array<char, sizeof(Number)> bytes{};
    StoreNumber(number, bytes.data());
    Put({bytes.data(), bytes.size()});
}

// In one piece, for speed.
template <typename Number>
void TaggedWriter::PutTagged(TagKind tag, Number number) {
    std::array<char, 1 + sizeof(Number)> bytes{static_cast<char>(tag)};
    StoreNumber(number, bytes.data() + 1);
    Put({bytes.data(), bytes.size()});
}

void TaggedWriter::Put(std::string_view bytes) {
    if (!File) {
        return;
    }
    Pending += bytes;
    if (Pending.size() >= FlushThreshold) {
        Flush();
    }
}

void TaggedWriter::Flush() {
    if (std::fwrite(Pending.data(), 1, Pending.size(), File.get()) != Pending.size()) {
        Failed = true;
    }
    Pending.clear();
}

bool TaggedReader::LoadFile(const std::string& path) {
    const FileHandle file = OpenFile(path, "rb");
    if (!file) {
        std::cerr << "Unable to read file: " << path << "!\n";
        return false;
    }
    LoadBytes({});
    if (std::fseek(file.get(), 0, SEEK_END) != 0) {
        std::cerr << "Error: Failed to seek to end of file, proceeding without reservation!\n";
    } else {
        const auto size = static_cast<std::int32_t>(std::ftell(file.get()));
        if (size < 1) {
            std::cerr << "Warning: Unable to determine file size, proceeding without "
                         "reservation!\n";
        } else {
            Buffer.reserve(static_cast<std::size_t>(size));
        }
        std::rewind(file.get());
    }
    std::array<std::uint8_t, ReadChunk> chunk; // NOLINT(*-member-init): read before it is looked at
    while (const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), file.get())) {
        Buffer.insert(Buffer.end(), chunk.data(), chunk.data() + count);
    }
    Size = static_cast<std::uint32_t>(Buffer.size());
    return true;
}

void TaggedReader::LoadBytes(std::vector<std::uint8_t> bytes) {
    Buffer = std::move(bytes);
    Size = static_cast<std::uint32_t>(Buffer.size());
    Position = 0;
    Depth = 0;
    Failed = false;
}

bool TaggedReader::ReadBytes(void* destination, std::uint32_t count) {
    if (count == 0) {
        return true;
    }
    if (Size < Position || Size - Position < count) {
        return false;
    }
    if (destination != nullptr) {
        std::memcpy(destination, Buffer.data() + Position, count);
    }
    Position += count;
    return true;
}

TaggedValue TaggedReader::ReadValue() {
    TaggedValue value;
    ReadInto(value);
    return value;
}

bool TaggedReader::NextElement(const TaggedValue& parent, TaggedValue& value) {
    SkipTo(parent);
    ReadInto(value);
    return value.Tag != TagKind::End;
}

bool TaggedReader::NextMember(const TaggedValue& parent, TaggedValue& key, TaggedValue& value) {
    SkipTo(parent);
    ReadInto(key);
    if (key.Tag == TagKind::End) {
        return false;
    }
    ReadInto(value);
    return true;
}

MemberStep TaggedReader::NextNamedMember(const TaggedValue& parent, std::string_view& name,
                                         TaggedValue& value) {
    while (true) {
        SkipTo(parent);
        const bool named = ReadName(name);
        if (!named && ReadValue().Tag == TagKind::End) {
            return MemberStep::End;
        }
        ReadInto(value);
        if (Position >= Size) {
            return MemberStep::DataRanOut;
        }
        if (named) {
            return MemberStep::Pair;
        }
    }
}

template <typename Number>
bool TaggedReader::ReadNumber(Number& number) {
    const std::uint32_t start = Position;
    if (!ReadBytes(nullptr, sizeof(Number))) {
        return false;
    }
    UnsignedOfSize<sizeof(Number)> bits = 0;
    for (std::size_t i = sizeof(Number); i-- > 0;) {
        bits = static_cast<decltype(bits)>(std::uint64_t{bits} << 8 | Buffer[start + i]);
    }
    if constexpr (std::is_same_v<Number, bool>) {
        number = bits != 0;
    } else {
        number = std::bit_cast<Number>(bits);
    }
    return true;
}

template <typename Number>
bool TaggedReader::ReadNumberPayload(TaggedPayload& payload) {
    Number number{};
    if (!ReadNumber(number)) {
        return false;
    }
    payload = number;
    return true;
}

// The text where it lies in Buffer.
bool TaggedReader::ReadText(std::string_view& text) {
    std::uint32_t length = 0;
    // The length is looked at before anything is allocated: a damaged one may say 4 GiB.
    if (!ReadNumber(length) || Size - Position < length) {
        return false;
    }
    text = {reinterpret_cast<const char*>(Buffer.data()) + Position, length};
    Position += length;
    return true;
}

bool TaggedReader::ReadTextPayload(TaggedPayload& payload) {
    std::string_view text;
    if (!ReadText(text)) {
        return false;
    }
    // A walk reads one text after the other into the same value, so their memory serves for all.
    auto* const held = std::get_if<std::string>(&payload);
    (held != nullptr ? *held : payload.emplace<std::string>()) = text;
    return true;
}

// A String, or nothing read.
bool TaggedReader::ReadName(std::string_view& name) {
    const std::uint32_t start = Position;
    TagKind tag = TagKind::None;
    if (ReadBytes(&tag, 1) && tag == TagKind::String && ReadText(name)) {
        return true;
    }
    Position = start;
    return false;
}

// The value may hold anything before.
void TaggedReader::ReadInto(TaggedValue& value) {
    value.Depth = 0;
    if (!ReadBytes(&value.Tag, 1) || !ReadPayload(value)) {
        Failed = true;
        value = {};
    }
}

bool TaggedReader::ReadPayload(TaggedValue& value) {
    switch (value.Tag) {
    case TagKind::End:
        --Depth;
        value.Value = std::monostate{};
        return true;
    case TagKind::Bool:
        return ReadNumberPayload<bool>(value.Value);
    case TagKind::Int32:
        return ReadNumberPayload<std::int32_t>(value.Value);
    case TagKind::UInt32:
        return ReadNumberPayload<std::uint32_t>(value.Value);
    case TagKind::Int64:
        return ReadNumberPayload<std::int64_t>(value.Value);
    case TagKind::UInt64:
        return ReadNumberPayload<std::uint64_t>(value.Value);
    case TagKind::Double:
        return ReadNumberPayload<double>(value.Value);
    case TagKind::String:
        return ReadTextPayload(value.Value);
    case TagKind::Array:
    case TagKind::Object:
        value.Depth = ++Depth;
        value.Value = std::monostate{};
        return true;
    default:
        return false;
    }
}

void TaggedReader::SkipTo(const TaggedValue& parent) {
    while (Depth != parent.Depth) {
        if (ReadValue().Tag == TagKind::None) {
            return;
        }
    }
}

} // namespace Wirefall
