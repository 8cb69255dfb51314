// Reads arbitrary bytes, writes the document and reads that again. What comes back must be the same
// in every encoding, and must be what was written, except where the dialect cannot say what the
// document holds. Survives lists those cases and Expected tells the small changes: everything else
// comes back unchanged.

#include "FuzzSupport.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

using velINI::IniKey;
using velINI::IniSection;
using velINI::KeyKind;
using velINI::TextEncoding;
using velINI::velINIStream;
using velINI::Fuzzing::Outcome;
using velINI::Fuzzing::Require;

namespace {

constexpr std::size_t SmallestFile = 6;

constexpr std::array<TextEncoding, 6> Encodings = {TextEncoding::None,
                                                   TextEncoding::Utf8,
                                                   TextEncoding::Utf16LittleEndian,
                                                   TextEncoding::Utf16BigEndian,
                                                   TextEncoding::Utf32LittleEndian,
                                                   TextEncoding::Utf32BigEndian};

// The length of the UTF-8 sequence at the start of the text, 0 for a broken one. Surrogates,
// overlong forms and too large values are broken.
std::size_t SequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const auto follows = [&](std::size_t i) { return byte(i) >= 0x80 && byte(i) <= 0xBF; };
    if (byte(0) < 0x80) {
        return 1;
    }
    if (byte(0) >= 0xC2 && byte(0) <= 0xDF) {
        return follows(1) ? 2 : 0;
    }
    if (byte(0) >= 0xE0 && byte(0) <= 0xEF) {
        const bool overlong = byte(0) == 0xE0 && byte(1) < 0xA0;
        const bool surrogate = byte(0) == 0xED && byte(1) > 0x9F;
        return follows(1) && follows(2) && !overlong && !surrogate ? 3 : 0;
    }
    if (byte(0) >= 0xF0 && byte(0) <= 0xF4) {
        const bool overlong = byte(0) == 0xF0 && byte(1) < 0x90;
        const bool tooLarge = byte(0) == 0xF4 && byte(1) > 0x8F;
        return follows(1) && follows(2) && follows(3) && !overlong && !tooLarge ? 4 : 0;
    }
    return 0;
}

// In quotes: the reader decodes only the hexadecimal escapes and those of quote and backslash, and
// what was no UTF-8 comes back as UTF-8.
bool SurvivesQuoted(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        const bool namedEscape = text.front() >= '\b' && text.front() <= '\r';
        if (length == 0 || namedEscape) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

// Outside of quotes it decodes only the hexadecimal escapes.
bool SurvivesBare(std::string_view text) {
    return SurvivesQuoted(text) && text.find_first_of("\"\\") == std::string_view::npos;
}

bool SurvivesComment(const std::optional<std::string>& comment) {
    return !comment || SurvivesBare(*comment);
}

// Only an array's new element can hold a value without quotes that needs some.
bool SurvivesValue(const IniKey& key) {
    if (key.Quoted) {
        return SurvivesQuoted(key.Value);
    }
    return SurvivesBare(key.Value) && key.Value.find_first_of(" []';#") == std::string::npos;
}

bool HasGeneratedName(const IniKey& key) {
    return key.Name.starts_with("VI_EL_") || key.Name.starts_with("VI_C_");
}

bool SurvivesArray(const IniKey& array) {
    for (const IniKey& element : array.Elements) {
        if (!SurvivesValue(element) || !SurvivesComment(element.Comment)) {
            return false;
        }
    }
    // A plain key of the same name has left its mark on the array, where nothing writes it.
    return array.Value.empty() && !array.Comment && SurvivesBare(array.Name);
}

bool SurvivesEntry(const IniKey& key) {
    switch (key.Kind) {
    case KeyKind::EmptyLine:
    case KeyKind::Comment: {
        // Keys that bear the name of a blank line or a comment turn it into something else.
        const bool untouched = !key.Quoted && !key.Comment && key.Elements.empty() &&
                               (key.Kind == KeyKind::Comment || key.Value.empty());
        return untouched && SurvivesBare(key.Value);
    }
    case KeyKind::Value:
        return !HasGeneratedName(key) && key.Elements.empty() && SurvivesBare(key.Name) &&
               SurvivesValue(key) && SurvivesComment(key.Comment);
    case KeyKind::Array:
        return !HasGeneratedName(key) && SurvivesArray(key);
    }
    return false;
}

// The global section has no header to come into being by, or to bear a comment, and runs into the
// section in front of it. Its first entry has no line end in front, the elements of an array there
// have none at all, and a blank line there is nothing but the line end of the next entry.
bool SurvivesGlobal(const IniSection& global, bool isFirst) {
    if (!isFirst || global.Comment || global.Keys.empty()) {
        return false;
    }
    const IniKey& first = global.Keys.front();
    const bool lonelyBlank = first.Kind == KeyKind::EmptyLine && global.Keys.size() == 1;
    return !lonelyBlank && first.Elements.size() <= 1;
}

bool SurvivesSection(const velINIStream& document, const IniSection& section) {
    if (section.Name == "vi_global") {
        return false;
    }
    if (section.Name == "VI_Global" &&
        !SurvivesGlobal(section, &section == &document.Sections.front())) {
        return false;
    }
    // A header alone makes a section only at the end of a file.
    const bool isLast = &section == &document.Sections.back();
    if (section.Keys.empty() && !section.Comment && !isLast) {
        return false;
    }
    for (const IniKey& key : section.Keys) {
        if (!SurvivesEntry(key)) {
            return false;
        }
    }
    return SurvivesBare(section.Name) && SurvivesComment(section.Comment);
}

bool Survives(const velINIStream& document) {
    return std::all_of(document.begin(), document.end(), [&](const IniSection& section) {
        return SurvivesSection(document, section);
    });
}

// Arrays are written with empty brackets, and their elements are numbered and stored anew.
void ExpectNumbered(IniKey& array) {
    array.Quoted = false;
    array.NextIndex = static_cast<std::uint32_t>(array.Elements.size() - 1);
    for (std::size_t i = 0; i < array.Elements.size(); ++i) {
        array.Elements[i].Name = std::to_string(i);
        array.Elements[i].Quoted = array.Elements[i].Quoted && array.Elements[i].Comment;
    }
}

velINIStream Expected(const velINIStream& written, bool spacing) {
    velINIStream expected = written;
    for (IniSection& section : expected.Sections) {
        for (IniKey& key : section.Keys) {
            if (key.Kind == KeyKind::Array) {
                ExpectNumbered(key);
            }
        }
        const bool isLast = &section == &expected.Sections.back();
        const bool endsBlank =
            !section.Keys.empty() && section.Keys.back().Kind == KeyKind::EmptyLine;
        if (isLast && endsBlank) {
            section.Keys.pop_back(); // its line end is the end of the file
        } else if (!isLast && spacing && !endsBlank) {
            section.AddEmptyLine("VI_EL_" + std::to_string(section.EmptyLineCount + 1),
                                 velINI::InsertPosition::End, std::nullopt);
        }
    }
    return expected;
}

void RequireSame(const std::vector<IniKey>& left, const std::vector<IniKey>& right) {
    Require(left.size() == right.size(), "as many entries");
    for (std::size_t i = 0; i < left.size(); ++i) {
        Require(left[i].Kind == right[i].Kind, "the same kind");
        Require(left[i].Name == right[i].Name, "the same name");
        Require(left[i].Value == right[i].Value, "the same value");
        Require(left[i].Comment == right[i].Comment, "the same comment behind an entry");
        Require(left[i].Quoted == right[i].Quoted, "the same quoting");
        Require(left[i].NextIndex == right[i].NextIndex, "the same numbering");
        RequireSame(left[i].Elements, right[i].Elements);
    }
}

void RequireSame(const velINIStream& left, const velINIStream& right) {
    Require(left.Sections.size() == right.Sections.size(), "as many sections");
    for (std::size_t i = 0; i < left.Sections.size(); ++i) {
        Require(left.Sections[i].Name == right.Sections[i].Name, "the same section");
        Require(left.Sections[i].Comment == right.Sections[i].Comment, "the same header comment");
        RequireSame(left.Sections[i].Keys, right.Sections[i].Keys);
    }
}

// False when the document holds text that is not UTF-8.
bool Write(const velINIStream& document, const std::string& path, bool spacing,
           TextEncoding encoding) {
    try {
        Require(document.WriteFile(path, spacing, encoding), "the temporary folder can be written");
        return true;
    } catch (const std::runtime_error& error) {
        Require(std::string_view(error.what()) == "Invalid UTF-8 sequence!",
                "writing raises only one error");
        return false;
    }
}

void CheckRewriting(const velINIStream& document, bool spacing) {
    static const velINI::Fuzzing::ScratchFile output("output.ini");
    const std::string& path = output.Path();
    const bool survives = Survives(document);
    std::optional<velINIStream> reference;
    std::optional<Outcome> referenceOutcome;
    for (const TextEncoding encoding : Encodings) {
        if (!Write(document, path, spacing, encoding)) {
            Require(!survives, "a good document can be written");
            return;
        }
        velINIStream again;
        const Outcome outcome = velINI::Fuzzing::Read(again, path);
        if (outcome == Outcome::Refused) {
            Require(std::filesystem::file_size(path) < SmallestFile,
                    "only short files are refused");
            continue;
        }
        if (survives) {
            Require(outcome == Outcome::Read, "a good document can be read");
            RequireSame(Expected(document, spacing), again);
        }
        if (reference) {
            Require(outcome == *referenceOutcome, "all encodings have one fate");
            RequireSame(*reference, again);
        }
        reference = std::move(again);
        referenceOutcome = outcome;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velINIStream document;
    const std::string path = velINI::Fuzzing::StoreInput(data, size);
    if (velINI::Fuzzing::Read(document, path) != Outcome::Read) {
        return 0;
    }
    CheckRewriting(document, false);
    CheckRewriting(document, true);
    return 0;
}
