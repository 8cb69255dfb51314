#pragma once

// One entry of a section. A document keeps comments and blank lines as entries like the keys, which
// is how a file that is read and written again keeps its shape: code that walks the entries of a
// section looks at Kind and passes over what it does not want.

#include "velini/ElementList.h"
#include "velini/IniName.h"
#include "velini/OptionalText.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace velINI {

enum class KeyKind : std::uint8_t { EmptyLine = 0, Comment = 1, Value = 2, Array = 3 };

struct IniKey;
using ElementList = LeanList<IniKey>;

/// All text is UTF-8. An entry owns its text; copying it copies everything, the elements too.
struct IniKey {
    KeyKind Kind = KeyKind::Value;

    // The small fields stand together, which makes an entry smaller.

    /// The value stands in quotes in the file. On an Array: the element that made the array had its
    /// index written out; nothing reads it there.
    bool Quoted = false;

    /// Of a Comment only: the writer leaves the quotes and backslashes of the text as they are.
    bool Verbatim = false;

    /// Of an Array: the writer puts the names of the elements into the brackets, which it leaves
    /// empty otherwise. The reader does not set it, whatever the file had.
    bool ExplicitIndex = false;

    /// Of an Array: the index that the last automatic numbering gave.
    std::uint32_t NextIndex = 0;

    /// Unique within the section. Comments and blank lines have generated names, "VI_C_" and
    /// "VI_EL_" with a count from 1; the elements of an array are named by their index in decimal.
    IniName Name;

    /// The text of a Comment; empty for an EmptyLine and an Array.
    std::string Value;

    /// The comment behind the entry on its line. The writer makes a comment sign even for an empty
    /// text, so an entry without one has no value here.
    OptionalText Comment;

    /// Of an Array: its elements in file order, each of kind Value. Elements(key) below is the
    /// checked way to them.
    ElementList Elements;

    /// Sets the comment behind the entry; an empty text removes it.
    void SetKeyComment(std::string_view text) { Comment.SetUnlessEmpty(text); }

    /// Stores one element of an array. An empty index stands for the largest index so far plus 1,
    /// or 0 in an array without elements; that number is counted in 32 bits and kept in NextIndex.
    ///
    /// An element that is there already takes value, quoted and comment (an empty comment removes
    /// the one it had). A new element takes comment and quoted only with hasComment: without a
    /// comment it is stored unquoted whatever `quoted` says.
    ///
    /// With an empty index, raises what std::stol raises when an element's name is not a number
    /// (std::invalid_argument) or does not fit a long (std::out_of_range).
    void SetElement(std::string_view index, std::string_view value, bool quoted = false,
                    bool hasComment = false, std::string_view comment = {});

    // To walk over the elements, of which only an Array has any:  for (const IniKey& e : key)
    [[nodiscard]] ElementList::iterator begin() { return Elements.begin(); }
    [[nodiscard]] ElementList::iterator end() { return Elements.end(); }
    [[nodiscard]] ElementList::const_iterator begin() const { return Elements.begin(); }
    [[nodiscard]] ElementList::const_iterator end() const { return Elements.end(); }

    /// Whether all fields are equal; those of the elements too.
    friend bool operator==(const IniKey&, const IniKey&) = default;
};

/// The elements of an array, to walk them. Raises std::runtime_error "Data is not of type array!"
/// when the entry is of another kind. A free function, because the field has the name.
ElementList& Elements(IniKey& key);
const ElementList& Elements(const IniKey& key);

} // namespace velINI
