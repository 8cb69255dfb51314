#include "velini/VelINIStream.h"
#include "velini/internal/FileAccess.h"
#include "velini/internal/LineParser.h"
#include "velini/internal/LineReader.h"
#include "velini/internal/SourceText.h"

#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace velINI {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

/// Calls `read`. False for an error that it raises, which is told by the diagnostics already.
template <class Read>
bool WithoutRaising(const Read& read) {
    try {
        return read();
    } catch (const std::runtime_error&) { // escapes, wide encodings
    } catch (const std::logic_error&) {   // the names of elements
    }
    return false;
}

/// Raises what a bad escape in the text raises, before any of it is taken over.
void CheckEscapes(std::string_view text, std::vector<Diagnostic>& diagnostics) {
    if (text.find("\\x") == std::string_view::npos) {
        return;
    }
    Internal::LineReader lines(text);
    try {
        while (lines.Next()) {
        }
    } catch (const std::runtime_error& error) {
        const Internal::TextPosition position = lines.ErrorPosition();
        diagnostics.push_back({Severity::Error, position.Line, position.Column, error.what()});
        throw;
    }
}

} // namespace

bool velINIStream::ReadFile(const std::string& path) {
    diagnostics_.clear();
    std::optional<std::string> text;
    try {
        text = Internal::LoadSourceText(path, diagnostics_);
    } catch (const std::range_error&) {
        diagnostics_.push_back({Severity::Error, 0, 0, "The UTF-16 or UTF-32 text is malformed."});
        throw;
    }
    if (!text) {
        return false;
    }
    const std::string error = TakeOver(*text);
    if (!error.empty()) {
        std::cout << "Error while reading INI file: " << error << '\n';
    }
    return true;
}

bool velINIStream::ReadPath(const std::filesystem::path& path) {
    return WithoutRaising([&] { return ReadFile(Internal::Utf8Of(path)); });
}

bool velINIStream::ReadText(std::string_view text) {
    diagnostics_.clear();
    return WithoutRaising([&] {
        TakeOver(text.substr(text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0));
        return true;
    });
}

std::string velINIStream::TakeOver(std::string_view text) {
    CheckEscapes(text, diagnostics_);
    Internal::LineReader lines(text);
    Internal::LineParser parser(*this, lines, diagnostics_, NoteOddities);
    try {
        parser.Parse();
    } catch (const std::logic_error&) {
        const Internal::TextPosition position = lines.PositionOf(0);
        diagnostics_.push_back({Severity::Error, position.Line, position.Column,
                                "An element can only be numbered behind numbers."});
        throw;
    }
    return parser.Error();
}

} // namespace velINI
