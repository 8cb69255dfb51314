#pragma once

// The hash of the names in an index.

#include <cstdint>
#include <string_view>

namespace velINI::Internal {

/// SipHash-1-3 (Aumasson and Bernstein, 2012) under a key that each process draws at random. Who
/// does not know the key cannot make up names that have equal hashes.
std::uint64_t NameHash(std::string_view name);

} // namespace velINI::Internal
