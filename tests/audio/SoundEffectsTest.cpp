#include "audio/SoundEffects.h"

#include "audio/AudioSupport.h"
#include "audio/SoundQueue.h"
#include "game/GameApp.h"
#include "support/CapturedLog.h"
#include "support/SdlAllocationLimit.h"

#include <SDL3/SDL_stdinc.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace Wirefall {
namespace {

using Testing::CapturedLog;
using Testing::SdlAllocationLimit;

constexpr int Rate = 44100;

const SfxSpec& RowOf(SoundEvent event) { return SfxSpecs.at(static_cast<std::size_t>(event)); }

struct NamedRow {
    const char* Name;
    std::int32_t FrequencyHz;
    float Amplitude;
    std::int64_t DurationMs;
    std::int64_t Frames; // At 44100 Hz.
};

TEST(SfxTable, HasTheElevenEffects) {
    const std::array<NamedRow, 11> expected = {{
        {"UiMove", 560, 0.16F, 45, 1984},
        {"UiConfirm", 900, 0.24F, 70, 3087},
        {"UiBack", 840, 0.22F, 85, 3748},
        {"CursorMove", 470, 0.12F, 34, 1499},
        {"Rotate", 680, 0.18F, 44, 1940},
        {"Place", 420, 0.22F, 72, 3175},
        {"PacketDelivered", 1040, 0.23F, 56, 2469},
        {"PacketLost", 280, 0.34F, 120, 5292},
        {"PacketCorrupted", 520, 0.30F, 135, 5953},
        {"VirusSpread", 430, 0.26F, 105, 4630},
        {"GameOver", 220, 0.48F, 300, 13230},
    }};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const SfxSpec& row = SfxSpecs.at(i);
        EXPECT_EQ(static_cast<std::size_t>(row.Event), i);
        EXPECT_STREQ(SoundEventName(row.Event), expected.at(i).Name);
        EXPECT_EQ(row.FrequencyHz, expected.at(i).FrequencyHz);
        EXPECT_EQ(row.Amplitude, expected.at(i).Amplitude);
        EXPECT_EQ(row.DurationMs, expected.at(i).DurationMs);
        EXPECT_EQ(std::ssize(SynthesizeSfx(row, Rate, 1)), expected.at(i).Frames);
    }
}

TEST(SfxTable, ValuesThatAreNoEventHaveNoName) {
    EXPECT_STREQ(SoundEventName(static_cast<SoundEvent>(11)), "Unknown");
    EXPECT_STREQ(SoundEventName(static_cast<SoundEvent>(255)), "Unknown");
}

// --- Synthesis

// Sample i as the formula has it, step by step in single precision.
float ExpectedSample(const SfxSpec& row, int rate, std::int64_t i) {
    const std::int64_t frames = rate * row.DurationMs / 1000;
    const int attack = rate >= 1000 ? rate / 500 : 1;
    const int release = rate < 320 ? 1 : rate / 160;
    float env = 1.0F;
    if (i < attack) {
        const float rise = static_cast<float>(i) / static_cast<float>(attack);
        env = rise < 1.0F ? rise : 1.0F;
    }
    if (release + i >= frames) {
        const float fall = static_cast<float>(frames - 1 - i) / static_cast<float>(release);
        env = fall < env ? fall : env;
    }
    if (!(env > 0.0F)) {
        env = 0.0F;
    }
    const float omega = static_cast<float>(row.FrequencyHz) * 6.2831855F;
    const float phase = static_cast<float>(i) * omega / static_cast<float>(rate);
    return env * (std::sin(phase) * row.Amplitude);
}

TEST(Synthesis, EverySampleIsThatOfTheFormula) {
    for (const SfxSpec& row : SfxSpecs) {
        for (const int rate : {30, 319, 320, 999, 1000, 8000, 22050, 44100, 48000, 192000}) {
            const std::vector<float> samples = SynthesizeSfx(row, rate, 1);
            ASSERT_EQ(std::ssize(samples), rate * row.DurationMs / 1000);
            for (std::size_t i = 0; i < samples.size(); ++i) {
                ASSERT_EQ(samples[i], ExpectedSample(row, rate, static_cast<std::int64_t>(i)))
                    << SoundEventName(row.Event) << " at " << rate << ", frame " << i;
            }
        }
    }
}

TEST(Synthesis, RampsAre88And275FramesLong) {
    // A quarter turn a frame, so that every other sample is the envelope itself.
    const SfxSpec spec{SoundEvent::UiMove, Rate / 4, 1.0F, 100};
    const std::vector<float> samples = SynthesizeSfx(spec, Rate, 1);
    ASSERT_EQ(samples.size(), 4410U);
    EXPECT_NEAR(std::fabs(samples[87]), 87.0F / 88.0F, 1e-4F);
    EXPECT_NEAR(std::fabs(samples[89]), 1.0F, 1e-4F);
    EXPECT_NEAR(std::fabs(samples[4409 - 276]), 1.0F, 1e-4F);
    EXPECT_NEAR(std::fabs(samples[4409 - 274]), 274.0F / 275.0F, 1e-3F);
}

TEST(Synthesis, EveryEffectBeginsAndEndsInSilence) {
    for (const SfxSpec& row : SfxSpecs) {
        const std::vector<float> samples = SynthesizeSfx(row, Rate, 2);
        EXPECT_EQ(samples[0], 0.0F);
        EXPECT_EQ(samples[1], 0.0F);
        EXPECT_EQ(samples[samples.size() - 2], 0.0F);
        EXPECT_EQ(samples[samples.size() - 1], 0.0F);
    }
}

TEST(Synthesis, AllChannelsSoundTheSame) {
    const SfxSpec& row = RowOf(SoundEvent::Place);
    const std::vector<float> mono = SynthesizeSfx(row, Rate, 1);
    const std::vector<float> six = SynthesizeSfx(row, Rate, 6);
    ASSERT_EQ(six.size(), 6 * mono.size());
    for (std::size_t i = 0; i < six.size(); ++i) {
        ASSERT_EQ(six[i], mono[i / 6]);
    }
}

TEST(Synthesis, AmplitudesStayBetweenZeroAndOne) {
    EXPECT_LE(Testing::PeakOf(SynthesizeSfx({SoundEvent::UiMove, 440, 7.5F, 50}, Rate, 1)), 1.0F);
    EXPECT_EQ(Testing::PeakOf(SynthesizeSfx({SoundEvent::UiMove, 440, -3.0F, 50}, Rate, 1)), 0.0F);
}

TEST(Synthesis, ASingleFrameIsSilent) {
    EXPECT_EQ(SynthesizeSfx({SoundEvent::UiMove, 440, 1.0F, 1}, 1000, 1), std::vector<float>{0.0F});
}

// --- Loading

class Effects : public testing::Test {
protected:
    void SetUp() override {
        LoadSfx(Music);
        SetSfxTrackGains(Music, 1.0F);
    }

    void Fire(SoundEvent event) { EnqueueSound(App, event); }

    std::vector<std::size_t> BusyTracks() const {
        std::vector<std::size_t> busy;
        for (std::size_t i = 0; i < Music.SfxTracks.size(); ++i) {
            if (Music.SfxTracks[i] && MIX_TrackPlaying(Music.SfxTracks[i].get())) {
                busy.push_back(i);
            }
        }
        return busy;
    }

    MIX_Audio* AudioOf(SoundEvent event) const {
        return Music.SfxAudio.at(static_cast<std::size_t>(event)).get();
    }
    MIX_Audio* AudioOn(std::size_t track) const {
        return MIX_GetTrackAudio(Music.SfxTracks.at(track).get());
    }

    Testing::MemoryEngine Engine;
    MusicRuntime& Music = Engine.Music;
    GameApp App;
};

using Indices = std::vector<std::size_t>;

TEST_F(Effects, AreLoadedInTheFormatOfTheMixer) {
    for (const SfxSpec& row : SfxSpecs) {
        SDL_AudioSpec format = {};
        ASSERT_TRUE(MIX_GetAudioFormat(AudioOf(row.Event), &format));
        EXPECT_EQ(format.format, SDL_AUDIO_F32LE);
        EXPECT_EQ(format.channels, 2);
        EXPECT_EQ(format.freq, Rate);
        EXPECT_EQ(MIX_GetAudioDuration(AudioOf(row.Event)), Rate * row.DurationMs / 1000);
    }
}

TEST_F(Effects, HaveTwelveTracksOfTheirOwn) {
    ASSERT_EQ(Music.SfxTracks.size(), 12U);
    for (const TrackHandle& track : Music.SfxTracks) {
        int count = 0;
        char** const tags = MIX_GetTrackTags(track.get(), &count);
        ASSERT_EQ(count, 1);
        EXPECT_STREQ(tags[0], "sfx");
        SDL_free(tags);
    }
}

TEST_F(Effects, AreMadeAnewWhenLoadedAgain) {
    Fire(SoundEvent::UiMove);
    DrainSoundQueue(App, Music);
    LoadSfx(Music);
    EXPECT_EQ(Music.SfxTracks.size(), 12U);
    EXPECT_EQ(Music.NextSfxTrack, 0U);
    EXPECT_EQ(BusyTracks(), Indices{});
}

TEST_F(Effects, ComeOutOfTheMixerSampleForSample) {
    for (const SfxSpec& row : SfxSpecs) {
        const std::vector<float> expected = SynthesizeSfx(row, Rate, 2);
        SetSfxTrackGains(Music, 0.5F);
        Fire(row.Event);
        DrainSoundQueue(App, Music);
        const std::vector<float> played = Engine.Play(static_cast<int>(expected.size() / 2) + 100);
        for (std::size_t i = 0; i < played.size(); ++i) {
            ASSERT_EQ(played[i], i < expected.size() ? expected[i] * 0.5F : 0.0F)
                << SoundEventName(row.Event) << ", sample " << i;
        }
        EXPECT_EQ(BusyTracks(), Indices{}) << "once is enough";
    }
}

// --- Without memory

TEST_F(Effects, ThatCannotBeSynthesisedAreLeftToTheMixersOwnSine) {
    const CapturedLog log;
    {
        const SdlAllocationLimit limit(8000);
        LoadSfx(Music);
    }
    EXPECT_EQ(log.Messages(), std::vector<std::string>{});
    for (const SfxSpec& row : SfxSpecs) {
        ASSERT_NE(AudioOf(row.Event), nullptr);
        SDL_AudioSpec format = {};
        ASSERT_TRUE(MIX_GetAudioFormat(AudioOf(row.Event), &format));
        EXPECT_EQ(format.channels, 1) << "a plain sine";
        Fire(row.Event);
        DrainSoundQueue(App, Music);
        const auto frames = static_cast<int>(MIX_GetAudioDuration(AudioOf(row.Event)));
        EXPECT_EQ(frames, Rate * row.DurationMs / 1000);
        const std::vector<float> played = Testing::LeftOf(Engine.Play(frames));
        EXPECT_NEAR(Testing::PeakOf(played), row.Amplitude, 0.01F);
        EXPECT_NEAR(Testing::DominantFrequency(played, Rate), row.FrequencyHz, 1.0);
        Engine.Play(Rate);
    }
}

TEST_F(Effects, ThatCannotBeMadeAreLoggedAndSilent) {
    const CapturedLog log;
    {
        const SdlAllocationLimit limit(1);
        LoadSfx(Music);
    }
    std::vector<std::string> expected;
    expected.reserve(SfxSpecs.size() + 12);
    for (const SfxSpec& row : SfxSpecs) {
        expected.push_back(std::string("MIX_CreateSineWaveAudio failed for SFX '") +
                           SoundEventName(row.Event) + "': Out of memory");
    }
    for (int i = 0; i < 12; ++i) {
        expected.push_back("MIX_CreateTrack failed for SFX track " + std::to_string(i) +
                           ": Out of memory");
    }
    EXPECT_EQ(log.Messages(), expected);
    EXPECT_TRUE(Music.SfxTracks.empty());
    Fire(SoundEvent::GameOver);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(App.SoundQueueCount, 0U);
    EXPECT_EQ(Testing::PeakOf(Engine.Play(1000)), 0.0F);
}

// --- The queue

TEST_F(Effects, TakeTheTracksInTurn) {
    for (std::size_t i = 0; i < 30; ++i) {
        Fire(SoundEvent::UiMove);
        DrainSoundQueue(App, Music);
        EXPECT_EQ(BusyTracks(), Indices{i % 12});
        EXPECT_EQ(Music.NextSfxTrack, (i + 1) % 12);
        Engine.Play(Rate / 10);
    }
}

TEST_F(Effects, PassOverABusyTrack) {
    Fire(SoundEvent::GameOver);
    Fire(SoundEvent::CursorMove);
    Fire(SoundEvent::GameOver);
    DrainSoundQueue(App, Music);
    Engine.Play(Rate / 10);
    EXPECT_EQ(BusyTracks(), (Indices{0, 2}));
    Music.NextSfxTrack = 0;
    Fire(SoundEvent::Place);
    Fire(SoundEvent::UiBack);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(AudioOn(1), AudioOf(SoundEvent::Place));
    EXPECT_EQ(AudioOn(3), AudioOf(SoundEvent::UiBack));
    EXPECT_EQ(Music.NextSfxTrack, 4U);
}

TEST_F(Effects, TheThirteenthOfAFrameCutsOffTheFirst) {
    Music.NextSfxTrack = 5;
    for (int i = 0; i < 12; ++i) {
        Fire(SoundEvent::GameOver);
    }
    Fire(SoundEvent::PacketLost);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(BusyTracks().size(), 12U);
    EXPECT_EQ(AudioOn(5), AudioOf(SoundEvent::PacketLost));
    EXPECT_EQ(AudioOn(6), AudioOf(SoundEvent::GameOver));
    EXPECT_EQ(Music.NextSfxTrack, 6U);
}

TEST_F(Effects, AMissingTrackIsPassedOver) {
    Music.SfxTracks[0].reset();
    Fire(SoundEvent::UiMove);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(BusyTracks(), Indices{1});
}

TEST_F(Effects, WhenAllAreBusyAndItsTrackIsMissingTheEventIsDropped) {
    Music.SfxTracks[3].reset();
    for (int i = 0; i < 11; ++i) {
        Fire(SoundEvent::GameOver);
    }
    DrainSoundQueue(App, Music);
    Music.NextSfxTrack = 3;
    const CapturedLog log;
    Fire(SoundEvent::PacketLost);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(Music.NextSfxTrack, 4U);
    EXPECT_EQ(log.Messages(), std::vector<std::string>{});
    for (std::size_t i = 0; i < 12; ++i) {
        if (i != 3) {
            EXPECT_EQ(AudioOn(i), AudioOf(SoundEvent::GameOver));
        }
    }
}

TEST_F(Effects, AnyTurnIsTakenModuloTheTracks) {
    Music.NextSfxTrack = std::numeric_limits<std::uint64_t>::max(); // 3 modulo 12
    Fire(SoundEvent::UiMove);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(BusyTracks(), Indices{3});
    EXPECT_EQ(Music.NextSfxTrack, 4U);
}

TEST_F(Effects, TheEventsOfAFrameSoundTogether) {
    Fire(SoundEvent::UiMove);
    Fire(SoundEvent::GameOver);
    DrainSoundQueue(App, Music);
    const std::vector<float> move = SynthesizeSfx(RowOf(SoundEvent::UiMove), Rate, 2);
    const std::vector<float> over = SynthesizeSfx(RowOf(SoundEvent::GameOver), Rate, 2);
    const std::vector<float> played = Engine.Play(1000);
    for (std::size_t i = 0; i < played.size(); ++i) {
        ASSERT_NEAR(played[i], move[i] + over[i], 1e-6F);
    }
}

TEST_F(Effects, AreDiscardedWhileTheEngineIsNotReady) {
    Music.Ready = false;
    Fire(SoundEvent::UiMove);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(App.SoundQueueCount, 0U);
    Music.Ready = true;
    DrainSoundQueue(App, Music);
    EXPECT_EQ(BusyTracks(), Indices{}) << "and not kept";
}

TEST_F(Effects, AreDiscardedWithoutTracks) {
    Music.SfxTracks.clear();
    Fire(SoundEvent::UiMove);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(App.SoundQueueCount, 0U);
}

TEST_F(Effects, WithoutAudioOrANameTakeNoTrack) {
    Music.SfxAudio.at(static_cast<std::size_t>(SoundEvent::Rotate)).reset();
    Fire(SoundEvent::Rotate);
    Fire(static_cast<SoundEvent>(11));
    Fire(static_cast<SoundEvent>(255));
    Fire(SoundEvent::UiMove);
    DrainSoundQueue(App, Music);
    EXPECT_EQ(BusyTracks(), Indices{0});
}

TEST_F(Effects, GainsReachEveryTrackThatIsThere) {
    Music.SfxTracks[4].reset();
    SetSfxTrackGains(Music, 0.37F);
    for (const TrackHandle& track : Music.SfxTracks) {
        if (track) {
            EXPECT_EQ(MIX_GetTrackGain(track.get()), 0.37F);
        }
    }
}

TEST_F(Effects, AtGainZeroTheyStillPlay) {
    SetSfxTrackGains(Music, 0.0F);
    for (const SfxSpec& row : SfxSpecs) {
        Fire(row.Event);
    }
    DrainSoundQueue(App, Music);
    EXPECT_EQ(BusyTracks().size(), 11U);
    EXPECT_EQ(Testing::PeakOf(Engine.Play(1000)), 0.0F);
    EXPECT_EQ(BusyTracks().size(), 11U);
}

} // namespace
} // namespace Wirefall
