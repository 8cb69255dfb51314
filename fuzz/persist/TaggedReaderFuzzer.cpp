// Walks arbitrary bytes as a tagged stream, first value by value and then as its containers say,
// going into some and passing over others. Whatever the bytes are, the walk ends, never leaves the
// data, and gives only values that agree with their tags.

#include "persist/TaggedStream.h"

#include <cstdlib>
#include <vector>

namespace {

using Wirefall::TaggedReader;
using Wirefall::TaggedValue;
using Wirefall::TagKind;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void CheckValue(const TaggedReader& reader, const TaggedValue& value) {
    Require(reader.Position <= reader.Size);
    const bool isContainer = value.Tag == TagKind::Array || value.Tag == TagKind::Object;
    Require(isContainer || value.Depth == 0);
    const bool isNumber = value.Tag >= TagKind::Int32 && value.Tag <= TagKind::Double;
    std::int32_t number = 0;
    Require(ReadAsInt32(value, number) == isNumber);
    bool flag = false;
    Require(ReadAsBool(value, flag) == (isNumber || value.Tag == TagKind::Bool));
    std::int64_t wide = 0;
    Require(ReadAsInt64(value, wide) == (isNumber && value.Tag != TagKind::Double));
    std::uint64_t natural = 0;
    if (ReadAsUInt64(value, natural) && value.Tag != TagKind::UInt64) {
        Require(wide >= 0 && natural == static_cast<std::uint64_t>(wide));
    }
    std::string text;
    Require(ReadAsString(value, text) == (value.Tag == TagKind::String));
    Require(text.size() <= reader.Size);
    Require(ExactString(value).has_value() == (value.Tag == TagKind::String));
    Require(ExactUInt32(value).has_value() == (value.Tag == TagKind::UInt32));
    Require(ExactUInt64(value).has_value() == (value.Tag == TagKind::UInt64));
}

void WalkValues(TaggedReader& reader) {
    while (reader.Position < reader.Size) {
        const std::uint32_t before = reader.Position;
        CheckValue(reader, reader.ReadValue());
        Require(reader.Position > before);
    }
    Require(reader.ReadValue().Tag == TagKind::None);
}

void WalkContainers(TaggedReader& reader) {
    std::vector<TaggedValue> open = {reader.ReadValue()};
    while (!open.empty() && reader.Position < reader.Size) {
        const TaggedValue parent = open.back();
        const std::uint32_t before = reader.Position;
        TaggedValue key;
        TaggedValue value;
        const bool more = parent.Tag == TagKind::Object ? reader.NextMember(parent, key, value)
                                                        : reader.NextElement(parent, value);
        Require(reader.Position > before);
        CheckValue(reader, key);
        CheckValue(reader, value);
        if (!more) {
            open.pop_back();
        } else if (value.Depth != 0 && before % 3 != 0) {
            open.push_back(value);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TaggedReader reader;
    reader.LoadBytes({data, data + size});
    WalkValues(reader);
    reader.LoadBytes({data, data + size});
    WalkContainers(reader);
    return 0;
}
