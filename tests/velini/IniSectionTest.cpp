#include "velini/IniSection.h"

#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <vector>

namespace velINI {
namespace {

using Testing::Describe;

IniSection MakeSection() {
    IniSection section;
    section.SetKeyValue("a", "1", false);
    section.SetKeyValue("b", "2", false);
    return section;
}

TEST(InsertPosition, HasTheNumbersOfTheFormat) {
    EXPECT_EQ(static_cast<int>(InsertPosition::Begin), 0);
    EXPECT_EQ(static_cast<int>(InsertPosition::End), 1);
    EXPECT_EQ(static_cast<int>(InsertPosition::Before), 2);
    EXPECT_EQ(static_cast<int>(InsertPosition::After), 3);
    EXPECT_EQ(sizeof(InsertPosition), 1U);
}

TEST(IniSectionFindKey, FindsTheFirstOfThatName) {
    IniSection section = MakeSection();
    section.Keys.push_back(section.Keys[0]);
    const IniSection& constant = section;
    EXPECT_EQ(section.FindKey("a"), section.Keys.begin());
    EXPECT_EQ(constant.FindKey("b"), constant.Keys.begin() + 1);
    EXPECT_EQ(section.FindKey("c"), section.Keys.end());
}

TEST(IniSectionFindKey, ComparesBytes) {
    IniSection section = MakeSection();
    EXPECT_EQ(section.FindKey("A"), section.Keys.end());
    EXPECT_EQ(section.FindKey(""), section.Keys.end());
    section.SetKeyValue(std::string("a\0b", 3), "3", false);
    EXPECT_EQ(section.FindKey(std::string("a\0b", 3)), section.Keys.begin() + 2);
}

TEST(IniSectionFindKey, SeesWhatACallerDidToTheEntries) {
    IniSection section = MakeSection();
    section.Keys[0].Name = "renamed";
    section.Keys.erase(section.Keys.begin() + 1);
    EXPECT_EQ(section.FindKey("a"), section.Keys.end());
    EXPECT_EQ(section.FindKey("b"), section.Keys.end());
    EXPECT_EQ(section.FindKey("renamed"), section.Keys.begin());
}

TEST(IniSectionSetKeyValue, AppendsANewKey) {
    IniSection section = MakeSection();
    section.SetKeyValue("c", "x y", true);
    EXPECT_EQ(Describe(section.Keys), "a=1 | b=2 | c=\"x y\"");
    EXPECT_EQ(section.Keys[2].Kind, KeyKind::Value);
    EXPECT_FALSE(section.Keys[2].Comment.has_value());
}

TEST(IniSectionSetKeyValue, KeepsKindPlaceAndComment) {
    IniSection section = MakeSection();
    section.Keys[0].SetKeyComment("note");
    section.Keys[0].Kind = KeyKind::Array;
    section.SetKeyValue("a", "new", true);
    EXPECT_EQ(section.Keys[0].Kind, KeyKind::Array);
    EXPECT_EQ(section.Keys[0].Value, "new");
    EXPECT_TRUE(section.Keys[0].Quoted);
    EXPECT_EQ(section.Keys[0].Comment, "note");
    EXPECT_EQ(section.Keys.size(), 2U);
    section.SetKeyValue("a", "newer", false);
    EXPECT_FALSE(section.Keys[0].Quoted);
}

TEST(IniSectionSetKeyValue, TakesTextsOfItsOwnEntries) {
    IniSection section;
    section.SetKeyValue("k", "value", false);
    for (int i = 0; i < 20; ++i) {
        section.SetKeyValue("key" + std::to_string(i), section.Keys.front().Value, false);
    }
    EXPECT_EQ(section.Keys.back().Value, "value");
    section.SetKeyValue(section.Keys[0].Value, section.Keys[0].Name, false);
    EXPECT_EQ(Describe({section.Keys.back()}), "value=k");
}

TEST(IniSectionSetSectionComment, AnEmptyTextClearsIt) {
    IniSection section;
    section.SetSectionComment("note");
    EXPECT_EQ(section.Comment, "note");
    section.SetSectionComment("");
    EXPECT_FALSE(section.Comment.has_value());
}

TEST(IniSectionInsertion, GoesWhereThePositionSays) {
    struct Row {
        InsertPosition Position;
        std::optional<std::string> Anchor;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {InsertPosition::Begin, std::nullopt, "(comment c) | a=1 | b=2"},
        {InsertPosition::End, std::nullopt, "a=1 | b=2 | (comment c)"},
        {InsertPosition::Before, "a", "(comment c) | a=1 | b=2"},
        {InsertPosition::Before, "b", "a=1 | (comment c) | b=2"},
        {InsertPosition::After, "a", "a=1 | (comment c) | b=2"},
        {InsertPosition::After, "b", "a=1 | b=2 | (comment c)"},
        {static_cast<InsertPosition>(4), std::nullopt, "a=1 | b=2 | (comment c)"},
        {static_cast<InsertPosition>(255), "a", "a=1 | b=2 | (comment c)"},
    };
    for (const Row& row : rows) {
        IniSection section = MakeSection();
        section.AddComment("VI_C_1", "c", row.Position, row.Anchor, false);
        EXPECT_EQ(Describe(section.Keys), row.Expected);

        IniSection blank = MakeSection();
        blank.AddEmptyLine("VI_EL_1", row.Position, row.Anchor);
        ASSERT_EQ(blank.Keys.size(), 3U);
        EXPECT_EQ(blank.FindKey("VI_EL_1") - blank.Keys.begin(),
                  section.FindKey("VI_C_1") - section.Keys.begin());
    }
}

TEST(IniSectionInsertion, WorksInAnEmptySection) {
    for (const InsertPosition position : {InsertPosition::Begin, InsertPosition::End}) {
        IniSection section;
        section.AddEmptyLine("VI_EL_1", position, std::nullopt);
        EXPECT_EQ(Describe(section.Keys), "(blank)");
    }
}

TEST(IniSectionInsertion, RaisesForAnUnknownAnchor) {
    for (const InsertPosition position : {InsertPosition::Before, InsertPosition::After}) {
        IniSection section = MakeSection();
        try {
            section.AddEmptyLine("VI_EL_1", position, "missing");
            ADD_FAILURE() << "nothing raised";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "\"missing\" could not be found!");
        }
        EXPECT_THROW(section.AddComment("VI_C_1", "", position, "", false), std::runtime_error);
        EXPECT_EQ(Describe(section.Keys), "a=1 | b=2");
    }
}

TEST(IniSectionInsertion, RaisesWithoutAnAnchor) {
    for (const InsertPosition position : {InsertPosition::Before, InsertPosition::After}) {
        IniSection section = MakeSection();
        EXPECT_THROW(section.AddEmptyLine("VI_EL_1", position, std::nullopt),
                     std::bad_optional_access);
        EXPECT_THROW(section.AddComment("VI_C_1", "", position, std::nullopt, false),
                     std::bad_optional_access);
    }
}

TEST(IniSectionInsertion, DoesNothingWhenTheNameExists) {
    IniSection section = MakeSection();
    section.AddComment("a", "text", InsertPosition::Begin, std::nullopt, false);
    section.AddEmptyLine("b", InsertPosition::Before, "missing");
    EXPECT_EQ(Describe(section.Keys), "a=1 | b=2");
}

TEST(IniSectionAddComment, TakesTextAndVerbatim) {
    IniSection section;
    section.AddComment("VI_C_1", "text", InsertPosition::End, std::nullopt, true);
    section.AddComment("VI_C_2", "", InsertPosition::End, std::nullopt, false);
    EXPECT_EQ(section.Keys[0].Kind, KeyKind::Comment);
    EXPECT_EQ(section.Keys[0].Name, "VI_C_1");
    EXPECT_EQ(section.Keys[0].Value, "text");
    EXPECT_TRUE(section.Keys[0].Verbatim);
    EXPECT_FALSE(section.Keys[1].Verbatim);
    EXPECT_EQ(section.CommentCount, 0U) << "counting is the caller's";
}

TEST(IniSectionAddEmptyLine, HasNameKindAndNothingElse) {
    IniSection section;
    section.AddEmptyLine("VI_EL_3", InsertPosition::End, std::nullopt);
    EXPECT_EQ(section.Keys[0].Kind, KeyKind::EmptyLine);
    EXPECT_EQ(section.Keys[0].Name, "VI_EL_3");
    EXPECT_EQ(section.Keys[0].Value, "");
    EXPECT_FALSE(section.Keys[0].Comment.has_value());
    EXPECT_EQ(section.EmptyLineCount, 0U);
}

TEST(IniSectionSetArrayElement, AppendsTheArray) {
    IniSection section = MakeSection();
    section.SetArrayElement("list", "x", false, false, "", "ignored", false);
    section.SetArrayElement("list", "y", false, false, "", "", false);
    EXPECT_EQ(Describe(section.Keys), "a=1 | b=2 | list[]{0=x, 1=y}");
    EXPECT_EQ(section.Keys[2].Value, "");
    EXPECT_EQ(section.Keys[2].NextIndex, 1U);
    EXPECT_FALSE(section.Keys[2].ExplicitIndex);
}

TEST(IniSectionSetArrayElement, TakesAnExplicitIndex) {
    IniSection section;
    section.SetArrayElement("list", "x", false, false, "", "7", true);
    section.SetArrayElement("list", "y", false, false, "", "", true);
    EXPECT_EQ(Describe(section.Keys), "list[]{7=x, 8=y}") << "an empty one is made";
    EXPECT_FALSE(section.Keys[0].ExplicitIndex);
}

TEST(IniSectionSetArrayElement, QuotedOfTheArrayTellsHowItWasMade) {
    IniSection section;
    section.SetArrayElement("explicit", "x", false, false, "", "7", true);
    section.SetArrayElement("explicit", "y", false, false, "", "", false);
    section.SetArrayElement("automatic", "x", true, true, "c", "", false);
    section.SetArrayElement("automatic", "x", true, true, "c", "7", true);
    EXPECT_TRUE(section.Keys[0].Quoted);
    EXPECT_FALSE(section.Keys[1].Quoted);
}

TEST(IniSectionSetArrayElement, LeavesAnotherKindAsItIs) {
    IniSection section = MakeSection();
    section.SetArrayElement("a", "x", false, false, "", "", false);
    EXPECT_EQ(section.Keys[0].Kind, KeyKind::Value);
    EXPECT_EQ(section.Keys[0].Value, "1");
    EXPECT_EQ(Describe(section.Keys[0].Elements), "0=x");
}

TEST(IniSectionSetArrayElement, TakesTextsOfItsOwnEntries) {
    IniSection section;
    section.SetKeyValue("k", "v", false);
    section.Keys[0].SetKeyComment("c");
    for (int i = 0; i < 20; ++i) {
        const IniKey& first = section.Keys.front();
        section.SetArrayElement("list" + std::to_string(i), first.Value, true, true, *first.Comment,
                                first.Name, true);
    }
    EXPECT_EQ(Describe({section.Keys.back()}), "list19[]{k=\"v\" ;c}");
}

} // namespace
} // namespace velINI
