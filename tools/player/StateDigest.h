#pragma once

// The whole state of the live simulation as a row of numbers, one for each field, so that two
// states can be compared field by field without keeping either. It is the same on every platform:
//
// - a number is itself, sign-extended to 64 bits;
// - a list or a record is the 64-bit FNV-1a hash (offset basis 0xcbf29ce484222325, prime
//   0x100000001b3) of its bytes: for a list first its length in 32 bits, then its elements, member
//   by member in the order of declaration. Enumerations and booleans take one byte, other members
//   the bytes of their declared width, lowest first.

#include "sim/Simulation.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Wirefall {

/// How a field goes on from one step to the next when nothing happens.
enum class Course : std::uint8_t {
    Steady, ///< It keeps its value.
    Linear, ///< It changes by as much as the step before.
};

inline constexpr std::size_t StateFieldCount = 33;

using StateDigest = std::array<std::uint64_t, StateFieldCount>;

/// The member's name, as in RunState and Simulation.
std::string_view StateFieldName(std::size_t field);
Course StateFieldCourse(std::size_t field);
/// Whether the number of the digest is the value itself, not a hash.
bool StateFieldIsNumber(std::size_t field);

StateDigest DigestOf(const Simulation& simulation);

/// Digests of one state after the other, at less cost: what is as it was is not hashed again.
class Digester {
public:
    StateDigest Next(const Simulation& simulation);

private:
    RunState LastRun;
    StateDigest LastDigest{};
    bool HasLast = false;
};

/// One number for all: FNV-1a over the numbers of the digest, each as eight bytes, lowest first.
std::uint64_t ChecksumOf(const StateDigest& digest);

} // namespace Wirefall
