#include "velini/internal/LineParser.h"

#include "velini/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velINI::Internal {
namespace {

using ByteSet = std::array<bool, 256>;

constexpr ByteSet MakeByteSet(std::string_view members) {
    ByteSet set{};
    for (const char member : members) {
        set[static_cast<unsigned char>(member)] = true;
    }
    return set;
}

constexpr ByteSet Separators = MakeByteSet("=:");
constexpr ByteSet CommentSigns = MakeByteSet(";#");

// What a key's name is not simply made of.
constexpr ByteSet TagStops = MakeByteSet(" [];#");

// The characters of a value that are not simply kept, outside and inside of a string. A value ends
// at the newline at the latest.
constexpr ByteSet BareStops = MakeByteSet(" []\"';#\n");
constexpr ByteSet StringStops = MakeByteSet("\"'\\\n");

bool Contains(const ByteSet& set, char c) { return set[static_cast<unsigned char>(c)]; }

// The first position from `position` on whose byte is in the set, the size when there is none.
std::size_t FindIn(const ByteSet& set, std::string_view text, std::size_t position) {
    while (position < text.size() && !Contains(set, text[position])) {
        ++position;
    }
    return position;
}

std::string_view WithoutLeadingBlanks(std::string_view line) {
    return line.substr(std::min(line.find_first_not_of(" \t\r\n"), line.size()));
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

std::string_view WithoutLeadingSpace(std::string_view text) {
    return text.starts_with(' ') ? text.substr(1) : text;
}

bool IsHeader(std::string_view line) { return WithoutLeadingBlanks(line).starts_with('['); }

// What stands in front of the first newline.
std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

// Counts the lines without a bracket up to the next header; adds how much of the text that took to
// `bytes`. True when there is a header.
bool CountEntries(std::string_view text, std::size_t& entries, std::size_t& bytes) {
    NextOccurrence bracket(text, '[');
    std::size_t begin = 0;
    bool isEnd = false;
    while (begin < text.size() && !isEnd) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (bracket.From(begin) >= end) {
            ++entries;
        } else {
            isEnd = IsHeader(text.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    bytes += begin;
    return isEnd;
}

} // namespace

LineParser::LineParser(velINIStream& document, std::vector<Diagnostic>& diagnostics,
                       bool withOddities)
    : Document(document), Diagnostics(diagnostics), WithOddities(withOddities) {}

void LineParser::Parse(LineReader& lines, std::span<const std::string_view> ahead) {
    Lines = &lines;
    Ahead = ahead;
    while (Errors.empty() && lines.Next()) {
        ParseLine(WithoutLeadingBlanks(lines.Line()));
    }
}

void LineParser::Finish() {
    Lines = nullptr;
    CurrentSection();
    ReleaseReserves();
}

void LineParser::ParseLine(std::string_view line) {
    if (line.empty()) {
        AddGenerated(KeyKind::EmptyLine, EmptyLinePrefix, &IniSection::EmptyLineCount, {});
    } else if (Contains(CommentSigns, line.front())) {
        AddGenerated(KeyKind::Comment, CommentPrefix, &IniSection::CommentCount,
                     WithoutLeadingSpace(line.substr(1, line.size() - 2)));
    } else if (line.front() == '[') {
        ParseHeader(line);
    } else {
        ParseKeyLine(line);
    }
}

void LineParser::ParseHeader(std::string_view line) {
    SectionName.clear();
    Section.reset();
    bool open = true;
    bool textBehind = false;
    for (std::size_t i = 1; line[i] != '\n'; ++i) {
        const char c = line[i];
        if (c == '[') {
            Fail("New section started within section tag!\n", line.substr(i));
            break;
        }
        if (Contains(CommentSigns, c)) {
            if (open) {
                Fail("Found comment tag within section tag!\n", line.substr(i));
            } else {
                const std::string_view comment = FirstLine(line.substr(i + 1));
                CurrentSection().SetSectionComment(WithoutLeadingSpace(comment));
            }
            break;
        }
        if (c == ']') {
            open = false;
        } else if (c != ' ') {
            if (!open && !textBehind) {
                NoteOddity("Text behind the bracket is taken as a part of the name.",
                           line.substr(i));
                textBehind = true;
            }
            SectionName += c;
        }
    }
    if (open) {
        Fail("Section end tag was not found!\n", line.substr(line.find('\n')));
    }
}

void LineParser::ParseKeyLine(std::string_view line) {
    const std::size_t separator = FindIn(Separators, line, 0);
    if (separator == line.size()) {
        Fail("No \"=\" or \":\" sign found!\n", line);
        return;
    }
    ParseTag(line.substr(0, separator), line[separator]);
    if (!Errors.empty()) {
        return;
    }
    ParseContent(line.substr(separator + 1));
    if (!Errors.empty()) {
        return;
    }
    if (Tag.IsArray) {
        StoreArrayElement();
    } else {
        StoreKey();
    }
}

void LineParser::ParseTag(std::string_view text, char separator) {
    const std::string_view trimmed = WithoutTrailingBlanks(text);
    Tag.IsArray = trimmed.ends_with(']') && trimmed.find('[') != std::string_view::npos;
    Tag.Index.clear();
    Tag.ExplicitIndex = Tag.IsArray && !trimmed.ends_with("[]");
    if (Tag.ExplicitIndex) {
        Tag.Index = SplitTokens(trimmed, "[").at(1);
        Tag.Index.pop_back();
    }

    Tag.Name.clear();
    std::size_t i = 0;
    while (true) {
        const std::size_t run = i;
        i = FindIn(TagStops, text, i);
        Tag.Name.append(text, run, i - run);
        if (i == text.size() || (text[i] == '[' && Tag.IsArray)) {
            break;
        }
        const char c = text[i];
        ++i;
        if (c == ' ') {
            continue;
        }
        if (c == ']' && Tag.IsArray) {
            Tag.Name += c;
            continue;
        }
        Fail(c == '['   ? "Start section tag within key tag!\n"
             : c == ']' ? "Close section tag within key tag!\n"
                        : "Found comment tag within key tag!\n",
             text.substr(i - 1));
        break;
    }
    if (!Errors.empty() || text.empty()) {
        Fail(separator == '=' ? "Key end tag (\"=\" sign) was not found!\n"
                              : "Key end tag (\":\" sign) was not found!\n",
             text.substr(text.size()));
    }
}

void LineParser::ParseContent(std::string_view text) {
    Content.Value.clear();
    Content.Quoted = false;
    Content.HasComment = false;
    Content.Comment = {};

    std::size_t gap = 0; // behind the first space that was dropped behind something
    std::size_t i = 0;
    while (true) {
        const std::size_t run = i;
        i = FindIn(BareStops, text, i);
        Content.Value.append(text, run, i - run);
        const char c = text[i];
        ++i;
        switch (c) {
        case ' ':
            gap = gap == 0 && !Content.Value.empty() ? Content.Value.size() : gap;
            break;
        case '"':
        case '\'':
            i = ParseString(text, i);
            if (!Errors.empty()) {
                return;
            }
            break;
        case '[':
            Fail("Start section tag within value tag!\n", text.substr(i - 1));
            return;
        case ']':
            Fail("Close section tag within value tag!\n", text.substr(i - 1));
            return;
        default:
            if (c != '\n') {
                Content.HasComment = true;
                Content.Comment = WithoutLeadingSpace(FirstLine(text.substr(i)));
            }
            if (gap != 0 && gap != Content.Value.size()) {
                NoteOddity("Spaces outside of quotes are dropped.", text);
            }
            return;
        }
    }
}

std::size_t LineParser::ParseString(std::string_view text, std::size_t i) {
    const char quote = text[i - 1];
    bool keptSince = false; // anything, since the string was opened or since an escape in it
    while (true) {
        const std::size_t run = i;
        i = FindIn(StringStops, text, i);
        Content.Value.append(text, run, i - run);
        keptSince = keptSince || i != run;
        const char c = text[i];
        ++i;
        if (c == '\n') {
            Fail(keptSince ? "String end tag not defined!\n"
                           : "Value end tag (New line) was not found!\n",
                 text.substr(i - 1));
            return i;
        }
        if (c == quote) {
            Content.Quoted = true;
            return i;
        }
        keptSince = c != '\\' || (text[i] != quote && text[i] != '\\');
        Content.Value += keptSince ? c : text[i];
        i += keptSince ? 0 : 1;
    }
}

void LineParser::AddGenerated(KeyKind kind, std::string_view prefix,
                              std::uint32_t IniSection::*count, std::string_view text) {
    IniSection& section = CurrentSection();
    const std::string name = GeneratedName(prefix, ++(section.*count));
    if (LocateKey(section, name) == section.Keys.size()) {
        AppendEntry(section.Keys, section.KeyIndex, kind, name, text);
    }
}

void LineParser::StoreKey() {
    IniSection& section = CurrentSection();
    const std::size_t position = LocateKey(section, Tag.Name);
    if (position != section.Keys.size()) {
        NoteOddity("The section has this key before; what stands here counts.", Lines->Line());
    }
    StoreValue(section, position, Tag.Name, Content.Value, Content.Quoted)
        .SetKeyComment(Content.Comment);
}

void LineParser::StoreArrayElement() {
    IniSection& section = CurrentSection();
    const std::size_t position = LocateKey(section, Tag.Name);
    IniKey& array = ArrayAt(section, position, Tag.Name, Tag.ExplicitIndex);
    if (array.Elements.empty()) {
        Arrays.push_back({*Section, position});
    }
    if (Tag.Index.empty()) {
        Tag.Index = NextElement(array);
    }
    StoreElement(array,
                 {Tag.Index, Content.Value, Content.Quoted, Content.HasComment, Content.Comment},
                 ComparisonCount);
}

IniSection& LineParser::CurrentSection() {
    if (!Section) {
        Section = Document.SectionIndex.Locate(Document.Sections, SectionName, ComparisonCount);
        if (*Section == Document.Sections.size()) {
            IniSection& section = Document.Sections.emplace_back();
            section.Name = SectionName;
            section.Keys.reserve(ExpectedEntries());
            Document.SectionIndex.Appended(Document.Sections);
        }
    }
    return Document.Sections[*Section];
}

std::size_t LineParser::LocateKey(IniSection& section, std::string_view name) {
    return section.KeyIndex.Locate(section.Keys, name, ComparisonCount);
}

std::size_t LineParser::ExpectedEntries() {
    if (Lines == nullptr || Lines->Start() < EntriesAhead) {
        return 0;
    }
    std::string_view text = Lines->Rest();
    EntriesAhead = Lines->Start();
    if (IsHeader(FirstLine(text))) {
        text.remove_prefix(std::min(FirstLine(text).size() + 1, text.size()));
    }
    std::size_t entries = 0;
    bool isEnd = CountEntries(text, entries, EntriesAhead);
    for (std::size_t part = 0; part < Ahead.size() && !isEnd; ++part) {
        isEnd = CountEntries(Ahead[part], entries, EntriesAhead);
    }
    return entries;
}

void LineParser::Fail(std::string_view message, std::string_view where) {
    Errors += message;
    message.remove_suffix(1);
    Note(Severity::Error, message, where);
}

void LineParser::NoteOddity(std::string_view message, std::string_view where) {
    if (WithOddities) {
        Note(Severity::Oddity, message, where);
    }
}

void LineParser::Note(Severity kind, std::string_view message, std::string_view where) {
    const auto offset = static_cast<std::size_t>(where.data() - Lines->Line().data());
    const TextPosition position = Lines->PositionOf(offset);
    Diagnostics.push_back({kind, position.Line, position.Column, std::string(message)});
}

void LineParser::ReleaseReserves() {
    const auto release = [](auto& list, NameIndex& index) {
        if (list.capacity() - list.size() > list.size() / 8) {
            list.shrink_to_fit();
            index.Refresh(list);
        }
    };
    for (const ArrayPlace& place : Arrays) {
        IniKey& array = Document.Sections[place.Section].Keys[place.Position];
        release(array.Elements.List(), array.Elements.Index());
    }
    for (IniSection& section : Document.Sections) {
        release(section.Keys, section.KeyIndex);
    }
    release(Document.Sections, Document.SectionIndex);
}

} // namespace velINI::Internal
