#include "audio/SoundQueue.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace Wirefall {

namespace {

struct CountedSound {
    std::int32_t RunSnapshot::*Count;
    SoundEvent Event;
    std::int64_t MostAtOnce;
};

constexpr std::array<CountedSound, 3> CountedSounds = {{
    {&RunSnapshot::DeliveredPackets, SoundEvent::PacketDelivered, 3},
    {&RunSnapshot::LostPackets, SoundEvent::PacketLost, 3},
    {&RunSnapshot::CorruptedPackets, SoundEvent::PacketCorrupted, 2},
}};

constexpr float AudibleSpread = 0.0001F;

} // namespace

void EnqueueSound(QueuedSounds& sounds, SoundEvent event) {
    if (sounds.SoundQueueCount < sounds.SoundQueue.size()) {
        sounds.SoundQueue[sounds.SoundQueueCount++] = event;
    }
}

void DetectGameSounds(SlicesOf<QueuedSounds, const RunStatus> game, const RunSnapshot& snapshot) {
    QueuedSounds& sounds = game;
    const RunStatus& status = game;
    const RunSnapshot& previous = status.PreviousSnapshot;
    const bool fell = std::any_of(CountedSounds.begin(), CountedSounds.end(),
                                  [&snapshot, &previous](const CountedSound& row) {
                                      return snapshot.*row.Count < previous.*row.Count;
                                  });
    if (fell) {
        return;
    }
    for (const CountedSound& row : CountedSounds) {
        const std::int64_t grown = std::int64_t{snapshot.*row.Count} - previous.*row.Count;
        for (std::int64_t i = 0; i < std::min(grown, row.MostAtOnce); ++i) {
            EnqueueSound(sounds, row.Event);
        }
    }
    if (snapshot.InfectionRatio > previous.InfectionRatio + AudibleSpread) {
        EnqueueSound(sounds, SoundEvent::VirusSpread);
    }
    if (snapshot.GameOver && !previous.GameOver) {
        EnqueueSound(sounds, SoundEvent::GameOver);
    }
}

} // namespace Wirefall
