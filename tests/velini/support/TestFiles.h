#pragma once

// Files and messages for the tests of the library.

#include "velini/VelINIStream.h"

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>

namespace velINI::Testing {

/// A folder of its own for each object, removed with all its content.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The UTF-8 path of a file in the folder.
    std::string PathOf(std::string_view name) const;

    /// Writes a file and returns its path.
    std::string Store(std::string_view name, std::string_view content) const;

private:
    std::filesystem::path Path;
};

std::string ContentOf(const std::string& path);

/// Collects what is printed on the standard output for as long as the object lives.
class PrintedText {
public:
    PrintedText();
    PrintedText(const PrintedText&) = delete;
    PrintedText& operator=(const PrintedText&) = delete;
    ~PrintedText();

    std::string Text() const { return Buffer.str(); }

private:
    std::ostringstream Buffer;
    std::streambuf* Previous;
};

struct ReadResult {
    bool Succeeded = false;
    std::string Printed;
    velINIStream Document;
};

/// Reads a file with this content.
ReadResult ReadText(std::string_view content);

/// Reads a file that has this line between others, and describes what came of it. The line must
/// not print anything.
std::string ReadLine(std::string_view line);

/// What the line prints.
std::string MessageOf(std::string_view line);

/// The content of the file that the document becomes.
std::string WrittenText(const velINIStream& document, bool spacing = false,
                        TextEncoding encoding = TextEncoding::None);

/// The entries in a short form: `name=value`, `name="quoted"`, `name[]{0=a, 1="b"}`, `(blank)` and
/// `(comment text)`, each with ` ;comment` behind it if it has one, joined by ` | `.
std::string Describe(const std::vector<IniKey>& entries);

/// The sections, each as `[name]` with its comment and its entries, joined by line ends.
std::string Describe(const velINIStream& document);

/// Bytes as text, for content with zero bytes in it.
template <std::size_t Size>
std::string Bytes(const char (&text)[Size]) { // NOLINT(modernize-avoid-c-arrays): a literal
    return std::string(text, Size - 1);
}

} // namespace velINI::Testing
