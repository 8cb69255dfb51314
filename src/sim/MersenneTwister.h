#pragma once

// The random source of the simulation: MT19937, the 32-bit Mersenne Twister of M. Matsumoto and
// T. Nishimura ("Mersenne Twister: A 623-dimensionally equidistributed uniform pseudo-random number
// generator", ACM TOMACS 8(1), 1998), with the initialisation of 2002. Its state is plain data,
// because a saved run stores it word for word and goes on from it bit for bit. The standard
// library's generator is not used for that reason, nor are its distributions and shuffle, whose
// results differ between implementations.

#include <array>
#include <cstddef>
#include <cstdint>

namespace Wirefall {

struct MersenneTwister {
    static constexpr std::size_t WordCount = 624;

    std::array<std::uint32_t, WordCount> Words{};
    /// The next word to hand out, 0 to 624. At 624 all words are renewed before the next draw; any
    /// larger value counts as 624.
    std::uint32_t Position = WordCount;

    bool operator==(const MersenneTwister&) const = default;
};

/// Puts the engine into the standard initial state for `seed`, with Position 624.
void SeedEngine(MersenneTwister& engine, std::uint32_t seed);

/// The next tempered 32-bit output.
std::uint32_t NextOutput(MersenneTwister& engine);

/// An integer in the closed interval [low, high]; low <= high, and high - low is below 2^32 - 1.
/// Draws one output, and rarely more: the multiply-and-reject method of D. Lemire ("Fast Random
/// Integer Generation in an Interval", ACM TOMACS 29(1), 2019) on a 32-bit generator. How many
/// outputs are drawn, and what comes of them, is a promise to every saved run.
std::uint32_t UniformDraw(MersenneTwister& engine, std::uint32_t low, std::uint32_t high);

} // namespace Wirefall
