// Typed values, walks by range-for, and equality.

#include "velini/VelINIStream.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace velINI {
namespace {

velINIStream Document() {
    velINIStream document;
    document.ReadText("; head\n"
                      "\n"
                      "width = 1280\n"
                      "[S] ; note\n"
                      "; about\n"
                      "ratio = -1.5e1\n"
                      "list[] = one\n"
                      "list[] = two ; noted\n"
                      "on = Yes\n");
    return document;
}

TEST(ValueAs, NumbersAreTheWholeText) {
    EXPECT_EQ(ValueAs<int>("42"), 42);
    EXPECT_EQ(ValueAs<int>("-42"), -42);
    EXPECT_EQ(ValueAs<std::uint8_t>("255"), 255);
    EXPECT_EQ(ValueAs<double>("0.5"), 0.5);
    EXPECT_EQ(ValueAs<float>("1e3"), 1000.0F);
    for (const char* text : {"", " ", "4 2", "42x", "x", "+1", " 1", "0x10", "1.0"}) {
        EXPECT_EQ(ValueAs<int>(text), std::nullopt) << text;
    }
    EXPECT_EQ(ValueAs<std::uint8_t>("256"), std::nullopt);
    EXPECT_EQ(ValueAs<unsigned>("-1"), std::nullopt);
    EXPECT_EQ(ValueAs<int>("2147483648"), std::nullopt);
    EXPECT_EQ(ValueAs<double>("1,5"), std::nullopt);
}

TEST(ValueAs, BoolsAreEightWords) {
    for (const char* text : {"true", "True", "YES", "on", "1"}) {
        EXPECT_EQ(ValueAs<bool>(text), true) << text;
    }
    for (const char* text : {"false", "NO", "Off", "0"}) {
        EXPECT_EQ(ValueAs<bool>(text), false) << text;
    }
    for (const char* text : {"", "2", "y", "truee", " true"}) {
        EXPECT_EQ(ValueAs<bool>(text), std::nullopt) << text;
    }
}

TEST(Get, IsNothingWhereNoSuchValueIs) {
    const velINIStream document = Document();
    EXPECT_EQ(document.Get<int>("VI_Global", "width"), 1280);
    EXPECT_EQ(document.Get<double>("S", "ratio"), -15.0);
    EXPECT_EQ(document.Get<bool>("S", "on"), true);
    EXPECT_EQ(document.Get<std::string>("S", "on"), "Yes");
    EXPECT_EQ(document.Get<int>("S", "on"), std::nullopt);
    EXPECT_EQ(document.Get<int>("S", "missing"), std::nullopt);
    EXPECT_EQ(document.Get<int>("missing", "width"), std::nullopt);
    EXPECT_EQ(document.Sections[1].Get<int>("on"), std::nullopt);
}

TEST(Walk, GoesOverSectionsKeysAndElements) {
    velINIStream document = Document();
    const velINIStream& constant = document;
    std::string seen;
    for (const IniSection& section : constant) {
        seen += '[' + section.Name.Text() + ']';
        for (const IniKey& key : section) {
            seen += ' ' + key.Name.Text() + '=' + key.Value;
            for (const IniKey& element : key) {
                seen += '<' + element.Name.Text() + element.Value + '>';
            }
        }
    }
    EXPECT_EQ(seen, "[VI_Global] width=1280[S] ratio=-1.5e1 list=<0one><1two> on=Yes");
    for (IniSection& section : document) {
        for (IniKey& key : section) {
            key.Value = "x";
            for (IniKey& element : key) {
                element.Value = "y";
            }
        }
    }
    EXPECT_EQ(constant.GetValue("S", "ratio"), "x");
    EXPECT_EQ(constant.Sections[1].FindKey("list")->Elements[1].Value, "y");
    EXPECT_EQ(constant.Sections[1].Keys[0].Value, "about") << "comments are no keys";
}

TEST(Equality, IsThatOfAllFields) {
    const velINIStream document = Document();
    velINIStream other = Document();
    EXPECT_EQ(other, document);
    EXPECT_EQ(other.GetValue("S", "on"), "Yes");
    EXPECT_EQ(other, document) << "looking something up changes nothing";
    other.Sections[1].Keys[2].Elements[1].Comment = "else";
    EXPECT_NE(other, document);
    other = document;
    EXPECT_EQ(other, document);
    other.Sections[1].Name = "T";
    EXPECT_NE(other, document);
    other = document;
    other.NewLine = "\n";
    EXPECT_NE(other, document);
}

TEST(OptionalText, TellsMissingFromEmpty) {
    OptionalText text;
    EXPECT_EQ(text, std::nullopt);
    EXPECT_NE(text, "");
    EXPECT_THROW(static_cast<void>(text.value()), std::bad_optional_access);
    text = "";
    EXPECT_NE(text, std::nullopt);
    EXPECT_EQ(text, "");
    const std::optional<std::string> standard = text;
    EXPECT_EQ(standard, "");
    text = standard;
    EXPECT_EQ(text.value(), "");
    OptionalText copy = text;
    *copy = "other";
    EXPECT_EQ(text, "");
    EXPECT_NE(copy, text);
    text.reset();
    EXPECT_EQ(text.value_or("none"), "none");
}

TEST(IniName, ReadsLikeAString) {
    IniName name = "key";
    EXPECT_EQ(name, "key");
    EXPECT_EQ(name, std::string("key"));
    EXPECT_EQ(std::string_view("key"), name);
    EXPECT_EQ(name, IniName("key"));
    const std::string text = name;
    const std::string_view view = name;
    EXPECT_EQ(text, view);
    EXPECT_EQ(name.size(), 3U);
    EXPECT_EQ(name[1], 'e');
    EXPECT_EQ(std::string(name.begin(), name.end()), "key");
    EXPECT_EQ(name.find("y"), 2U);
    EXPECT_EQ(name.substr(1), "ey");
    EXPECT_TRUE(name.starts_with("ke") && name.ends_with("ey"));
    name = name.Text() + "2";
    EXPECT_STREQ(name.c_str(), "key2");
}

} // namespace
} // namespace velINI
