#pragma once

// The eleven sound effects by name. The screens queue them; the audio engine plays the queue once a
// frame.

#include <cstddef>
#include <cstdint>

namespace Wirefall {

enum class SoundEvent : std::uint8_t {
    UiMove,
    UiConfirm,
    UiBack,
    CursorMove,
    Rotate,
    Place,
    PacketDelivered,
    PacketLost,
    PacketCorrupted,
    VirusSpread,
    GameOver,
};

inline constexpr std::size_t SoundEventCount = 11;

/// How many events one frame can queue; more are dropped.
inline constexpr std::size_t SoundQueueCapacity = 64;

} // namespace Wirefall
