#include "support/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

// Atomic, because a library may have threads of its own.
std::atomic<std::size_t> Allocations = 0;
std::atomic<std::size_t> AllocatedBytes = 0;
std::atomic<std::size_t> LiveBytes = 0;
// The allocation that fails, counted from the next; 0 for none.
std::atomic<std::size_t> FailsAt = 0;

std::size_t Footprint(void* memory) {
    // The heap keeps a word of its own in front of each block.
    return malloc_usable_size(memory) + sizeof(std::size_t);
}

bool IsToFail() {
    std::size_t number = FailsAt;
    while (number != 0 && !FailsAt.compare_exchange_weak(number, number - 1)) {
    }
    return number == 1;
}

void* Allocate(std::size_t size) noexcept {
    void* const memory = IsToFail() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) {
        ++Allocations;
        AllocatedBytes += Footprint(memory);
        LiveBytes += Footprint(memory);
    }
    return memory;
}

void* AllocateOrThrow(std::size_t size) {
    if (void* const memory = Allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void Free(void* memory) noexcept {
    if (memory != nullptr) {
        LiveBytes -= Footprint(memory);
        std::free(memory);
    }
}

} // namespace

// All of them, because the sanitizers bring theirs, which neither count nor go with ours.
void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }

namespace Wirefall::Testing {

AllocationCounts CurrentAllocations() { return {Allocations, AllocatedBytes, LiveBytes}; }

FailingAllocation::FailingAllocation(std::size_t number) { FailsAt = number; }

FailingAllocation::~FailingAllocation() { FailsAt = 0; }

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): there is one at a time.
bool FailingAllocation::HasFailed() const { return FailsAt == 0; }

} // namespace Wirefall::Testing
