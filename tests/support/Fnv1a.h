#pragma once

// FNV-1a, 64 bits (RFC 9923): a number to know much data by. Whoever adds the same bytes in the
// same order gets the same number, on every machine.

#include <cstdint>

namespace Wirefall::Testing {

class Fnv1a {
public:
    constexpr void AddByte(std::uint8_t byte) { Hash = (Hash ^ byte) * 0x100000001b3U; }

    /// The lowest bytes of the number, the very lowest first.
    constexpr void Add(std::uint64_t number, int bytes = 8) {
        for (int i = 0; i < bytes; ++i) {
            AddByte(static_cast<std::uint8_t>(number >> (8 * i)));
        }
    }

    constexpr std::uint64_t Value() const { return Hash; }

private:
    std::uint64_t Hash = 0xcbf29ce484222325U;
};

} // namespace Wirefall::Testing
