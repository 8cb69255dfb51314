#pragma once

// A tagged stream as a tree that a test can change: take a save apart, turn one thing into what no
// game would write, and put it together again.

#include "persist/TaggedStream.h"
#include "support/TestFiles.h"

#include <string>
#include <string_view>
#include <vector>

namespace Wirefall::Testing {

struct TaggedMember;

struct TaggedTree {
    TagKind Tag = TagKind::None;
    TaggedPayload Value = std::monostate{};
    std::vector<TaggedMember> Members; ///< Of an Object.
    std::vector<TaggedTree> Elements;  ///< Of an Array.

    static TaggedTree Of(TagKind tag, TaggedPayload value);
    static TaggedTree Int32(std::int32_t number);
    static TaggedTree String(const std::string& text);
    static TaggedTree Object();
    static TaggedTree Array();

    /// The first member of that name. Throws std::out_of_range when there is none.
    TaggedTree& operator[](std::string_view key);
    void Remove(std::string_view key);
    void Add(const std::string& key, const TaggedTree& value);
};

struct TaggedMember {
    std::string Key;
    TaggedTree Value;
};

/// The stream must be whole.
TaggedTree TreeOf(const Bytes& stream);

Bytes StreamOf(const TaggedTree& tree);

/// What `write` puts into an empty stream.
template <typename Write>
Bytes WrittenStream(Write write) {
    const TemporaryFolder folder;
    TaggedWriter writer;
    writer.OpenForWriting(folder.File("stream"));
    write(writer);
    writer.Close();
    return ReadFileBytes(folder.File("stream"));
}

} // namespace Wirefall::Testing
