#include "velini/Commands.h"

#include "velini/VelINIStream.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string_view>

namespace velINI::Tool {
namespace {

constexpr std::string_view Usage =
    "Usage: velini check FILE...                    every error and oddity with its place\n"
    "       velini get FILE SECTION KEY [DEFAULT]   the value of a key\n"
    "       velini set FILE SECTION KEY VALUE       changes or adds a key, keeps the rest\n"
    "       velini list FILE [SECTION]              all keys: section, key and value\n"
    "       velini normalise FILE [TARGET]          the file in the form that the library writes\n"
    "\n"
    "The section in front of the first header is VI_Global. Status: 0 when all is well, 1 when\n"
    "something is wrong or there is no such key, 2 when a file cannot be read or written.\n";

// The library prints what it has to say of a file; here that is told once, with its place.
class SilencedOutput {
public:
    SilencedOutput() : Buffer(std::cout.rdbuf(nullptr)) {}
    SilencedOutput(const SilencedOutput&) = delete;
    SilencedOutput& operator=(const SilencedOutput&) = delete;
    ~SilencedOutput() {
        std::cout.rdbuf(Buffer);
        std::cout.clear();
    }

private:
    std::streambuf* Buffer;
};

std::filesystem::path PathOf(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

// Reads a file and tells what is wrong with it. False when it could not be read to its end.
bool Read(const std::string& file, velINIStream& document, std::ostream& errors) {
    bool isRead = false;
    {
        const SilencedOutput silenced;
        isRead = document.ReadFile(PathOf(file));
    }
    for (const Diagnostic& diagnostic : document.Diagnostics()) {
        const bool isError = diagnostic.Kind == Severity::Error;
        errors << file << ':';
        if (diagnostic.Line != 0) {
            errors << diagnostic.Line << ':' << diagnostic.Column << ':';
        }
        errors << (isError ? " error: " : " odd: ") << diagnostic.Message << '\n';
        isRead = isRead && !isError;
    }
    return isRead;
}

// The line end that the file has, in the first place that has one.
std::string NewLineOf(const std::string& file) {
    std::ifstream stream(PathOf(file), std::ios::binary);
    std::string line;
    const bool isFull = static_cast<bool>(std::getline(stream, line)) && !stream.eof();
    return isFull && !line.ends_with('\r') ? "\n" : "\r\n";
}

bool NeedsQuotes(std::string_view value) {
    return value.find_first_of(" []\"'\\;#") != std::string_view::npos;
}

// Gives the entries the marks with which the writer puts down what the reader found.
void Preserve(velINIStream& document) {
    for (IniSection& section : document) {
        for (IniKey& entry : section.Keys) {
            entry.Verbatim = entry.Kind == KeyKind::Comment;
            std::size_t number = 0;
            for (IniKey& element : entry) {
                element.Quoted = element.Quoted || NeedsQuotes(element.Value);
                entry.ExplicitIndex =
                    entry.ExplicitIndex || element.Name != std::to_string(number++);
            }
        }
    }
}

// The text of the document; nothing when reading it would not give the same document again.
std::optional<std::string> FaithfulText(const velINIStream& document, bool spacing) {
    const std::string text = document.WriteText(spacing);
    velINIStream again;
    if (!again.ReadText(text) || !again.Diagnostics().empty()) {
        return std::nullopt;
    }
    again.NewLine = document.NewLine;
    Preserve(again);
    const std::string textAgain = again.WriteText(spacing);
    return textAgain == text ? std::optional(text) : std::nullopt;
}

ExitStatus Check(std::span<const std::string> files, std::ostream& out, std::ostream& /*errors*/) {
    ExitStatus status = ExitStatus::Good;
    for (const std::string& file : files) {
        velINIStream document;
        document.NoteOddities = true;
        if (!Read(file, document, out) || !document.Diagnostics().empty()) {
            status = ExitStatus::Negative;
        }
    }
    return status;
}

ExitStatus Get(std::span<const std::string> words, std::ostream& out, std::ostream& errors) {
    velINIStream document;
    if (!Read(words[0], document, errors)) {
        return ExitStatus::Failed;
    }
    const std::optional<std::string> value = document.Get<std::string>(words[1], words[2]);
    if (!value && words.size() < 4) {
        return ExitStatus::Negative;
    }
    out << value.value_or(words.back()) << '\n';
    return ExitStatus::Good;
}

ExitStatus Set(std::span<const std::string> words, std::ostream& /*out*/, std::ostream& errors) {
    const std::string& file = words[0];
    const std::string& value = words[3];
    velINIStream document;
    const bool isThere = std::filesystem::exists(PathOf(file));
    if (isThere && !Read(file, document, errors)) {
        return ExitStatus::Failed;
    }
    if (isThere) {
        document.NewLine = NewLineOf(file);
    }
    document.SetValue(words[1], words[2], value, NeedsQuotes(value));
    Preserve(document);
    if (!FaithfulText(document, false)) {
        errors << file << ": cannot be written without changing more than this key\n";
        return ExitStatus::Failed;
    }
    std::string reason;
    if (!document.WriteFileAtomically(PathOf(file), false, TextEncoding::None, &reason)) {
        errors << file << ": " << reason << '\n';
        return ExitStatus::Failed;
    }
    return ExitStatus::Good;
}

ExitStatus List(std::span<const std::string> words, std::ostream& out, std::ostream& errors) {
    velINIStream document;
    if (!Read(words[0], document, errors)) {
        return ExitStatus::Failed;
    }
    bool isFound = words.size() < 2;
    for (const IniSection& section : document) {
        if (words.size() > 1 && section.Name != words[1]) {
            continue;
        }
        isFound = true;
        for (const IniKey& key : section) {
            if (key.Kind == KeyKind::Value) {
                out << section.Name << '\t' << key.Name << '\t' << key.Value << '\n';
            }
            for (const IniKey& element : key) {
                out << section.Name << '\t' << key.Name << '[' << element.Name << "]\t"
                    << element.Value << '\n';
            }
        }
    }
    return isFound ? ExitStatus::Good : ExitStatus::Negative;
}

ExitStatus Normalise(std::span<const std::string> words, std::ostream& out, std::ostream& errors) {
    velINIStream document;
    if (!Read(words[0], document, errors)) {
        return ExitStatus::Failed;
    }
    document.NewLine = NewLineOf(words[0]);
    Preserve(document);
    const std::optional<std::string> text = FaithfulText(document, false);
    if (!text) {
        errors << words[0] << ": cannot be written without changing what it says\n";
        return ExitStatus::Failed;
    }
    if (words.size() < 2) {
        out << *text << document.NewLine;
        return ExitStatus::Good;
    }
    std::string reason;
    if (!document.WriteFileAtomically(PathOf(words[1]), false, TextEncoding::None, &reason)) {
        errors << words[1] << ": " << reason << '\n';
        return ExitStatus::Failed;
    }
    return ExitStatus::Good;
}

struct Command {
    std::string_view Name;
    std::size_t FewestWords;
    std::size_t MostWords;
    ExitStatus (*Carry)(std::span<const std::string>, std::ostream&, std::ostream&);
};

constexpr std::array<Command, 5> Commands = {{
    {"check", 1, static_cast<std::size_t>(-1), Check},
    {"get", 3, 4, Get},
    {"set", 4, 4, Set},
    {"list", 1, 2, List},
    {"normalise", 1, 2, Normalise},
}};

} // namespace

ExitStatus Run(std::span<const std::string> arguments, std::ostream& out, std::ostream& errors) {
    const std::size_t words = arguments.empty() ? 0 : arguments.size() - 1;
    const auto command = std::find_if(Commands.begin(), Commands.end(), [&](const Command& known) {
        return !arguments.empty() && known.Name == arguments[0] && words >= known.FewestWords &&
               words <= known.MostWords;
    });
    if (command == Commands.end()) {
        errors << Usage;
        return ExitStatus::Failed;
    }
    return command->Carry(arguments.subspan(1), out, errors);
}

} // namespace velINI::Tool
