#include "velini/internal/LineParser.h"

#include "velini/Text.h"

#include <algorithm>
#include <array>
#include <iostream>
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

constexpr ByteSet LeadingBlanks = MakeByteSet(" \t\r\n");
constexpr ByteSet Separators = MakeByteSet("=:");
constexpr ByteSet CommentSigns = MakeByteSet(";#");

/// What a key's name is not simply made of.
constexpr ByteSet TagStops = MakeByteSet(" [];#");

/// The characters of a value that are not simply kept, outside and inside of a string. A value ends
/// at the newline at the latest.
constexpr ByteSet BareStops = MakeByteSet(" []\"';#\n");
constexpr ByteSet StringStops = MakeByteSet("\"'\\\n");

bool Contains(const ByteSet& set, char c) { return set[static_cast<unsigned char>(c)]; }

/// The first position from `position` on whose byte is in the set, the size when there is none.
std::size_t FindIn(const ByteSet& set, std::string_view text, std::size_t position) {
    while (position < text.size() && !Contains(set, text[position])) {
        ++position;
    }
    return position;
}

std::string_view WithoutLeadingBlanks(std::string_view line) {
    std::size_t start = 0;
    while (start < line.size() && Contains(LeadingBlanks, line[start])) {
        ++start;
    }
    return line.substr(start);
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    while (text.ends_with(' ') || text.ends_with('\t')) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view WithoutLeadingSpace(std::string_view text) {
    return text.starts_with(' ') ? text.substr(1) : text;
}

bool IsHeader(std::string_view line) { return WithoutLeadingBlanks(line).starts_with('['); }

/// What stands in front of the first newline.
std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

} // namespace

LineParser::LineParser(velINIStream& document, const std::vector<std::string_view>& lines)
    : document_(document), lines_(lines) {}

void LineParser::Parse() {
    ReserveSections();
    for (; error_.empty() && line_ < lines_.size(); ++line_) {
        ParseLine(WithoutLeadingBlanks(lines_[line_]));
    }
    if (!error_.empty()) {
        std::cout << "Error while reading INI file: " << error_ << '\n';
    }
    CurrentSection();
    ReleaseReserves();
}

void LineParser::ParseLine(std::string_view line) {
    if (line.empty()) {
        AddEmptyLine();
        return;
    }
    if (Contains(CommentSigns, line.front())) {
        AddComment(WithoutLeadingSpace(line.substr(1, line.size() - 2)));
    } else if (line.front() == '[') {
        ParseHeader(line);
    } else {
        ParseKeyLine(line);
    }
}

void LineParser::ParseHeader(std::string_view line) {
    sectionName_.clear();
    section_.reset();
    bool open = true;
    for (std::size_t i = 1; line[i] != '\n'; ++i) {
        const char c = line[i];
        if (c == '[') {
            error_ += "New section started within section tag!\n";
            break;
        }
        if (Contains(CommentSigns, c)) {
            if (open) {
                error_ += "Found comment tag within section tag!\n";
            } else {
                const std::string_view comment = FirstLine(line.substr(i + 1));
                CurrentSection().SetSectionComment(WithoutLeadingSpace(comment));
            }
            break;
        }
        if (c == ']') {
            open = false;
        } else if (c != ' ') {
            sectionName_ += c;
        }
    }
    if (open) {
        error_ += "Section end tag was not found!\n";
    }
}

void LineParser::ParseKeyLine(std::string_view line) {
    const std::size_t separator = FindIn(Separators, line, 0);
    if (separator == line.size()) {
        error_ += "No \"=\" or \":\" sign found!\n";
        return;
    }
    ParseTag(line.substr(0, separator), line[separator]);
    if (!error_.empty()) {
        return;
    }
    ParseContent(line.substr(separator + 1));
    if (!error_.empty()) {
        return;
    }
    if (tag_.IsArray) {
        StoreArrayElement();
    } else {
        StoreKey();
    }
}

void LineParser::ParseTag(std::string_view text, char separator) {
    const std::string_view trimmed = WithoutTrailingBlanks(text);
    tag_.IsArray = trimmed.ends_with(']') && trimmed.find('[') != std::string_view::npos;
    tag_.Index.clear();
    tag_.ExplicitIndex = tag_.IsArray && !trimmed.ends_with("[]");
    if (tag_.ExplicitIndex) {
        tag_.Index = SplitTokens(trimmed, "[").at(1);
        tag_.Index.pop_back();
    }

    tag_.Name.clear();
    std::size_t i = 0;
    while (true) {
        const std::size_t run = i;
        i = FindIn(TagStops, text, i);
        tag_.Name.append(text, run, i - run);
        if (i == text.size() || (text[i] == '[' && tag_.IsArray)) {
            break;
        }
        const char c = text[i];
        ++i;
        if (c == ' ') {
            continue;
        }
        if (c == ']' && tag_.IsArray) {
            tag_.Name += c;
            continue;
        }
        error_ += c == '['   ? "Start section tag within key tag!\n"
                  : c == ']' ? "Close section tag within key tag!\n"
                             : "Found comment tag within key tag!\n";
        break;
    }
    if (!error_.empty() || text.empty()) {
        error_ += "Key end tag (\"";
        error_ += separator;
        error_ += "\" sign) was not found!\n";
    }
}

void LineParser::ParseContent(std::string_view text) {
    content_.Value.clear();
    content_.Quoted = false;
    content_.HasComment = false;
    content_.Comment = {};

    bool inString = false;
    char quote = '\0';
    bool keptSince = false; // anything, since the string was opened or since an escape in it
    std::size_t i = 0;
    while (true) {
        const ByteSet& stops = inString ? StringStops : BareStops;
        const std::size_t run = i;
        i = FindIn(stops, text, i);
        if (i != run) {
            content_.Value.append(text, run, i - run);
            keptSince = true;
        }

        const char c = text[i];
        ++i;
        if (inString) {
            if (c == '\n') {
                error_ += keptSince ? "String end tag not defined!\n"
                                    : "Value end tag (New line) was not found!\n";
                return;
            }
            if (c == quote) {
                inString = false;
                content_.Quoted = true;
            } else if (c == '\\' && (text[i] == quote || text[i] == '\\')) {
                content_.Value += text[i];
                ++i;
                keptSince = false;
            } else {
                content_.Value += c;
                keptSince = true;
            }
            continue;
        }
        switch (c) {
        case ' ':
            break;
        case '"':
        case '\'':
            inString = true;
            quote = c;
            keptSince = false;
            break;
        case '[':
            error_ += "Start section tag within value tag!\n";
            return;
        case ']':
            error_ += "Close section tag within value tag!\n";
            return;
        case '\n':
            return;
        default:
            content_.HasComment = true;
            content_.Comment = WithoutLeadingSpace(FirstLine(text.substr(i)));
            return;
        }
    }
}

void LineParser::AddEmptyLine() {
    IniSection& section = CurrentSection();
    ++section.EmptyLineCount;
    AddGenerated(section, KeyKind::EmptyLine,
                 GeneratedName(EmptyLinePrefix, section.EmptyLineCount), {});
}

void LineParser::AddComment(std::string_view text) {
    IniSection& section = CurrentSection();
    ++section.CommentCount;
    AddGenerated(section, KeyKind::Comment, GeneratedName(CommentPrefix, section.CommentCount),
                 text);
}

void LineParser::AddGenerated(IniSection& section, KeyKind kind, std::string_view name,
                              std::string_view text) {
    if (LocateKey(section, name) == section.Keys.size()) {
        AppendEntry(section.Keys, section.KeyIndex, kind, name, text);
    }
}

void LineParser::StoreKey() {
    IniSection& section = CurrentSection();
    StoreValue(section, LocateKey(section, tag_.Name), tag_.Name, content_.Value, content_.Quoted)
        .SetKeyComment(content_.Comment);
}

void LineParser::StoreArrayElement() {
    IniSection& section = CurrentSection();
    const std::size_t position = LocateKey(section, tag_.Name);
    IniKey& array = ArrayAt(section, position, tag_.Name, tag_.ExplicitIndex);
    if (array.Elements.empty()) {
        array.Elements.reserve(ExpectedElements());
        arrays_.push_back({*section_, position});
    }
    if (tag_.Index.empty()) {
        tag_.Index = NextElement(array);
    }
    StoreElement(
        array, {tag_.Index, content_.Value, content_.Quoted, content_.HasComment, content_.Comment},
        comparisons_);
}

IniSection& LineParser::CurrentSection() {
    if (!section_) {
        section_ = document_.SectionIndex.Locate(document_.Sections, sectionName_, comparisons_);
        if (*section_ == document_.Sections.size()) {
            IniSection& section = document_.Sections.emplace_back();
            section.Name = sectionName_;
            section.Keys.reserve(ExpectedEntries());
            document_.SectionIndex.Appended(document_.Sections);
        }
    }
    return document_.Sections[*section_];
}

std::size_t LineParser::LocateKey(IniSection& section, std::string_view name) {
    return section.KeyIndex.Locate(section.Keys, name, comparisons_);
}

void LineParser::ReserveSections() {
    const auto headers = std::count_if(lines_.begin(), lines_.end(), IsHeader);
    document_.Sections.reserve(document_.Sections.size() + static_cast<std::size_t>(headers) + 1);
}

std::size_t LineParser::ExpectedEntries() const {
    std::size_t ahead = line_;
    if (ahead < lines_.size() && IsHeader(lines_[ahead])) {
        ++ahead;
    }
    std::size_t entries = 0;
    for (; ahead < lines_.size() && !IsHeader(lines_[ahead]); ++ahead) {
        if (lines_[ahead].find('[') == std::string_view::npos) {
            ++entries;
        }
    }
    return entries;
}

std::size_t LineParser::ExpectedElements() const {
    const std::string_view begin = lines_[line_].substr(0, lines_[line_].find('[') + 1);
    std::size_t ahead = line_ + 1;
    while (ahead < lines_.size() && lines_[ahead].starts_with(begin)) {
        ++ahead;
    }
    return ahead - line_;
}

void LineParser::ReleaseReserves() {
    const auto release = [](auto& list, NameIndex& index) {
        if (list.capacity() - list.size() > list.size() / 8) {
            list.shrink_to_fit();
            index.Refresh(list);
        }
    };
    for (const ArrayPlace& place : arrays_) {
        IniKey& array = document_.Sections[place.Section].Keys[place.Position];
        release(array.Elements.List(), array.Elements.Index());
    }
    for (IniSection& section : document_.Sections) {
        release(section.Keys, section.KeyIndex);
    }
    release(document_.Sections, document_.SectionIndex);
}

} // namespace velINI::Internal
