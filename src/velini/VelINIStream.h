#pragma once

// An INI document in memory. Make a velINIStream, fill it with ReadFile or with SetValue, ask it
// with GetValue or walk its Sections, and store it with WriteFile. It remembers what makes a text
// file look as its author left it: the order of sections and keys, comments, blank lines and which
// values stood in quotes. Nothing is shared between documents, and copying one copies all its text.
//
// What stands in front of the first section header belongs to a section named "VI_Global", which is
// like any other but for having no header in the file.
//
// The dialect is described in docs/velini.md.

#include "velini/IniSection.h"
#include "velini/TextEncoding.h"

#include <cstddef>
#include <locale>
#include <string>
#include <string_view>
#include <vector>

namespace velINI {

class velINIStream {
public:
    /// The facet of the wide conversions, for char16_t and char32_t: std::codecvt, with a
    /// destructor that lets the conversion own it. Complete only where the conversions are made.
    template <class Character>
    class velINICodeCvt; // NOLINT(cppcoreguidelines-virtual-class-destructor): virtual in its base

    /// The line end of written files.
    std::string NewLine = "\r\n";

    char CommentCharacter = ';';
    char QuoteCharacter = '"';
    char AssignCharacter = '=';

    std::locale Locale;

    /// In file order.
    std::vector<IniSection> Sections;

    /// Adds the content of a file to the document; what is there already stays, and sections of the
    /// same name get the new entries. `path` is UTF-8.
    ///
    /// False, with a message on the standard output, when the file cannot be read or is shorter
    /// than 6 bytes. An error in the text also prints a message, but the result is true: everything
    /// in front of the line stays, and nothing behind it is read.
    ///
    /// Raises std::runtime_error for a broken `\x` escape and std::range_error for broken UTF-16 or
    /// UTF-32 text, in both cases with the document as it was; and what IniKey::SetElement raises,
    /// with everything in front of that line kept. 8-bit text is not checked.
    bool ReadFile(const std::string& path);

    /// Writes the document to a file, in place of what was there. `path` is UTF-8. `spacing` puts a
    /// space on each side of the assign character and in front of comments, a blank line between
    /// sections and a line end at the end. Without it, the file ends without a line end.
    ///
    /// False, with a message on the standard output, when the file cannot be opened. Failed writes
    /// are not detected. Raises what EscapeText raises, and in the wide encodings what WriteEncoded
    /// raises when NewLine or one of the characters above is not UTF-8; the file is then written up
    /// to that entry.
    bool WriteFile(const std::string& path, bool spacing, TextEncoding encoding) const;

    std::size_t SectionCount() const;

    /// Raises std::logic_error "Index is out of range!" unless 0 <= index < SectionCount().
    IniSection& SectionAt(std::ptrdiff_t index);
    const IniSection& SectionAt(std::ptrdiff_t index) const;

    bool HasSection(std::string_view name) const;

    /// The first section of that name, compared byte for byte; Sections.end() when there is none.
    std::vector<IniSection>::iterator FindSection(std::string_view name);
    std::vector<IniSection>::const_iterator FindSection(std::string_view name) const;

    /// The value of the first entry of that name in the first section of that name, the default
    /// when there is none. A value that is there and empty is the empty string.
    std::string GetValue(std::string_view sectionName, std::string_view keyName,
                         std::string_view defaultValue);
    std::string GetValue(std::string_view sectionName, std::string_view keyName,
                         std::string_view defaultValue) const;

    /// IniSection::SetKeyValue on the first section of that name, which is appended when missing.
    void SetValue(std::string_view sectionName, std::string_view keyName, std::string_view value,
                  bool quoted);

    /// Appends a blank line to the section, or to the global one for an empty name. Nothing happens
    /// when there is no such section.
    void AddBlankLine(std::string_view sectionName);

    /// Finds the sections by name. It keeps itself up to date and is of no use to others.
    Internal::NameIndex SectionIndex;
};

} // namespace velINI
