#pragma once

// One section of a document: its name, the comment behind its header, and its entries in the order
// of the file. The entries may also be edited directly in Keys. Lookups compare names byte for byte
// and find the first entry of a name whatever was edited. They take the same time in long sections
// as in short ones: an index remembers where the names stand, and takes note of every change. The
// lookups of a constant section use the index as it is, and walk the entries when one was edited
// directly since; all others bring it up to date.

#include "velini/IniKey.h"
#include "velini/ValueAs.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velINI {

/// Where AddComment and AddEmptyLine put the new entry: in front of all others, behind them, or
/// just before or behind the anchor. A number above After counts as End.
enum class InsertPosition : std::uint8_t { Begin = 0, End = 1, Before = 2, After = 3 };

/// Goes over the keys of a section in a range-for, which are its values and arrays, and passes over
/// comments and blank lines.
template <class Iterator>
class KeyIterator {
public:
    KeyIterator(Iterator place, Iterator end) : Place(place), End(end) { PassOver(); }

    auto& operator*() const { return *Place; }
    KeyIterator& operator++() {
        ++Place;
        PassOver();
        return *this;
    }
    friend bool operator==(const KeyIterator&, const KeyIterator&) = default;

private:
    void PassOver() {
        while (Place != End && Place->Kind != KeyKind::Value && Place->Kind != KeyKind::Array) {
            ++Place;
        }
    }

    Iterator Place;
    Iterator End;
};

struct IniSection {
    IniName Name;

    /// The comment behind the header, if there is one.
    OptionalText Comment;

    std::vector<IniKey> Keys;

    /// How many generated names of either sort were handed out. They only grow.
    std::uint32_t CommentCount = 0;
    std::uint32_t EmptyLineCount = 0;

    /// Finds the entries by name. It keeps itself up to date and is of no use to others.
    Internal::NameIndex KeyIndex;

    /// The first entry of that name, of whatever kind; Keys.end() when there is none.
    [[nodiscard]] std::vector<IniKey>::iterator FindKey(std::string_view name);
    [[nodiscard]] std::vector<IniKey>::const_iterator FindKey(std::string_view name) const;

    /// The value of that entry by the rules of ValueAs; nothing when there is none or when it is
    /// not of the type.
    template <class Type>
    [[nodiscard]] std::optional<Type> Get(std::string_view name) const {
        const auto key = FindKey(name);
        return key == Keys.end() ? std::nullopt : ValueAs<Type>(key->Value);
    }

    // To walk over the keys, without comments and blank lines:  for (const IniKey& key : section)
    [[nodiscard]] auto begin() { return KeyIterator(Keys.begin(), Keys.end()); }
    [[nodiscard]] auto end() { return KeyIterator(Keys.end(), Keys.end()); }
    [[nodiscard]] auto begin() const { return KeyIterator(Keys.begin(), Keys.end()); }
    [[nodiscard]] auto end() const { return KeyIterator(Keys.end(), Keys.end()); }

    /// Gives the entry of that name this value and quoting; its kind, place and comment stay. When
    /// there is none, appends a Value entry without a comment.
    void SetKeyValue(std::string_view keyName, std::string_view value, bool quoted = false);

    /// Sets the comment behind the header; an empty text removes it.
    void SetSectionComment(std::string_view text) { Comment.SetUnlessEmpty(text); }

    /// Adds a Comment entry. The name should be a generated one; CommentCount is the caller's to
    /// count up. Nothing happens when an entry of that name exists.
    ///
    /// For Before and After, raises std::runtime_error, "\"anchor\" could not be found!", when no
    /// entry has the anchor's name, and std::bad_optional_access when there is no anchor. The other
    /// positions do not look at it.
    void AddComment(std::string_view keyName, std::string_view text,
                    InsertPosition position = InsertPosition::End,
                    const std::optional<std::string>& anchor = {}, bool verbatim = false);

    /// Adds an EmptyLine entry by the rules of AddComment, with EmptyLineCount as the count.
    void AddEmptyLine(std::string_view keyName, InsertPosition position = InsertPosition::End,
                      const std::optional<std::string>& anchor = {});

    /// Stores an element of the array of that name, which is appended when there is no entry of
    /// that name: IniKey::SetElement, with `index` when explicitIndex is set and with an automatic
    /// one otherwise. An entry of another kind keeps its kind.
    void SetArrayElement(std::string_view keyName, std::string_view value, bool quoted = false,
                         bool hasComment = false, std::string_view comment = {},
                         std::string_view index = {}, bool explicitIndex = false);

    /// Whether all fields are equal.
    friend bool operator==(const IniSection&, const IniSection&) = default;
};

} // namespace velINI
