#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <new>
#include <vector>

namespace Wirefall::Testing {
namespace {

bool CanAllocate() {
    try {
        const auto number = std::make_unique<int>(1);
        return number != nullptr;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// NOLINTBEGIN(modernize-avoid-c-arrays): these are what operator new[] is for.
TEST(Allocations, AreCounted) {
    EXPECT_EQ(AllocationsOf([] {
                  const auto list = std::make_unique<std::vector<int>>(100);
                  const auto array = std::make_unique<char[]>(100);
              }),
              3U);
    EXPECT_EQ(AllocationsOf([] {
                  const std::unique_ptr<int> number(new (std::nothrow) int(1));
                  const std::unique_ptr<int[]> array(new (std::nothrow) int[10]);
              }),
              2U);
    EXPECT_EQ(AllocationsOf([] {}), 0U);
}
// NOLINTEND(modernize-avoid-c-arrays)

TEST(Allocations, AreMeasuredWithTheHeapsOwnShare) {
    const AllocationCounts before = CurrentAllocations();
    auto block = std::make_unique<std::vector<char>>(100000);
    const AllocationCounts held = CurrentAllocations();
    block.reset();
    const AllocationCounts after = CurrentAllocations();
    EXPECT_GT(held.LiveBytes - before.LiveBytes, 100000 + sizeof(std::vector<char>));
    EXPECT_LT(held.LiveBytes - before.LiveBytes, 110000U);
    EXPECT_EQ(held.LiveBytes - before.LiveBytes, held.AllocatedBytes - before.AllocatedBytes);
    EXPECT_EQ(after.LiveBytes, before.LiveBytes);
    EXPECT_EQ(after.AllocatedBytes, held.AllocatedBytes) << "what is freed was allocated";
    EXPECT_EQ(after.Allocations, held.Allocations);
}

// Nothing is expected while an allocation fails, since that might allocate itself.

TEST(FailingAllocation, IsOneOnly) {
    std::array<bool, 3> allocated{};
    std::array<bool, 3> failed{};
    {
        const FailingAllocation second(2);
        for (std::size_t i = 0; i < allocated.size(); ++i) {
            allocated.at(i) = CanAllocate();
            failed.at(i) = second.HasFailed();
        }
    }
    EXPECT_EQ(allocated, (std::array<bool, 3>{true, false, true}));
    EXPECT_EQ(failed, (std::array<bool, 3>{false, true, true}));
}

TEST(FailingAllocation, IsNullWhereNothingMayBeThrown) {
    std::unique_ptr<int> number;
    {
        const FailingAllocation first(1);
        number.reset(new (std::nothrow) int(1));
    }
    EXPECT_EQ(number, nullptr);
}

TEST(FailingAllocation, IsForgottenAtTheEndOfItsScope) {
    { const FailingAllocation first(1); }
    EXPECT_TRUE(CanAllocate());
}

} // namespace
} // namespace Wirefall::Testing
