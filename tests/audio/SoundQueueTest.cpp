#include "audio/SoundQueue.h"

#include "audio/SoundEffects.h"
#include "game/GameApp.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace Wirefall {
namespace {

using Sounds = std::vector<SoundEvent>;

Sounds QueuedSounds(const GameApp& app) {
    return {app.SoundQueue.begin(),
            app.SoundQueue.begin() + static_cast<std::ptrdiff_t>(app.SoundQueueCount)};
}

TEST(SoundQueue, KeepsSoundsInOrder) {
    GameApp app;
    EnqueueSound(app, SoundEvent::UiMove);
    EnqueueSound(app, SoundEvent::GameOver);
    EnqueueSound(app, SoundEvent::UiMove);
    EXPECT_EQ(QueuedSounds(app),
              (Sounds{SoundEvent::UiMove, SoundEvent::GameOver, SoundEvent::UiMove}));
}

TEST(SoundQueue, DropsThe65thSoundOfAFrame) {
    GameApp app;
    for (int i = 0; i < 64; ++i) {
        EnqueueSound(app, SoundEvent::UiMove);
    }
    EnqueueSound(app, SoundEvent::GameOver);
    EXPECT_EQ(QueuedSounds(app), Sounds(64, SoundEvent::UiMove));
}

TEST(SoundQueue, IsEmptiedEvenWithoutAnEngine) {
    GameApp app;
    MusicRuntime music;
    EnqueueSound(app, SoundEvent::UiMove);
    DrainSoundQueue(app, music);
    EXPECT_EQ(app.SoundQueueCount, 0U);
}

class GameSounds : public testing::Test {
protected:
    void SetUp() override {
        App.PreviousSnapshot.DeliveredPackets = 5;
        App.PreviousSnapshot.LostPackets = 2;
        App.PreviousSnapshot.CorruptedPackets = 1;
        App.PreviousSnapshot.InfectionRatio = 0.2F;
        Next = App.PreviousSnapshot;
    }

    Sounds Detected() {
        DetectGameSounds(App, Next);
        return QueuedSounds(App);
    }

    GameApp App;
    RunSnapshot Next;
};

TEST_F(GameSounds, NothingHappenedSoundsLikeNothing) { EXPECT_EQ(Detected(), Sounds{}); }

TEST_F(GameSounds, EachDeliverySoundsUpToThree) {
    Next.DeliveredPackets += 2;
    EXPECT_EQ(Detected(), Sounds(2, SoundEvent::PacketDelivered));
    App.SoundQueueCount = 0;
    Next.DeliveredPackets += 3;
    EXPECT_EQ(Detected(), Sounds(3, SoundEvent::PacketDelivered));
}

TEST_F(GameSounds, EachLossSoundsUpToThree) {
    Next.LostPackets += 4;
    EXPECT_EQ(Detected(), Sounds(3, SoundEvent::PacketLost));
}

TEST_F(GameSounds, EachCorruptionSoundsUpToTwo) {
    Next.CorruptedPackets += 3;
    EXPECT_EQ(Detected(), Sounds(2, SoundEvent::PacketCorrupted));
}

TEST_F(GameSounds, ComeInAFixedOrder) {
    Next.DeliveredPackets += 1;
    Next.LostPackets += 1;
    Next.CorruptedPackets += 1;
    Next.InfectionRatio = 0.3F;
    Next.GameOver = true;
    EXPECT_EQ(Detected(),
              (Sounds{SoundEvent::PacketDelivered, SoundEvent::PacketLost,
                      SoundEvent::PacketCorrupted, SoundEvent::VirusSpread, SoundEvent::GameOver}));
}

TEST_F(GameSounds, AFallenCountSilencesTheFrame) {
    Next.DeliveredPackets = 0;
    Next.LostPackets += 1;
    Next.InfectionRatio = 0.9F;
    Next.GameOver = true;
    EXPECT_EQ(Detected(), Sounds{});
}

TEST_F(GameSounds, TheVirusSoundsOnlyWhenItGainsGround) {
    Next.InfectionRatio = 0.2F + 0.00005F;
    EXPECT_EQ(Detected(), Sounds{});
    Next.InfectionRatio = 0.1F;
    EXPECT_EQ(Detected(), Sounds{});
    Next.InfectionRatio = 0.2F + 0.0002F;
    EXPECT_EQ(Detected(), Sounds{SoundEvent::VirusSpread});
}

TEST_F(GameSounds, TheEndOfTheRunSoundsOnce) {
    Next.GameOver = true;
    EXPECT_EQ(Detected(), Sounds{SoundEvent::GameOver});
    App.PreviousSnapshot = Next;
    App.SoundQueueCount = 0;
    EXPECT_EQ(Detected(), Sounds{});
}

TEST_F(GameSounds, ExtremeCountsDoNotOverflow) {
    App.PreviousSnapshot.DeliveredPackets = std::numeric_limits<std::int32_t>::min();
    Next.DeliveredPackets = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(Detected(), Sounds(3, SoundEvent::PacketDelivered));
}

} // namespace
} // namespace Wirefall
