#pragma once

// What a screen shows, pixel by pixel.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace Wirefall::Testing {

/// 0x00RRGGBB.
using Pixel = std::uint32_t;

struct Screenshot {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::vector<Pixel> Pixels; ///< Row by row from the top.

    bool Holds(std::int32_t x, std::int32_t y) const {
        return x >= 0 && y >= 0 && x < Width && y < Height;
    }
    Pixel At(std::int32_t x, std::int32_t y) const {
        return Pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(Width) +
                      static_cast<std::size_t>(x)];
    }

    bool operator==(const Screenshot&) const = default;
};

/// How many pixels of two pictures of one size are not the same.
std::size_t CountDifferences(const Screenshot& a, const Screenshot& b);

/// Makes the folder too. Throws std::runtime_error when the file cannot be written.
void SavePng(const std::filesystem::path& path, const Screenshot& picture);

} // namespace Wirefall::Testing
