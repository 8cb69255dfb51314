#pragma once

// What scores, and by how much.

#include <cstdint>

namespace Wirefall {

inline constexpr std::int32_t ScoreDelivered = 10;
inline constexpr std::int32_t ScoreLost = -5;
inline constexpr std::int32_t ScoreCorrupted = -10;
inline constexpr std::int32_t ScoreLevelClear = 100;

} // namespace Wirefall
