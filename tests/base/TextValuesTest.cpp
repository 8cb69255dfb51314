#include "base/TextValues.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace Wirefall {

namespace {

TEST(StrictInt, TakesDecimalNumbersOf32Bits) {
    struct Case {
        const char* Text;
        std::int32_t Value;
    };
    for (const Case& c : std::vector<Case>{
             {"0", 0},
             {"-0", 0},
             {"7", 7},
             {"-1", -1},
             {"007", 7},
             {"99999", 99999},
             {"2147483647", std::numeric_limits<std::int32_t>::max()},
             {"-2147483648", std::numeric_limits<std::int32_t>::min()},
             {"00000000000000000000360", 360},
         }) {
        std::int32_t value = 12345;
        EXPECT_TRUE(ParseStrictInt(c.Text, value)) << c.Text;
        EXPECT_EQ(value, c.Value);
    }
}

TEST(StrictInt, RefusesEverythingElse) {
    for (const char* const text :
         {"", "-", "--1", "+5", " 5", "5 ", "1 2", "abc", "1a", "0x10", "1.0", "1e3", "2147483648",
          "-2147483649", "99999999999999999999", "\t1", "1\n", "- 1", "\xD9\xA1"}) {
        std::int32_t value = 12345;
        EXPECT_FALSE(ParseStrictInt(text, value)) << '"' << text << '"';
        EXPECT_EQ(value, 12345);
    }
}

TEST(ParseBool, KnowsEightWordsAndTrimsNothing) {
    for (const char* const text : {"1", "true", "yes", "on", "TRUE", "Yes", "oN"}) {
        EXPECT_TRUE(ParseBool(text, false)) << text;
    }
    for (const char* const text : {"0", "false", "no", "off", "FALSE", "No", "ofF"}) {
        EXPECT_FALSE(ParseBool(text, true)) << text;
    }
    for (const char* const text : {"", " 1", "1 ", "2", "yess", "o"}) {
        EXPECT_TRUE(ParseBool(text, true)) << text;
        EXPECT_FALSE(ParseBool(text, false)) << text;
    }
}

TEST(ToLowerCopy, LowersAscii) {
    EXPECT_EQ(ToLowerCopy("AbZ-9 \xc3\x84"), "abz-9 \xc3\x84");
    EXPECT_EQ(ToLowerCopy(""), "");
}

TEST(BoolText, IsReadAsWhatItSays) {
    EXPECT_EQ(BoolText(true), "1");
    EXPECT_EQ(BoolText(false), "0");
    EXPECT_TRUE(ParseBool(BoolText(true), false));
    EXPECT_FALSE(ParseBool(BoolText(false), true));
}

} // namespace

} // namespace Wirefall
