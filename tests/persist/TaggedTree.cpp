#include "persist/TaggedTree.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Wirefall::Testing {

namespace {

TaggedTree ReadTree(TaggedReader& reader, const TaggedValue& value) {
    TaggedTree tree;
    tree.Tag = value.Tag;
    tree.Value = value.Value;
    TaggedValue key;
    TaggedValue next;
    if (value.Tag == TagKind::Object) {
        while (reader.NextMember(value, key, next)) {
            const std::string name = std::get<std::string>(key.Value);
            tree.Add(name, ReadTree(reader, next));
        }
    } else if (value.Tag == TagKind::Array) {
        while (reader.NextElement(value, next)) {
            tree.Elements.push_back(ReadTree(reader, next));
        }
    } else if (value.Tag == TagKind::None) {
        throw std::invalid_argument("The stream is damaged");
    }
    return tree;
}

void WriteTree(TaggedWriter& writer, const TaggedTree& tree) {
    writer.WriteValue({0, tree.Tag, tree.Value});
    for (const auto& [key, value] : tree.Members) {
        writer.WriteString(key);
        WriteTree(writer, value);
    }
    for (const TaggedTree& element : tree.Elements) {
        WriteTree(writer, element);
    }
    if (tree.Tag == TagKind::Object || tree.Tag == TagKind::Array) {
        writer.EndContainer();
    }
}

} // namespace

TaggedTree TaggedTree::Of(TagKind tag, TaggedPayload value) {
    TaggedTree tree;
    tree.Tag = tag;
    tree.Value = std::move(value);
    return tree;
}

TaggedTree TaggedTree::Int32(std::int32_t number) { return Of(TagKind::Int32, number); }

TaggedTree TaggedTree::String(const std::string& text) { return Of(TagKind::String, text); }

TaggedTree TaggedTree::Object() { return Of(TagKind::Object, std::monostate{}); }

TaggedTree TaggedTree::Array() { return Of(TagKind::Array, std::monostate{}); }

TaggedTree& TaggedTree::operator[](std::string_view key) {
    for (auto& [name, value] : Members) {
        if (name == key) {
            return value;
        }
    }
    throw std::out_of_range("There is no member " + std::string(key));
}

void TaggedTree::Remove(std::string_view key) {
    std::erase_if(Members, [key](const auto& member) { return member.Key == key; });
}

void TaggedTree::Add(const std::string& key, const TaggedTree& value) {
    Members.push_back({key, value});
}

TaggedTree TreeOf(const Bytes& stream) {
    TaggedReader reader;
    reader.LoadBytes(stream);
    return ReadTree(reader, reader.ReadValue());
}

Bytes StreamOf(const TaggedTree& tree) {
    return WrittenStream([&tree](TaggedWriter& writer) { WriteTree(writer, tree); });
}

} // namespace Wirefall::Testing
