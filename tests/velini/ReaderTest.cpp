// Reading: the file and its encoding, the escapes and line ends, and the lines.

#include "velini/VelINIStream.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <vector>

namespace velINI {
namespace {

using Testing::Bytes;
using Testing::Describe;
using Testing::MessageOf;
using Testing::PrintedText;
using Testing::ReadLine;
using Testing::ReadResult;
using Testing::ReadText;
using Testing::TemporaryFolder;

constexpr std::string_view ErrorStart = "Error while reading INI file: ";

std::string ToUnits(std::u32string_view text, std::size_t unitSize, bool bigEndian) {
    std::string bytes;
    for (const char32_t unit : text) {
        for (std::size_t i = 0; i < unitSize; ++i) {
            const std::size_t place = bigEndian ? unitSize - 1 - i : i;
            bytes += static_cast<char>(unit >> (8 * place) & 0xFF);
        }
    }
    return bytes;
}

std::string MarkMessage(const std::string& name) {
    return "INI file starts with " + name +
           " BOM! Please note that by default the BOM will be skipped, and removed in case the INI "
           "file gets saved and the BOM was not specified!\n";
}

// The text of what reading raises.
template <class Error>
std::string RaisedBy(std::string_view content) {
    try {
        ReadText(content);
    } catch (const Error& error) {
        return error.what();
    }
    return "(nothing)";
}

// The file.

TEST(ReadFile, AMissingFileIsRefused) {
    const TemporaryFolder folder;
    const PrintedText printed;
    velINIStream document;
    EXPECT_FALSE(document.ReadFile(folder.PathOf("missing.ini")));
    EXPECT_EQ(printed.Text(), "Unable to open INI file: " + folder.PathOf("missing.ini") + "\n");
    EXPECT_EQ(document.SectionCount(), 0U);
}

TEST(ReadFile, ADirectoryIsRefused) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("folder.ini");
    std::filesystem::create_directory(path);
    const PrintedText printed;
    velINIStream document;
    EXPECT_FALSE(document.ReadFile(path));
    EXPECT_EQ(printed.Text(), "Unable to open INI file: " + path + "\n");
}

TEST(ReadFile, APathBeyondAsciiIsUtf8) {
    const TemporaryFolder folder;
    const std::string path = folder.Store("Größe \xF0\x9F\x98\x80.ini", "a=1\r\nb=2");
    velINIStream document;
    EXPECT_TRUE(document.ReadFile(path));
    EXPECT_EQ(Describe(document), "[VI_Global] a=1 | b=2");
}

TEST(ReadFile, AnEmptyFileIsRefused) {
    const ReadResult result = ReadText("");
    EXPECT_FALSE(result.Succeeded);
    EXPECT_EQ(result.Printed, "INI file is empty!\n");
}

TEST(ReadFile, AFileOfOneToFiveBytesIsRefusedWithItsSize) {
    const std::string content = "a=1\r\n";
    for (std::size_t size = 1; size <= 5; ++size) {
        const ReadResult result = ReadText(content.substr(0, size));
        EXPECT_FALSE(result.Succeeded);
        EXPECT_EQ(result.Printed, "INI file cannot be smaller than 6 bytes! (Size in bytes: " +
                                      std::to_string(size) + ")\n");
        EXPECT_EQ(result.Document.SectionCount(), 0U);
    }
}

TEST(ReadFile, SixBytesPass) {
    const ReadResult result = ReadText("a=1\r\n\r");
    EXPECT_TRUE(result.Succeeded);
    EXPECT_EQ(result.Printed, "");
    EXPECT_EQ(Describe(result.Document), "[VI_Global] a=1");
}

TEST(ReadFile, AddsToTheDocument) {
    const TemporaryFolder folder;
    velINIStream document;
    document.SetValue("S", "old", "1", false);
    document.SetValue("S", "both", "1", true);
    document.AddBlankLine("S");
    document.SetValue("T", "x", "1", false);
    EXPECT_TRUE(document.ReadFile(
        folder.Store("a.ini", "[T]\ny=2\n[U]\nz=3\n[S]\n\nboth=2\nnew=3\nlist[]=a\n")));
    EXPECT_TRUE(document.ReadFile(folder.Store("b.ini", "[S]\nlist[]=b\n")));
    EXPECT_EQ(Describe(document),
              "[S] old=1 | both=2 | (blank) | (blank) | new=3 | list[]{0=a, 1=b}\n"
              "[T] x=1 | y=2\n"
              "[U] z=3");
    EXPECT_EQ(document.Sections[0].EmptyLineCount, 2U);
}

TEST(ReadFile, FindsTheFirstOfSeveralOfOneNameThatACallerMade) {
    const TemporaryFolder folder;
    velINIStream document;
    for (int i = 0; i < 20; ++i) {
        document.Sections.emplace_back().Name = "S";
        document.Sections[0].Keys.emplace_back().Name = "k";
    }
    EXPECT_TRUE(document.ReadFile(folder.Store("a.ini", "[S]\nk = new\n")));
    EXPECT_EQ(document.SectionCount(), 20U);
    EXPECT_EQ(document.Sections[0].Keys.size(), 20U);
    EXPECT_EQ(document.Sections[0].Keys[0].Value, "new");
    EXPECT_EQ(document.Sections[0].Keys[1].Value, "");
}

// The encoding.

TEST(ReadFileEncoding, IsKnownByItsFirstBytes) {
    const std::u32string text = U"key = \"ä😀\"\n";
    const std::u32string utf16 = U"key = \"ä\xD83D\xDE00\"\n";
    const std::string utf8 = "key = \"\xC3\xA4\xF0\x9F\x98\x80\"\n";
    struct Row {
        std::string Content;
        std::string Name;
    };
    const std::vector<Row> rows = {
        {Bytes("\xFF\xFE\0\0") + ToUnits(text, 4, false), "UTF-32 Little Endian"},
        {Bytes("\xFF\xFE") + ToUnits(utf16, 2, false), "UTF-16 Little Endian"},
        {Bytes("\0\0\xFE\xFF") + ToUnits(text, 4, true), "UTF-32 Big Endian"},
        {ToUnits(text, 4, true), "UTF-32 Big Endian"},
        {ToUnits(utf16, 2, true), "UTF-16 Big Endian"},
        {Bytes("\xFE\xFF") + ToUnits(utf16, 2, true), "UTF-16 Big Endian"},
        {Bytes("\xEF\xBB\xBF") + utf8, "UTF-8"},
        {ToUnits(text, 4, false), "UTF-32 Little Endian"},
        {ToUnits(utf16, 2, false), "UTF-16 Little Endian"},
    };
    for (const Row& row : rows) {
        const ReadResult result = ReadText(row.Content);
        EXPECT_TRUE(result.Succeeded);
        EXPECT_EQ(result.Printed, MarkMessage(row.Name));
        EXPECT_EQ(Describe(result.Document), "[VI_Global] key=\"ä😀\"") << row.Name;
    }
}

TEST(ReadFileEncoding, PlainBytesAreNotToldOf) {
    const ReadResult result = ReadText("key = ä\n");
    EXPECT_EQ(result.Printed, "");
    EXPECT_EQ(Describe(result.Document), "[VI_Global] key=ä");
}

TEST(ReadFileEncoding, Utf16WithoutMarkIsRecognisedByItsZeroBytes) {
    const ReadResult result = ReadText(Bytes("a\0b\0=\0\x31\0\n\0"));
    EXPECT_EQ(result.Printed, MarkMessage("UTF-16 Little Endian"));
    EXPECT_EQ(Describe(result.Document), "[VI_Global] ab=1") << "nothing is skipped";
}

TEST(ReadFileEncoding, EightBitTextIsNotChecked) {
    EXPECT_EQ(Describe(ReadText("key = \xFF\xC3\n").Document), "[VI_Global] key=\xFF\xC3");
    EXPECT_EQ(Describe(ReadText("\xEF\xBB\xBFkey = \xFF\xC3\n").Document),
              "[VI_Global] key=\xFF\xC3");
}

TEST(ReadFileEncoding, ATrailingPartOfAUnitIsDropped) {
    for (std::size_t part = 0; part < 4; ++part) {
        const std::string content =
            Bytes("\xFF\xFE\0\0") + ToUnits(U"key=1", 4, false) + std::string(part, 'x');
        EXPECT_EQ(Describe(ReadText(content).Document), "[VI_Global] key=1") << part;
    }
    EXPECT_EQ(Describe(ReadText(Bytes("\xFE\xFF") + ToUnits(U"key=1", 2, true) + "x").Document),
              "[VI_Global] key=1");
}

TEST(ReadFileEncoding, AMarkAloneIsATextWithNothingInIt) {
    const ReadResult result = ReadText(Bytes("\xFF\xFE\0\0\0\0"));
    EXPECT_TRUE(result.Succeeded);
    EXPECT_EQ(Describe(result.Document), "[VI_Global]");
}

TEST(ReadFileEncoding, MalformedWideTextRaisesARangeError) {
    const std::vector<std::string> rows = {
        Bytes("\xFF\xFE") + ToUnits(U"a=\xDC00\n\n", 2, false),    // a low surrogate alone
        Bytes("\xFF\xFE") + ToUnits(U"a=\xD800z\n", 2, false),     // a high one without a low one
        Bytes("\xFE\xFF") + ToUnits(U"a=\xDC00\n\n", 2, true),     //
        Bytes("\xFF\xFE\0\0") + Bytes("a\0\0\0=\0\0\0\0\0\x11\0"), // above 10FFFF
        Bytes("\0\0\xFE\xFF") + Bytes("\0\0\0a\0\0\0=\0\x11\0\0"), //
    };
    for (const std::string& row : rows) {
        EXPECT_THROW(ReadText(row), std::range_error);
    }
}

// Escapes and line ends.

TEST(ReadFileLineEnds, AreCarriageReturnsAndLineFeeds) {
    struct Row {
        std::string Content;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {"a=1\r\nb=2\r\n", "a=1 | b=2"},
        {"a=1\nb=2\n", "a=1 | b=2"},
        {"a=1\nb=2", "a=1 | b=2"},
        {"a=1\r\nb=2\r", "a=1 | b=2"},
        {"a=1\rXb=2\n", "a=1 | b=2"}, // a lone one swallows what stands behind it
        {"a=1\r\r\nb=2\n", "a=1 | (blank) | b=2"},
        {"a=1\r\n\r\nb=2\n", "a=1 | (blank) | b=2"},
        {"a=1\n\r\nb=2\n", "a=1 | (blank) | b=2"},
        {"a=1\nb=2\r\\", "a=1 | b=2"}, // whatever that is
        {"\r\na=1\r\n", "(blank) | a=1"},
        {"a=1\nb=2\n\n", "a=1 | b=2 | (blank)"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Describe(ReadText(row.Content).Document), "[VI_Global] " + row.Expected);
    }
}

TEST(ReadFileLineEnds, TheLastLineNeedsNone) {
    EXPECT_EQ(Describe(ReadText("[S]\na=1\n").Document), Describe(ReadText("[S]\na=1").Document));
}

TEST(ReadFileEscapes, AreDecodedByTheRules) {
    struct Row {
        std::string Value;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {"\\x0041", "A"},
        {"\\x00e4\\x00E4", "ää"},
        {"\\x20aC", "€"},
        {"\\xD83D\\xDE00", "😀"},
        {"\\xd83d\\xde00z", "😀z"},
        {"\\xdbff\\xdfff", "\xF4\x8F\xBF\xBF"},
        {R"(\x0041\x0042\x0043)", "ABC"},    // the second is read anew
        {"\\x0041\\xDE00", "A\xED\xB8\x80"}, // a low one needs no high one
        {"\\xD83D", "\xED\xA0\xBD"},         // a high one alone
        {"\\xD83Dz", "\xED\xA0\xBDz"},
        {"\\xD83D\\n", "\xED\xA0\xBD\\n"},
        {"\\xZZ", "xZZ"},
        {"\\x4Z", "x4Z"},
        {"\\x00Z", "x00Z"},
        {"\\x004Z", "x004Z"},
        {"\\xZ\\x0041", "xZA"},
        {"\\n", "\\n"}, // no other escape exists
        {"\\X0041", "\\X0041"},
        {"\\\\x0041", "\\\\x0041"}, // a pair is passed over
        {R"(\\\x0041)", "\\\\A"},
        {"\\x0000", std::string(1, '\0')},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ReadLine("k=" + row.Value), "k=" + row.Expected) << row.Value;
    }
}

TEST(ReadFileEscapes, AnOffendingByteIsReadForItself) {
    EXPECT_EQ(Describe(ReadText("k=\\x00\nj=2").Document), "[VI_Global] k=x00 | j=2");
    EXPECT_EQ(Describe(ReadText("k=\\x00\r\nj=2").Document), "[VI_Global] k=x00 | j=2");
}

TEST(ReadFileEscapes, AKeyNameCanBeOne) { EXPECT_EQ(ReadLine("\\x0041=1"), "A=1"); }

TEST(ReadFileEscapes, ComeBeforeTheMeaningOfTheLine) {
    EXPECT_EQ(ReadLine("a\\x003D\\x0031"), "a=1");
    EXPECT_EQ(ReadLine("\\x003B text"), "(comment text)");
    EXPECT_EQ(ReadLine("a=\\x0022b c\\x0022"), "a=\"b c\"");
}

TEST(ReadFileEscapes, ANewlineFromOneEndsNoLine) {
    EXPECT_EQ(ReadLine("; one\\x000atwo"), "(comment one\ntwo)");
    EXPECT_EQ(ReadLine("a=1\\x000ab=2"), "a=1") << "but it ends a value";
    EXPECT_EQ(ReadLine("a=1;x\\x000ay"), "a=1 ;x") << "and the comment behind one";
    EXPECT_EQ(ReadLine("\\x000a\\x000d a=1"), "a=1") << "in front of a line it is blank";
    EXPECT_EQ(ReadLine("a\\x000ab=1"), "a\nb=1");
}

TEST(ReadFileEscapes, ABackslashKeepsALineFeedFromEndingTheLine) {
    EXPECT_EQ(ReadLine("; one\\\ntwo"), "(comment one\\\ntwo)");
    EXPECT_EQ(ReadLine("a=b\\\nc=d"), "a=b\\");
}

TEST(ReadFileEscapes, ABackslashAtTheEndOfTheTextIsDropped) {
    EXPECT_EQ(Describe(ReadText("key=1\\").Document), "[VI_Global] key=1");
}

TEST(ReadFileEscapes, TheTextMustNotEndInOne) {
    for (const char* content : {"key=\\x", "key=\\x0", "key=\\x00", "key=\\x004", "key=\\x0041\\x",
                                "key=\\xD83D\\xDE0"}) {
        EXPECT_EQ(RaisedBy<std::runtime_error>(content),
                  "Read beyond end of file, and found invalid unicode escape sequence!");
    }
}

TEST(ReadFileEscapes, TheSecondOfTwoMustHaveItsDigits) {
    for (const char* content : {"key=\\xD83D\\xZZZZ\n", "key=\\x0041\\x004Z\n"}) {
        EXPECT_EQ(RaisedBy<std::runtime_error>(content),
                  "Invalid code point for UTF-16 low surrogate pair!");
    }
}

TEST(ReadFileEscapes, AHighSurrogateMustHaveALowOneBehindIt) {
    for (const char* content :
         {"key=\\xD83D\\x0041\n", "key=\\xD800\\xDBFF\n", "key=\\xDBFF\\xE000\n"}) {
        EXPECT_EQ(RaisedBy<std::runtime_error>(content),
                  "Invalid code point range for UTF-16 low surrogate pair!");
    }
}

TEST(ReadFileEscapes, AnErrorLeavesTheDocumentAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder.Store("a.ini", "k=2\n[T]\nj=\\x");
    const PrintedText printed;
    velINIStream document;
    document.SetValue("S", "k", "1", false);
    EXPECT_THROW(document.ReadFile(path), std::runtime_error);
    EXPECT_EQ(Describe(document), "[S] k=1");
    EXPECT_EQ(printed.Text(), "");
}

// Blank lines and comments.

TEST(ReadFileBlankLines, AreEntries) {
    const ReadResult result = ReadText("[S]\n\n \t \na=1\n\r\n");
    EXPECT_EQ(Describe(result.Document), "[S] (blank) | (blank) | a=1 | (blank)");
    const IniSection& section = result.Document.Sections[0];
    EXPECT_EQ(section.Keys[0].Name, "VI_EL_1");
    EXPECT_EQ(section.Keys[1].Name, "VI_EL_2");
    EXPECT_EQ(section.Keys[3].Name, "VI_EL_3");
    EXPECT_EQ(section.EmptyLineCount, 3U);
}

TEST(ReadFileBlankLines, ALineOfSpacesIsOne) { EXPECT_EQ(ReadLine("   "), "(blank)"); }

TEST(ReadFileBlankLines, BringASectionIntoBeing) {
    EXPECT_EQ(Describe(ReadText("\n\n\n\n\n\n").Document),
              "[VI_Global] (blank) | (blank) | (blank) | (blank) | (blank) | (blank)");
    EXPECT_EQ(Describe(ReadText("[A]\n\n[B]\n").Document), "[A] (blank)\n[B]");
}

TEST(ReadFileComments, AreEntries) {
    const ReadResult result = ReadText("; one\n[S]\n#two\n  ;  three \n;\n# \n");
    EXPECT_EQ(Describe(result.Document), "[VI_Global] (comment one)\n"
                                         "[S] (comment two) | (comment  three ) | (comment ) | "
                                         "(comment )");
    const IniSection& section = result.Document.Sections[1];
    EXPECT_EQ(section.Keys[0].Name, "VI_C_1");
    EXPECT_EQ(section.Keys[3].Name, "VI_C_4");
    EXPECT_EQ(section.CommentCount, 4U);
    EXPECT_FALSE(section.Keys[0].Verbatim);
}

TEST(ReadFileComments, KeepEverythingAsItStands) {
    EXPECT_EQ(ReadLine("; [a] = \"b\" ; c # d\\q"), "(comment [a] = \"b\" ; c # d\\q)");
}

TEST(ReadFileComments, AKeyOfAGeneratedNameThatComesFirstStays) {
    const ReadResult result = ReadText("VI_C_1=x\n; one\n; two\n");
    EXPECT_EQ(Describe(result.Document), "[VI_Global] VI_C_1=x | (comment two)");
    EXPECT_EQ(result.Document.Sections[0].CommentCount, 2U);
}

TEST(ReadFileComments, ACommentThatComesFirstStays) {
    const ReadResult result = ReadText("; one\nVI_C_1=x\n");
    EXPECT_EQ(Describe(result.Document), "[VI_Global] (comment x)") << "with the key's value";
}

TEST(ReadFileBlankLines, AKeyOfAGeneratedNameThatComesFirstStays) {
    EXPECT_EQ(Describe(ReadText("VI_EL_1=x\n\n\n").Document), "[VI_Global] VI_EL_1=x | (blank)");
}

// Section headers.

TEST(ReadFileHeaders, NameTheSectionByTheRules) {
    struct Row {
        std::string Header;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {"[S]", "[S] k=1"},
        {"  [S]  ", "[S] k=1"},
        {"[My Section]", "[MySection] k=1"},
        {"[ab]cd", "[abcd] k=1"},
        {"[a]b]c", "[abc] k=1"},
        {"[]", "[] k=1"},
        {"[a\tb]", "[a\tb] k=1"},
        {"[a=b:c\"d']", "[a=b:c\"d'] k=1"},
        {"[S];note", "[S] ;note k=1"},
        {"[S] ; note", "[S] ;note k=1"},
        {"[S] #  note ; more", "[S] ; note ; more k=1"},
        {"[S] x ; note", "[Sx] ;note k=1"},
        {"[S] ;", "[S] k=1"},
        {"[VI_Global] ; note", "[VI_Global] ;note k=1"},
    };
    for (const Row& row : rows) {
        const ReadResult result = ReadText(row.Header + "\nk=1\n");
        EXPECT_EQ(Describe(result.Document), row.Expected) << row.Header;
        EXPECT_EQ(result.Printed, "");
    }
}

TEST(ReadFileHeaders, OneAloneMakesNoSection) {
    EXPECT_EQ(Describe(ReadText("[A]\n[B]\nk=1\n").Document), "[B] k=1");
}

TEST(ReadFileHeaders, OneWithACommentDoes) {
    EXPECT_EQ(Describe(ReadText("[A] ; note\n[B]\nk=1\n").Document), "[A] ;note\n[B] k=1");
    EXPECT_EQ(Describe(ReadText("[A] ;\n[B]\nk=1\n").Document), "[A]\n[B] k=1");
}

TEST(ReadFileHeaders, TheLastOneAlwaysDoes) {
    EXPECT_EQ(Describe(ReadText("k=1\n[A]\n[B]").Document), "[VI_Global] k=1\n[B]");
}

TEST(ReadFileHeaders, ALaterOneOfTheSameNameAddsToTheFirstSection) {
    const ReadResult result = ReadText("[A] ; one\na=1\n[B]\nb=1\n[A]\nc=1\na=2\n[A] ; two\n");
    EXPECT_EQ(Describe(result.Document), "[A] ;two a=2 | c=1\n[B] b=1");
}

TEST(ReadFileHeaders, ALaterOneWithAnEmptyCommentClearsIt) {
    EXPECT_EQ(Describe(ReadText("[A] ; one\n[A] ;\n").Document), "[A]");
}

TEST(ReadFileHeaders, ErrorsAreTold) {
    struct Row {
        std::string Header;
        std::string Message;
    };
    const std::vector<Row> rows = {
        {"[a[b]", "New section started within section tag!\nSection end tag was not found!\n"},
        {"[[a]", "New section started within section tag!\nSection end tag was not found!\n"},
        {"[a][b]", "New section started within section tag!\n"},
        {"[a;b]", "Found comment tag within section tag!\nSection end tag was not found!\n"},
        {"[a#b]", "Found comment tag within section tag!\nSection end tag was not found!\n"},
        {"[a", "Section end tag was not found!\n"},
        {"[", "Section end tag was not found!\n"},
        {"[a\\x000a]", "Section end tag was not found!\n"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(MessageOf(row.Header), std::string(ErrorStart) + row.Message + "\n");
    }
}

// Keys.

TEST(ReadFileKeys, GoToTheGlobalSectionBeforeAnyHeader) {
    EXPECT_EQ(Describe(ReadText("k=1\n[S]\nl=2\n").Document), "[VI_Global] k=1\n[S] l=2");
}

TEST(ReadFileKeys, TheFirstSeparatorCounts) {
    struct Row {
        std::string Line;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {"key : value", "key=value"},
        {"a:b=c", "a=b=c"},
        {"a=b:c", "a=b:c"},
        {"a==b", "a==b"},
        {"a::b", "a=:b"},
        {"a=b=c", "a=b=c"},
        {"a=", "a="},
        {"a:", "a="},
        {"  a = b", "a=b"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ReadLine(row.Line), row.Expected) << row.Line;
    }
}

TEST(ReadFileKeys, NamesLoseTheirSpacesButNotTheirTabs) {
    EXPECT_EQ(ReadLine("my key = my value"), "mykey=myvalue");
    EXPECT_EQ(ReadLine("\tmy\tkey\t=1"), "my\tkey\t=1");
    EXPECT_EQ(ReadLine("\"my 'key\\q=1"), "\"my'key\\q=1") << "quotes mean nothing in a name";
}

TEST(ReadFileKeys, ALaterLineReplacesInPlace) {
    EXPECT_EQ(ReadLine("a='1' ; note\nb=2\na=3"), "a=3 | b=2") << "the comment goes, too";
    EXPECT_EQ(ReadLine("a=1\na='2' ; note"), "a=\"2\" ;note");
}

TEST(ReadFileKeys, ErrorsAreTold) {
    struct Row {
        std::string Line;
        std::string Message;
    };
    const std::string equals = "Key end tag (\"=\" sign) was not found!\n";
    const std::string colon = "Key end tag (\":\" sign) was not found!\n";
    const std::vector<Row> rows = {
        {"no separator", "No \"=\" or \":\" sign found!\n"},
        {"=1", equals},
        {":1", colon},
        {" : a=b", colon},
        {"=[a]=b", equals},
        {"a[b=1", "Start section tag within key tag!\n" + equals},
        {"a[b:1", "Start section tag within key tag!\n" + colon},
        {"a[0]b=1", "Start section tag within key tag!\n" + equals},
        {"a]=1", "Close section tag within key tag!\n" + equals},
        {"a]b=1", "Close section tag within key tag!\n" + equals},
        {"a;b=1", "Found comment tag within key tag!\n" + equals},
        {"a#b:1", "Found comment tag within key tag!\n" + colon},
        {"a;b[]=1", "Found comment tag within key tag!\n" + equals},
        {"a;[=1", "Found comment tag within key tag!\n" + equals}, // the first error counts
    };
    for (const Row& row : rows) {
        EXPECT_EQ(MessageOf(row.Line), std::string(ErrorStart) + row.Message + "\n") << row.Line;
    }
}

// Values.

TEST(ReadFileValues, AreReadByTheTable) {
    struct Row {
        std::string Value;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        // Outside of strings.
        {"my value", "myvalue"},
        {R"(b\c\\d)", R"(b\c\\d)"},
        {"b ; note", "b ;note"},
        {"b#c", "b ;c"},
        {"b;  c ; d # e", "b ; c ; d # e"},
        {"b;", "b"},
        {"b; ", "b"},
        {"b\tc", "b\tc"},
        {" \tb", "\tb"},
        // Strings.
        {"\"b c\"", "\"b c\""},
        {"'b c'", "\"b c\""},
        {"\"b c\" ; note", "\"b c\" ;note"},
        {"\"b#c\"", "\"b#c\""},
        {"\"[b];\"", "\"[b];\""},
        {"\"it's\"", "\"it's\""},
        {"'say \"b\"'", R"("say "b"")"},
        {"\"b\tc\"", "\"b\tc\""},
        {"\"\"", "\"\""},
        // Escapes in strings.
        {R"("b\"c")", R"("b"c")"},
        {"'b\\'c'", "\"b'c\""},
        {R"("b\'c")", R"("b\'c")"},
        {R"("b\\c")", R"("b\c")"},
        {R"("b\\")", R"("b\")"},
        {R"("\t\n")", R"("\t\n")"},
        {R"("\[\;")", R"("\[\;")"},
        // Several strings, and text around them.
        {"\"b\" c'd'", "\"bcd\""},
        {"b\"c d\"e f", "\"bc def\""},
        {"'it''s'", "\"its\""},
        {"b''", "\"b\""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ReadLine("a =" + row.Value), "a=" + row.Expected) << row.Value;
    }
}

TEST(ReadFileValues, AStringAndANoteBehindIt) {
    const ReadResult result = ReadText("a = \"b c\" ; note\n");
    const IniKey& key = result.Document.Sections.at(0).Keys.at(0);
    EXPECT_EQ(key.Value, "b c");
    EXPECT_TRUE(key.Quoted);
    EXPECT_EQ(key.Comment, "note");
}

TEST(ReadFileValues, ErrorsAreTold) {
    struct Row {
        std::string Value;
        std::string Message;
    };
    const std::string notDefined = "String end tag not defined!\n";
    const std::string notFound = "Value end tag (New line) was not found!\n";
    const std::vector<Row> rows = {
        {"[1]", "Start section tag within value tag!\n"},
        {"b[", "Start section tag within value tag!\n"},
        {"b]", "Close section tag within value tag!\n"},
        {"\"b", notDefined},
        {"'b\"", notDefined},
        {"\"b ", notDefined},
        {"\"b\\t", notDefined},
        {R"("b\\c)", notDefined},
        {"\"b\\\nc\"", notDefined}, // the backslash is kept, and the value ends behind it
        {"\"", notFound},
        {"b'", notFound},
        {R"("b"c")", notFound},
        {R"("b\")", notFound},
        {R"("b\\)", notFound},
        {R"("\x000ab")", notFound},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(MessageOf("a=" + row.Value), std::string(ErrorStart) + row.Message + "\n")
            << row.Value;
    }
}

// Arrays.

TEST(ReadFileArrays, AreKnownByTheirBrackets) {
    struct Row {
        std::string Lines;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {"a[]=1\na[]=2", "a[]{0=1, 1=2}"},
        {"a[7] = 1\na[] = 2", "a[]{7=1, 8=2}"},
        {"a [] = 1", "a[]{0=1}"},
        {"a[]\t = 1", "a[]{0=1}"},
        {"a [ 7 ] : 1", "a[]{ 7 =1}"},
        {"a[name] = 1", "a[]{name=1}"},
        {"my list[] = 1", "mylist[]{0=1}"},
        {"a[1][] = 1", "a[]{0=1}"},
        {"a[[7] = 1", "a[]{7=1}"},
        {"a[1[2] = 1", "a[]{0=1}"}, // the index between them has lost its last character
        {"a[12[2] = 1", "a[]{1=1}"},
        {"a[]] = 1", "a[]{]=1}"},
        {"a]b[] = 1", "a]b[]{0=1}"}, // in front of the bracket it belongs to the name
        {"a[;] = 1", "a[]{;=1}"},
        {"a[2]=x\na[0]=y\na[]=z", "a[]{2=x, 0=y, 3=z}"},
        {"a[]=1\na[0]=2\na[]=3", "a[]{0=2, 1=3}"},
        {"a[]=1\nb[]=2\na[]=3", "a[]{0=1, 1=3} | b[]{0=2}"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ReadLine(row.Lines), row.Expected) << row.Lines;
    }
}

TEST(ReadFileArrays, ANewElementKeepsItsQuotedMarkOnlyWithAComment) {
    EXPECT_EQ(ReadLine("a[]=\"b c\"\na[]='d e' ; note\na[]='f g' ;"),
              "a[]{0=b c, 1=\"d e\" ;note, 2=\"f g\"}");
    EXPECT_EQ(ReadLine("a[0]=1;note\na[0]='b c'"), "a[]{0=\"b c\"}");
}

TEST(ReadFileArrays, RememberHowTheyWereMade) {
    const ReadResult result = ReadText("a[7]=1\na[]=2\nb[]=1\nb[7]=2\n");
    const IniSection& section = result.Document.Sections.at(0);
    EXPECT_TRUE(section.Keys[0].Quoted);
    EXPECT_EQ(section.Keys[0].NextIndex, 8U);
    EXPECT_FALSE(section.Keys[0].ExplicitIndex);
    EXPECT_FALSE(section.Keys[1].Quoted);
    EXPECT_EQ(section.Keys[1].NextIndex, 0U);
}

TEST(ReadFileArrays, MeetKeysOfTheSameName) {
    const ReadResult key = ReadText("a=1\na[]=2\n");
    EXPECT_EQ(Describe(key.Document), "[VI_Global] a=1");
    EXPECT_EQ(Describe(key.Document.Sections[0].Keys[0].Elements), "0=2");
    const ReadResult array = ReadText("a[]=1\na='2' ; note\n");
    EXPECT_EQ(Describe(array.Document), "[VI_Global] a[]{0=1} ;note");
    EXPECT_EQ(array.Document.Sections[0].Keys[0].Value, "2");
    EXPECT_TRUE(array.Document.Sections[0].Keys[0].Quoted);
}

TEST(ReadFileArrays, AnAutomaticIndexAmongNamesThatAreNoNumbersRaises) {
    const TemporaryFolder folder;
    const std::string path = folder.Store("a.ini", "k=1\na[x]=1\na[]=2\nl=2\n");
    velINIStream document;
    EXPECT_THROW(document.ReadFile(path), std::invalid_argument);
    EXPECT_EQ(Describe(document), "[VI_Global] k=1 | a[]{x=1}") << "what stood before stays";
    EXPECT_THROW(ReadText("a[99999999999999999999]=1\na[]=2\n"), std::out_of_range);
}

TEST(ReadFileArrays, ElementsOfALongArrayAreStillFound) {
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "a[";
        text += std::to_string(i);
        text += "]=old\n";
    }
    const ReadResult result = ReadText(text + "a[77]=new\na[]=last\n");
    const IniKey& array = result.Document.Sections.at(0).Keys.at(0);
    ASSERT_EQ(array.Elements.size(), 101U);
    EXPECT_EQ(array.Elements[77].Value, "new");
    EXPECT_EQ(array.Elements[100].Name, "100");
}

// Errors.

TEST(ReadFileErrors, StopTheParseAndKeepWhatStoodBefore) {
    const ReadResult result = ReadText("k=1\n[A]\na = 1\nb = [1]\nc = 2\n[B]\nd=3\n");
    EXPECT_TRUE(result.Succeeded);
    EXPECT_EQ(Describe(result.Document), "[VI_Global] k=1\n[A] a=1");
    EXPECT_EQ(result.Printed,
              "Error while reading INI file: Start section tag within value tag!\n\n");
}

TEST(ReadFileErrors, InTheLastLineAreToldAsWell) {
    const ReadResult result = ReadText("a = 1\nb = [1]");
    EXPECT_TRUE(result.Succeeded);
    EXPECT_EQ(Describe(result.Document), "[VI_Global] a=1");
    EXPECT_EQ(result.Printed,
              "Error while reading INI file: Start section tag within value tag!\n\n");
}

TEST(ReadFileErrors, TheSectionAtHandIsMadeAllTheSame) {
    EXPECT_EQ(Describe(ReadText("[A]\nnonsense\nk=1\n").Document), "[A]");
    EXPECT_EQ(Describe(ReadText("[A]\nnonsense").Document), "[A]");
    EXPECT_EQ(Describe(ReadText("nonsense\n").Document), "[VI_Global]");
    EXPECT_EQ(Describe(ReadText("k=1\n[A;\n").Document), "[VI_Global] k=1\n[A]");
}

} // namespace
} // namespace velINI
