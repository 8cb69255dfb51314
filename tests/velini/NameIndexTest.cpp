#include "velini/internal/NameIndex.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velINI::Internal {
namespace {

struct Record {
    IniName Name;
};

class NameIndexTest : public ::testing::Test {
protected:
    std::size_t Locate(const std::string& name) { return Index.Locate(Records, name, Comparisons); }

    // Appends the name if it is new; returns its position.
    std::size_t Add(const std::string& name) {
        const std::size_t position = Locate(name);
        if (position == Records.size()) {
            Records.push_back({name});
            Index.Appended(Records);
        }
        return position;
    }

    NameIndex Index;
    std::vector<Record> Records;
    std::size_t Comparisons = 0;
};

TEST_F(NameIndexTest, FindsEveryNameWhereItStands) {
    constexpr std::size_t Count = 1000;
    for (std::size_t i = 0; i < Count; ++i) {
        ASSERT_EQ(Add(std::to_string(i)), i);
        ASSERT_EQ(Add(std::to_string(i / 2)), i / 2);
    }
    for (std::size_t i = 0; i < Count; ++i) {
        ASSERT_EQ(Locate(std::to_string(i)), i);
    }
    EXPECT_EQ(Locate("missing"), Count);
}

TEST_F(NameIndexTest, TakesOverAListThatIsThere) {
    for (int i = 0; i < 100; ++i) {
        Records.push_back({std::to_string(i % 50)});
    }
    EXPECT_EQ(Locate("0"), 0U);
    EXPECT_EQ(Locate("49"), 49U) << "the first of that name";
    EXPECT_EQ(Locate("50"), 100U);
}

TEST_F(NameIndexTest, TellsApartNamesOfAllBytes) {
    EXPECT_EQ(Add(""), 0U);
    EXPECT_EQ(Add(std::string(1, '\0')), 1U);
    EXPECT_EQ(Add(std::string(2, '\0')), 2U);
    for (int byte = 1; byte < 256; ++byte) {
        const std::size_t end = Records.size();
        EXPECT_EQ(Add(std::string(1, static_cast<char>(byte))), end);
    }
    EXPECT_EQ(Locate(""), 0U);
    EXPECT_EQ(Locate(std::string(2, '\0')), 2U);
}

TEST_F(NameIndexTest, ComparesFewNamesHoweverLongTheListIs) {
    constexpr std::size_t Count = 100'000;
    for (std::size_t i = 0; i < Count; ++i) {
        Add("name" + std::to_string(i));
    }
    EXPECT_LT(Comparisons, Count / 10) << "new names are hardly ever compared";
    Comparisons = 0;
    for (std::size_t i = 0; i < Count; ++i) {
        ASSERT_EQ(Locate("name" + std::to_string(i)), i);
    }
    EXPECT_LT(Comparisons, Count + Count / 10) << "and old ones with little but themselves";
}

} // namespace
} // namespace velINI::Internal
