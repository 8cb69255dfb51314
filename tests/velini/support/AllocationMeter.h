#pragma once

// Counts what a program takes from the heap through operator new. Linking the source file is
// enough: it replaces the global operators.

#include <cstddef>

namespace velINI::Testing {

struct AllocationCounts {
    std::size_t Allocations = 0;    // made since the program started
    std::size_t AllocatedBytes = 0; // in all of these, the heap's own overhead included
    std::size_t LiveBytes = 0;      // of them, those that are held now
};

AllocationCounts CurrentAllocations();

} // namespace velINI::Testing
