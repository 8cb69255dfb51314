#include "sim/MersenneTwister.h"

namespace Wirefall {

namespace {

constexpr std::size_t ShiftSize = 397;
constexpr std::uint32_t TwistMatrix = 0x9908b0df;
constexpr std::uint32_t UpperMask = 0x80000000;
constexpr std::uint32_t LowerMask = 0x7fffffff;

void RenewWords(MersenneTwister& engine) {
    constexpr std::size_t N = MersenneTwister::WordCount;
    for (std::size_t i = 0; i < N; ++i) {
        const std::uint32_t joined =
            (engine.Words[i] & UpperMask) | (engine.Words[(i + 1) % N] & LowerMask);
        const std::uint32_t twisted = (joined >> 1) ^ ((joined & 1) != 0 ? TwistMatrix : 0);
        engine.Words[i] = engine.Words[(i + ShiftSize) % N] ^ twisted;
    }
    engine.Position = 0;
}

} // namespace

void SeedEngine(MersenneTwister& engine, std::uint32_t seed) {
    engine.Words[0] = seed;
    for (std::uint32_t i = 1; i < MersenneTwister::WordCount; ++i) {
        const std::uint32_t previous = engine.Words[i - 1];
        engine.Words[i] = 1812433253U * (previous ^ (previous >> 30)) + i;
    }
    engine.Position = MersenneTwister::WordCount;
}

std::uint32_t NextOutput(MersenneTwister& engine) {
    if (engine.Position >= MersenneTwister::WordCount) {
        RenewWords(engine);
    }
    std::uint32_t y = engine.Words[engine.Position++];
    y ^= y >> 11;
    y ^= (y << 7) & 0x9d2c5680U;
    y ^= (y << 15) & 0xefc60000U;
    return y ^ (y >> 18);
}

std::uint32_t UniformDraw(MersenneTwister& engine, std::uint32_t low, std::uint32_t high) {
    const std::uint32_t range = high - low + 1;
    std::uint64_t product = std::uint64_t{NextOutput(engine)} * range;
    if (static_cast<std::uint32_t>(product) < range) {
        const std::uint32_t threshold = (0U - range) % range;
        while (static_cast<std::uint32_t>(product) < threshold) {
            product = std::uint64_t{NextOutput(engine)} * range;
        }
    }
    return low + static_cast<std::uint32_t>(product >> 32);
}

} // namespace Wirefall
