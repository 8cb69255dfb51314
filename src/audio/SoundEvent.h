#pragma once

// The sound effects by name. The screens queue them; the audio engine plays the queue once a frame.

#include "base/EnumTable.h"

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

inline constexpr std::size_t SoundEventCount = EnumCount<SoundEvent>;

} // namespace Wirefall
