#include "base/Slices.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace Wirefall {

namespace {

struct Purse {
    int Coins = 0;
};
struct Price {
    int Coins = 3;
};
struct Hat {};
struct Traveller : Purse, Price, Hat {};

void Pay(SlicesOf<Purse, const Price> traveller) {
    Purse& purse = traveller;
    const Price& price = traveller;
    purse.Coins -= price.Coins;
}

TEST(Slices, LetAFunctionWorkOnTwoPartsOfARecord) {
    Traveller traveller;
    traveller.Purse::Coins = 10;
    Pay(traveller);
    EXPECT_EQ(traveller.Purse::Coins, 7);
}

TEST(Slices, CanBePassedOn) {
    Traveller traveller;
    const SlicesOf<Purse, const Price> slices = traveller;
    Pay(slices);
    EXPECT_EQ(traveller.Purse::Coins, -3);
}

// Neither of a record that lacks one of them, nor of one that may not be changed.
static_assert(std::is_convertible_v<Traveller&, SlicesOf<Purse, const Price>>);
static_assert(!std::is_convertible_v<Purse&, SlicesOf<Purse, const Price>>);
static_assert(!std::is_convertible_v<const Traveller&, SlicesOf<Purse, const Price>>);
static_assert(std::is_convertible_v<const Traveller&, SlicesOf<const Purse, const Price>>);

} // namespace

} // namespace Wirefall
