#include "velini/IniKey.h"

#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <vector>

namespace velINI {
namespace {

IniKey MakeArray(const std::vector<std::string>& names) {
    IniKey array;
    array.Kind = KeyKind::Array;
    array.Name = "list";
    for (const std::string& name : names) {
        array.Elements.emplace_back().Name = name;
    }
    return array;
}

std::string AutomaticIndexAfter(const std::vector<std::string>& names) {
    IniKey array = MakeArray(names);
    array.SetElement("", "new", false, false, "");
    return array.Elements.back().Name.Text();
}

TEST(KeyKind, HasTheNumbersOfTheFormat) {
    EXPECT_EQ(static_cast<int>(KeyKind::EmptyLine), 0);
    EXPECT_EQ(static_cast<int>(KeyKind::Comment), 1);
    EXPECT_EQ(static_cast<int>(KeyKind::Value), 2);
    EXPECT_EQ(static_cast<int>(KeyKind::Array), 3);
    EXPECT_EQ(sizeof(KeyKind), 1U);
}

TEST(IniKey, CopiesAreDeep) {
    IniKey original = MakeArray({"0"});
    original.Comment = "note";
    IniKey copy = original;
    copy.Name = "other";
    copy.Comment = "changed";
    copy.Elements[0].Value = "changed";
    EXPECT_EQ(original.Name, "list");
    EXPECT_EQ(original.Comment, "note");
    EXPECT_EQ(original.Elements[0].Value, "");
}

TEST(IniKeySetKeyComment, SetsAndReplacesTheComment) {
    IniKey key;
    EXPECT_FALSE(key.Comment.has_value());
    key.SetKeyComment("note");
    EXPECT_EQ(key.Comment, "note");
    key.SetKeyComment("another");
    EXPECT_EQ(key.Comment, "another");
}

TEST(IniKeySetKeyComment, AnEmptyTextClearsIt) {
    IniKey key;
    key.SetKeyComment("note");
    key.SetKeyComment("");
    EXPECT_FALSE(key.Comment.has_value());
}

TEST(Elements, WalksAnArray) {
    IniKey array = MakeArray({"0", "1"});
    Elements(array)[1].Value = "b";
    const IniKey& constant = array;
    EXPECT_EQ(&Elements(constant), &array.Elements);
    EXPECT_EQ(Elements(constant)[1].Value, "b");
}

TEST(Elements, RaisesForEveryOtherKind) {
    for (const KeyKind kind : {KeyKind::EmptyLine, KeyKind::Comment, KeyKind::Value}) {
        IniKey key;
        key.Kind = kind;
        const IniKey& constant = key;
        try {
            Elements(key);
            ADD_FAILURE() << "nothing raised";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Data is not of type array!");
        }
        EXPECT_THROW(Elements(constant), std::runtime_error);
    }
}

TEST(IniKeySetElement, AutomaticIndexIsOneBehindTheLargest) {
    EXPECT_EQ(AutomaticIndexAfter({}), "0");
    EXPECT_EQ(AutomaticIndexAfter({"0", "2"}), "3");
    EXPECT_EQ(AutomaticIndexAfter({"7", "3"}), "8");
    EXPECT_EQ(AutomaticIndexAfter({"-1"}), "0");
}

TEST(IniKeySetElement, AutomaticIndexReadsNamesAsTheStandardRoutineDoes) {
    EXPECT_EQ(AutomaticIndexAfter({"007"}), "8");
    EXPECT_EQ(AutomaticIndexAfter({" 12 monkeys"}), "13");
    EXPECT_EQ(AutomaticIndexAfter({"+4"}), "5");
}

TEST(IniKeySetElement, AutomaticIndexIsKeptInNextIndex) {
    IniKey array = MakeArray({"41"});
    array.SetElement("", "a", false, false, "");
    EXPECT_EQ(array.NextIndex, 42U);
    array.SetElement("100", "b", false, false, "");
    EXPECT_EQ(array.NextIndex, 42U) << "only automatic numbering counts";
}

TEST(IniKeySetElement, AutomaticIndexCountsIn32Bits) {
    EXPECT_EQ(AutomaticIndexAfter({"-5"}), "4294967292");
    EXPECT_EQ(AutomaticIndexAfter({"4294967294"}), "4294967295");
    EXPECT_EQ(AutomaticIndexAfter({"4294967295"}), "0");
    EXPECT_EQ(AutomaticIndexAfter({std::to_string(std::numeric_limits<long>::max())}), "0");
}

TEST(IniKeySetElement, AutomaticIndexRaisesForANameThatIsNotANumber) {
    IniKey array = MakeArray({"1", "x"});
    EXPECT_THROW(array.SetElement("", "a", false, false, ""), std::invalid_argument);
    EXPECT_EQ(array.Elements.size(), 2U);
}

TEST(IniKeySetElement, AutomaticIndexRaisesForATooLargeNumber) {
    IniKey array = MakeArray({"99999999999999999999"});
    EXPECT_THROW(array.SetElement("", "a", false, false, ""), std::out_of_range);
}

TEST(IniKeySetElement, AnExplicitIndexIsNotLookedAtAsANumber) {
    IniKey array = MakeArray({"x"});
    array.SetElement("y", "a", false, false, "");
    EXPECT_EQ(array.Elements.back().Name, "y");
}

TEST(IniKeySetElement, ANewElementWithoutCommentLosesItsQuotedMark) {
    IniKey array = MakeArray({});
    array.SetElement("0", "a b", true, false, "ignored");
    EXPECT_EQ(Testing::Describe(array.Elements), "0=a b");
    EXPECT_EQ(array.Elements[0].Kind, KeyKind::Value);
}

TEST(IniKeySetElement, ANewElementWithCommentTakesBoth) {
    IniKey array = MakeArray({});
    array.SetElement("0", "a b", true, true, "note");
    EXPECT_EQ(Testing::Describe(array.Elements), "0=\"a b\" ;note");
}

TEST(IniKeySetElement, ANewElementWithAnEmptyCommentStaysQuoted) {
    IniKey array = MakeArray({});
    array.SetElement("0", "a b", true, true, "");
    EXPECT_EQ(Testing::Describe(array.Elements), "0=\"a b\"");
}

TEST(IniKeySetElement, AnElementThatIsThereTakesEverything) {
    IniKey array = MakeArray({});
    array.SetElement("0", "a", false, true, "old");
    array.SetElement("1", "b", false, false, "");
    array.SetElement("0", "new", true, false, "");
    EXPECT_EQ(Testing::Describe(array.Elements), "0=\"new\" | 1=b");
    array.SetElement("0", "newer", false, false, "comment");
    EXPECT_EQ(Testing::Describe(array.Elements), "0=newer ;comment | 1=b");
}

TEST(IniKeySetElement, TakesTextsOfItsOwnElements) {
    IniKey array = MakeArray({});
    array.SetElement("", "first", false, true, "note");
    for (int i = 0; i < 20; ++i) {
        const IniKey& first = array.Elements.front();
        array.SetElement("", first.Value, true, true, *first.Comment);
    }
    EXPECT_EQ(Testing::Describe({array.Elements.back()}), "20=\"first\" ;note");
    array.SetElement("0", *array.Elements[0].Comment, true, true, array.Elements[0].Value);
    EXPECT_EQ(Testing::Describe({array.Elements.front()}), "0=\"note\" ;first");
}

} // namespace
} // namespace velINI
