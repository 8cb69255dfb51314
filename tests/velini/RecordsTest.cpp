// The fields of the records are used as what they stand for: texts as std::string, comments as
// std::optional<std::string>, and lists as std::vector.

#include "velini/VelINIStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace velINI {
namespace {

IniKey MakeKey(const std::string& name) {
    IniKey key;
    key.Name = name;
    return key;
}

// As if each were the standard type itself.
std::size_t LengthOf(const std::string& text) { return text.size(); }
std::string TextOr(const std::optional<std::string>& text) { return text.value_or("none"); }
std::size_t CountOf(const std::vector<IniKey>& keys) { return keys.size(); }
void AppendTo(std::vector<IniKey>& keys) { keys.push_back(MakeKey("appended")); }

template <class Text>
void ExpectText(Text& text) {
    EXPECT_TRUE(text.empty());
    text = "literal";
    text = std::string("string");
    text = std::string_view("view = 1");
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(text, "view = 1");
    EXPECT_EQ(text, std::string("view = 1"));
    EXPECT_EQ(std::string_view("view = 1"), text);
    EXPECT_NE(text, "other");
    EXPECT_EQ(text.size(), 8U);
    EXPECT_STREQ(text.c_str(), "view = 1");
    EXPECT_EQ(text.find("="), 5U);
    EXPECT_EQ(text.find("x"), std::string::npos);
    EXPECT_EQ(text.substr(5), "= 1");
    EXPECT_EQ(text[0], 'v');
    EXPECT_TRUE(text.starts_with("view") && text.ends_with("1"));
    EXPECT_EQ(std::count(text.begin(), text.end(), ' '), 2);
    EXPECT_EQ(LengthOf(text), 8U);
    const std::string copy = text;
    const std::string_view view = text;
    EXPECT_EQ(copy, view);
    std::ostringstream out;
    out << text;
    EXPECT_EQ(out.str(), copy);
    const std::map<std::string, int> numbers = {{"view = 1", 1}};
    EXPECT_EQ(numbers.at(text), 1);
    text = copy + "2";
    EXPECT_EQ(text, "view = 12");
    text = {};
    EXPECT_EQ(text, "");
}

TEST(Records, HaveNamesAndValuesLikeStrings) {
    IniKey key;
    IniSection section;
    ExpectText(key.Name);
    ExpectText(key.Value);
    ExpectText(section.Name);
}

template <class Comment>
void ExpectOptional(Comment& comment) {
    EXPECT_FALSE(comment);
    EXPECT_FALSE(comment.has_value());
    EXPECT_EQ(comment, std::nullopt);
    EXPECT_EQ(comment, std::optional<std::string>());
    EXPECT_EQ(std::optional<std::string>(), comment);
    EXPECT_NE(comment, "");
    EXPECT_EQ(comment.value_or("none"), "none");
    EXPECT_EQ(TextOr(comment), "none");
    EXPECT_THROW(static_cast<void>(comment.value()), std::bad_optional_access);
    comment = "";
    EXPECT_TRUE(comment.has_value());
    EXPECT_NE(comment, std::nullopt);
    EXPECT_EQ(comment, "");
    comment = std::string("text");
    EXPECT_EQ(*comment, "text");
    EXPECT_EQ(comment, std::string("text"));
    EXPECT_EQ(comment, std::string_view("text"));
    EXPECT_EQ(comment, std::optional<std::string>("text"));
    EXPECT_EQ(std::optional<std::string>("text"), comment);
    EXPECT_EQ(comment->size(), 4U);
    *comment += "s";
    EXPECT_EQ(comment.value(), "texts");
    const std::optional<std::string> copy = comment;
    comment = std::nullopt;
    EXPECT_FALSE(comment);
    comment = copy;
    EXPECT_EQ(comment, copy);
    comment.reset();
    EXPECT_FALSE(comment);
}

TEST(Records, HaveCommentsLikeOptionals) {
    IniKey key;
    IniSection section;
    ExpectOptional(key.Comment);
    ExpectOptional(section.Comment);
}

template <class Keys>
void ExpectVector(Keys& keys) {
    EXPECT_TRUE(keys.empty());
    EXPECT_EQ(keys.begin(), keys.end());
    EXPECT_EQ(std::as_const(keys).begin(), std::as_const(keys).end());
    EXPECT_THROW(static_cast<void>(keys.at(0)), std::out_of_range);
    keys.push_back(MakeKey("b"));
    keys.emplace_back().Name = "c";
    keys.insert(keys.begin(), MakeKey("a"));
    EXPECT_EQ(keys.size(), 3U);
    EXPECT_EQ(CountOf(keys), 3U);
    EXPECT_EQ(keys[0].Name, "a");
    EXPECT_EQ(keys.at(1).Name, "b");
    EXPECT_EQ(std::as_const(keys)[1].Name, "b");
    EXPECT_EQ(std::as_const(keys).at(1).Name, "b");
    EXPECT_EQ(keys.front().Name, "a");
    EXPECT_EQ(keys.back().Name, "c");
    std::string names;
    for (const IniKey& key : keys) {
        names += key.Name;
    }
    EXPECT_EQ(names, "abc");
    const auto found =
        std::find_if(keys.begin(), keys.end(), [](const IniKey& key) { return key.Name == "b"; });
    EXPECT_EQ(found - keys.begin(), 1);
    keys.erase(found);
    keys.pop_back();
    AppendTo(keys);
    EXPECT_EQ(keys, (std::vector<IniKey>{MakeKey("a"), MakeKey("appended")}));
    const std::vector<IniKey> copy = keys;
    keys.clear();
    EXPECT_TRUE(keys.empty());
    keys.insert(keys.end(), copy[0]);
    EXPECT_EQ(keys.size(), 1U);
    keys = copy;
    EXPECT_EQ(keys.size(), 2U);
    keys = {MakeKey("only")};
    EXPECT_EQ(keys.size(), 1U);
    keys = {};
    EXPECT_TRUE(keys.empty());
}

TEST(Records, HaveListsLikeVectors) {
    IniKey key;
    IniSection section;
    ExpectVector(key.Elements);
    ExpectVector(section.Keys);
    velINIStream document;
    document.Sections.push_back(section);
    document.Sections.emplace_back().Name = "S";
    EXPECT_EQ(document.Sections.size(), 2U);
    EXPECT_TRUE(document.HasSection("S"));
}

} // namespace
} // namespace velINI
