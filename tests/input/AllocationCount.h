#pragma once

// Counts what the program allocates with operator new. Linking it replaces the operator.

#include <cstddef>

namespace Wirefall {

/// Since the program began.
std::size_t AllocationCount();

} // namespace Wirefall
