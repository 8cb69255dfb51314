#include "velini/support/AllocationMeter.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

// The programs that link this use one thread.
velINI::Testing::AllocationCounts counts;

std::size_t Footprint(void* memory) {
    // The heap keeps a word of its own in front of each block.
    return malloc_usable_size(memory) + sizeof(std::size_t);
}

} // namespace

velINI::Testing::AllocationCounts velINI::Testing::CurrentAllocations() { return counts; }

void* operator new(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++counts.Allocations;
    counts.AllocatedBytes += Footprint(memory);
    counts.LiveBytes += Footprint(memory);
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        counts.LiveBytes -= Footprint(memory);
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
