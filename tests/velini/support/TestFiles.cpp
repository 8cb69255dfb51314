#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <fstream>
#include <initializer_list>
#include <iostream>
#include <unistd.h>

namespace velINI::Testing {
namespace {

std::string Join(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

std::string DescribeElements(const std::vector<IniKey>& elements, std::string_view separator);

std::string DescribeEntry(const IniKey& entry) {
    const std::string comment = entry.Comment ? Join({" ;", *entry.Comment}) : "";
    switch (entry.Kind) {
    case KeyKind::EmptyLine:
        return Join({"(blank)", comment});
    case KeyKind::Comment:
        return Join({"(comment ", entry.Value, ")", comment});
    case KeyKind::Value: {
        const std::string_view quote = entry.Quoted ? "\"" : "";
        return Join({entry.Name, "=", quote, entry.Value, quote, comment});
    }
    case KeyKind::Array:
        return Join({entry.Name, "[]{", DescribeElements(entry.Elements, ", "), "}", comment});
    }
    return "(unknown)";
}

std::string DescribeElements(const std::vector<IniKey>& elements, std::string_view separator) {
    std::string text;
    for (const IniKey& element : elements) {
        text += &element == &elements.front() ? std::string_view() : separator;
        text += DescribeEntry(element);
    }
    return text;
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    static int count = 0;
    Path = std::filesystem::temp_directory_path() /
           ("velini-test-" + std::to_string(getpid()) + "-" + std::to_string(++count));
    std::filesystem::create_directories(Path);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(Path, ignored);
}

std::string TemporaryFolder::PathOf(std::string_view name) const { return (Path / name).string(); }

std::string TemporaryFolder::Store(std::string_view name, std::string_view content) const {
    std::string path = PathOf(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string ContentOf(const std::string& path) {
    std::string content(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary)
        .read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
}

PrintedText::PrintedText() : Previous(std::cout.rdbuf(Buffer.rdbuf())) {}

PrintedText::~PrintedText() { std::cout.rdbuf(Previous); }

ReadResult ReadText(std::string_view content) {
    const TemporaryFolder folder;
    const std::string path = folder.Store("input.ini", content);
    const PrintedText printed;
    ReadResult result;
    result.Succeeded = result.Document.ReadFile(path);
    result.Printed = printed.Text();
    return result;
}

std::string ReadLine(std::string_view line) {
    const ReadResult result = ReadText("[S]\n" + std::string(line) + "\n[End]\n");
    EXPECT_TRUE(result.Succeeded);
    EXPECT_EQ(result.Printed, "") << line;
    const auto section = result.Document.FindSection("S");
    return section == result.Document.Sections.end() ? "(no section)" : Describe(section->Keys);
}

std::string MessageOf(std::string_view line) {
    return ReadText("[S]\n" + std::string(line) + "\n[End]\n").Printed;
}

std::string WrittenText(const velINIStream& document, bool spacing, TextEncoding encoding) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("output.ini");
    EXPECT_TRUE(document.WriteFile(path, spacing, encoding));
    return ContentOf(path);
}

std::string Describe(const std::vector<IniKey>& entries) {
    return DescribeElements(entries, " | ");
}

std::string Describe(const velINIStream& document) {
    std::string text;
    for (const IniSection& section : document.Sections) {
        text += Join({text.empty() ? "[" : "\n[", section.Name, "]"});
        text += section.Comment ? Join({" ;", *section.Comment}) : "";
        text += section.Keys.empty() ? "" : Join({" ", Describe(section.Keys)});
    }
    return text;
}

} // namespace velINI::Testing
