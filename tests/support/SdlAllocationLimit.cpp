#include "support/SdlAllocationLimit.h"

namespace Wirefall::Testing {

namespace {

struct MemoryFunctions {
    SDL_malloc_func Malloc = nullptr;
    SDL_calloc_func Calloc = nullptr;
    SDL_realloc_func Realloc = nullptr;
    SDL_free_func Free = nullptr;
};

MemoryFunctions Former;
std::size_t Limit = 0;

void* LimitedMalloc(std::size_t size) { return size < Limit ? Former.Malloc(size) : nullptr; }

void* LimitedCalloc(std::size_t count, std::size_t size) {
    return size == 0 || count <= (Limit - 1) / size ? Former.Calloc(count, size) : nullptr;
}

void* LimitedRealloc(void* memory, std::size_t size) {
    return size < Limit ? Former.Realloc(memory, size) : nullptr;
}

} // namespace

SdlAllocationLimit::SdlAllocationLimit(std::size_t bytes) {
    Limit = bytes;
    SDL_GetMemoryFunctions(&Former.Malloc, &Former.Calloc, &Former.Realloc, &Former.Free);
    SDL_SetMemoryFunctions(LimitedMalloc, LimitedCalloc, LimitedRealloc, Former.Free);
}

SdlAllocationLimit::~SdlAllocationLimit() {
    SDL_SetMemoryFunctions(Former.Malloc, Former.Calloc, Former.Realloc, Former.Free);
}

} // namespace Wirefall::Testing
