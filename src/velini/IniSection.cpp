#include "velini/IniSection.h"

#include "velini/internal/Entries.h"

#include <iterator>
#include <stdexcept>
#include <utility>

namespace velINI {
namespace {

template <class Iterator>
Iterator At(Iterator first, std::size_t position) {
    return std::next(first, static_cast<std::ptrdiff_t>(position));
}

// Where the entry of that name stands; behind the last one when there is none.
std::size_t Position(IniSection& section, std::string_view name) {
    std::size_t comparisons = 0;
    return section.KeyIndex.Locate(section.Keys, name, comparisons);
}

std::size_t InsertionPoint(IniSection& section, InsertPosition position,
                           const std::optional<std::string>& anchor) {
    switch (position) {
    case InsertPosition::Begin:
        return 0;
    case InsertPosition::Before:
    case InsertPosition::After: {
        const std::size_t found = Position(section, anchor.value());
        if (found == section.Keys.size()) {
            throw std::runtime_error("\"" + *anchor + "\" could not be found!");
        }
        return position == InsertPosition::Before ? found : found + 1;
    }
    case InsertPosition::End:
        break;
    }
    return section.Keys.size();
}

void Insert(IniSection& section, InsertPosition position, const std::optional<std::string>& anchor,
            IniKey entry) {
    std::vector<IniKey>& keys = section.Keys;
    if (Position(section, entry.Name) == keys.size()) {
        const std::size_t place = InsertionPoint(section, position, anchor);
        const bool isLast = place == keys.size();
        keys.insert(At(keys.begin(), place), std::move(entry));
        if (isLast) {
            section.KeyIndex.Refresh(keys);
        }
    }
}

IniKey MakeEntry(KeyKind kind, std::string_view name, std::string_view value) {
    IniKey entry;
    entry.Kind = kind;
    entry.Name = std::string(name);
    entry.Value = std::string(value);
    return entry;
}

} // namespace

std::vector<IniKey>::iterator IniSection::FindKey(std::string_view name) {
    return At(Keys.begin(), Position(*this, name));
}

std::vector<IniKey>::const_iterator IniSection::FindKey(std::string_view name) const {
    return At(Keys.begin(), KeyIndex.Find(Keys, name));
}

void IniSection::SetKeyValue(std::string_view keyName, std::string_view value, bool quoted) {
    // The texts may be those of an entry, which moves when another joins it.
    const std::string ownName(keyName);
    const std::string ownValue(value);
    Internal::StoreValue(*this, Position(*this, ownName), ownName, ownValue, quoted);
}

void IniSection::AddComment(std::string_view keyName, std::string_view text,
                            InsertPosition position, const std::optional<std::string>& anchor,
                            bool verbatim) {
    IniKey entry = MakeEntry(KeyKind::Comment, keyName, text);
    entry.Verbatim = verbatim;
    Insert(*this, position, anchor, std::move(entry));
}

void IniSection::AddEmptyLine(std::string_view keyName, InsertPosition position,
                              const std::optional<std::string>& anchor) {
    Insert(*this, position, anchor, MakeEntry(KeyKind::EmptyLine, keyName, {}));
}

// Its callers fix what it takes.
// NOLINTNEXTLINE(readability-function-size)
void IniSection::SetArrayElement(std::string_view keyName, std::string_view value, bool quoted,
                                 bool hasComment, std::string_view comment, std::string_view index,
                                 bool explicitIndex) {
    // The texts may be those of an entry, which moves when the array joins the others.
    const std::string ownName(keyName);
    const std::string ownValue(value);
    const std::string ownComment(comment);
    const std::string ownIndex(explicitIndex ? index : std::string_view());
    Internal::ArrayAt(*this, Position(*this, ownName), ownName, explicitIndex)
        .SetElement(ownIndex, ownValue, quoted, hasComment, ownComment);
}

} // namespace velINI
