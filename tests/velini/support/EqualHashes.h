#pragma once

// Names made up against a hash without a secret, as an attacker would.

#include <cstddef>
#include <string>
#include <vector>

namespace velINI::Testing {

/// So many different names of 16 bytes that all have one hash by std::hash of libstdc++ (64-bit
/// MurmurHash2, whose steps can be undone). They hold none of the bytes that mean something in an
/// INI file. With another standard library the hashes differ, and the names are like any others.
std::vector<std::string> NamesOfEqualHash(std::size_t count);

} // namespace velINI::Testing
