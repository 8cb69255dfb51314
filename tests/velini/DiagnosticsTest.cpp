// What reading says was wrong, and where.

#include "velini/VelINIStream.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>

namespace velINI {
namespace {

using Testing::Bytes;
using Testing::PrintedText;
using Testing::TemporaryFolder;

std::string Told(const velINIStream& document) {
    std::string text;
    for (const Diagnostic& diagnostic : document.Diagnostics()) {
        text += diagnostic.Kind == Severity::Oddity ? "odd " : "";
        text += std::to_string(diagnostic.Line) + ':' + std::to_string(diagnostic.Column) + ' ' +
                diagnostic.Message + '\n';
    }
    return text;
}

std::string ToldOf(std::string_view text, bool withOddities = false) {
    velINIStream document;
    document.NoteOddities = withOddities;
    document.ReadText(text);
    return Told(document);
}

struct Wrong {
    const char* Text;
    const char* Told;
};

std::ostream& operator<<(std::ostream& out, const Wrong& wrong) { return out << wrong.Text; }

class Error : public ::testing::TestWithParam<Wrong> {};

TEST_P(Error, IsToldWithItsPlace) { EXPECT_EQ(ToldOf(GetParam().Text), GetParam().Told); }

INSTANTIATE_TEST_SUITE_P(
    All, Error,
    ::testing::Values(
        Wrong{"a = 1\nb = 2\n", ""}, Wrong{"", ""},
        Wrong{"a = 1\n  nothing\n", "2:3 No \"=\" or \":\" sign found!\n"},
        Wrong{"[A\n", "1:3 Section end tag was not found!\n"},
        Wrong{"[A;x]\n", "1:3 Found comment tag within section tag!\n"
                         "1:6 Section end tag was not found!\n"},
        Wrong{"[A[\n", "1:3 New section started within section tag!\n"
                       "1:4 Section end tag was not found!\n"},
        Wrong{"x = 1\n\n= 1\n", "3:1 Key end tag (\"=\" sign) was not found!\n"},
        Wrong{"a]b : 1\n", "1:2 Close section tag within key tag!\n"
                           "1:5 Key end tag (\":\" sign) was not found!\n"},
        Wrong{"k = [1]\n", "1:5 Start section tag within value tag!\n"},
        Wrong{"k = 1]\n", "1:6 Close section tag within value tag!\n"},
        Wrong{"k = \"open\n", "1:10 String end tag not defined!\n"},
        Wrong{"k = \"", "1:6 Value end tag (New line) was not found!\n"},
        Wrong{"a = 1\r\nb = [\r\n", "2:5 Start section tag within value tag!\n"},
        Wrong{"\xC3\xA4\xE2\x82\xAC = [\n", "1:6 Start section tag within value tag!\n"},
        Wrong{"\\x00e4\\xd83d\\xde00 = [\n", "1:22 Start section tag within value tag!\n"},
        Wrong{"k = \\x005b\n", "1:5 Start section tag within value tag!\n"},
        Wrong{"k\\\n[ = 1\n", "2:1 Start section tag within key tag!\n"
                              "2:3 Key end tag (\"=\" sign) was not found!\n"},
        Wrong{"a = 1\nb = \\x12",
              "2:5 Read beyond end of file, and found invalid unicode escape sequence!\n"},
        Wrong{"a = 1\nb = \\xd800\\xzz\n",
              "2:5 Invalid code point for UTF-16 low surrogate pair!\n"},
        Wrong{"b = 1 \\xd800\\x0041\n",
              "1:7 Invalid code point range for UTF-16 low surrogate pair!\n"},
        Wrong{"a[x] = 1\na[] = 2\n", "2:1 An element can only be numbered behind numbers.\n"}));

TEST(Diagnostics, OfOdditiesAreToldOnlyWhenAskedFor) {
    const std::string_view text = "[A] b\n"
                                  "text = two words\n"
                                  "text = \"two words\"\n"
                                  "  fine = one ; two words\n"
                                  "glued = \"a\" \"b\"\n";
    EXPECT_EQ(ToldOf(text), "");
    EXPECT_EQ(ToldOf(text, true),
              "odd 1:5 Text behind the bracket is taken as a part of the name.\n"
              "odd 2:7 Spaces outside of quotes are dropped.\n"
              "odd 3:1 The section has this key before; what stands here counts.\n"
              "odd 5:8 Spaces outside of quotes are dropped.\n");
}

TEST(Diagnostics, OfAFileAreToldWhateverItRaises) {
    const TemporaryFolder folder;
    const PrintedText printed;
    velINIStream document;
    EXPECT_FALSE(document.ReadFile(folder.PathOf("missing.ini")));
    EXPECT_EQ(Told(document),
              "0:0 Unable to open INI file: " + folder.PathOf("missing.ini") + "\n");
    EXPECT_FALSE(document.ReadFile(folder.Store("short.ini", "a=1\n")));
    EXPECT_EQ(Told(document), "0:0 INI file cannot be smaller than 6 bytes! (Size in bytes: 4)\n");
    EXPECT_THROW(document.ReadFile(folder.Store("escape.ini", "a = 1\nb = \\x1")),
                 std::runtime_error);
    EXPECT_EQ(Told(document),
              "2:5 Read beyond end of file, and found invalid unicode escape sequence!\n");
    EXPECT_THROW(document.ReadFile(folder.Store("wide.ini", Bytes("\xFF\xFE\x00\xDC\x00\xDC"))),
                 std::range_error);
    EXPECT_EQ(Told(document), "0:0 The UTF-16 or UTF-32 text is malformed.\n");
    EXPECT_THROW(document.ReadFile(folder.Store("array.ini", "a[x] = 1\na[] = 2\n")),
                 std::invalid_argument);
    EXPECT_EQ(Told(document), "2:1 An element can only be numbered behind numbers.\n");
    EXPECT_TRUE(document.ReadFile(folder.Store("good.ini", "good = 1\n")));
    EXPECT_EQ(Told(document), "") << "a read tells of itself only";
}

TEST(Diagnostics, OfManyOdditiesAreCountedInOnePass) {
    std::string text;
    for (int i = 0; i < 20'000; ++i) {
        text += "k = a b\n";
    }
    velINIStream document;
    document.NoteOddities = true;
    EXPECT_TRUE(document.ReadText(text));
    ASSERT_EQ(document.Diagnostics().size(), 39'999U);
    EXPECT_EQ(document.Diagnostics().back().Line, 20'000U);
}

} // namespace
} // namespace velINI
