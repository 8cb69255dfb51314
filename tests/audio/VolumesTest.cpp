#include "audio/Volumes.h"

#include <gtest/gtest.h>

#include <limits>

namespace Wirefall {
namespace {

TEST(Volumes, TheFactoryOptionsGiveFiftyAndSeventyFive) {
    const AudioSettings options;
    EXPECT_EQ(MusicGainFromOptions(options), 50);
    EXPECT_EQ(SfxGainFromOptions(options), 75);
}

TEST(Volumes, MasterFiftyAndEffectsSeventyFiveGiveThirtySeven) {
    AudioSettings options;
    options.MasterVolume = 50;
    EXPECT_EQ(SfxGainFromOptions(options), 37) << "cut off, not rounded";
}

TEST(Volumes, AChannelThatIsOffHasNoGain) {
    AudioSettings options;
    options.MusicEnabled = false;
    EXPECT_EQ(MusicGainFromOptions(options), 0);
    EXPECT_EQ(SfxGainFromOptions(options), 75);
    options.SfxEnabled = false;
    EXPECT_EQ(SfxGainFromOptions(options), 0);
}

TEST(Volumes, EveryPairOfVolumesIsTheirProduct) {
    AudioSettings options;
    for (std::int32_t master = 0; master <= 100; ++master) {
        for (std::int32_t channel = 0; channel <= 100; ++channel) {
            options.MasterVolume = master;
            options.MusicVolume = channel;
            options.SfxVolume = channel;
            ASSERT_EQ(MusicGainFromOptions(options), master * channel / 100);
            ASSERT_EQ(SfxGainFromOptions(options), master * channel / 100);
        }
    }
}

TEST(Volumes, NonsenseStaysWithinTheLimits) {
    const std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    AudioSettings options;
    options.MasterVolume = most;
    options.MusicVolume = most;
    options.SfxVolume = least;
    EXPECT_EQ(MusicGainFromOptions(options), 100);
    EXPECT_EQ(SfxGainFromOptions(options), 0);
    EXPECT_EQ(VolumeToGain(most), 1.0F);
    EXPECT_EQ(VolumeToGain(least), 0.0F);
}

TEST(Volumes, AGainIsAHundredthOfThePercent) {
    EXPECT_EQ(VolumeToGain(0), 0.0F);
    EXPECT_EQ(VolumeToGain(37), 0.37F);
    EXPECT_EQ(VolumeToGain(100), 1.0F);
    EXPECT_EQ(VolumeToGain(-1), 0.0F);
    EXPECT_EQ(VolumeToGain(101), 1.0F);
}

} // namespace
} // namespace Wirefall
