// Writing: the file, its encoding, headers and entries, with and without spacing.

#include "velini/VelINIStream.h"
#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace velINI {
namespace {

using Testing::Bytes;
using Testing::ContentOf;
using Testing::PrintedText;
using Testing::TemporaryFolder;
using Testing::WrittenText;

IniKey& AddKey(IniSection& section, KeyKind kind, const std::string& name,
               const std::string& value) {
    IniKey& key = section.Keys.emplace_back();
    key.Kind = kind;
    key.Name = name;
    key.Value = value;
    return key;
}

// A document with one section, for tests of its entries.
velINIStream MakeDocument(const std::string& sectionName = "S") {
    velINIStream document;
    document.Sections.emplace_back().Name = sectionName;
    return document;
}

velINIStream MakeArrayDocument(const std::string& sectionName) {
    velINIStream document = MakeDocument(sectionName);
    IniSection& section = document.Sections[0];
    section.SetArrayElement("list", "x", false, false, "", "", false);
    section.SetArrayElement("list", "y z", true, true, "note", "7", true);
    return document;
}

// The file.

TEST(WriteFile, AFileThatCannotBeOpenedIsTold) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("missing/output.ini");
    const PrintedText printed;
    EXPECT_FALSE(velINIStream().WriteFile(path, false, TextEncoding::None));
    EXPECT_EQ(printed.Text(), "Unable to write INI file: " + path + "\n");
}

TEST(WriteFile, AnExistingFileIsReplaced) {
    const TemporaryFolder folder;
    const std::string path = folder.Store("output.ini", "something much longer than the document");
    velINIStream document;
    document.SetValue("S", "a", "1", false);
    const PrintedText printed;
    EXPECT_TRUE(document.WriteFile(path, false, TextEncoding::None));
    EXPECT_EQ(ContentOf(path), "[S]\r\na=1");
    EXPECT_EQ(printed.Text(), "");
}

TEST(WriteFile, APathBeyondAsciiIsUtf8) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("Größe.ini");
    EXPECT_TRUE(MakeDocument().WriteFile(path, false, TextEncoding::None));
    EXPECT_EQ(ContentOf(path), "[S]");
}

TEST(WriteFile, FailedWritesAreNotDetected) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no device that is always full";
    }
    const PrintedText printed;
    EXPECT_TRUE(MakeDocument().WriteFile("/dev/full", false, TextEncoding::None));
    EXPECT_EQ(printed.Text(), "");
}

TEST(WriteFile, AnErrorLeavesTheFileWrittenUpToTheEntry) {
    velINIStream document;
    document.SetValue("S", "a", "1", false);
    document.SetValue("S", "b", "\xFF", false);
    document.SetValue("S", "c", "2", false);
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("output.ini");
    try {
        document.WriteFile(path, false, TextEncoding::None);
        ADD_FAILURE() << "nothing raised";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Invalid UTF-8 sequence!");
    }
    EXPECT_EQ(ContentOf(path), "[S]\r\na=1");
}

TEST(WriteFile, AnEmptyDocumentIsAnEmptyFile) { EXPECT_EQ(WrittenText(velINIStream()), ""); }

// The encoding.

TEST(WriteFileEncoding, EachHasItsMarkAndItsUnits) {
    velINIStream document = MakeDocument();
    document.NewLine = "\n";
    document.SetValue("S", "a", "ä", false);
    struct Row {
        TextEncoding Encoding;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {TextEncoding::None, "[S]\na=\\x00e4"},
        {TextEncoding::Utf8, "\xEF\xBB\xBF[S]\na=\\x00e4"},
        {TextEncoding::Utf16LittleEndian,
         Bytes("\xFF\xFE[\0S\0]\0\n\0a\0=\0\\\0x\0\x30\0\x30\0e\0\x34\0")},
        {TextEncoding::Utf16BigEndian,
         Bytes("\xFE\xFF\0[\0S\0]\0\n\0a\0=\0\\\0x\0\x30\0\x30\0e\0\x34")},
        {TextEncoding::Utf32LittleEndian,
         Bytes("\xFF\xFE\0\0[\0\0\0S\0\0\0]\0\0\0\n\0\0\0a\0\0\0=\0\0\0\\\0\0\0x\0\0\0"
               "\x30\0\0\0\x30\0\0\0e\0\0\0\x34\0\0\0")},
        {TextEncoding::Utf32BigEndian,
         Bytes("\0\0\xFE\xFF\0\0\0[\0\0\0S\0\0\0]\0\0\0\n\0\0\0a\0\0\0=\0\0\0\\\0\0\0x"
               "\0\0\0\x30\0\0\0\x30\0\0\0e\0\0\0\x34")},
        {static_cast<TextEncoding>(6), ""},
        {static_cast<TextEncoding>(255), ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(WrittenText(document, false, row.Encoding), row.Expected);
    }
}

std::string EncodedText(std::string_view text, TextEncoding encoding) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("encoded");
    std::FILE* file = std::fopen(path.c_str(), "wb");
    try {
        WriteEncoded(text, file, encoding);
    } catch (...) {
        static_cast<void>(std::fclose(file));
        throw;
    }
    static_cast<void>(std::fclose(file));
    return ContentOf(path);
}

TEST(WriteEncoded, WritesUtf8TextInEachEncoding) {
    struct Row {
        TextEncoding Encoding;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {TextEncoding::None, "aä😀"},
        {TextEncoding::Utf8, "aä😀"},
        {TextEncoding::Utf16LittleEndian, Bytes("a\0\xE4\0\x3D\xD8\x00\xDE")},
        {TextEncoding::Utf16BigEndian, Bytes("\0a\0\xE4\xD8\x3D\xDE\x00")},
        {TextEncoding::Utf32LittleEndian, Bytes("a\0\0\0\xE4\0\0\0\x00\xF6\x01\0")},
        {TextEncoding::Utf32BigEndian, Bytes("\0\0\0a\0\0\0\xE4\0\x01\xF6\x00")},
        {static_cast<TextEncoding>(6), ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(EncodedText("aä😀", row.Encoding), row.Expected);
        EXPECT_EQ(EncodedText("", row.Encoding), "");
    }
}

TEST(WriteEncoded, TheWideEncodingsRaiseForWhatIsNotUtf8) {
    for (const TextEncoding encoding :
         {TextEncoding::Utf16LittleEndian, TextEncoding::Utf16BigEndian,
          TextEncoding::Utf32LittleEndian, TextEncoding::Utf32BigEndian}) {
        EXPECT_THROW(EncodedText("a\xFF", encoding), std::range_error);
    }
    EXPECT_EQ(EncodedText("a\xFF", TextEncoding::Utf8), "a\xFF");
}

// Headers.

TEST(WriteFileHeaders, ThreePiecesWithoutSpacing) {
    velINIStream document;
    document.SetValue("VI_Global", "a", "1", false);
    document.SetValue("S", "b", "2", true);
    EXPECT_EQ(WrittenText(document), "a=1\r\n[S]\r\nb=\"2\"");
}

TEST(WriteFileHeaders, ABlankLineAtTheEndOfASectionStandsInFrontOfTheNext) {
    velINIStream document;
    document.SetValue("S", "a", "1", false);
    document.AddBlankLine("S");
    document.SetValue("T", "b", "2", false);
    EXPECT_EQ(WrittenText(document), "[S]\r\na=1\r\n\r\n[T]\r\nb=2");
}

TEST(WriteFileHeaders, TheGlobalSectionHasNoneUnderEitherName) {
    for (const char* name : {"VI_Global", "vi_global"}) {
        velINIStream document;
        document.SetValue(name, "a", "1", false);
        document.SetValue(name, "b", "2", false);
        document.Sections[0].SetSectionComment("lost");
        EXPECT_EQ(WrittenText(document), "a=1\r\nb=2");
    }
    EXPECT_EQ(WrittenText(MakeDocument("VI_GLOBAL")), "[VI_GLOBAL]");
}

TEST(WriteFileHeaders, TheGlobalSectionBehindAnotherRunsIntoIt) {
    velINIStream document;
    document.SetValue("S", "a", "1", false);
    document.SetValue("VI_Global", "b", "2", false);
    EXPECT_EQ(WrittenText(document), "[S]\r\na=1b=2");
}

TEST(WriteFileHeaders, OnlyEmptySectionsStartWithABracket) {
    velINIStream document;
    document.Sections.emplace_back().Name = "A";
    document.Sections.emplace_back().Name = "B";
    EXPECT_EQ(WrittenText(document), "[A]\r\n[B]");
    EXPECT_EQ(WrittenText(document, true), "[A]\r\n\r\n[B]\r\n");
}

TEST(WriteFileHeaders, NothingButAnEmptyGlobalSectionInFrontMakesNoLineEnd) {
    velINIStream document = MakeDocument("VI_Global");
    document.Sections.emplace_back().Name = "B";
    for (const TextEncoding encoding : {TextEncoding::None, TextEncoding::Utf8}) {
        const std::string text = WrittenText(document, false, encoding);
        EXPECT_EQ(text.substr(text.size() - 3), "[B]");
        EXPECT_LE(text.size(), 6U) << "nothing but the mark stands in front of it";
    }
    EXPECT_EQ(WrittenText(document, false, TextEncoding::Utf16LittleEndian).size(), 2U + 6U);
    EXPECT_EQ(WrittenText(document, false, TextEncoding::Utf16BigEndian).size(), 2U + 6U);
    EXPECT_EQ(WrittenText(document, false, TextEncoding::Utf32LittleEndian).size(), 4U + 12U);
    EXPECT_EQ(WrittenText(document, false, TextEncoding::Utf32BigEndian).size(), 4U + 12U);
}

TEST(WriteFileHeaders, TheCommentHasOneSpaceBehindItsSign) {
    velINIStream document = MakeDocument();
    document.Sections[0].SetSectionComment("note");
    EXPECT_EQ(WrittenText(document), "[S]; note");
    EXPECT_EQ(WrittenText(document, true), "[S] ; note\r\n");
}

TEST(WriteFileHeaders, NamesAndCommentsAreEscaped) {
    velINIStream document = MakeDocument("ä\"");
    document.Sections[0].SetSectionComment("ö\\");
    EXPECT_EQ(WrittenText(document), "[\\x00e4\\\"]; \\x00f6\\\\");
}

// Entries.

TEST(WriteFileEntries, ValuesAreEscapedAndQuoted) {
    struct Row {
        std::string Value;
        bool Quoted;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {"b", false, "k=b"},
        {"b c", true, "k=\"b c\""},
        {"a\"b", true, R"(k="a\"b")"},
        {"ä", false, "k=\\x00e4"},
        {"😀", false, "k=\\xd83d\\xde00"},
        {"it's", true, "k=\"it's\""},
        {"", false, "k="},
        {"", true, "k=\"\""},
        {"a\nb\\", false, R"(k=a\nb\\)"},
    };
    for (const Row& row : rows) {
        velINIStream document;
        document.SetValue("VI_Global", "k", row.Value, row.Quoted);
        EXPECT_EQ(WrittenText(document), row.Expected);
    }
}

TEST(WriteFileEntries, NamesAreEscaped) {
    velINIStream document;
    document.SetValue("VI_Global", "kä\"", "1", false);
    EXPECT_EQ(WrittenText(document), "k\\x00e4\\\"=1");
}

TEST(WriteFileEntries, EachKindByItsRule) {
    struct Row {
        KeyKind Kind;
        std::string Bare;
        std::string Spaced;
    };
    const std::vector<Row> rows = {
        {KeyKind::EmptyLine, "[S]\r\n", "[S]\r\n"},
        {KeyKind::Comment, "[S]\r\n; v", "[S]\r\n; v\r\n"},
        {KeyKind::Value, "[S]\r\nn=v", "[S]\r\nn = v\r\n"},
        {KeyKind::Array, "[S]", "[S]"}, // without elements it writes nothing at all
    };
    for (const Row& row : rows) {
        velINIStream document = MakeDocument();
        AddKey(document.Sections[0], row.Kind, "n", "v");
        EXPECT_EQ(WrittenText(document), row.Bare);
        EXPECT_EQ(WrittenText(document, true), row.Spaced);
    }
}

TEST(WriteFileEntries, TheFirstOfTheGlobalSectionHasNoLineEndInFront) {
    struct Row {
        KeyKind Kind;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {KeyKind::EmptyLine, "\r\nb=2"},
        {KeyKind::Comment, "; v\r\nb=2"},
        {KeyKind::Value, "n=v\r\nb=2"},
    };
    for (const Row& row : rows) {
        velINIStream document = MakeDocument("VI_Global");
        AddKey(document.Sections[0], row.Kind, "n", "v");
        document.SetValue("VI_Global", "b", "2", false);
        EXPECT_EQ(WrittenText(document), row.Expected);
    }
}

TEST(WriteFileEntries, CommentsBehindThemFollow) {
    for (const KeyKind kind : {KeyKind::EmptyLine, KeyKind::Comment, KeyKind::Value}) {
        velINIStream document = MakeDocument();
        IniKey& key = AddKey(document.Sections[0], kind, "n", "v");
        const std::string bare = WrittenText(document);
        key.SetKeyComment("nöte");
        EXPECT_EQ(WrittenText(document), bare + "; n\\x00f6te");
    }
    velINIStream document = MakeDocument();
    AddKey(document.Sections[0], KeyKind::Value, "n", "v").SetKeyComment("note");
    EXPECT_EQ(WrittenText(document, true), "[S]\r\nn = v ; note\r\n");
    document.Sections[0].Keys[0].Comment = "";
    EXPECT_EQ(WrittenText(document), "[S]\r\nn=v; ") << "an empty comment is still one";
}

TEST(WriteFileEntries, CommentsAreEscaped) {
    velINIStream document = MakeDocument("VI_Global");
    AddKey(document.Sections[0], KeyKind::Comment, "VI_C_1", "ä \"b\" c\\d");
    EXPECT_EQ(WrittenText(document), "; \\x00e4 \\\"b\\\" c\\\\d");
}

TEST(WriteFileEntries, VerbatimCommentsKeepQuotesAndBackslashes) {
    velINIStream document = MakeDocument("VI_Global");
    IniKey& comment =
        AddKey(document.Sections[0], KeyKind::Comment, "VI_C_1", "ä \"b\" c\\d\\\\\n\\\"");
    comment.Verbatim = true;
    EXPECT_EQ(WrittenText(document), "; \\x00e4 \"b\" c\\d\\\\\\n\\\"");
    comment.Value = "\\";
    EXPECT_EQ(WrittenText(document), "; \\");
}

TEST(WriteFileEntries, SpacingSetsApartAndEndsSectionsWithALineEnd) {
    velINIStream document;
    document.SetValue("VI_Global", "a", "1", false);
    document.SetValue("S", "b", "2", true);
    document.SetValue("S", "c", "3", false);
    document.Sections[1].Keys[1].SetKeyComment("note");
    EXPECT_EQ(WrittenText(document, true), "a = 1\r\n\r\n[S]\r\nb = \"2\"\r\nc = 3 ; note\r\n");
}

TEST(WriteFileEntries, SpacingAddsNothingBehindABlankLine) {
    velINIStream document;
    document.SetValue("S", "a", "1", false);
    document.AddBlankLine("S");
    document.SetValue("T", "b", "2", false);
    document.AddBlankLine("T");
    EXPECT_EQ(WrittenText(document, true), "[S]\r\na = 1\r\n\r\n[T]\r\nb = 2\r\n");
}

TEST(WriteFileEntries, WithoutSpacingOnlyABlankLineEndsTheFileWithALineEnd) {
    velINIStream document;
    document.SetValue("S", "a", "1", false);
    EXPECT_EQ(WrittenText(document), "[S]\r\na=1");
    document.AddBlankLine("S");
    EXPECT_EQ(WrittenText(document), "[S]\r\na=1\r\n");
}

// Arrays.

TEST(WriteFileArrays, EachElementIsALine) {
    EXPECT_EQ(WrittenText(MakeArrayDocument("S")), "[S]\r\nlist[]=x\r\nlist[]=\"y z\"; note");
    EXPECT_EQ(WrittenText(MakeArrayDocument("S"), true),
              "[S]\r\nlist[] = x\r\nlist[] = \"y z\" ; note\r\n");
}

TEST(WriteFileArrays, ExplicitIndexPutsTheNamesIntoTheBrackets) {
    velINIStream document = MakeArrayDocument("S");
    document.Sections[0].Keys[0].ExplicitIndex = true;
    document.Sections[0].Keys[0].Elements[0].Name = "ä";
    EXPECT_EQ(WrittenText(document), "[S]\r\nlist[\\x00e4]=x\r\nlist[7]=\"y z\"; note");
}

TEST(WriteFileArrays, TheFirstOfTheGlobalSectionHasItsElementsOnOneLine) {
    EXPECT_EQ(WrittenText(MakeArrayDocument("VI_Global")), "list[]=xlist[]=\"y z\"; note");
}

TEST(WriteFileArrays, OnlyTheLastElementOfTheLastKeyEndsWithALineEnd) {
    velINIStream document = MakeArrayDocument("S");
    document.SetValue("S", "k", "1", false);
    EXPECT_EQ(WrittenText(document, true),
              "[S]\r\nlist[] = x\r\nlist[] = \"y z\" ; note\r\nk = 1\r\n");
}

TEST(WriteFileArrays, WhatTheArrayItselfHoldsIsNotWritten) {
    velINIStream document = MakeArrayDocument("S");
    const std::string expected = WrittenText(document);
    document.Sections[0].Keys[0].Value = "value";
    document.Sections[0].Keys[0].Quoted = true;
    document.Sections[0].Keys[0].SetKeyComment("comment");
    EXPECT_EQ(WrittenText(document), expected);
}

TEST(WriteFile, UsesTheCharactersOfTheDocument) {
    velINIStream document = MakeArrayDocument("S");
    document.NewLine = "\n";
    document.CommentCharacter = '#';
    document.QuoteCharacter = '\'';
    document.AssignCharacter = ':';
    EXPECT_EQ(WrittenText(document, true), "[S]\nlist[] : x\nlist[] : 'y z' # note\n");
}

} // namespace
} // namespace velINI
