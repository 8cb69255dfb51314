#pragma once

// The third step of reading: each line becomes an entry of the document, or the error that ends the
// reading.

#include "velini/VelINIStream.h"
#include "velini/internal/Entries.h"
#include "velini/internal/LineReader.h"
#include "velini/internal/Names.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velINI::Internal {

class LineParser {
public:
    /// What is found wrong with the lines is appended to `diagnostics`; oddities only where they
    /// are asked for. The document must not be touched by anyone else until the lines are parsed.
    LineParser(velINIStream& document, std::vector<Diagnostic>& diagnostics, bool withOddities);

    /// Adds all lines of one part of a text to the document; `ahead` are the parts behind it. The
    /// first line with an error in it ends the parse: the parts behind it must not be parsed.
    void Parse(LineReader& lines, std::span<const std::string_view> ahead);

    /// To be called behind the last part. Makes sure that the section that the last header named
    /// exists, even when nothing stands in it.
    void Finish();

    /// All that is wrong with the line that ended the parse, each message with a newline behind it.
    const std::string& Error() const { return Errors; }

    /// How many pairs of names were compared: the measure by which the tests see that reading grows
    /// linearly.
    std::size_t Comparisons() const { return ComparisonCount; }

private:
    /// An array by the positions of its section and its entry.
    struct ArrayPlace {
        std::size_t Section = 0;
        std::size_t Position = 0;
    };

    void ParseLine(std::string_view line);
    void ParseHeader(std::string_view line);
    void ParseKeyLine(std::string_view line);
    void ParseTag(std::string_view text, char separator);
    void ParseContent(std::string_view text);

    /// A string of which the quote stands in front of `i`. Returns the position behind it.
    std::size_t ParseString(std::string_view text, std::size_t i);

    /// Adds an entry with a generated name, counted by a member of the section.
    void AddGenerated(KeyKind kind, std::string_view prefix, std::uint32_t IniSection::*count,
                      std::string_view text);
    void StoreKey();
    void StoreArrayElement();

    /// The section that the last header named, made if it is missing.
    IniSection& CurrentSection();

    /// Where the entry of that name stands in the section, by the rules of NameIndex.
    std::size_t LocateKey(IniSection& section, std::string_view name);

    /// How many entries a section made by the line at hand can get before the next header, leaving
    /// aside the elements of arrays: a list that grows would spend more time on moving house than
    /// the parse on the text. A wrong guess costs only speed, and no line is looked at twice.
    std::size_t ExpectedEntries();

    /// Gives back the room that was not needed.
    void ReleaseReserves();

    /// Notes what is wrong with the line at hand. `where` is a part of the line.
    void Fail(std::string_view message, std::string_view where);
    void NoteOddity(std::string_view message, std::string_view where);
    void Note(Severity kind, std::string_view message, std::string_view where);

    velINIStream& Document;
    LineReader* Lines = nullptr; // of the part at hand
    std::span<const std::string_view> Ahead;
    std::vector<Diagnostic>& Diagnostics;
    bool WithOddities;

    std::string SectionName{GlobalSection};
    std::optional<std::size_t> Section; // where it stands, once that was asked
    std::string Errors;

    std::vector<ArrayPlace> Arrays; // that got their first element
    std::size_t EntriesAhead = 0;   // how far the text was looked at for entries to expect

    std::size_t ComparisonCount = 0;

    // Of the line at hand. They are members so that their memory serves for all lines.

    /// The part of a key line in front of the separator.
    struct {
        std::string Name;
        bool IsArray = false;
        bool ExplicitIndex = false;
        std::string Index;
    } Tag;

    /// The part behind it.
    struct {
        std::string Value;
        bool Quoted = false;
        bool HasComment = false;
        std::string_view Comment;
    } Content;
};

} // namespace velINI::Internal
