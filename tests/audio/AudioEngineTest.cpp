// The whole engine on SDL's dummy and disk drivers, with everything that can fail failing in turn.

#include "audio/AudioEngine.h"

#include "audio/AudioSupport.h"
#include "audio/MixerFaults.h"
#include "audio/MusicPatterns.h"
#include "audio/MusicPlayer.h"
#include "audio/SoundEffects.h"
#include "audio/SoundQueue.h"
#include "base/Clock.h"
#include "game/GameApp.h"
#include "sim/Simulation.h"
#include "support/CapturedLog.h"
#include "support/CapturedOutput.h"
#include "support/TestHome.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_timer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>
#include <utility>

namespace Wirefall {
namespace {

using Testing::Call;
using Testing::CallsOf;
using Testing::CapturedLog;
using Testing::CapturedOutput;
using Testing::FailingCall;
using Testing::InjectedError;
using Testing::ScopedBasePath;
using Testing::ScopedVariable;
using Testing::WaitUntil;

using Lines = std::vector<std::string>;

constexpr int Rate = 44100;
constexpr std::uintmax_t BytesPerSecond = std::uintmax_t{4} * Rate;

const std::string ConfigFailed =
    "Music pattern config 'Music/MusicPatterns.ini' could not be loaded or contains no valid "
    "tracks; using built-in defaults";

std::string Failed(const std::string& what) { return what + ": " + InjectedError; }

class Engine : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directory(Data.Path() / "Music"); }

    void TearDown() override {
        ShutdownAudio(Music, false);
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0U) << "the device has been closed";
        EXPECT_EQ(CallsOf(Call::MixInit) - InitsBefore, CallsOf(Call::MixQuit) - QuitsBefore);
        ResumeClock();
    }

    void WriteTone(const char* name, int frames = Rate / 10, double hz = 440.0) const {
        Testing::WriteFileBytes(Data.Path() / "Music" / name,
                                Testing::WavFile({}, Testing::Tone({}, frames, hz, 0.5F)));
    }

    // Under the names of the built-in table; the content decides what a file is.
    void WriteDefaultMusic() const {
        for (const char* const name :
             {"MenuCredits.ogg", "Gameplay.ogg", "GameOver.ogg", "Water.ogg"}) {
            WriteTone(name);
        }
    }

    void WriteConfig(const std::string& text) const {
        Testing::WriteFileText(Data.Path() / "Music" / "MusicPatterns.ini", text);
    }

    bool Init() {
        const CapturedLog log;
        const CapturedOutput quiet; // velINI tells there of files that are not
        const bool started = InitAudio(App, Music);
        Log = log.Messages();
        return started;
    }

    // What is logged in the meantime.
    template <typename Action>
    static Lines LoggedBy(Action action) {
        const CapturedLog log;
        action();
        return log.Messages();
    }

    void Update() { UpdateMusic(App, Music); }

    Lines Drain(SoundEvent event) {
        EnqueueSound(App, event);
        return LoggedBy([this] { DrainSoundQueue(App, Music); });
    }

    float Gain() const { return MIX_GetTrackGain(Music.MusicTrack); }

    Lines PatternNames() const { return Testing::NamesOf(Music.Patterns); }

    Testing::TestHome Home;
    Testing::DataFolder Data;
    std::string DataPath = Data.Path().string() + "/";
    ScopedBasePath Base{DataPath.c_str()};
    GameApp App;
    MusicRuntime Music;
    Lines Log;
    int InitsBefore = CallsOf(Call::MixInit);
    int QuitsBefore = CallsOf(Call::MixQuit);
};

// --- The start

TEST_F(Engine, StartsWithItsTracksEffectsAndMusic) {
    WriteDefaultMusic();
    ASSERT_TRUE(Init());
    EXPECT_EQ(Log,
              (Lines{ConfigFailed, "Initialized music runtime with built-in default patterns"}));
    EXPECT_TRUE(Music.Ready);
    int count = 0;
    char** const tags = MIX_GetTrackTags(Music.MusicTrack, &count);
    ASSERT_EQ(count, 1);
    EXPECT_STREQ(tags[0], "music");
    SDL_free(tags);
    EXPECT_EQ(Music.MusicGainPercent, 50);
    EXPECT_EQ(Gain(), 0.5F);
    EXPECT_EQ(Music.MusicGainReference, &Music.MusicGainPercent);
    EXPECT_EQ(Music.SfxGainPercent, 75);
    ASSERT_EQ(Music.SfxTracks.size(), 12U);
    for (const TrackHandle& track : Music.SfxTracks) {
        EXPECT_EQ(MIX_GetTrackGain(track.get()), 0.75F);
    }
    for (const AudioHandle& audio : Music.SfxAudio) {
        EXPECT_NE(audio, nullptr);
    }
    EXPECT_EQ(PatternNames(), (Lines{"MENU", "GAMEPLAY", "GAMEOVER", "DANGER", "INFECTION"}));
    EXPECT_EQ(Music.Patterns[2]->ResolvedPath, Music.Patterns[4]->ResolvedPath);
    EXPECT_FALSE(MIX_TrackPlaying(Music.MusicTrack)) << "nothing plays yet";
    EXPECT_TRUE(Music.StartupFadePending);
}

TEST_F(Engine, AsksForSixteenBitStereoAt44100) {
    ASSERT_TRUE(Init());
    SDL_AudioSpec format = {};
    ASSERT_TRUE(MIX_GetMixerFormat(Music.Mixer.get(), &format));
    EXPECT_EQ(format.format, SDL_AUDIO_S16LE);
    EXPECT_EQ(format.channels, 2);
    EXPECT_EQ(format.freq, 44100);
}

TEST_F(Engine, TakesTheGainsFromTheOptions) {
    App.MasterVolume = 50;
    App.MusicEnabled = false;
    ASSERT_TRUE(Init());
    EXPECT_EQ(Music.MusicGainPercent, 0);
    EXPECT_EQ(Gain(), 0.0F);
    EXPECT_EQ(Music.SfxGainPercent, 37);
    EXPECT_EQ(MIX_GetTrackGain(Music.SfxTracks[0].get()), 0.37F);
}

TEST_F(Engine, ReadsThePatternsBesideTheExecutable) {
    WriteTone("tune.wav");
    WriteConfig("[Music]\nMenuPattern=tune\nFadeInMs=99999\nFadeOutMs=-1\n"
                "GameplayPattern=tune\nGameOverPattern=tune\nDangerPattern=tune\n"
                "InfectionPattern=tune\n"
                "[Pattern.tune]\nFileName=Music/tune.wav\n");
    ASSERT_TRUE(Init());
    EXPECT_EQ(Log, Lines{});
    EXPECT_EQ(PatternNames(), Lines{"tune"});
    EXPECT_EQ(Music.Patterns[0]->ResolvedPath, DataPath + "Music/tune.wav");
    EXPECT_EQ(Music.FadeInMs, 5000);
    EXPECT_EQ(Music.FadeOutMs, 0);
}

// Whatever a file without one pattern says, nothing of it is left.
TEST_F(Engine, TheBuiltInPatternsGiveEveryRoleItsPieceInALoop) {
    struct RoleAndPiece {
        std::string MusicRuntime::*Role;
        const char* Piece;
    };
    const std::array<RoleAndPiece, 5> roles = {{
        {&MusicRuntime::MenuPatternName, "MenuCredits.ogg"},
        {&MusicRuntime::GameplayPatternName, "Gameplay.ogg"},
        {&MusicRuntime::GameOverPatternName, "GameOver.ogg"},
        {&MusicRuntime::DangerPatternName, "Water.ogg"},
        {&MusicRuntime::InfectionPatternName, "GameOver.ogg"},
    }};
    WriteDefaultMusic();
    WriteConfig("[Music]\nMenuPattern=a\nGameplayPattern=b\nGameOverPattern=c\nDangerPattern=d\n"
                "InfectionPattern=e\nFadeInMs=1\nFadeOutMs=2\n");
    ASSERT_TRUE(Init());
    EXPECT_EQ(Log,
              (Lines{ConfigFailed, "Initialized music runtime with built-in default patterns"}))
        << "there is nothing to repair";
    std::set<std::string> names;
    for (const RoleAndPiece& role : roles) {
        const std::string& name = Music.*role.Role;
        names.insert(name);
        const MusicPattern* const pattern = FindMusicPattern(Music.Patterns, name);
        ASSERT_NE(pattern, nullptr) << name;
        EXPECT_EQ(pattern->ResolvedPath, DataPath + "Music/" + role.Piece);
        EXPECT_EQ(pattern->NextPatternName, name);
    }
    EXPECT_EQ(names.size(), roles.size()) << "two roles of one piece are told apart all the same";
    EXPECT_EQ(Music.Patterns.size(), roles.size());
    EXPECT_EQ(Music.FadeInMs, 360);
    EXPECT_EQ(Music.FadeOutMs, 360);
}

TEST_F(Engine, AFileOfUnsafeNamesOnlyLeadsToTheBuiltInPatterns) {
    WriteDefaultMusic();
    WriteConfig("[Pattern.MENU]\nFileName=../menu.ogg\n"
                "[Pattern.GAMEPLAY]\nFileName=C:/x.ogg\n"
                "[Pattern.DANGER]\nFileName=/x.ogg\n");
    ASSERT_TRUE(Init());
    EXPECT_EQ(Log,
              (Lines{"Music pattern 'MENU' has unsafe FileName '../menu.ogg'; skipping",
                     "Music pattern 'GAMEPLAY' has unsafe FileName 'C:/x.ogg'; skipping",
                     "Music pattern 'DANGER' has unsafe FileName '/x.ogg'; skipping", ConfigFailed,
                     "Initialized music runtime with built-in default patterns"}));
    EXPECT_EQ(Music.Patterns.size(), 5U);
}

TEST_F(Engine, WithoutAnyMusicItRunsWithEffectsAlone) {
    ASSERT_TRUE(Init());
    ASSERT_EQ(Log.size(), 7U);
    EXPECT_EQ(Log[0], ConfigFailed);
    EXPECT_TRUE(Log[1].starts_with("MIX_LoadAudio failed for pattern 'MENU' "
                                   "(configured='Music/MenuCredits.ogg', resolved='" +
                                   DataPath + "Music/MenuCredits.ogg'): "));
    EXPECT_EQ(Log[6], "Failed to initialize built-in default music patterns");
    EXPECT_TRUE(Music.Ready);
    Update();
    EXPECT_EQ(Drain(SoundEvent::UiMove), Lines{});
    EXPECT_TRUE(MIX_TrackPlaying(Music.SfxTracks[0].get()));
}

TEST_F(Engine, MissingFilesCascadeToWhatIsThere) {
    WriteTone("Gameplay.ogg");
    WriteTone("Water.ogg");
    ASSERT_TRUE(Init());
    EXPECT_EQ(PatternNames(), (Lines{"GAMEPLAY", "DANGER"}));
    EXPECT_EQ(Music.MenuPatternName, "GAMEPLAY");
    EXPECT_EQ(Music.GameOverPatternName, "GAMEPLAY");
    EXPECT_EQ(Music.DangerPatternName, "DANGER");
    EXPECT_EQ(Music.InfectionPatternName, "GAMEPLAY");
}

TEST_F(Engine, WithoutAFolderOfTheExecutableEveryNameIsUnsafe) {
    for (const char* const nowhere : {static_cast<const char*>(nullptr), ""}) {
        const ScopedBasePath none(nowhere);
        ASSERT_TRUE(Init());
        ASSERT_EQ(Log.size(), 7U);
        EXPECT_EQ(Log[1],
                  "Music pattern 'MENU' has unsafe FileName 'Music/MenuCredits.ogg'; skipping");
        ShutdownAudio(Music, false);
    }
}

TEST_F(Engine, AStrangePatternFileLeadsToTheBuiltInPatterns) {
    WriteDefaultMusic();
    for (const std::string& content :
         {std::string(), std::string("x"), std::string(5000, '\0'), std::string(300000, '['),
          std::string("[Pattern.MENU\nFileName"), std::string(100000, '\xFF')}) {
        WriteConfig(content);
        ASSERT_TRUE(Init());
        EXPECT_EQ(Music.Patterns.size(), 5U);
        EXPECT_EQ(Log.back(), "Initialized music runtime with built-in default patterns");
        ShutdownAudio(Music, false);
    }
}

TEST_F(Engine, CanBeStartedAndStoppedAgain) {
    WriteDefaultMusic();
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(Init());
        Update();
        EXPECT_EQ(Music.CurrentPatternName, "MENU");
        ShutdownAudio(Music, false);
        EXPECT_FALSE(Music.Ready);
    }
}

// --- Starts that fail

class FailedStart : public Engine {
protected:
    void ExpectNothingLeft() {
        EXPECT_FALSE(Music.Ready);
        EXPECT_EQ(Music.Mixer, nullptr);
        EXPECT_EQ(Music.MusicTrack, nullptr);
        EXPECT_TRUE(Music.SfxTracks.empty());
        EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0U);
        // The game goes on.
        EXPECT_EQ(LoggedBy([this] { Update(); }), Lines{});
        EXPECT_EQ(Drain(SoundEvent::GameOver), Lines{});
        EXPECT_EQ(App.SoundQueueCount, 0U);
        const int quits = CallsOf(Call::MixQuit);
        ShutdownAudio(Music, true);
        EXPECT_EQ(CallsOf(Call::MixQuit), quits) << "there is nothing to quit";
    }
};

TEST_F(FailedStart, WithoutTheMixerLibrary) {
    {
        const FailingCall fault(Call::MixInit);
        EXPECT_FALSE(Init());
    }
    EXPECT_EQ(Log, Lines{Failed("MIX_Init failed")});
    ExpectNothingLeft();
    ++InitsBefore; // What failed needs no end.
}

TEST_F(FailedStart, WithoutADriver) {
    const ScopedVariable driver("SDL_AUDIO_DRIVER", "no such driver");
    EXPECT_FALSE(Init());
    ASSERT_EQ(Log.size(), 1U);
    EXPECT_TRUE(Log[0].starts_with("MIX_CreateMixerDevice failed: ")) << Log[0];
    ExpectNothingLeft();
}

TEST_F(FailedStart, WithADeviceThatCannotBeOpened) {
    const ScopedVariable driver("SDL_AUDIO_DRIVER", "disk");
    const ScopedVariable file("SDL_AUDIO_DISK_OUTPUT_FILE", "/no such folder/out.raw");
    EXPECT_FALSE(Init());
    ASSERT_EQ(Log.size(), 1U);
    EXPECT_TRUE(Log[0].starts_with("MIX_CreateMixerDevice failed: ")) << Log[0];
    ExpectNothingLeft();
}

TEST_F(FailedStart, WithoutAMusicTrack) {
    {
        const FailingCall fault(Call::CreateTrack);
        EXPECT_FALSE(Init());
    }
    EXPECT_EQ(Log, Lines{Failed("MIX_CreateTrack failed")});
    ExpectNothingLeft();
}

TEST_F(FailedStart, WithoutAGainForTheMusic) {
    {
        const FailingCall fault(Call::SetTrackGain);
        EXPECT_FALSE(Init());
    }
    EXPECT_EQ(Log, Lines{Failed("MIX_SetTrackGain failed")});
    ExpectNothingLeft();
}

// --- Parts of the start that fail

TEST_F(Engine, AMusicTrackWithoutATagPlaysAllTheSame) {
    WriteDefaultMusic();
    {
        const FailingCall fault(Call::TagTrack, 1, 1);
        EXPECT_TRUE(Init());
    }
    EXPECT_EQ(Log[0], Failed("MIX_TagTrack failed"));
    Update();
    EXPECT_TRUE(MIX_TrackPlaying(Music.MusicTrack));
}

TEST_F(Engine, EffectTracksWithoutATagAreKept) {
    {
        const FailingCall fault(Call::TagTrack, 2);
        EXPECT_TRUE(Init());
    }
    EXPECT_EQ(Music.SfxTracks.size(), 12U);
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_EQ(Log.at(i), Failed("MIX_TagTrack failed for SFX track " + std::to_string(i)));
    }
}

TEST_F(Engine, AnEffectTrackThatCannotBeMadeIsMissing) {
    {
        // The first track is the music's.
        const FailingCall fault(Call::CreateTrack, 2 + 4, 2);
        EXPECT_TRUE(Init());
    }
    EXPECT_EQ(Music.SfxTracks.size(), 10U);
    EXPECT_EQ(Log[0], Failed("MIX_CreateTrack failed for SFX track 4"));
    EXPECT_EQ(Log[1], Failed("MIX_CreateTrack failed for SFX track 5"));
    EXPECT_EQ(Log[2], ConfigFailed);
}

TEST_F(Engine, AnEffectGainThatFailsIsLoggedForEachTrack) {
    {
        const FailingCall fault(Call::SetTrackGain, 2);
        EXPECT_TRUE(Init());
    }
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_EQ(Log.at(i), Failed("MIX_SetTrackGain failed for SFX track"));
    }
    EXPECT_TRUE(Music.Ready);
}

TEST_F(Engine, WithoutTheMixersFormatTheEffectsArePlainSines) {
    for (const Call call : {Call::GetMixerFormat, Call::LoadRawAudio}) {
        const int sines = CallsOf(Call::CreateSineWaveAudio);
        const FailingCall fault(call);
        EXPECT_TRUE(Init());
        EXPECT_EQ(Log[0], ConfigFailed) << "which is no failure";
        EXPECT_EQ(CallsOf(Call::CreateSineWaveAudio) - sines, 11);
        for (const AudioHandle& audio : Music.SfxAudio) {
            EXPECT_NE(audio, nullptr);
        }
        ShutdownAudio(Music, false);
    }
}

TEST_F(Engine, AnEffectThatCannotBeMadeIsSilentAndTheOthersPlay) {
    {
        const FailingCall raw(Call::LoadRawAudio, 5, 1);
        const FailingCall sine(Call::CreateSineWaveAudio);
        EXPECT_TRUE(Init());
    }
    EXPECT_EQ(Log[0], Failed("MIX_CreateSineWaveAudio failed for SFX 'Rotate'"));
    EXPECT_EQ(Log[1], ConfigFailed);
    EXPECT_EQ(Drain(SoundEvent::Rotate), Lines{});
    EXPECT_FALSE(MIX_TrackPlaying(Music.SfxTracks[0].get()));
    EXPECT_EQ(Drain(SoundEvent::Place), Lines{});
    EXPECT_TRUE(MIX_TrackPlaying(Music.SfxTracks[0].get()));
}

TEST_F(Engine, MusicThatCannotBeProbedIsSkipped) {
    WriteDefaultMusic();
    {
        // The tracks of the music and the effects come first.
        const FailingCall fault(Call::CreateTrack, 14, 1);
        EXPECT_TRUE(Init());
    }
    EXPECT_EQ(PatternNames(), (Lines{"GAMEPLAY", "GAMEOVER", "DANGER", "INFECTION"}));
}

// --- Effects that fail

TEST_F(Engine, AnEffectThatCannotBePlayedIsLogged) {
    ASSERT_TRUE(Init());
    struct Case {
        Call Fault;
        const char* Name;
    };
    for (const Case& c : {Case{Call::SetTrackAudio, "MIX_SetTrackAudio"},
                          Case{Call::CreateProperties, "SDL_CreateProperties"},
                          Case{Call::PlayTrack, "MIX_PlayTrack"}}) {
        const FailingCall fault(c.Fault);
        EXPECT_EQ(Drain(SoundEvent::VirusSpread),
                  Lines{Failed(std::string(c.Name) + " failed for SFX 'VirusSpread'")});
        EXPECT_EQ(App.SoundQueueCount, 0U);
    }
    EXPECT_EQ(Music.NextSfxTrack, 3U) << "the turn has been used up";
    EXPECT_EQ(Drain(SoundEvent::VirusSpread), Lines{});
    EXPECT_TRUE(MIX_TrackPlaying(Music.SfxTracks[3].get()));
}

TEST_F(Engine, AfterAnEffectThatFailedTheNextOfTheFrameIsPlayed) {
    ASSERT_TRUE(Init());
    EnqueueSound(App, SoundEvent::UiMove);
    EnqueueSound(App, SoundEvent::UiBack);
    const FailingCall fault(Call::PlayTrack, 1, 1);
    EXPECT_EQ(LoggedBy([this] { DrainSoundQueue(App, Music); }),
              Lines{Failed("MIX_PlayTrack failed for SFX 'UiMove'")});
    EXPECT_TRUE(MIX_TrackPlaying(Music.SfxTracks[1].get()));
}

// --- Music that fails

class Playing : public Engine {
protected:
    void SetUp() override {
        Engine::SetUp();
        FreezeClock(Start);
        WriteDefaultMusic();
        ASSERT_TRUE(Init());
        Testing::InstallInfectedRun(0);
        // So that the music moves only when the test lets it.
        MIX_LockMixer(Music.Mixer.get());
    }
    void TearDown() override {
        MIX_UnlockMixer(Music.Mixer.get());
        Engine::TearDown();
    }

    Lines Updated() {
        return LoggedBy([this] { Update(); });
    }

    static constexpr std::uint64_t Start = 7000;
};

TEST_F(Playing, TheMixerIsToldOfAVolumeOnlyWhenItChanges) {
    Music.FadeInMs = 0;
    Update();
    const int before = CallsOf(Call::SetTrackGain);
    for (int i = 0; i < 100; ++i) {
        Update();
    }
    EXPECT_EQ(CallsOf(Call::SetTrackGain), before);
    App.MusicVolume = 60;
    Update();
    Update();
    EXPECT_EQ(CallsOf(Call::SetTrackGain), before + 1);
    App.SfxEnabled = false;
    Update();
    Update();
    EXPECT_EQ(CallsOf(Call::SetTrackGain), before + 1 + 12);
}

TEST_F(Playing, AVolumeThatCannotBeSetIsLoggedOnce) {
    Music.FadeInMs = 0;
    Update();
    App.MusicVolume = 60;
    const FailingCall fault(Call::SetTrackGain);
    EXPECT_EQ(Updated(), Lines{Failed("MIX_SetTrackGain failed")});
    EXPECT_EQ(Updated(), Lines{});
    EXPECT_EQ(Music.MusicGainPercent, 60);
    App.SfxVolume = 60;
    EXPECT_EQ(Updated(), Lines(12, Failed("MIX_SetTrackGain failed for SFX track")));
}

TEST_F(Playing, AFadeThatCannotBePrimedIsNone) {
    {
        const FailingCall fault(Call::SetTrackGain, 1, 1);
        EXPECT_EQ(Updated(), Lines{Failed("MIX_SetTrackGain failed during startup fade prime")});
    }
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_FALSE(Music.StartupFadePending);
    EXPECT_EQ(Gain(), 0.5F);
}

TEST_F(Playing, AFadeThatCannotBeSetUpIsNone) {
    {
        const FailingCall fault(Call::SetTrackGain, 2, 1);
        EXPECT_EQ(Updated(), Lines{Failed("MIX_SetTrackGain failed during startup fade setup")});
    }
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_FALSE(Music.StartupFadeActive);
}

TEST_F(Playing, AFadeThatFailsOnItsWayEnds) {
    Update();
    FreezeClock(Start + 100);
    {
        const FailingCall fault(Call::SetTrackGain, 1, 1);
        EXPECT_EQ(Updated(), Lines{Failed("MIX_SetTrackGain failed during startup fade")});
    }
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_EQ(Updated(), Lines{});
}

TEST_F(Playing, TheEndOfAFadeThatFailsIsLogged) {
    Update();
    FreezeClock(Start + 360);
    const FailingCall fault(Call::SetTrackGain, 2, 1);
    EXPECT_EQ(Updated(), Lines{Failed("MIX_SetTrackGain failed")});
    EXPECT_FALSE(Music.StartupFadeActive);
}

TEST_F(Playing, AStartThatFailsIsTriedAgainInEveryFrame) {
    struct Case {
        Call Fault;
        Lines Logged;
    };
    // A track that has its audio and does not move is also past its end.
    const Lines twice = {Failed("PlayMusicPattern failed"),
                         Failed("PlayMusicPattern failed at loop boundary")};
    for (const Case& c : {Case{Call::SetTrackAudio, {Failed("PlayMusicPattern failed")}},
                          Case{Call::CreateProperties, twice}, Case{Call::PlayTrack, twice}}) {
        const FailingCall fault(c.Fault);
        EXPECT_EQ(Updated(), c.Logged);
        EXPECT_EQ(Updated(), c.Logged);
        ASSERT_NE(Music.RequestedPattern, nullptr);
        EXPECT_EQ(Music.RequestedPattern->PatternName, "MENU");
        EXPECT_EQ(Music.CurrentPatternName, "");
        EXPECT_TRUE(Music.StartupFadePending);
        EXPECT_EQ(Gain(), 0.5F) << "restored";
    }
    EXPECT_EQ(Updated(), Lines{});
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_TRUE(Music.StartupFadeActive);
}

TEST_F(Playing, AVolumeThatCannotBeRestoredIsLogged) {
    const FailingCall play(Call::SetTrackAudio);
    const FailingCall gain(Call::SetTrackGain, 2, 1);
    EXPECT_EQ(Updated(), (Lines{Failed("PlayMusicPattern failed"),
                                Failed("MIX_SetTrackGain failed while restoring volume")}));
}

TEST_F(Playing, ACutThatFailsIsTriedAgain) {
    Update();
    App.Screen = AppScreen::Playing;
    {
        const FailingCall fault(Call::PlayTrack);
        EXPECT_EQ(Updated(), Lines{Failed("PlayMusicPattern failed")});
    }
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_EQ(Updated(), Lines{});
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
}

TEST_F(Playing, ASwitchThatFailsAtItsBoundaryWaitsForTheNext) {
    App.Screen = AppScreen::Playing;
    Update();
    Testing::InstallInfectedRun(20);
    Update();
    ASSERT_NE(Music.RequestedPattern, nullptr);
    // As if the track had been further on.
    Music.LastPositionFrames = 1000;
    {
        const FailingCall fault(Call::PlayTrack);
        EXPECT_EQ(Updated(), Lines{Failed("PlayMusicPattern failed at loop boundary")});
    }
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    ASSERT_NE(Music.RequestedPattern, nullptr);
    EXPECT_EQ(Updated(), Lines{});
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    Music.LastPositionFrames = 1000;
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "INFECTION");
}

TEST_F(Playing, WithoutAPositionALoopHasNoBoundary) {
    App.Screen = AppScreen::Playing;
    Update();
    Testing::InstallInfectedRun(20);
    const FailingCall fault(Call::GetTrackPlaybackPosition);
    Music.LastPositionFrames = 1000;
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    EXPECT_EQ(Music.LastPositionFrames, 1000) << "and nothing is stored";
}

TEST_F(Playing, WithoutAPositionWhatDoesNotLoopEndsWhenItStops) {
    App.Screen = AppScreen::Playing;
    Update();
    Music.PendingNextPatternName = "MENU";
    MIX_SetTrackLoops(Music.MusicTrack, 0);
    const FailingCall fault(Call::GetTrackPlaybackPosition);
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    MIX_StopTrack(Music.MusicTrack, 0);
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
}

// --- The end

class Ending : public Engine {
protected:
    void SetUp() override {
        Engine::SetUp();
        WriteDefaultMusic();
    }

    int DelaysDuringShutdown(bool fadeOut) {
        const int before = CallsOf(Call::Delay);
        ShutdownAudio(Music, fadeOut);
        return CallsOf(Call::Delay) - before;
    }
};

TEST_F(Ending, EverythingIsTakenDown) {
    ASSERT_TRUE(Init());
    Update();
    Music.FadeOutMs = 1;
    ShutdownAudio(Music, true);
    EXPECT_FALSE(Music.Ready);
    EXPECT_EQ(Music.Mixer, nullptr);
    EXPECT_EQ(Music.MusicTrack, nullptr);
    EXPECT_EQ(Music.RequestedPattern, nullptr);
    EXPECT_TRUE(Music.Patterns.empty());
    EXPECT_TRUE(Music.SfxTracks.empty());
    EXPECT_EQ(Music.NextSfxTrack, 0U);
    for (const AudioHandle& audio : Music.SfxAudio) {
        EXPECT_EQ(audio, nullptr);
    }
    const int quits = CallsOf(Call::MixQuit);
    ShutdownAudio(Music, true);
    EXPECT_EQ(CallsOf(Call::MixQuit), quits) << "once is enough";
}

TEST_F(Ending, MusicThatPlaysFadesWithinItsTime) {
    ASSERT_TRUE(Init());
    Update();
    Music.FadeOutMs = 40;
    const int stops = CallsOf(Call::StopTrack);
    EXPECT_LE(DelaysDuringShutdown(true), 40 + 250);
    EXPECT_EQ(CallsOf(Call::StopTrack), stops + 1);
}

TEST_F(Ending, AFadeThatNeverEndsIsGivenUpByTheClock) {
    ASSERT_TRUE(Init());
    Update();
    Music.FadeOutMs = 30;
    const FailingCall stuck(Call::TrackPlaying);
    const std::uint64_t start = ClockMs();
    EXPECT_LE(DelaysDuringShutdown(true), 280);
    EXPECT_GE(ClockMs() - start, 280U);
}

TEST_F(Ending, AFadeThatNeverEndsIsGivenUpWhenTheClockStandsStill) {
    FreezeClock(1000);
    ASSERT_TRUE(Init());
    Update();
    Music.FadeOutMs = 30;
    const FailingCall stuck(Call::TrackPlaying);
    EXPECT_EQ(DelaysDuringShutdown(true), 280);
}

TEST_F(Ending, WithoutALengthTheMusicStopsAtOnce) {
    ASSERT_TRUE(Init());
    Update();
    Music.FadeOutMs = 0;
    const int stops = CallsOf(Call::StopTrack);
    EXPECT_EQ(DelaysDuringShutdown(true), 0);
    EXPECT_EQ(CallsOf(Call::StopTrack), stops + 1);
}

TEST_F(Ending, MusicThatDoesNotPlayNeedsNoFade) {
    ASSERT_TRUE(Init());
    const int stops = CallsOf(Call::StopTrack);
    EXPECT_EQ(DelaysDuringShutdown(true), 0);
    EXPECT_EQ(CallsOf(Call::StopTrack), stops);
}

TEST_F(Ending, WithoutAFadeNothingIsWaitedFor) {
    ASSERT_TRUE(Init());
    Update();
    const int stops = CallsOf(Call::StopTrack);
    EXPECT_EQ(DelaysDuringShutdown(false), 0);
    EXPECT_EQ(CallsOf(Call::StopTrack), stops);
}

// --- What comes out

// SDL writes what it plays into a file, twenty times as fast as a device would.
class DiskOutput : public Engine {
protected:
    void SetUp() override {
        Engine::SetUp();
        App.SfxVolume = 100;
        App.MusicVolume = 100;
    }

    void Play(const std::vector<SoundEvent>& events) {
        for (const SoundEvent event : events) {
            EnqueueSound(App, event);
        }
        // All in one go, wherever the mixer's thread is.
        MIX_LockMixer(Music.Mixer.get());
        DrainSoundQueue(App, Music);
        MIX_UnlockMixer(Music.Mixer.get());
        EXPECT_TRUE(WaitUntil([this] {
            return std::ranges::none_of(Music.SfxTracks, [](const TrackHandle& track) {
                return MIX_TrackPlaying(track.get());
            });
        }));
    }

    // The menu's music at its full gain, until so many bytes of it are in the file.
    void PlayMusicFor(std::uintmax_t bytes) {
        Music.FadeInMs = 0;
        const std::uintmax_t silence = std::filesystem::file_size(File);
        Update();
        EXPECT_TRUE(WaitUntil(
            [this, silence, bytes] { return std::filesystem::file_size(File) > silence + bytes; }));
    }

    // Both channels of the file, from the first frame that is not silent to the last.
    std::vector<float> Written() {
        const Testing::Bytes bytes = Testing::ReadFileBytes(File);
        std::vector<float> samples;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
            const auto bits = static_cast<std::uint16_t>(bytes[i] | (bytes[i + 1] << 8));
            samples.push_back(static_cast<float>(static_cast<std::int16_t>(bits)) / 32768.0F);
        }
        const auto sounds = [](float sample) { return sample != 0.0F; };
        const auto first = std::ranges::find_if(samples, sounds) - samples.begin();
        const auto last =
            samples.size() -
            static_cast<std::size_t>(std::find_if(samples.rbegin(), samples.rend(), sounds) -
                                     samples.rbegin());
        if (last == 0) {
            return {};
        }
        const auto begin = static_cast<std::size_t>(first) / 2 * 2;
        const std::size_t end = (last + 1) / 2 * 2;
        return {samples.begin() + static_cast<std::ptrdiff_t>(begin),
                samples.begin() + static_cast<std::ptrdiff_t>(end)};
    }

    std::string File = Data.Path() / "output.raw";
    ScopedVariable Driver{"SDL_AUDIO_DRIVER", "disk"};
    ScopedVariable Output{"SDL_AUDIO_DISK_OUTPUT_FILE", File};
    ScopedVariable Pace{"SDL_AUDIO_DISK_TIMESCALE", "0.05"};
};

// What 16 bits do not show.
constexpr float Step = 1.0F / 32768.0F;

TEST_F(DiskOutput, EachEffectIsWhatItsRowSays) {
    App.SfxVolume = 75;
    for (const SfxSpec& row : SfxSpecs) {
        const char* const name = SoundEventName(row.Event);
        ASSERT_TRUE(Init());
        Play({row.Event});
        ShutdownAudio(Music, true);
        const std::vector<float> written = Written();
        const auto frames = static_cast<std::int64_t>(written.size() / 2);
        // The first and the last frame of an effect are silent.
        EXPECT_NEAR(static_cast<double>(frames + 2),
                    static_cast<double>(SynthesizeSfx(row, Rate, 1).size()), 1.0)
            << name;
        EXPECT_NEAR(Testing::DominantFrequency(Testing::LeftOf(written), Rate), row.FrequencyHz,
                    1.0)
            << name;
        EXPECT_NEAR(Testing::PeakOf(written), row.Amplitude * 0.75F, row.Amplitude * 0.003F)
            << name;
        EXPECT_LT(std::fabs(written.front()), 10 * Step) << name;
        EXPECT_LT(std::fabs(written.back()), 50 * Step) << name;
        for (std::size_t i = 0; i < written.size(); i += 2) {
            ASSERT_EQ(written[i], written[i + 1]) << "the channels differ";
        }
    }
}

TEST_F(DiskOutput, ThirteenEffectsInOneFrameAreTwelveAndTheLast) {
    App.SfxVolume = 15;
    ASSERT_TRUE(Init());
    std::vector<SoundEvent> events(12, SoundEvent::GameOver);
    events.push_back(SoundEvent::PacketLost);
    Play(events);
    ShutdownAudio(Music, true);
    const std::vector<float> over = SynthesizeSfx(SfxSpecs[SoundEvent::GameOver], Rate, 2);
    const std::vector<float> lost = SynthesizeSfx(SfxSpecs[SoundEvent::PacketLost], Rate, 2);
    const std::vector<float> written = Written();
    // The first frame is silent and so not in what was written.
    ASSERT_NEAR(static_cast<double>(written.size()), static_cast<double>(over.size() - 4), 2.0);
    for (std::size_t i = 0; i < written.size() && i + 2 < over.size(); ++i) {
        const float mixed = 11.0F * over[i + 2] + (i + 2 < lost.size() ? lost[i + 2] : 0.0F);
        ASSERT_NEAR(written[i], 0.15F * mixed, 2 * Step) << i;
    }
}

TEST_F(DiskOutput, AChannelThatIsOffPlaysInSilence) {
    App.SfxEnabled = false;
    ASSERT_TRUE(Init());
    EnqueueSound(App, SoundEvent::GameOver);
    MIX_LockMixer(Music.Mixer.get());
    DrainSoundQueue(App, Music);
    EXPECT_TRUE(MIX_TrackPlaying(Music.SfxTracks[0].get()));
    MIX_UnlockMixer(Music.Mixer.get());
    EXPECT_TRUE(WaitUntil([this] { return !MIX_TrackPlaying(Music.SfxTracks[0].get()); }));
    ShutdownAudio(Music, true);
    EXPECT_GT(std::filesystem::file_size(File), 13230U * 4U);
    EXPECT_EQ(Written(), std::vector<float>{});
}

TEST_F(DiskOutput, MusicLoopsWithoutASeam) {
    // A whole number of periods of a hundred frames, so that the loop is one long tone.
    WriteTone("MenuCredits.ogg", 4400, 441.0);
    ASSERT_TRUE(Init());
    PlayMusicFor(2 * BytesPerSecond);
    ShutdownAudio(Music, false);
    const std::vector<float> left = Testing::LeftOf(Written());
    ASSERT_GT(left.size(), static_cast<std::size_t>(Rate));
    for (std::size_t i = 0; i + 100 < left.size(); ++i) {
        ASSERT_NEAR(left[i], left[i + 100], 2 * Step) << "frame " << i;
    }
    EXPECT_NEAR(Testing::PeakOf(left), 0.5F, 0.001F);
}

TEST_F(DiskOutput, TheEndFadesLinearlyToSilence) {
    WriteTone("MenuCredits.ogg", 4400, 441.0);
    ASSERT_TRUE(Init());
    PlayMusicFor(BytesPerSecond);
    ShutdownAudio(Music, true);
    const std::vector<float> left = Testing::LeftOf(Written());
    const std::size_t fade = 360 * Rate / 1000;
    ASSERT_GT(left.size(), fade + 1000);
    const auto peakBeforeEnd = [&left](std::size_t frames) {
        return Testing::PeakOf(std::span(left).last(frames + 50).first(100));
    };
    EXPECT_NEAR(peakBeforeEnd(fade + 500), 0.5F, 0.001F);
    EXPECT_NEAR(peakBeforeEnd(fade * 3 / 4), 0.375F, 0.004F);
    EXPECT_NEAR(peakBeforeEnd(fade / 2), 0.25F, 0.004F);
    EXPECT_NEAR(peakBeforeEnd(fade / 4), 0.125F, 0.004F);
    EXPECT_LT(Testing::PeakOf(std::span(left).last(100)), 0.005F);
}

// --- A device that goes away

TEST_F(Engine, TheGameGoesOnWithoutTheDeviceThatItLost) {
    const ScopedVariable driver("SDL_AUDIO_DRIVER", "disk");
    const ScopedVariable file("SDL_AUDIO_DISK_OUTPUT_FILE", DataPath + "output.raw");
    const ScopedVariable pace("SDL_AUDIO_DISK_TIMESCALE", "0.05");
    WriteDefaultMusic();
    ASSERT_TRUE(SDL_Init(SDL_INIT_EVENTS));
    ASSERT_TRUE(Init());
    Update();
    // SDL takes a file that cannot be written on for a device that was pulled out.
    const Testing::FullDisk full(100000);
    ASSERT_TRUE(WaitUntil([] {
        SDL_Event event = {};
        while (SDL_PollEvent(&event)) {
            if (event.type == SDL_EVENT_AUDIO_DEVICE_REMOVED) {
                return true;
            }
        }
        return false;
    }));
    EXPECT_EQ(LoggedBy([this] {
                  for (int frame = 0; frame < 50; ++frame) {
                      App.Screen = frame % 2 == 0 ? AppScreen::Playing : AppScreen::MainMenu;
                      App.MusicVolume = frame;
                      EnqueueSound(App, SoundEvent::Place);
                      Update();
                      DrainSoundQueue(App, Music);
                  }
              }),
              Lines{});
    EXPECT_EQ(App.SoundQueueCount, 0U);
    Music.FadeOutMs = 20;
    const int delays = CallsOf(Call::Delay);
    ShutdownAudio(Music, true);
    EXPECT_LE(CallsOf(Call::Delay) - delays, 20 + 250);
    SDL_QuitSubSystem(SDL_INIT_EVENTS);
}

} // namespace
} // namespace Wirefall
