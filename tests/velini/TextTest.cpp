#include "velini/Text.h"

#include "velini/support/TestFiles.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace velINI {
namespace {

using Testing::Bytes;
using Tokens = std::vector<std::string>;

TEST(SplitTokens, TakesWhatStandsBetweenRunsOfDelimiters) {
    EXPECT_EQ(SplitTokens("a,b;;c", ",;"), (Tokens{"a", "b", "c"}));
    EXPECT_EQ(SplitTokens("one", ","), Tokens{"one"});
}

TEST(SplitTokens, MakesNoEmptyTokensAtTheEnds) { EXPECT_EQ(SplitTokens(",,a,", ","), Tokens{"a"}); }

TEST(SplitTokens, HoldsTheWholeTextWhenThereIsNoToken) {
    EXPECT_EQ(SplitTokens("", ","), Tokens{""});
    EXPECT_EQ(SplitTokens(",,", ","), Tokens{",,"});
}

TEST(EncodeUtf8, TakesOneToFourBytes) {
    struct Row {
        char32_t CodePoint;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {0x00, Bytes("\0")},
        {0x41, "A"},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0x7FF, "\xDF\xBF"},
        {0x800, "\xE0\xA0\x80"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x1F600, "\xF0\x9F\x98\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(EncodeUtf8(row.CodePoint), row.Expected);
    }
}

TEST(EncodeUtf8, GivesNothingForTooLargeValues) {
    EXPECT_EQ(EncodeUtf8(0x110000), "");
    EXPECT_EQ(EncodeUtf8(0xFFFFFFFF), "");
}

TEST(EncodeUtf8, EncodesSurrogatesLikeAnyOtherValue) {
    EXPECT_EQ(EncodeUtf8(0xD800), "\xED\xA0\x80");
    EXPECT_EQ(EncodeUtf8(0xDFFF), "\xED\xBF\xBF");
}

TEST(EscapeText, EscapesByTheTable) {
    struct Row {
        std::string Text;
        std::string Expected;
    };
    const std::vector<Row> rows = {
        {"\b", "\\b"},
        {"\t", "\\t"},
        {"\n", "\\n"},
        {"\v", "\\v"},
        {"\f", "\\f"},
        {"\r", "\\r"},
        {"\"", "\\\""},
        {"\\", "\\\\"},
        {"'", "'"},
        {"\x1F", "\x1F"},
        {"\x7F", "\x7F"},
        {" !#[]^_`az~", " !#[]^_`az~"},
        {Bytes("\0"), "\\x0000"},
        {"\x07", "\\x0007"},
        {"\x0E", "\\x000e"},
        {"\x1E", "\\x001e"},
        {"\xC2\x80", "\\x0080"},
        {"\xC3\xA4", "\\x00e4"},
        {"\xDF\xBF", "\\x07ff"},
        {"\xE0\xA0\x80", "\\x0800"},
        {"\xE2\x82\xAC", "\\x20ac"},
        {"\xEF\xBF\xBF", "\\xffff"},
        {"\xF0\x90\x80\x80", "\\xd800\\xdc00"},
        {"\xF0\x9F\x98\x80", "\\xd83d\\xde00"},
        {"\xF4\x8F\xBF\xBF", "\\xdbff\\xdfff"},
        {"\xF4\x90\x80\x80", "\\x110000"},
        {"\xF7\xBF\xBF\xBF", "\\x1fffff"},
        // Neither surrogates nor forms longer than needed are looked for.
        {"\xED\xA0\x80", "\\xd800"},
        {"\xC0\x80", "\\x0000"},
        {"\xF0\x82\x82\xAC", "\\x20ac"},
        {"", ""},
        {"a\xC3\xA4z\n", "a\\x00e4z\\n"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(EscapeText(row.Text), row.Expected);
    }
}

TEST(EscapeText, KeepsEveryPlainByte) {
    for (int byte = 31; byte <= 127; ++byte) {
        const char c = static_cast<char>(byte);
        if (c != '"' && c != '\\') {
            EXPECT_EQ(EscapeText(std::string(1, c)), std::string(1, c)) << byte;
        }
    }
}

TEST(EscapeText, RaisesForInvalidSequences) {
    const std::vector<std::string> rows = {
        "\x80",                 // a following byte first
        "\xBF",                 //
        "\xF8\x88\x80\x80\x80", // the form of five bytes
        "\xFF",                 //
        "\xC3",                 // cut short
        "\xE2\x82",             //
        "\xF0\x9F\x98",         //
        "\xC3z",                // not gone on with
        "\xE2\x82z",            //
        "\xE2z\xAC",            //
        "\xF0\x9F\x98\xC0",     //
    };
    for (const std::string& row : rows) {
        try {
            EscapeText("fine until " + row);
            ADD_FAILURE() << "nothing raised";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Invalid UTF-8 sequence!");
        }
    }
}

} // namespace
} // namespace velINI
