#include "input/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace Wirefall {

namespace {

std::size_t Allocations = 0;

} // namespace

std::size_t AllocationCount() { return Allocations; }

} // namespace Wirefall

void* operator new(std::size_t size) {
    ++Wirefall::Allocations;
    if (void* const memory = std::malloc(size != 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
