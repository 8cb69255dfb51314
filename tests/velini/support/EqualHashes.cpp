#include "velini/support/EqualHashes.h"

#include <cstdint>
#include <cstring>
#include <random>
#include <string_view>

namespace velINI::Testing {
namespace {

constexpr std::uint64_t Multiplier = 0xC6A4A7935BD1E995;
constexpr std::uint64_t Seed = 0xC70F6907;
constexpr std::size_t NameSize = 16;

// The number that undoes a multiplication by an odd one (Newton's iteration modulo 2^64).
constexpr std::uint64_t Inverse(std::uint64_t odd) {
    std::uint64_t inverse = odd;
    for (int i = 0; i < 6; ++i) {
        inverse *= 2 - odd * inverse;
    }
    return inverse;
}

constexpr std::uint64_t ShiftMix(std::uint64_t value) { return value ^ value >> 47; }

std::uint64_t Mix(std::uint64_t block) { return ShiftMix(block * Multiplier) * Multiplier; }

std::uint64_t Unmix(std::uint64_t mixed) {
    return ShiftMix(mixed * Inverse(Multiplier)) * Inverse(Multiplier);
}

bool IsHarmless(std::string_view text) {
    return text.find_first_of(std::string_view("\0\t\n\r \"#':;=[\\]", 14)) ==
           std::string_view::npos;
}

} // namespace

std::vector<std::string> NamesOfEqualHash(std::size_t count) {
    constexpr std::uint64_t Wanted = 0x5EED; // of the state behind both blocks
    std::mt19937_64 engine(3);               // NOLINT(cert-msc51-cpp): always the same names
    std::vector<std::string> names;
    while (names.size() < count) {
        const std::uint64_t first = engine();
        const std::uint64_t start = Seed ^ NameSize * Multiplier;
        const std::uint64_t behindFirst = (start ^ Mix(first)) * Multiplier;
        const std::uint64_t second = Unmix(behindFirst ^ Wanted);
        std::string name(NameSize, '\0');
        std::memcpy(name.data(), &first, sizeof first);
        std::memcpy(name.data() + sizeof first, &second, sizeof second);
        if (IsHarmless(name)) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace velINI::Testing
