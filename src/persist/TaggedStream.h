#pragma once

// A small self-describing binary container: one value, in which arrays and objects open with a tag
// and close with an End. TaggedWriter writes values to a file as they come. TaggedReader takes a
// whole file into memory and hands the values out again one by one, so that a caller walks nested
// content without recursion and passes over what it does not know. There is no header, no length
// of the whole and no checksum; what the keys mean is the caller's business. docs/formats.md shows
// a file byte by byte. It needs nothing of the game but FileAccess.h.

#include "base/FileAccess.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Wirefall {

/// The tag byte in front of every value. The numbers are the format.
enum class TagKind : std::uint8_t {
    None = 0, ///< Never written: no value, or a read that failed.
    End = 1,  ///< Closes the innermost open array or object.
    Bool = 2,
    Int32 = 3,
    UInt32 = 4,
    Int64 = 5,
    UInt64 = 6,
    Double = 7,
    String = 8,
    Array = 9,
    Object = 10, ///< Pairs of a key, which is a String value, and any value.
};

/// What a value holds. The empty alternative belongs to None, End, Array and Object.
using TaggedPayload = std::variant<std::string, std::uint64_t, std::int64_t, double, std::uint32_t,
                                   std::int32_t, std::monostate, bool>;

/// One value of a stream.
struct TaggedValue {
    /// Of an Array or Object: how many containers were open just after it was, itself included.
    /// 0 for everything else.
    std::uint32_t Depth = 0;
    TagKind Tag = TagKind::None;
    /// Holds the alternative that belongs to Tag. The reader takes every byte but 0 of a Bool as
    /// true.
    TaggedPayload Value = std::monostate{};
};

// The accessors. The Exact ones take only that very alternative. The ReadAs ones convert; when
// they return false the output is as it was.

std::optional<std::uint64_t> ExactUInt64(const TaggedValue& value);
std::optional<std::uint32_t> ExactUInt32(const TaggedValue& value);
std::optional<std::string> ExactString(const TaggedValue& value);

bool ReadAsString(const TaggedValue& value, std::string& text);

/// Takes every number: integers keep their low 32 bits, whatever their size, and a Double is
/// rounded to the nearest, halves away from zero, and then cut the same way.
bool ReadAsInt32(const TaggedValue& value, std::int32_t& number);

/// Takes a Bool, and every number as whether ReadAsInt32 gives anything but 0.
bool ReadAsBool(const TaggedValue& value, bool& flag);

/// Takes every integer; a UInt64 keeps its bits. A Double is refused.
bool ReadAsInt64(const TaggedValue& value, std::int64_t& number);

/// Takes a UInt64, and every other integer that is not negative. A Double is refused.
bool ReadAsUInt64(const TaggedValue& value, std::uint64_t& number);

/// Writes a stream to a file. It does not count what is open: every Begin needs its EndContainer,
/// and in an object keys and values must take turns. No single write reports a failure; Close tells
/// whether all of them arrived.
class TaggedWriter {
public:
    TaggedWriter() = default;
    TaggedWriter(const TaggedWriter&) = delete;
    TaggedWriter& operator=(const TaggedWriter&) = delete;
    ~TaggedWriter();

    /// Creates or empties the file at `path`, which is UTF-8, after closing the one at hand. False,
    /// with a message on the standard error stream, when that fails; writes then go nowhere.
    bool OpenForWriting(const std::string& path);

    /// Writes out what is still held back and closes the file. False when any write since
    /// OpenForWriting has failed or come up short, or when no file is open.
    bool Close();

    /// The tag and its payload. Raises std::bad_variant_access, with the tag already written, when
    /// the value does not hold the alternative of its tag. A tag without a payload, or one that is
    /// no tag, is written alone.
    void WriteValue(const TaggedValue& value);

    void BeginArray();
    void BeginObject();
    void EndContainer();
    void WriteInt32(std::int32_t value);
    /// Serves for keys and for values. At most 2^32 - 1 bytes.
    void WriteString(std::string_view text);

    void WriteMemberInt32(std::string_view key, std::int32_t value);
    void WriteMemberUInt64(std::string_view key, std::uint64_t value);
    void WriteMemberBool(std::string_view key, bool value);

private:
    void PutTag(TagKind tag);
    template <typename Number>
    void PutNumber(Number number);
    template <typename Number>
    void PutTagged(TagKind tag, Number number);
    void Put(std::string_view bytes);
    void Flush();

    FileHandle File;
    std::string Pending; ///< Written, but not yet handed to the file.
    bool Failed = false;
};

/// What a step of a walk through an object came to.
enum class MemberStep : std::uint8_t { Pair, End, DataRanOut };

/// Reads a stream from memory. A read that fails gives a value with the tag None and does not try
/// to find its place again; the following byte is then taken for a tag, even if it was meant as
/// part of a number or a text. Damaged data can thus end in an orderly way.
///
/// Data that runs out gives None for ever, and neither NextElement nor NextMember takes that for
/// an end. Since the End of the outermost container is the last byte that a whole stream needs, a
/// walk has run out of data when one of the two returns true with Position at Size: what is open
/// then is never closed. Every walk over a file that may be damaged has to check that.
struct TaggedReader {
    std::vector<std::uint8_t> Buffer; ///< The whole file.
    std::uint32_t Size = 0;           ///< Bytes in Buffer.
    std::uint32_t Position = 0;       ///< The next byte to read.
    std::uint32_t Depth = 0;          ///< How many arrays and objects are open.
    /// Some read has given None. No read of a whole stream does.
    bool Failed = false;

    /// Takes the file at `path`, which is UTF-8, into memory and starts at its beginning. False,
    /// with a message on the standard error stream, when it cannot be opened. Messages about its
    /// size go there too, but the result is then true. Files of 4 GiB and more are not supported.
    bool LoadFile(const std::string& path);

    /// Starts at the beginning of a file that is in memory already.
    void LoadBytes(std::vector<std::uint8_t> bytes);

    /// Copies the next `count` bytes to `destination`, or passes over them when that is null. False
    /// with nothing read when fewer remain. A count of 0 always works.
    bool ReadBytes(void* destination, std::uint32_t count);

    /// The next value. Opening an Array or Object deepens Depth by one, an End takes one off.
    TaggedValue ReadValue();

    /// The next element of the array that `parent` opened; what is left of the element before is
    /// passed over first. False at the End of the array.
    bool NextElement(const TaggedValue& parent, TaggedValue& value);

    /// The next pair of the object that `parent` opened; what is left of the pair before is passed
    /// over first. False at the End of the object, with `value` as it was. The key may hold
    /// anything; it is not looked at.
    bool NextMember(const TaggedValue& parent, TaggedValue& key, TaggedValue& value);

    /// NextMember for those who want the pairs with a String for a key and no others, and who check
    /// for data that runs out: a pair behind which nothing stands, not even the End, is of no use.
    /// `name` is the key where it lies in Buffer; it means something only with a Pair.
    MemberStep NextNamedMember(const TaggedValue& parent, std::string_view& name,
                               TaggedValue& value);

private:
    template <typename Number>
    bool ReadNumber(Number& number);
    template <typename Number>
    bool ReadNumberPayload(TaggedPayload& payload);
    bool ReadText(std::string_view& text);
    bool ReadTextPayload(TaggedPayload& payload);
    bool ReadName(std::string_view& name);
    bool ReadPayload(TaggedValue& value);
    void ReadInto(TaggedValue& value);
    void SkipTo(const TaggedValue& parent);
};

} // namespace Wirefall
