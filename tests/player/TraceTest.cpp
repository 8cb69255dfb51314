#include "player/Trace.h"

#include <gtest/gtest.h>

namespace Wirefall {
namespace {

using Commands = std::vector<PlayCommand>;

std::size_t FieldNamed(std::string_view name) {
    std::size_t field = 0;
    while (StateFieldName(field) != name) {
        ++field;
    }
    return field;
}

std::vector<std::string_view> NamesOf(const std::vector<std::size_t>& fields) {
    std::vector<std::string_view> names;
    names.reserve(fields.size());
    for (const std::size_t field : fields) {
        names.push_back(StateFieldName(field));
    }
    return names;
}

TEST(Forecaster, TellsNothingWhileAllTakesItsCourse) {
    Forecaster forecaster;
    StateDigest digest{};
    const std::size_t tick = FieldNamed("Tick");
    digest[tick] = 5;
    EXPECT_EQ(forecaster.Next(digest).size(), 1U);
    for (int step = 0; step < 3; ++step) {
        digest[tick] += 5;
        EXPECT_TRUE(forecaster.Next(digest).empty());
    }
    EXPECT_EQ(forecaster.Next(digest).size(), 1U) << "It has stopped";
    EXPECT_TRUE(forecaster.Next(digest).empty());
}

TEST(Forecaster, TellsOfEachChangeOfASteadyField) {
    Forecaster forecaster;
    StateDigest digest{};
    const std::size_t level = FieldNamed("Level");
    for (std::uint64_t number = 1; number < 4; ++number) {
        digest[level] = number;
        const std::vector<TraceMark> marks = forecaster.Next(digest);
        ASSERT_EQ(marks.size(), 1U);
        EXPECT_EQ(marks[0].Field, level);
        EXPECT_TRUE(forecaster.Next(digest).empty());
    }
}

TEST(Trace, OfTheSamePlayIsTheSame) {
    const Commands play = ParsePlay("7s 3u p 400t 1f 200t");
    const std::string trace = MakeTrace(play);
    EXPECT_EQ(MakeTrace(play), trace);
    EXPECT_FALSE(CompareWithTrace(play, trace));
}

TEST(Trace, NamesTheFirstStepAndFieldsThatDiffer) {
    const std::string trace = MakeTrace(ParsePlay("100t r 100t"));
    const auto cursor = CompareWithTrace(ParsePlay("100t l 100t"), trace);
    ASSERT_TRUE(cursor);
    EXPECT_EQ(cursor->Step, 101U);
    EXPECT_EQ(NamesOf(cursor->Fields), (std::vector<std::string_view>{"CursorX"}));
    EXPECT_EQ(Describe(*cursor), "step 101 (level 1, tick 101): CursorX differs, here it is 4");

    const auto missing = CompareWithTrace(ParsePlay("200t"), trace);
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->Step, 101U);
    EXPECT_EQ(NamesOf(missing->Fields), (std::vector<std::string_view>{"CursorX", "Revision"}));
    EXPECT_EQ(Describe(*missing),
              "step 101 (level 1, tick 101): CursorX differs, here it is 5; so do Revision");
}

TEST(Trace, SaysWhenAListDiffers) {
    const std::string trace = MakeTrace(ParsePlay("10t p 5t"));
    const auto difference = CompareWithTrace(ParsePlay("10t e p 5t"), trace);
    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->Step, 11U);
    EXPECT_EQ(StateFieldName(difference->Fields.front()), "PreviewRotation")
        << "The first tile of all is a Cross, which has no rotation";
}

TEST(Trace, DiffersWhereOneEndsBeforeTheOther) {
    const Commands play = ParsePlay("50t");
    const std::string trace = MakeTrace(play);
    const auto shorter = CompareWithTrace(ParsePlay("49t"), trace);
    ASSERT_TRUE(shorter);
    EXPECT_EQ(shorter->Step, 50U);
    const auto longer = CompareWithTrace(ParsePlay("51t"), trace);
    ASSERT_TRUE(longer);
    EXPECT_EQ(longer->Step, 51U);
    EXPECT_EQ(Describe(*longer),
              "step 51 (level 1, tick 51): the play and the trace end differently");
}

TEST(Trace, SeesWhatHappensAfterTheLastStep) {
    const std::string trace = MakeTrace(ParsePlay("50t"));
    EXPECT_TRUE(CompareWithTrace(ParsePlay("50t u"), trace));
}

// A trace that has been cut or changed anywhere is never taken for a good one.
TEST(Trace, IsNotTheSameWithAnyByteCutOrChanged) {
    const Commands play = ParsePlay("3u p 60t");
    const std::string trace = MakeTrace(play);
    const auto isTakenFor = [&play](const std::string& damaged) {
        try {
            return !CompareWithTrace(play, damaged).has_value();
        } catch (const PlayError&) {
            return false;
        }
    };
    ASSERT_TRUE(isTakenFor(trace));
    for (std::size_t i = 0; i < trace.size(); ++i) {
        EXPECT_FALSE(isTakenFor(trace.substr(0, i))) << "cut to " << i;
        for (const char flip : {'\x01', '\x80', '\x7f'}) {
            std::string changed = trace;
            changed[i] = static_cast<char>(changed[i] ^ flip);
            EXPECT_FALSE(isTakenFor(changed)) << "byte " << i;
        }
    }
}

} // namespace
} // namespace Wirefall
