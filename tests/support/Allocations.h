#pragma once

// Counts what a program takes from the heap through operator new, and lets one allocation fail on
// purpose. Linking the library is enough: it replaces the global operators, all but those for types
// of a larger alignment than usual. So each program that needs this is one of its own.

#include <cstddef>

namespace Wirefall::Testing {

struct AllocationCounts {
    std::size_t Allocations = 0;    ///< Made since the program started.
    std::size_t AllocatedBytes = 0; ///< In all of these, the heap's own overhead included.
    std::size_t LiveBytes = 0;      ///< Of them, those that are held now.
};

AllocationCounts CurrentAllocations();

/// How many allocations the call makes.
template <typename Call>
std::size_t AllocationsOf(const Call& call) {
    const std::size_t before = CurrentAllocations().Allocations;
    call();
    return CurrentAllocations().Allocations - before;
}

/// For as long as this lives, allocation `number` fails, counted from 1 and from now; those before
/// and behind it do not. One at a time.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether it has come to that.
    bool HasFailed() const;
};

} // namespace Wirefall::Testing
