#pragma once

// Arrays that SDL hands out and its caller has to release with SDL_free, such as the lists of
// displays and of controllers. Wrapped at the call, they are released at the end of the scope.

#include <SDL3/SDL_stdinc.h>

#include <memory>

namespace Wirefall {

struct SdlFree {
    void operator()(void* memory) const { SDL_free(memory); }
};

/// Null when SDL could not make the list. The elements must need no destruction.
template <typename T>
using SdlArray = std::unique_ptr<T[], SdlFree>; // NOLINT(modernize-avoid-c-arrays)

} // namespace Wirefall
