#include "velini/VelINIStream.h"
#include "velini/internal/FileAccess.h"
#include "velini/internal/LineParser.h"
#include "velini/internal/LineReader.h"
#include "velini/internal/SourceText.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velINI {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// Calls `read`. False for an error that it raises, which is told by the diagnostics already.
template <class Read>
bool WithoutRaising(const Read& read) {
    try {
        return read();
    } catch (const std::runtime_error&) { // escapes, wide encodings
    } catch (const std::logic_error&) {   // the names of elements
    }
    return false;
}

// Calls `visit` with a reader for each part of a text, in order, and the number of the part; it
// goes on when all of the part was read.
template <class Visit>
void ForEachPart(const std::vector<std::string_view>& parts, const Visit& visit) {
    std::size_t offset = 0;
    std::size_t line = 1;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Internal::LineReader lines(parts[i], offset, line);
        if (!visit(lines, i)) {
            return;
        }
        offset += parts[i].size();
        line = lines.LineBehind();
    }
}

Diagnostic ErrorAt(const Internal::TextPosition& position, std::string_view message) {
    return {Severity::Error, position.Line, position.Column, std::string(message)};
}

// Raises what a bad escape in the text raises, before any of it is taken over.
void CheckEscapes(const std::vector<std::string_view>& parts,
                  std::vector<Diagnostic>& diagnostics) {
    const bool hasEscapes = std::any_of(parts.begin(), parts.end(), [](std::string_view part) {
        return part.find("\\x") != std::string_view::npos;
    });
    ForEachPart(parts, [&](Internal::LineReader& lines, std::size_t /*part*/) {
        try {
            while (hasEscapes && lines.Next()) {
            }
        } catch (const std::runtime_error& error) {
            diagnostics.push_back(ErrorAt(lines.ErrorPosition(), error.what()));
            throw;
        }
        return hasEscapes;
    });
}

} // namespace

bool velINIStream::ReadFile(const std::string& path) {
    LastDiagnostics.clear();
    std::optional<std::vector<std::string>> parts;
    try {
        parts = Internal::LoadSourceText(path, LastDiagnostics);
    } catch (const std::range_error&) {
        LastDiagnostics.push_back(ErrorAt({}, "The UTF-16 or UTF-32 text is malformed."));
        throw;
    }
    if (!parts) {
        return false;
    }
    const std::vector<std::string_view> views(parts->begin(), parts->end());
    const std::string error = TakeOver(views, *parts);
    if (!error.empty()) {
        std::cout << "Error while reading INI file: " << error << '\n';
    }
    return true;
}

template <std::same_as<std::filesystem::path> Path>
bool velINIStream::ReadFile(const Path& path) {
    return WithoutRaising([&] { return ReadFile(Internal::Utf8Of(path)); });
}
template bool velINIStream::ReadFile(const std::filesystem::path& path);

bool velINIStream::ReadText(std::string_view text) {
    LastDiagnostics.clear();
    text.remove_prefix(text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
    return WithoutRaising([&] {
        std::vector<std::string> none;
        TakeOver({text}, none);
        return true;
    });
}

std::string velINIStream::TakeOver(const std::vector<std::string_view>& parts,
                                   std::vector<std::string>& owned) {
    CheckEscapes(parts, LastDiagnostics);
    Internal::LineParser parser(*this, LastDiagnostics, NoteOddities);
    ForEachPart(parts, [&](Internal::LineReader& lines, std::size_t part) {
        try {
            parser.Parse(lines, std::span(parts).subspan(part + 1));
        } catch (const std::logic_error&) {
            LastDiagnostics.push_back(
                ErrorAt(lines.PositionOf(0), "An element can only be numbered behind numbers."));
            throw;
        }
        if (part < owned.size()) {
            std::string().swap(owned[part]); // the document grows in its place
        }
        return parser.Error().empty();
    });
    parser.Finish();
    return parser.Error();
}

} // namespace velINI
