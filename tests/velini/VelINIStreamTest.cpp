#include "velini/VelINIStream.h"

#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velINI {
namespace {

using Testing::Describe;

TEST(TextEncoding, HasTheNumbersOfTheFormat) {
    EXPECT_EQ(static_cast<int>(TextEncoding::None), 0);
    EXPECT_EQ(static_cast<int>(TextEncoding::Utf8), 1);
    EXPECT_EQ(static_cast<int>(TextEncoding::Utf16LittleEndian), 2);
    EXPECT_EQ(static_cast<int>(TextEncoding::Utf16BigEndian), 3);
    EXPECT_EQ(static_cast<int>(TextEncoding::Utf32LittleEndian), 4);
    EXPECT_EQ(static_cast<int>(TextEncoding::Utf32BigEndian), 5);
    EXPECT_EQ(sizeof(TextEncoding), 1U);
}

TEST(VelINIStream, StartsEmptyWithTheDefaultCharacters) {
    const velINIStream document;
    EXPECT_EQ(document.NewLine, "\r\n");
    EXPECT_EQ(document.CommentCharacter, ';');
    EXPECT_EQ(document.QuoteCharacter, '"');
    EXPECT_EQ(document.AssignCharacter, '=');
    EXPECT_EQ(document.Locale, std::locale());
    EXPECT_EQ(document.SectionCount(), 0U);
    EXPECT_FALSE(document.HasSection("VI_Global"));
}

TEST(VelINIStream, CopiesAreDeep) {
    velINIStream original;
    original.SetValue("S", "k", "v", false);
    velINIStream copy = original;
    copy.SetValue("S", "k", "changed", false);
    copy.SetValue("T", "k", "v", false);
    EXPECT_EQ(Describe(original), "[S] k=v");
}

TEST(VelINIStreamSectionAt, GivesTheSection) {
    velINIStream document;
    document.SetValue("S", "k", "v", false);
    document.SetValue("T", "k", "v", false);
    const velINIStream& constant = document;
    EXPECT_EQ(document.SectionAt(0).Name, "S");
    EXPECT_EQ(constant.SectionAt(1).Name, "T");
    EXPECT_EQ(document.SectionCount(), 2U);
}

TEST(VelINIStreamSectionAt, RaisesOutOfRange) {
    velINIStream document;
    document.SetValue("S", "k", "v", false);
    const velINIStream& constant = document;
    for (const std::ptrdiff_t index : {-1, 1, 2, -100}) {
        try {
            document.SectionAt(index);
            ADD_FAILURE() << "nothing raised";
        } catch (const std::logic_error& error) {
            EXPECT_STREQ(error.what(), "Index is out of range!");
        }
        EXPECT_THROW(constant.SectionAt(index), std::logic_error);
    }
}

TEST(VelINIStreamFindSection, FindsTheFirstOfThatName) {
    velINIStream document;
    document.SetValue("S", "k", "v", false);
    document.Sections.push_back(document.Sections[0]);
    const velINIStream& constant = document;
    EXPECT_EQ(document.FindSection("S"), document.Sections.begin());
    EXPECT_EQ(constant.FindSection("S"), constant.Sections.begin());
    EXPECT_EQ(document.FindSection("s"), document.Sections.end());
    EXPECT_TRUE(document.HasSection("S"));
    EXPECT_FALSE(document.HasSection("s"));
}

TEST(VelINIStreamGetValue, GivesTheValueOrTheDefault) {
    velINIStream document;
    document.SetValue("S", "k", "v", true);
    document.SetValue("S", "empty", "", false);
    EXPECT_EQ(document.GetValue("S", "k", "default"), "v");
    EXPECT_EQ(document.GetValue("S", "missing", "default"), "default");
    EXPECT_EQ(document.GetValue("missing", "k", "default"), "default");
    EXPECT_EQ(document.GetValue("S", "empty", "default"), "");
}

TEST(VelINIStreamGetValue, LooksOnlyIntoTheFirstSectionOfThatName) {
    velINIStream document;
    document.SetValue("S", "k", "first", false);
    document.Sections.push_back(document.Sections[0]);
    document.Sections[1].Keys[0].Value = "second";
    document.Sections[1].SetKeyValue("other", "x", false);
    EXPECT_EQ(document.GetValue("S", "k", ""), "first");
    EXPECT_EQ(document.GetValue("S", "other", "default"), "default");
}

TEST(VelINIStreamSetValue, MakesSectionAndKey) {
    velINIStream document;
    document.SetValue("S", "k", "v", true);
    document.SetValue("T", "k", "w", false);
    document.SetValue("S", "l", "x", false);
    EXPECT_EQ(Describe(document), "[S] k=\"v\" | l=x\n[T] k=w");
}

TEST(VelINIStreamSetValue, KeepsThePlaceAndTheComment) {
    velINIStream document;
    document.SetValue("S", "a", "1", false);
    document.SetValue("S", "b", "2", false);
    document.Sections[0].Keys[0].SetKeyComment("note");
    document.SetValue("S", "a", "new", true);
    EXPECT_EQ(Describe(document), "[S] a=\"new\" ;note | b=2");
}

TEST(VelINIStreamSetValue, TakesTextsOfItsOwnSections) {
    velINIStream document;
    document.SetValue("S", "k", "v", false);
    for (int i = 0; i < 20; ++i) {
        document.SetValue(std::to_string(i), document.Sections[0].Name, document.Sections[0].Name,
                          false);
    }
    EXPECT_EQ(document.GetValue("19", "S", ""), "S");
}

TEST(VelINIStreamAddBlankLine, AppendsAndCounts) {
    velINIStream document;
    document.SetValue("S", "k", "v", false);
    document.AddBlankLine("S");
    document.AddBlankLine("S");
    EXPECT_EQ(Describe(document), "[S] k=v | (blank) | (blank)");
    EXPECT_EQ(document.Sections[0].Keys[1].Name, "VI_EL_1");
    EXPECT_EQ(document.Sections[0].Keys[2].Name, "VI_EL_2");
    EXPECT_EQ(document.Sections[0].EmptyLineCount, 2U);
}

TEST(VelINIStreamAddBlankLine, AnUnknownSectionIsLeftAlone) {
    velINIStream document;
    document.SetValue("S", "k", "v", false);
    document.AddBlankLine("T");
    document.AddBlankLine("");
    EXPECT_EQ(Describe(document), "[S] k=v");
    EXPECT_EQ(document.Sections[0].EmptyLineCount, 0U);
}

TEST(VelINIStreamAddBlankLine, AnEmptyNameMeansTheGlobalSection) {
    velINIStream document;
    document.SetValue("", "k", "v", false);
    document.SetValue("VI_Global", "k", "v", false);
    document.AddBlankLine("");
    EXPECT_EQ(Describe(document), "[] k=v\n[VI_Global] k=v | (blank)");
}

} // namespace
} // namespace velINI
