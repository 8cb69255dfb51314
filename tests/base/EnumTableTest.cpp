#include "base/EnumTable.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace Wirefall {

namespace {

enum class Fruit : std::uint8_t { Apple, Pear, Plum };
enum class Lonely : std::int32_t { Only = 0 };

static_assert(EnumCount<Fruit> == 3);
static_assert(EnumCount<Lonely> == 1);

constexpr auto Names = TableBy<Fruit, const char*>({"apple", "pear", "plum"});

TEST(EnumTable, GivesTheRowOfAnEnumerator) {
    EXPECT_STREQ(Names[Fruit::Apple], "apple");
    EXPECT_STREQ(Names[Fruit::Plum], "plum");
}

TEST(EnumTable, HasNoRowForAValueThatIsNoEnumerator) {
    ASSERT_NE(Names.Find(Fruit::Pear), nullptr);
    EXPECT_STREQ(*Names.Find(Fruit::Pear), "pear");
    EXPECT_EQ(Names.Find(static_cast<Fruit>(3)), nullptr);
    EXPECT_EQ(Names.Find(static_cast<Fruit>(255)), nullptr);
}

TEST(EnumTable, IsWalkedInTheOrderOfTheEnumeration) {
    std::string all;
    for (const char* name : Names) {
        all += name;
    }
    EXPECT_EQ(all, "applepearplum");
}

} // namespace

} // namespace Wirefall
