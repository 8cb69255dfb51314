#pragma once

// What storing an entry means, once it is known where the entry stands. The public operations and
// the reader share it.

#include "velini/IniSection.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velINI::Internal {

// Texts that are views must not be those of a record in the list that grows. A position that is the
// size of the list must come from the index, asked for the same name just before.

/// Appends an entry that has nothing but its kind, name and value.
IniKey& AppendEntry(std::vector<IniKey>& entries, NameIndex& index, KeyKind kind,
                    std::string_view name, std::string_view value);

/// IniSection::SetKeyValue, for the entry at `position` or, at the end, a new one. Returns it.
IniKey& StoreValue(IniSection& section, std::size_t position, std::string_view name,
                   std::string_view value, bool quoted);

/// The entry at `position` or, at the end, a new array made by an element with or without an
/// explicit index.
IniKey& ArrayAt(IniSection& section, std::size_t position, std::string_view name,
                bool explicitIndex);

/// The index that automatic numbering gives the next element, which it also stores in the array.
/// Elements that the array's index has seen before are not looked at again. Raises what std::stol
/// raises.
std::string NextElement(IniKey& array);

/// An element as IniKey::SetElement takes it, its index made.
struct NewElement {
    std::string_view Name;
    std::string_view Value;
    bool Quoted;
    bool HasComment;
    std::string_view Comment;
};

/// IniKey::SetElement.
void StoreElement(IniKey& array, const NewElement& element, std::size_t& comparisons);

} // namespace velINI::Internal
