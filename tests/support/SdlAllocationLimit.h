#pragma once

// Lets SDL run out of memory on purpose: while a limit lives, SDL gets no block of that size or
// more.

#include <SDL3/SDL_stdinc.h>

#include <cstddef>

namespace Wirefall::Testing {

class SdlAllocationLimit {
public:
    /// One at a time.
    explicit SdlAllocationLimit(std::size_t bytes);
    ~SdlAllocationLimit();
    SdlAllocationLimit(const SdlAllocationLimit&) = delete;
    SdlAllocationLimit& operator=(const SdlAllocationLimit&) = delete;
    SdlAllocationLimit(SdlAllocationLimit&&) = delete;
    SdlAllocationLimit& operator=(SdlAllocationLimit&&) = delete;
};

} // namespace Wirefall::Testing
