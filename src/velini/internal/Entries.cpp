#include "velini/internal/Entries.h"

#include <algorithm>
#include <cstdint>

namespace velINI::Internal {

IniKey& AppendEntry(std::vector<IniKey>& entries, NameIndex& index, KeyKind kind,
                    std::string_view name, std::string_view value) {
    IniKey& entry = entries.emplace_back();
    entry.Kind = kind;
    entry.Name = name;
    entry.Value = value;
    index.Appended(entries);
    return entry;
}

IniKey& StoreValue(IniSection& section, std::size_t position, std::string_view name,
                   std::string_view value, bool quoted) {
    IniKey& entry = position == section.Keys.size()
                        ? AppendEntry(section.Keys, section.KeyIndex, KeyKind::Value, name, {})
                        : section.Keys[position];
    entry.Value = value;
    entry.Quoted = quoted;
    return entry;
}

IniKey& ArrayAt(IniSection& section, std::size_t position, std::string_view name,
                bool explicitIndex) {
    if (position == section.Keys.size()) {
        AppendEntry(section.Keys, section.KeyIndex, KeyKind::Array, name, {}).Quoted =
            explicitIndex;
    }
    return section.Keys[position];
}

std::string NextElement(IniKey& array) {
    ElementNumbers unknown;
    ElementNumbers* known = array.Elements.Index().Numbers(array.Elements.List());
    ElementNumbers& numbers = known == nullptr ? unknown : *known;
    for (; numbers.Seen < array.Elements.size(); ++numbers.Seen) {
        const long index = std::stol(array.Elements[numbers.Seen].Name);
        numbers.Largest = numbers.Seen == 0 ? index : std::max(numbers.Largest, index);
    }
    // Counted without a sign, so that the index behind the largest long is defined.
    const auto next = numbers.Seen == 0 ? 0 : static_cast<std::uint64_t>(numbers.Largest) + 1;
    array.NextIndex = static_cast<std::uint32_t>(next);
    return std::to_string(array.NextIndex);
}

void StoreElement(IniKey& array, const NewElement& element, std::size_t& comparisons) {
    std::vector<IniKey>& elements = array.Elements;
    NameIndex& index = array.Elements.Index();
    const std::size_t position = index.Locate(elements, element.Name, comparisons);
    const bool isNew = position == elements.size();
    if (isNew) {
        AppendEntry(elements, index, KeyKind::Value, element.Name, element.Value);
    } else {
        elements[position].Value = element.Value;
    }
    if (!isNew || element.HasComment) {
        elements[position].SetKeyComment(element.Comment);
        elements[position].Quoted = element.Quoted;
    }
}

} // namespace velINI::Internal
