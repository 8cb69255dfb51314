#include "velini/internal/Entries.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace velINI::Internal {

IniKey& AppendEntry(std::vector<IniKey>& entries, KeyKind kind, std::string name,
                    std::string value) {
    // Copying an empty entry is cheaper than value-initialising one, which first clears its memory.
    static const IniKey blank;
    entries.push_back(blank);
    IniKey& entry = entries.back();
    entry.Kind = kind;
    entry.Name = std::move(name);
    entry.Value = std::move(value);
    return entry;
}

IniKey& StoreValue(IniSection& section, std::size_t position, std::string_view name,
                   std::string value, bool quoted) {
    IniKey& entry = position == section.Keys.size()
                        ? AppendEntry(section.Keys, KeyKind::Value, std::string(name), {})
                        : section.Keys[position];
    entry.Value = std::move(value);
    entry.Quoted = quoted;
    return entry;
}

IniKey& ArrayAt(IniSection& section, std::size_t position, std::string_view name,
                bool explicitIndex) {
    if (position == section.Keys.size()) {
        AppendEntry(section.Keys, KeyKind::Array, std::string(name), {}).Quoted = explicitIndex;
    }
    return section.Keys[position];
}

std::string ElementNumbers::Next(IniKey& array) {
    for (; seen_ < array.Elements.size(); ++seen_) {
        const long index = std::stol(array.Elements[seen_].Name);
        largest_ = seen_ == 0 ? index : std::max(largest_, index);
    }
    // Counted without a sign, so that the index behind the largest long is defined.
    const auto next = seen_ == 0 ? 0 : static_cast<std::uint64_t>(largest_) + 1;
    array.NextIndex = static_cast<std::uint32_t>(next);
    return std::to_string(array.NextIndex);
}

void StoreElement(IniKey& array, std::size_t position, std::string_view name, std::string value,
                  bool quoted, bool hasComment, std::string_view comment) {
    const bool isNew = position == array.Elements.size();
    IniKey& element = isNew ? AppendEntry(array.Elements, KeyKind::Value, std::string(name), {})
                            : array.Elements[position];
    element.Value = std::move(value);
    if (!isNew || hasComment) {
        element.SetKeyComment(comment);
        element.Quoted = quoted;
    }
}

} // namespace velINI::Internal
