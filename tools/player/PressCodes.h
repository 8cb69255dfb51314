#pragma once

// The commands of RunCommands.h that the player gives.

#include <cstdint>

namespace Wirefall::Press {

inline constexpr std::uint32_t RotateRight = 8;
inline constexpr std::uint32_t RotateLeft = 20;
inline constexpr std::uint32_t Place = 44;
inline constexpr std::uint32_t Right = 79;
inline constexpr std::uint32_t Left = 80;
inline constexpr std::uint32_t Down = 81;
inline constexpr std::uint32_t Up = 82;

} // namespace Wirefall::Press
