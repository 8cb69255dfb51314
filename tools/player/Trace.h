#pragma once

// What the state was after each step of a play, in a form small enough to keep beside it
// (*.trace) and exact enough to name the first step and the first field in which another program,
// another compiler or another platform comes out differently.
//
// The file is the eight bytes "WFTRACE1", then one record for each step, then the byte 0xfe and the
// ChecksumOf the last state in eight bytes, lowest first. A record tells of the fields that have
// not gone on as their course would have them (see StateDigest.h): a Steady field that has another
// value than after the step before, or a Linear one that has not changed by as much as in that
// step. Before the first step all fields are 0. For each such field, in their order, it has one
// byte with the field's place in the digest, and two with the field's number folded to 16 bits:
// FNV-1a over its eight bytes, the four 16-bit quarters of the hash combined by exclusive or, low
// byte first. The place of the last field of a step has its highest bit set; a step without any is
// the byte 0xff.
//
// So every step compares the whole state: a field that has no record has the number that was
// foretold. A wrong number passes in one of 65536 cases, and then only until it next changes.

#include "player/Play.h"
#include "player/StateDigest.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall {

/// What a step's record tells of a field.
struct TraceMark {
    std::uint8_t Field = 0;
    std::uint16_t Folded = 0;

    bool operator==(const TraceMark&) const = default;
};

/// Compares each state with what the two before it foretold.
class Forecaster {
public:
    std::vector<TraceMark> Next(const StateDigest& digest);

private:
    StateDigest Last{};
    StateDigest Change{};
};

/// The trace of a play as this program plays it.
std::string MakeTrace(const std::vector<PlayCommand>& play);

/// Where a play has come out differently.
struct TraceDifference {
    /// Counted from 1; one more than the play has when the trace goes on after its end.
    std::size_t Step = 0;
    /// Empty when the play or the trace has ended before the other, or the last checksum differs.
    std::vector<std::size_t> Fields;
    /// The state as this program has it.
    StateDigest State{};
};

/// Plays it and compares each step with the trace. Nothing when they are the same to the end.
/// Throws PlayError when `trace` is no trace.
std::optional<TraceDifference> CompareWithTrace(const std::vector<PlayCommand>& play,
                                                std::string_view trace);

/// For people: the step, the level and tick, the first field, its value if it is a number, and the
/// names of the others.
std::string Describe(const TraceDifference& difference);

} // namespace Wirefall
