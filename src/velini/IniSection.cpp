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

std::size_t InsertionPoint(const std::vector<IniKey>& keys, InsertPosition position,
                           const std::optional<std::string>& anchor) {
    switch (position) {
    case InsertPosition::Begin:
        return 0;
    case InsertPosition::Before:
    case InsertPosition::After: {
        const std::size_t found = Internal::PositionOf(keys, anchor.value());
        if (found == keys.size()) {
            throw std::runtime_error("\"" + *anchor + "\" could not be found!");
        }
        return position == InsertPosition::Before ? found : found + 1;
    }
    case InsertPosition::End:
        break;
    }
    return keys.size();
}

void Insert(std::vector<IniKey>& keys, InsertPosition position,
            const std::optional<std::string>& anchor, IniKey entry) {
    if (Internal::PositionOf(keys, entry.Name) == keys.size()) {
        keys.insert(At(keys.begin(), InsertionPoint(keys, position, anchor)), std::move(entry));
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
    return At(Keys.begin(), Internal::PositionOf(Keys, name));
}

std::vector<IniKey>::const_iterator IniSection::FindKey(std::string_view name) const {
    return At(Keys.begin(), Internal::PositionOf(Keys, name));
}

void IniSection::SetKeyValue(std::string_view keyName, std::string_view value, bool quoted) {
    const std::string ownName(keyName); // it may be that of an entry
    Internal::StoreValue(*this, Internal::PositionOf(Keys, ownName), ownName, std::string(value),
                         quoted);
}

void IniSection::SetSectionComment(std::string_view text) {
    if (text.empty()) {
        Comment.reset();
    } else {
        Comment = std::string(text);
    }
}

void IniSection::AddComment(std::string_view keyName, std::string_view text,
                            InsertPosition position, const std::optional<std::string>& anchor,
                            bool verbatim) {
    IniKey entry = MakeEntry(KeyKind::Comment, keyName, text);
    entry.Verbatim = verbatim;
    Insert(Keys, position, anchor, std::move(entry));
}

void IniSection::AddEmptyLine(std::string_view keyName, InsertPosition position,
                              const std::optional<std::string>& anchor) {
    Insert(Keys, position, anchor, MakeEntry(KeyKind::EmptyLine, keyName, {}));
}

void IniSection::SetArrayElement(std::string_view keyName, std::string_view value, bool quoted,
                                 bool hasComment, std::string_view comment, std::string_view index,
                                 bool explicitIndex) {
    // The texts may be those of an entry, which moves when the array joins the others.
    const std::string ownName(keyName);
    const std::string ownValue(value);
    const std::string ownComment(comment);
    const std::string ownIndex(explicitIndex ? index : std::string_view());
    Internal::ArrayAt(*this, Internal::PositionOf(Keys, ownName), ownName, explicitIndex)
        .SetElement(ownIndex, ownValue, quoted, hasComment, ownComment);
}

} // namespace velINI
