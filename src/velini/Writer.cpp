#include "velini/Text.h"
#include "velini/VelINIStream.h"
#include "velini/internal/FileAccess.h"
#include "velini/internal/Names.h"
#include "velini/internal/WideText.h"

#include <array>
#include <cstddef>
#include <iostream>
#include <optional>
#include <stdexcept>

namespace velINI {
namespace {

using namespace std::string_view_literals;

// By TextEncoding.
constexpr std::array<std::string_view, 6> ByteOrderMarks = {
    ""sv, "\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv, "\xFF\xFE\0\0"sv, "\0\0\xFE\xFF"sv,
};

void WriteBytes(std::string_view bytes, std::FILE* file) {
    // Failed writes go undetected, by the library's contract.
    static_cast<void>(std::fwrite(bytes.data(), 1, bytes.size(), file));
}

template <class Unit>
std::string BytesOf(std::basic_string_view<Unit> units, bool bigEndian) {
    std::string bytes;
    bytes.reserve(units.size() * sizeof(Unit));
    for (const Unit unit : units) {
        for (std::size_t byte = 0; byte < sizeof(Unit); ++byte) {
            const std::size_t place = bigEndian ? sizeof(Unit) - 1 - byte : byte;
            bytes += static_cast<char>(unit >> (8 * place) & 0xFF);
        }
    }
    return bytes;
}

bool IsWide(TextEncoding encoding) {
    return encoding != TextEncoding::None && encoding != TextEncoding::Utf8;
}

// The text in one of the wide encodings; nothing for a number above them.
std::string WideBytes(std::string_view text, TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::Utf16LittleEndian:
    case TextEncoding::Utf16BigEndian:
        return BytesOf<char16_t>(Internal::Utf16FromUtf8(text),
                                 encoding == TextEncoding::Utf16BigEndian);
    case TextEncoding::Utf32LittleEndian:
    case TextEncoding::Utf32BigEndian:
        return BytesOf<char32_t>(Internal::Utf32FromUtf8(text),
                                 encoding == TextEncoding::Utf32BigEndian);
    default:
        return {};
    }
}

// Reduces each escaped quote and backslash from `begin` on to the character itself.
void UnescapeFrom(std::string& text, std::size_t begin) {
    std::size_t out = begin;
    for (std::size_t in = begin; in < text.size(); ++in, ++out) {
        if (text[in] == '\\' && (text[in + 1] == '"' || text[in + 1] == '\\')) {
            ++in;
        }
        text[out] = text[in];
    }
    text.resize(out);
}

// Writes one document by handing the bytes of one entry after the other to `Put`, a function of a
// std::string_view. The line end of an entry is written by what comes behind it.
template <class Sink>
class DocumentWriter {
public:
    DocumentWriter(const velINIStream& document, const Sink& put, bool spacing,
                   TextEncoding encoding)
        : Document(document),
          Put(put),
          Space(spacing ? " " : ""),
          LastLineEnd(spacing ? std::string_view(document.NewLine) : std::string_view()),
          Encoding(encoding) {}

    void Write() {
        const auto mark = static_cast<std::size_t>(Encoding);
        if (mark < ByteOrderMarks.size()) {
            Put(ByteOrderMarks[mark]);
        }
        for (const IniSection& section : Document.Sections) {
            WriteSection(section);
        }
    }

private:
    void WriteSection(const IniSection& section) {
        const bool hasHeader = HasHeader(section);
        if (hasHeader) {
            WriteHeader(section);
        }
        std::string_view prefix = hasHeader ? std::string_view(Document.NewLine) : "";
        for (const IniKey& key : section.Keys) {
            const std::string_view lineEnd =
                &key == &section.Keys.back() ? LastLineEnd : std::string_view();
            WriteKey(key, prefix, lineEnd);
            prefix = Document.NewLine;
        }
    }

    // The second name is one that older files use.
    static bool HasHeader(const IniSection& section) {
        return section.Name != Internal::GlobalSection && section.Name != "vi_global";
    }

    void WriteHeader(const IniSection& section) {
        if (&section != &Document.Sections.front() && TextWritten) {
            Text += Document.NewLine;
        }
        Text += '[';
        AppendEscaped(Text, section.Name);
        Text += ']';
        AppendComment(section.Comment);
        if (section.Keys.empty()) {
            Text += LastLineEnd;
        }
        Flush();
    }

    void WriteKey(const IniKey& key, std::string_view prefix, std::string_view lineEnd) {
        switch (key.Kind) {
        case KeyKind::EmptyLine:
            Text += prefix;
            WriteEnd(key, {});
            break;
        case KeyKind::Comment:
            Text += prefix;
            AppendCommentText(key);
            WriteEnd(key, lineEnd);
            break;
        case KeyKind::Value:
            Text += prefix;
            AppendEscaped(Text, key.Name);
            AppendValue(key);
            WriteEnd(key, lineEnd);
            break;
        case KeyKind::Array:
            for (const IniKey& element : key.Elements) {
                const bool isLast = &element == &key.Elements.back();
                Text += prefix;
                AppendEscaped(Text, key.Name);
                Text += '[';
                AppendEscaped(Text, key.ExplicitIndex ? element.Name.Text() : "");
                Text += ']';
                AppendValue(element);
                WriteEnd(element, isLast ? lineEnd : std::string_view());
            }
            break;
        }
    }

    void WriteEnd(const IniKey& entry, std::string_view lineEnd) {
        AppendComment(entry.Comment);
        Text += lineEnd;
        Flush();
    }

    void AppendValue(const IniKey& key) {
        Text += Space;
        Text += Document.AssignCharacter;
        Text += Space;
        const std::size_t quotes = key.Quoted ? 1 : 0;
        Text.append(quotes, Document.QuoteCharacter);
        AppendEscaped(Text, key.Value);
        Text.append(quotes, Document.QuoteCharacter);
    }

    void AppendCommentText(const IniKey& key) {
        Text += Document.CommentCharacter;
        Text += ' ';
        const std::size_t begin = Text.size();
        AppendEscaped(Text, key.Value);
        if (key.Verbatim) {
            UnescapeFrom(Text, begin);
        }
    }

    void AppendComment(const OptionalText& comment) {
        if (comment) {
            Text += Space;
            Text += Document.CommentCharacter;
            Text += ' ';
            AppendEscaped(Text, *comment);
        }
    }

    void Flush() {
        if (IsWide(Encoding)) {
            Put(WideBytes(Text, Encoding));
        } else {
            Put(Text);
        }
        TextWritten = TextWritten || !Text.empty();
        Text.clear();
    }

    const velINIStream& Document;
    const Sink& Put;
    std::string_view Space;       // around what `spacing` sets apart
    std::string_view LastLineEnd; // behind the last entry of a section
    TextEncoding Encoding;

    std::string Text; // of the header or the entry at hand
    bool TextWritten = false;
};

// What WriteFile writes; nothing when a text of the document is not UTF-8.
std::optional<std::string> TextOf(const velINIStream& document, bool spacing,
                                  TextEncoding encoding) {
    std::string text;
    const auto put = [&](std::string_view bytes) { text += bytes; };
    try {
        DocumentWriter(document, put, spacing, encoding).Write();
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
    return text;
}

} // namespace

void WriteEncoded(std::string_view text, std::FILE* file, TextEncoding encoding) {
    if (IsWide(encoding)) {
        WriteBytes(WideBytes(text, encoding), file);
    } else {
        WriteBytes(text, file);
    }
}

bool velINIStream::WriteFile(const std::string& path, bool spacing, TextEncoding encoding) const {
    const Internal::FileHandle file = Internal::OpenForWriting(path);
    if (file == nullptr) {
        std::cout << "Unable to write INI file: " << path << '\n';
        return false;
    }
    const auto put = [&](std::string_view bytes) { WriteBytes(bytes, file.get()); };
    DocumentWriter(*this, put, spacing, encoding).Write();
    return true;
}

template <std::same_as<std::filesystem::path> Path>
bool velINIStream::WriteFile(const Path& path, bool spacing, TextEncoding encoding) const {
    try {
        return WriteFile(Internal::Utf8Of(path), spacing, encoding);
    } catch (const std::runtime_error&) {
        return false;
    }
}
template bool velINIStream::WriteFile(const std::filesystem::path& path, bool spacing,
                                      TextEncoding encoding) const;

std::string velINIStream::WriteText(bool spacing, TextEncoding encoding) const {
    return TextOf(*this, spacing, encoding).value_or("");
}

bool velINIStream::WriteFileAtomically(const std::string& path, bool spacing, TextEncoding encoding,
                                       std::string* reason) const {
    const std::filesystem::path wide(std::u8string(path.begin(), path.end()));
    return WriteFileAtomically(wide, spacing, encoding, reason);
}

template <std::same_as<std::filesystem::path> Path>
bool velINIStream::WriteFileAtomically(const Path& path, bool spacing, TextEncoding encoding,
                                       std::string* reason) const {
    const std::optional<std::string> text = TextOf(*this, spacing, encoding);
    const std::string failure =
        text ? Internal::ReplaceFile(path, *text) : "A text of the document is not UTF-8.";
    if (reason != nullptr) {
        *reason = failure;
    }
    return failure.empty();
}
template bool velINIStream::WriteFileAtomically(const std::filesystem::path& path, bool spacing,
                                                TextEncoding encoding, std::string* reason) const;

} // namespace velINI
