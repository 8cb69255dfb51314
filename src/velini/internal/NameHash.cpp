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

class SipState {
public:
    explicit SipState(const HashKey& key)
        : V{key.First ^ 0x736F6D6570736575, key.Second ^ 0x646F72616E646F6D,
            key.First ^ 0x6C7967656E657261, key.Second ^ 0x7465646279746573} {}

    void Absorb(std::uint64_t word) {
        V[3] ^= word;
        Round();
        V[0] ^= word;
    }

    std::uint64_t Finish() {
        V[2] ^= 0xFF;
        for (int round = 0; round < 3; ++round) {
            Round();
        }
        return V[0] ^ V[1] ^ V[2] ^ V[3];
    }

private:
    void Round() {
        V[0] += V[1];
        V[1] = std::rotl(V[1], 13) ^ V[0];
        V[0] = std::rotl(V[0], 32);
        V[2] += V[3];
        V[3] = std::rotl(V[3], 16) ^ V[2];
        V[0] += V[3];
        V[3] = std::rotl(V[3], 21) ^ V[0];
        V[2] += V[1];
        V[1] = std::rotl(V[1], 17) ^ V[2];
        V[2] = std::rotl(V[2], 32);
    }

    std::array<std::uint64_t, 4> V;
};

// Up to eight bytes, in the order of the machine: the hash does not leave the process.
std::uint64_t WordOf(const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    return word;
}

} // namespace

std::uint64_t NameHash(std::string_view name) {
    static const HashKey key = DrawKey();
    SipState state(key);
    std::size_t position = 0;
    for (; name.size() - position >= 8; position += 8) {
        state.Absorb(WordOf(name.data() + position, 8));
    }
    state.Absorb(std::uint64_t{name.size()} << 56 |
                 WordOf(name.data() + position, name.size() - position));
    return state.Finish();
}

} // namespace velINI::Internal
