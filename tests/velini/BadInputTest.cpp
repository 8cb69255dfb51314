// Files that are too long, too dense or not made for the library are read or told of like any
// other.

#include "velini/VelINIStream.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <vector>

namespace velINI {
namespace {

using Testing::ReadResult;
using Testing::ReadText;

constexpr std::size_t LongLine = 10'000'000;

TEST(BadInput, AFileOf64Megabytes) {
    constexpr std::size_t Size = 64'000'000;
    const std::string line = "key = \"" + std::string(990, 'v') + "\"\n";
    std::string text;
    text.reserve(Size + line.size());
    for (std::size_t i = 0; text.size() < Size; ++i) {
        text += std::to_string(i) + line;
    }
    const ReadResult result = ReadText(text);
    EXPECT_TRUE(result.Succeeded);
    EXPECT_EQ(result.Printed, "");
    ASSERT_EQ(result.Document.SectionCount(), 1U);
    EXPECT_GT(result.Document.Sections[0].Keys.size(), 63'000U);
    EXPECT_EQ(result.Document.Sections[0].Keys.back().Value, std::string(990, 'v'));
}

TEST(BadInput, LinesOfTenMegabytesThatAreRead) {
    const std::string run(LongLine, 'x');
    const std::string brackets(LongLine, '[');
    const std::vector<std::string> lines = {
        "k = " + run,                         // a value
        run + " = v",                         // a name
        "k = \"" + run + "\"",                // a string
        "; " + run,                           // a comment
        "k = v ; " + run,                     // a comment behind a value
        "[S] ; " + run,                       // and behind a header
        "a" + brackets + "7] = v",            // a name with an index somewhere
        "a[" + run + "] = v",                 // an index
        std::string(LongLine, ' ') + "k = v", // blanks in front
        "k = " + std::string(LongLine, ' '),  // and behind
        "k = " + std::string(LongLine, '\''), // many strings
    };
    for (const std::string& line : lines) {
        const ReadResult result = ReadText("[S]\n" + line + "\n");
        EXPECT_TRUE(result.Succeeded);
        EXPECT_EQ(result.Printed, "") << line.substr(0, 20);
        EXPECT_EQ(result.Document.SectionCount(), 1U);
    }
}

TEST(BadInput, LinesOfTenMegabytesThatAreErrors) {
    const std::vector<std::string> lines = {
        std::string(LongLine, 'x'),
        "[" + std::string(LongLine, 'x'),
        "k = \"" + std::string(LongLine, 'x'),
        "k" + std::string(LongLine, ']') + "=",
        "=" + std::string(LongLine, '='),
    };
    for (const std::string& line : lines) {
        const ReadResult result = ReadText(line + "\n");
        EXPECT_TRUE(result.Succeeded);
        EXPECT_TRUE(result.Printed.starts_with("Error while reading INI file: "));
        EXPECT_LT(result.Printed.size(), 200U);
    }
}

TEST(BadInput, TenMegabytesOfEscapes) {
    std::string text = "k = ";
    while (text.size() < LongLine) {
        text += R"(\x00e4\xd83d\xde00\xZ\\)";
    }
    const ReadResult result = ReadText(text + "\n");
    EXPECT_TRUE(result.Succeeded);
    EXPECT_TRUE(result.Document.GetValue("VI_Global", "k", "")
                    .starts_with("\xC3\xA4\xF0\x9F\x98\x80xZ\\\\"));
}

TEST(BadInput, BinaryFiles) {
    std::mt19937 engine(7); // NOLINT(cert-msc51-cpp): always the same bytes
    for (int file = 0; file < 200; ++file) {
        std::string text(6 + engine() % 2000, '\0');
        for (char& byte : text) {
            byte = static_cast<char>(engine() & 0xFF);
        }
        try {
            EXPECT_TRUE(ReadText(text).Succeeded);
        } catch (const std::runtime_error&) { // escapes and wide encodings
        }
    }
}

} // namespace
} // namespace velINI
