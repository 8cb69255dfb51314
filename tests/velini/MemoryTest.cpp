// Texts in memory and paths of the standard library: as files by name, but nothing is raised.

#include "velini/VelINIStream.h"
#include "velini/support/SampleFiles.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

namespace velINI {
namespace {

using Testing::Describe;
using Testing::PrintedText;
using Testing::TemporaryFolder;

std::filesystem::path PathOf(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

TEST(ReadText, ReadsWhatAFileWouldHold) {
    const std::string text = Testing::MakeRealisticFile(50'000);
    velINIStream document;
    EXPECT_TRUE(document.ReadText(text));
    EXPECT_EQ(document, Testing::ReadText(text).Document);
}

// Long files are read in parts, which may show nowhere.
TEST(ReadFile, ReadsALongFileAsReadTextDoes) {
    const TemporaryFolder folder;
    const std::string longLine = "long = " + std::string(1'500'000, 'x');
    for (const std::string newLine : {"\n", "\r\n", "\\\n", "\r \n"}) {
        std::string text = "[A]\n" + longLine + "\nlist[] = \\x0041\n";
        for (int i = 0; text.size() < 3'000'000; ++i) {
            text += "key" + std::to_string(i) + " = \\" + newLine;
            text += i % 1000 == 0 ? "[Section" + std::to_string(i) + "]\n; comment\n" : "";
            text += i % 77 == 0 ? "list[] = " + std::to_string(i) + newLine : "";
        }
        text += "\n[Last]\nwrong\n";
        velINIStream fromFile;
        velINIStream fromMemory;
        fromFile.NoteOddities = true;
        fromMemory.NoteOddities = true;
        const PrintedText printed;
        EXPECT_TRUE(fromFile.ReadFile(folder.Store("long.ini", text)));
        EXPECT_TRUE(fromMemory.ReadText(text));
        EXPECT_EQ(fromFile, fromMemory);
        EXPECT_EQ(fromFile.Diagnostics(), fromMemory.Diagnostics());
        EXPECT_FALSE(fromFile.Diagnostics().empty());
    }
}

TEST(ReadFile, TellsAnEncodingByTheFirstBytesOfALongFile) {
    const TemporaryFolder folder;
    const PrintedText printed;
    velINIStream document;
    EXPECT_TRUE(
        document.ReadFile(folder.Store("a.ini", "\n" + std::string(2'000'000, 'x') + "=1")));
    ASSERT_EQ(document.Sections[0].Keys.size(), 2U);
    EXPECT_EQ(document.Sections[0].Keys[1].Name.size(), 2'000'000U);
    velINIStream wide;
    wide.SetValue("S", "k", std::string(2'000'000, 'v'));
    EXPECT_TRUE(wide.WriteFile(folder.PathOf("b.ini"), false, TextEncoding::Utf16BigEndian));
    velINIStream again;
    EXPECT_TRUE(again.ReadFile(folder.PathOf("b.ini")));
    EXPECT_EQ(again, wide);
}

TEST(ReadText, TakesTextsOfAnyLength) {
    velINIStream document;
    EXPECT_TRUE(document.ReadText(""));
    EXPECT_TRUE(document.ReadText("a=1"));
    EXPECT_TRUE(document.ReadText("\xEF\xBB\xBF"
                                  "b=2"));
    EXPECT_EQ(Describe(document), "[VI_Global] a=1 | b=2");
}

TEST(ReadText, PrintsAndRaisesNothing) {
    const PrintedText printed;
    velINIStream document;
    EXPECT_TRUE(document.ReadText("kept = 1\na = [\nlost = 1\n"));
    EXPECT_FALSE(document.ReadText("b = \\xd800\\x0041\n"));
    EXPECT_FALSE(document.ReadText("l[x] = 1\nl[] = 1\n"));
    EXPECT_EQ(Describe(document), "[VI_Global] kept=1 | l[]{x=1}");
    EXPECT_EQ(printed.Text(), "");
}

TEST(WriteText, GivesTheBytesOfTheFile) {
    velINIStream document;
    document.ReadText(Testing::MakeRealisticFile(50'000));
    for (int encoding = 0; encoding <= 6; ++encoding) {
        for (const bool spacing : {false, true}) {
            EXPECT_EQ(document.WriteText(spacing, static_cast<TextEncoding>(encoding)),
                      Testing::WrittenText(document, spacing, static_cast<TextEncoding>(encoding)));
        }
    }
}

TEST(WriteText, OfADocumentThatIsNotUtf8IsEmpty) {
    velINIStream document;
    document.SetValue("S", "k", "\xFF");
    EXPECT_EQ(document.WriteText(), "");
}

TEST(Paths, AreThoseOfTheStandardLibraryToo) {
    const TemporaryFolder folder;
    const std::string name = folder.PathOf("gr\xC3\xBC\xC3\x9F.ini");
    velINIStream document;
    document.SetValue("S", "key", "value");
    EXPECT_TRUE(document.WriteFile(PathOf(name)));
    velINIStream again;
    EXPECT_TRUE(again.ReadFile(PathOf(name)));
    EXPECT_EQ(again, document);
    EXPECT_TRUE(again.ReadFile(name)) << "the same file by its name in UTF-8";
}

TEST(Paths, RaiseNothing) {
    const TemporaryFolder folder;
    const PrintedText printed;
    velINIStream document;
    EXPECT_FALSE(document.ReadFile(PathOf(folder.PathOf("missing.ini"))));
    EXPECT_FALSE(document.ReadFile(PathOf(folder.Store("bad.ini", "a = \\xd800\\x0041\n"))));
    EXPECT_FALSE(document.ReadFile(
        PathOf(folder.Store("wide.ini", Testing::Bytes("\xFF\xFE\x00\xDC\x00\xDC")))));
    EXPECT_EQ(document.SectionCount(), 0U);
    document.SetValue("S", "k", "\xFF");
    EXPECT_FALSE(document.WriteFile(PathOf(folder.PathOf("out.ini"))));
}

} // namespace
} // namespace velINI
