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

#include "velini/Diagnostic.h"
#include "velini/IniSection.h"
#include "velini/TextEncoding.h"
#include "velini/ValueAs.h"

#include <concepts>
#include <cstddef>
#include <filesystem>
#include <locale>
#include <optional>
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

    /// Whether reading also tells of lines that it understands, but hardly as they were meant:
    /// spaces dropped inside of a value, a key that the section has already, text behind the
    /// bracket of a header. Off, so that reading costs no more than it must.
    bool NoteOddities = false;

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

    /// The same for a path of the standard library, but that an error which the other raises is a
    /// result of false here, told by Diagnostics. Raises only std::bad_alloc.
    template <std::same_as<std::filesystem::path> Path>
    bool ReadFile(const Path& path);

    /// Adds a text in memory to the document, UTF-8 with or without a mark. It may be of any length
    /// and nothing is printed; otherwise it is read as the content of a file. False when nothing of
    /// the text, or only what stands in front of a wrongly numbered element, could be taken over.
    /// Raises only std::bad_alloc.
    bool ReadText(std::string_view text);

    /// What was wrong with the text that was read last, in its order; empty when nothing was.
    [[nodiscard]] const std::vector<Diagnostic>& Diagnostics() const { return LastDiagnostics; }

    /// Writes the document to a file, in place of what was there. `path` is UTF-8. `spacing` puts a
    /// space on each side of the assign character and in front of comments, a blank line between
    /// sections and a line end at the end. Without it, the file ends without a line end.
    ///
    /// False, with a message on the standard output, when the file cannot be opened. Failed writes
    /// are not detected. Raises what EscapeText raises, and in the wide encodings what WriteEncoded
    /// raises when NewLine or one of the characters above is not UTF-8; the file is then written up
    /// to that entry.
    bool WriteFile(const std::string& path, bool spacing = false,
                   TextEncoding encoding = TextEncoding::None) const;

    /// The same for a path of the standard library, but that an error which the other raises is a
    /// result of false here. Raises only std::bad_alloc.
    template <std::same_as<std::filesystem::path> Path>
    bool WriteFile(const Path& path, bool spacing = false,
                   TextEncoding encoding = TextEncoding::None) const;

    /// The bytes that WriteFile writes; none when a text of the document is not UTF-8. Raises only
    /// std::bad_alloc.
    [[nodiscard]] std::string WriteText(bool spacing = false,
                                        TextEncoding encoding = TextEncoding::None) const;

    /// Writes the document to a file that is replaced as a whole or not at all: the bytes are made
    /// in memory, stored under a new name beside the target, and moved over it. Whoever reads the
    /// file at any time, even after a loss of power, finds the old content or the new one.
    ///
    /// False when any of this fails, with the target as it was; `reason`, if given, then says why,
    /// and is empty otherwise. `path` is UTF-8. Raises only std::bad_alloc.
    [[nodiscard]] bool WriteFileAtomically(const std::string& path, bool spacing = false,
                                           TextEncoding encoding = TextEncoding::None,
                                           std::string* reason = nullptr) const;

    /// The same for a path of the standard library.
    template <std::same_as<std::filesystem::path> Path>
    [[nodiscard]] bool WriteFileAtomically(const Path& path, bool spacing = false,
                                           TextEncoding encoding = TextEncoding::None,
                                           std::string* reason = nullptr) const;

    [[nodiscard]] std::size_t SectionCount() const { return Sections.size(); }

    /// Raises std::logic_error "Index is out of range!" unless 0 <= index < SectionCount().
    IniSection& SectionAt(std::ptrdiff_t index);
    const IniSection& SectionAt(std::ptrdiff_t index) const;

    [[nodiscard]] bool HasSection(std::string_view name) const {
        return FindSection(name) != Sections.end();
    }

    /// The first section of that name, compared byte for byte; Sections.end() when there is none.
    std::vector<IniSection>::iterator FindSection(std::string_view name);
    std::vector<IniSection>::const_iterator FindSection(std::string_view name) const;

    /// The value of the first entry of that name in the first section of that name, the default
    /// when there is none. A value that is there and empty is the empty string.
    [[nodiscard]] std::string GetValue(std::string_view sectionName, std::string_view keyName,
                                       std::string_view defaultValue = {});
    [[nodiscard]] std::string GetValue(std::string_view sectionName, std::string_view keyName,
                                       std::string_view defaultValue = {}) const;

    /// That value as a number, a bool or a std::string, by the rules of ValueAs; nothing when there
    /// is none or when it is not one of these. Raises only std::bad_alloc.
    ///
    ///     const int width = document.Get<int>("Window", "Width").value_or(1280);
    template <class Type>
    [[nodiscard]] std::optional<Type> Get(std::string_view sectionName,
                                          std::string_view keyName) const {
        const auto section = FindSection(sectionName);
        return section == Sections.end() ? std::nullopt : section->template Get<Type>(keyName);
    }

    /// IniSection::SetKeyValue on the first section of that name, which is appended when missing.
    void SetValue(std::string_view sectionName, std::string_view keyName, std::string_view value,
                  bool quoted = false);

    /// Appends a blank line to the section, or to the global one for an empty name. Nothing happens
    /// when there is no such section.
    void AddBlankLine(std::string_view sectionName);

    // To walk over the sections:  for (const IniSection& section : document)
    [[nodiscard]] std::vector<IniSection>::iterator begin() { return Sections.begin(); }
    [[nodiscard]] std::vector<IniSection>::iterator end() { return Sections.end(); }
    [[nodiscard]] std::vector<IniSection>::const_iterator begin() const { return Sections.begin(); }
    [[nodiscard]] std::vector<IniSection>::const_iterator end() const { return Sections.end(); }

    /// Whether the documents are written alike: all sections and the four fields of the writer.
    friend bool operator==(const velINIStream& left, const velINIStream& right) {
        return left.Sections == right.Sections && left.NewLine == right.NewLine &&
               left.CommentCharacter == right.CommentCharacter &&
               left.QuoteCharacter == right.QuoteCharacter &&
               left.AssignCharacter == right.AssignCharacter;
    }

    /// Finds the sections by name. It keeps itself up to date and is of no use to others.
    Internal::NameIndex SectionIndex;

private:
    /// Adds a text in UTF-8, in parts that end where a line ends. Lets go of those of `owned`, as
    /// far as they are, when they have been read. Returns what is wrong with the line that ended
    /// the reading, each message with a newline behind it, and raises what ReadFile raises.
    std::string TakeOver(const std::vector<std::string_view>& parts,
                         std::vector<std::string>& owned);

    std::vector<Diagnostic> LastDiagnostics;
};

} // namespace velINI
