#include "velini/internal/NameIndex.h"

#include <array>
#include <bit>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <exception>
#include <random>

namespace velINI::Internal {
namespace {

struct HashKey {
    std::uint64_t First;
    std::uint64_t Second;
};

HashKey DrawKey() {
    try {
        std::random_device source;
        const auto draw = [&] { return std::uint64_t{source()} << 32 | source(); };
        const std::uint64_t first = draw();
        return {first, draw()};
    } catch (const std::exception&) {
        // Without a source of random numbers, the time is the best that there is.
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        return {static_cast<std::uint64_t>(now), 0};
    }
}

using SipState = std::array<std::uint64_t, 4>;

void Round(SipState& v) {
    v[0] += v[1];
    v[1] = std::rotl(v[1], 13) ^ v[0];
    v[0] = std::rotl(v[0], 32);
    v[2] += v[3];
    v[3] = std::rotl(v[3], 16) ^ v[2];
    v[0] += v[3];
    v[3] = std::rotl(v[3], 21) ^ v[0];
    v[2] += v[1];
    v[1] = std::rotl(v[1], 17) ^ v[2];
    v[2] = std::rotl(v[2], 32);
}

void Absorb(SipState& v, std::uint64_t word) {
    v[3] ^= word;
    Round(v);
    v[0] ^= word;
}

// Up to eight bytes, in the order of the machine: the hash does not leave the process.
std::uint64_t WordOf(const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    return word;
}

} // namespace

std::uint64_t NameHash(std::string_view name) {
    static const HashKey key = DrawKey();
    SipState v = {key.First ^ 0x736F6D6570736575, key.Second ^ 0x646F72616E646F6D,
                  key.First ^ 0x6C7967656E657261, key.Second ^ 0x7465646279746573};
    std::size_t position = 0;
    for (; name.size() - position >= 8; position += 8) {
        Absorb(v, WordOf(name.data() + position, 8));
    }
    const std::size_t rest = name.size() - position;
    Absorb(v, std::uint64_t{name.size()} << 56 | WordOf(name.data() + position, rest));
    v[2] ^= 0xFF;
    for (int round = 0; round < 3; ++round) {
        Round(v);
    }
    return v[0] ^ v[1] ^ v[2] ^ v[3];
}

} // namespace velINI::Internal
