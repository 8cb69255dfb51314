#pragma once

// What storing an entry means, once it is known where the entry stands. The public operations find
// that out by walking the records, which callers may have edited in any way; the reader, alone with
// its document, by NameIndex.

#include "velini/IniSection.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velINI::Internal {

// Texts that are views must not be those of a record in the list that grows.

/// Position of the first record of that name, the size of the list when there is none.
template <class Record>
std::size_t PositionOf(const std::vector<Record>& records, std::string_view name) {
    std::size_t position = 0;
    while (position < records.size() && records[position].Name != name) {
        ++position;
    }
    return position;
}

/// Appends an entry that has nothing but its kind, name and value.
IniKey& AppendEntry(std::vector<IniKey>& entries, KeyKind kind, std::string name,
                    std::string value);

/// IniSection::SetKeyValue, for the entry at `position` or, at the end, a new one. Returns it.
IniKey& StoreValue(IniSection& section, std::size_t position, std::string_view name,
                   std::string value, bool quoted);

/// The entry at `position` or, at the end, a new array made by an element with or without an
/// explicit index.
IniKey& ArrayAt(IniSection& section, std::size_t position, std::string_view name,
                bool explicitIndex);

/// The automatic numbering of one array. It goes on from the elements that it has seen, so that
/// numbering all elements of a growing array takes one look at each.
class ElementNumbers {
public:
    /// The next index, which it also stores in the array. Raises what std::stol raises.
    std::string Next(IniKey& array);

private:
    std::size_t seen_ = 0;
    long largest_ = 0;
};

/// IniKey::SetElement, for the element at `position` or, at the end, a new one of that name.
void StoreElement(IniKey& array, std::size_t position, std::string_view name, std::string value,
                  bool quoted, bool hasComment, std::string_view comment);

} // namespace velINI::Internal
