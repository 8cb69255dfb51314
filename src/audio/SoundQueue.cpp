#include "audio/SoundQueue.h"

#include "app/GameApp.h"

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

void EnqueueSound(GameApp& app, SoundEvent event) {
    if (app.SoundQueueCount < app.SoundQueue.size()) {
        app.SoundQueue[app.SoundQueueCount++] = event;
    }
}

void DetectGameSounds(GameApp& app, const RunSnapshot& snapshot) {
    const RunSnapshot& previous = app.PreviousSnapshot;
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
            EnqueueSound(app, row.Event);
        }
    }
    if (snapshot.InfectionRatio > previous.InfectionRatio + AudibleSpread) {
        EnqueueSound(app, SoundEvent::VirusSpread);
    }
    if (snapshot.GameOver && !previous.GameOver) {
        EnqueueSound(app, SoundEvent::GameOver);
    }
}

} // namespace Wirefall
