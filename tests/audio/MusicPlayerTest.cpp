// The player on an engine that plays into memory, so that the loops wrap when the test says so.

#include "audio/MusicPlayer.h"

#include "audio/AudioSupport.h"
#include "audio/MusicPatterns.h"
#include "audio/SoundEffects.h"
#include "base/Clock.h"
#include "game/GameApp.h"
#include "sim/Simulation.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace Wirefall {
namespace {

using Testing::CapturedLog;

using Lines = std::vector<std::string>;

constexpr int PatternFrames = 4410; // A tenth of a second.
constexpr std::uint64_t Start = 5000;

class Player : public testing::Test {
protected:
    void SetUp() override {
        FreezeClock(Start);
        Testing::WriteFileBytes(Folder.Path() / "tone.wav",
                                Testing::WavFile({}, Testing::Tone({}, PatternFrames, 440, 0.5F)));
        LoadPatterns({{"MENU", "MENU"},
                      {"GAMEPLAY", "GAMEPLAY"},
                      {"INFECTION", "INFECTION"},
                      {"DANGER", "DANGER"},
                      {"GAMEOVER", "GAMEOVER"}});
        Testing::InstallInfectedRun(0);
    }
    void TearDown() override { ResumeClock(); }

    // The patterns with what follows them.
    void LoadPatterns(const std::vector<std::pair<std::string, std::string>>& patterns) {
        std::string text;
        for (const auto& [name, next] : patterns) {
            text.append("[Pattern.").append(name).append("]\nFileName=");
            text.append(Folder.Relative("tone.wav"));
            text.append("\nNextPatternName=").append(next).append("\n");
        }
        const CapturedLog quiet;
        ASSERT_TRUE(LoadMusicPatterns(Testing::DocumentOf(text), Music));
    }

    void Update() { UpdateMusic(App, Music); }

    void UpdateOn(AppScreen screen) {
        App.Screen = screen;
        Update();
    }

    // Lets the track play on for so many frames and then the player look at it.
    void UpdateAfter(int frames) {
        Engine.Play(frames);
        Update();
    }

    float Gain() const { return MIX_GetTrackGain(Music.MusicTrack); }
    std::int64_t Position() const { return MIX_GetTrackPlaybackPosition(Music.MusicTrack); }
    std::string Requested() const {
        return Music.RequestedPattern == nullptr ? "" : Music.RequestedPattern->PatternName;
    }

    Testing::DataFolder Folder;
    Testing::MemoryEngine Engine;
    MusicRuntime& Music = Engine.Music;
    GameApp App;
};

// --- What is wanted

TEST_F(Player, EveryScreenWantsItsPattern) {
    struct Row {
        AppScreen Screen;
        std::uint8_t Danger;
        const char* Pattern;
    };
    for (const AppScreen screen : {AppScreen::Playing, AppScreen::Pause}) {
        EXPECT_EQ(DesiredMusicPattern(Music, screen, 0), "GAMEPLAY");
        EXPECT_EQ(DesiredMusicPattern(Music, screen, 1), "INFECTION");
        EXPECT_EQ(DesiredMusicPattern(Music, screen, 2), "DANGER");
        EXPECT_EQ(DesiredMusicPattern(Music, screen, 3), "GAMEOVER");
    }
    for (std::uint8_t danger = 0; danger <= 3; ++danger) {
        EXPECT_EQ(DesiredMusicPattern(Music, AppScreen::LevelComplete, danger), "GAMEPLAY");
        EXPECT_EQ(DesiredMusicPattern(Music, AppScreen::GameOver, danger), "GAMEOVER");
        for (const AppScreen screen :
             {AppScreen::MainMenu, AppScreen::Options, AppScreen::Help, AppScreen::Credits}) {
            EXPECT_EQ(DesiredMusicPattern(Music, screen, danger), "MENU");
        }
    }
}

TEST_F(Player, EmptyRolesOnTheBoardFallToTheGameplay) {
    Music.InfectionPatternName.clear();
    Music.DangerPatternName.clear();
    Music.GameOverPatternName.clear();
    for (std::uint8_t danger = 0; danger <= 3; ++danger) {
        EXPECT_EQ(DesiredMusicPattern(Music, AppScreen::Playing, danger), "GAMEPLAY");
    }
    Music.GameplayPatternName.clear();
    EXPECT_EQ(DesiredMusicPattern(Music, AppScreen::Playing, 2), "");
}

TEST_F(Player, AnEmptyGameOverRoleFallsToTheInfectionAndThenToTheMenu) {
    Music.GameOverPatternName.clear();
    EXPECT_EQ(DesiredMusicPattern(Music, AppScreen::GameOver, 0), "INFECTION");
    Music.InfectionPatternName.clear();
    EXPECT_EQ(DesiredMusicPattern(Music, AppScreen::GameOver, 0), "MENU");
    Music.MenuPatternName.clear();
    EXPECT_EQ(DesiredMusicPattern(Music, AppScreen::GameOver, 0), "");
}

TEST_F(Player, TheFamilyIsTheBoardsThree) {
    EXPECT_TRUE(IsInGameFamily(Music, "GAMEPLAY"));
    EXPECT_TRUE(IsInGameFamily(Music, "INFECTION"));
    EXPECT_TRUE(IsInGameFamily(Music, "DANGER"));
    EXPECT_FALSE(IsInGameFamily(Music, "GAMEOVER"));
    EXPECT_FALSE(IsInGameFamily(Music, "MENU"));
    EXPECT_FALSE(IsInGameFamily(Music, "gameplay"));
    EXPECT_FALSE(IsInGameFamily(Music, ""));
    Music.DangerPatternName.clear();
    EXPECT_FALSE(IsInGameFamily(Music, "")) << "not even when a role is empty";
}

TEST_F(Player, ReadsTheDangerFromTheLiveRun) {
    struct Row {
        int Infected;
        const char* Pattern;
    };
    for (const AppScreen screen : {AppScreen::Playing, AppScreen::Pause}) {
        for (const Row& row : std::vector<Row>{{0, "GAMEPLAY"},
                                               {17, "GAMEPLAY"},
                                               {18, "INFECTION"},
                                               {33, "INFECTION"},
                                               {34, "DANGER"},
                                               {100, "DANGER"}}) {
            Testing::InstallInfectedRun(row.Infected);
            Music.CurrentPatternName.clear();
            UpdateOn(screen);
            EXPECT_EQ(Music.CurrentPatternName, row.Pattern) << row.Infected;
        }
    }
    LiveRun().GameOver = true;
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "GAMEOVER");
    UpdateOn(AppScreen::LevelComplete);
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
}

TEST_F(Player, LostPacketsAreDangerToo) {
    UpdateOn(AppScreen::Playing);
    LiveRun().LostPackets = 5; // 5 of 10 to failure
    Update();
    EXPECT_EQ(Requested(), "DANGER");
}

// --- Starting

TEST_F(Player, DoesNothingWhileTheEngineIsNotReady) {
    Music.Ready = false;
    App.MusicVolume = 10;
    UpdateOn(AppScreen::Help);
    EXPECT_EQ(Music.LastScreen, AppScreen::MainMenu);
    EXPECT_EQ(Music.MusicGainPercent, 50);
    EXPECT_FALSE(MIX_TrackPlaying(Music.MusicTrack));
}

TEST_F(Player, StartsTheMenuAndKeepsItLooping) {
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_EQ(Music.PendingNextPatternName, "MENU");
    EXPECT_EQ(Music.CurrentDurationMs, 100);
    EXPECT_EQ(Music.LastPositionFrames, 0);
    EXPECT_EQ(Music.RequestedPattern, nullptr);
    EXPECT_FALSE(Music.StartupFadePending);
    EXPECT_EQ(MIX_GetTrackLoops(Music.MusicTrack), -1);
    for (int i = 0; i < 30; ++i) {
        UpdateAfter(1000);
        EXPECT_EQ(Music.CurrentPatternName, "MENU");
        EXPECT_EQ(Position(), (i + 1) * 1000 % PatternFrames) << "without a break";
    }
}

TEST_F(Player, RemembersTheScreen) {
    UpdateOn(AppScreen::Credits);
    EXPECT_EQ(Music.LastScreen, AppScreen::Credits);
    Music.Patterns.clear();
    UpdateOn(AppScreen::Options);
    EXPECT_EQ(Music.LastScreen, AppScreen::Options);
}

TEST_F(Player, WithoutPatternsOnlyTheVolumesFollow) {
    Music.Patterns.clear();
    App.MusicVolume = 20;
    Update();
    EXPECT_EQ(Gain(), 0.2F);
    EXPECT_FALSE(MIX_TrackPlaying(Music.MusicTrack));
}

TEST_F(Player, AnEmptyWishChangesNothing) {
    Update();
    Music.MenuPatternName.clear();
    UpdateAfter(1000);
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_EQ(Position(), 1000);
}

TEST_F(Player, ARoleWithoutAPatternIsLoggedAndTheMusicGoesOn) {
    Update();
    Music.MenuPatternName = "NOPE";
    const CapturedLog log;
    UpdateAfter(1000);
    EXPECT_EQ(log.Messages(), Lines{"Requested music pattern could not be found: NOPE"});
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_EQ(Music.LastPositionFrames, 1000) << "the rest of the update is done";
}

TEST_F(Player, ARequestThatCannotBeFoundIsRaised) {
    Music.RequestedPattern = Music.Patterns[0].get();
    try {
        RequestMusicPattern(Music, "NOPE");
        FAIL() << "nothing was raised";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Requested music pattern could not be found: NOPE");
    }
    EXPECT_EQ(Music.RequestedPattern, nullptr);
    RequestMusicPattern(Music, "DANGER");
    EXPECT_EQ(Requested(), "DANGER");
}

TEST_F(Player, PlaysNothingWithoutAPatternOrATrack) {
    EXPECT_FALSE(PlayMusicPattern(Music, nullptr, 0));
    MIX_Track* const track = std::exchange(Music.MusicTrack, nullptr);
    EXPECT_FALSE(PlayMusicPattern(Music, Music.Patterns[0].get(), 0));
    EXPECT_TRUE(ApplyMusicGain(Music));
    Music.StartupFadeActive = true;
    UpdateStartupFade(Music);
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "");
    Music.MusicTrack = track;
}

TEST_F(Player, CanPlayAPatternOutOfAFade) {
    ASSERT_TRUE(PlayMusicPattern(Music, Music.Patterns[0].get(), 50));
    EXPECT_EQ(MIX_GetTrackFadeFrames(Music.MusicTrack), 2205);
    ASSERT_TRUE(PlayMusicPattern(Music, Music.Patterns[0].get(), 0));
    EXPECT_EQ(MIX_GetTrackFadeFrames(Music.MusicTrack), 0);
}

TEST_F(Player, AudioWithoutALengthLastsForEver) {
    Music.Patterns[0]->Audio.reset(MIX_CreateSineWaveAudio(Music.Mixer.get(), 440, 0.5F, -1));
    ASSERT_NE(Music.Patterns[0]->Audio, nullptr);
    ASSERT_TRUE(PlayMusicPattern(Music, Music.Patterns[0].get(), 0));
    EXPECT_EQ(Music.CurrentDurationMs, std::numeric_limits<std::int32_t>::max());
}

// --- The startup fade

TEST_F(Player, TheFirstMenuRisesToItsGainInFadeInMs) {
    const float full = 0.5F;
    const float start = 0.28F * full;
    Update();
    EXPECT_TRUE(Music.StartupFadeActive);
    EXPECT_EQ(Music.StartupFadeStartTicks, Start);
    for (std::uint64_t ms = 0; ms < 360; ++ms) {
        FreezeClock(Start + ms);
        Update();
        const float progress = static_cast<float>(ms) / 360.0F;
        ASSERT_EQ(Gain(), start + (full - start) * progress) << ms << " ms";
        ASSERT_TRUE(Music.StartupFadeActive) << ms << " ms";
    }
    FreezeClock(Start + 360);
    Update();
    EXPECT_EQ(Gain(), full);
    EXPECT_FALSE(Music.StartupFadeActive);
}

TEST_F(Player, AStartupFadeThatIsLongOverEndsAtOnce) {
    Update();
    FreezeClock(Start + 100000);
    Update();
    EXPECT_EQ(Gain(), 0.5F);
    EXPECT_FALSE(Music.StartupFadeActive);
}

TEST_F(Player, AVolumeChangedDuringTheStartupFadeMovesItsEnd) {
    Update();
    App.MusicVolume = 100;
    FreezeClock(Start + 180);
    Update();
    EXPECT_FLOAT_EQ(Gain(), 0.28F + 0.72F * 0.5F);
    App.MusicEnabled = false;
    Update();
    EXPECT_EQ(Gain(), 0.0F);
    EXPECT_TRUE(Music.StartupFadeActive);
}

TEST_F(Player, WithoutAFadeTheFirstPatternStartsAtFullGain) {
    Music.FadeInMs = 0;
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_EQ(Gain(), 0.5F);
}

TEST_F(Player, AFirstPatternThatIsNotTheMenusHasNoFadeAndDropsIt) {
    UpdateOn(AppScreen::Playing);
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_FALSE(Music.StartupFadePending);
    EXPECT_EQ(Gain(), 0.5F);
    UpdateOn(AppScreen::MainMenu);
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_FALSE(Music.StartupFadeActive) << "nor does the menu have one later";
    EXPECT_EQ(Gain(), 0.5F);
}

TEST_F(Player, ALaterFirstPatternHasNoFade) {
    Music.StartupFadePending = false;
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_FALSE(Music.StartupFadeActive);
}

TEST_F(Player, ACutDuringTheStartupFadeLeavesTheGainWhereItWas) {
    Update();
    FreezeClock(Start + 180);
    Update();
    const float half = Gain();
    UpdateOn(AppScreen::Playing);
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_EQ(Gain(), half);
    App.MusicVolume = 60;
    Update();
    EXPECT_EQ(Gain(), 0.6F) << "until the volume is touched";
}

TEST_F(Player, TheStartupFadeWaitsWhileTheTrackStands) {
    Update();
    MIX_PauseTrack(Music.MusicTrack);
    FreezeClock(Start + 400);
    UpdateStartupFade(Music);
    EXPECT_TRUE(Music.StartupFadeActive);
    EXPECT_EQ(Gain(), 0.28F * 0.5F);
    MIX_ResumeTrack(Music.MusicTrack);
    UpdateStartupFade(Music);
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_EQ(Gain(), 0.5F);
}

TEST_F(Player, AFadeWhoseLengthIsTakenAwayEndsAtOnce) {
    Update();
    Music.FadeInMs = 0;
    Update();
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_EQ(Gain(), 0.5F);
}

// --- Cuts

TEST_F(Player, FromTheMenuIntoPlayTheMusicChangesAtOnce) {
    Update();
    UpdateAfter(1000);
    UpdateOn(AppScreen::Playing);
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    EXPECT_EQ(Position(), 0);
    EXPECT_EQ(Music.RequestedPattern, nullptr);
}

TEST_F(Player, OptionsAndHelpFromPauseCutToTheMenuAndBack) {
    for (const AppScreen page : {AppScreen::Options, AppScreen::Help}) {
        UpdateOn(AppScreen::Pause);
        EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
        UpdateOn(page);
        EXPECT_EQ(Music.CurrentPatternName, "MENU");
        UpdateOn(AppScreen::Pause);
        EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
        EXPECT_EQ(Position(), 0) << "from its beginning";
    }
}

TEST_F(Player, GameOverOnTheBoardCutsAtOnce) {
    UpdateOn(AppScreen::Playing);
    UpdateAfter(1000);
    LiveRun().GameOver = true;
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "GAMEOVER");
    UpdateAfter(1000);
    UpdateOn(AppScreen::GameOver);
    EXPECT_EQ(Position(), 1000) << "and plays on when the panel comes up";
}

TEST_F(Player, AFamilyChangeIsACutWhenNothingPlays) {
    UpdateOn(AppScreen::Playing);
    MIX_StopTrack(Music.MusicTrack, 0);
    Testing::InstallInfectedRun(20);
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "INFECTION");
    EXPECT_TRUE(MIX_TrackPlaying(Music.MusicTrack));
}

// --- Loops

class Switch : public Player {
protected:
    void SetUp() override {
        Player::SetUp();
        UpdateOn(AppScreen::Playing);
        UpdateAfter(1000);
        Testing::InstallInfectedRun(20);
        Update();
        ASSERT_EQ(Requested(), "INFECTION");
        ASSERT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    }
};

TEST_F(Switch, WithinTheFamilyWaitsForTheWrap) {
    UpdateAfter(3400);
    EXPECT_EQ(Position(), 4400);
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    EXPECT_EQ(Requested(), "INFECTION");
    UpdateAfter(20);
    EXPECT_EQ(Music.CurrentPatternName, "INFECTION");
    EXPECT_EQ(Music.RequestedPattern, nullptr);
    EXPECT_EQ(Position(), 0);
    EXPECT_EQ(Music.LastPositionFrames, -1);
    UpdateAfter(100);
    EXPECT_EQ(Music.LastPositionFrames, 100);
}

TEST_F(Switch, IsCancelledWhenTheDangerIsOverBeforeTheWrap) {
    UpdateAfter(2000);
    Testing::InstallInfectedRun(0);
    Update();
    EXPECT_EQ(Music.RequestedPattern, nullptr);
    UpdateAfter(2000);
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
    EXPECT_EQ(Position(), 5000 - PatternFrames) << "it has wrapped as if nothing had been";
}

TEST_F(Switch, GoesToWhatIsWantedAtTheWrap) {
    UpdateAfter(2000);
    Testing::InstallInfectedRun(50);
    Update();
    EXPECT_EQ(Requested(), "DANGER");
    UpdateAfter(2000);
    EXPECT_EQ(Music.CurrentPatternName, "DANGER");
}

TEST_F(Switch, IsOvertakenByACut) {
    UpdateOn(AppScreen::Options);
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_EQ(Music.RequestedPattern, nullptr);
}

TEST_F(Player, ACustomGraphGoesToItsSuccessorForOneUpdate) {
    LoadPatterns({{"MENU", "B"}, {"B", "B"}});
    Update();
    UpdateAfter(4000);
    UpdateAfter(1000);
    EXPECT_EQ(Music.CurrentPatternName, "B");
    EXPECT_EQ(Position(), 0);
    UpdateAfter(100);
    EXPECT_EQ(Music.CurrentPatternName, "MENU") << "which is what the screen wants";
    EXPECT_EQ(Position(), 0);
}

TEST_F(Player, ASuccessorWithinTheFamilyPlaysToItsEnd) {
    LoadPatterns({{"MENU", "MENU"}, {"GAMEPLAY", "INFECTION"}, {"INFECTION", "GAMEPLAY"}});
    UpdateOn(AppScreen::Playing);
    UpdateAfter(4000);
    UpdateAfter(1000);
    EXPECT_EQ(Music.CurrentPatternName, "INFECTION");
    UpdateAfter(4000);
    EXPECT_EQ(Music.CurrentPatternName, "INFECTION");
    EXPECT_EQ(Requested(), "GAMEPLAY");
    UpdateAfter(1000);
    EXPECT_EQ(Music.CurrentPatternName, "GAMEPLAY");
}

TEST_F(Player, AnEmptySuccessorLoops) {
    Update();
    Music.PendingNextPatternName.clear();
    UpdateAfter(4000);
    const CapturedLog log;
    UpdateAfter(1000);
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_EQ(Position(), 590);
    EXPECT_EQ(Music.LastPositionFrames, 590);
    EXPECT_EQ(log.Messages(), Lines{});
}

TEST_F(Player, ASuccessorThatIsNotThereIsLoggedAndThePatternLoops) {
    Update();
    Music.PendingNextPatternName = "NOPE";
    UpdateAfter(4000);
    const CapturedLog log;
    UpdateAfter(1000);
    EXPECT_EQ(log.Messages(), Lines{"Requested music pattern could not be found: NOPE"});
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    EXPECT_EQ(Position(), 590);
}

TEST_F(Player, ASwitchAtAWrapEndsTheStartupFadeButNotItsGain) {
    LoadPatterns({{"MENU", "B"}, {"B", "B"}});
    Update();
    UpdateAfter(4000);
    FreezeClock(Start + 90);
    UpdateAfter(1000);
    EXPECT_EQ(Music.CurrentPatternName, "B");
    EXPECT_FALSE(Music.StartupFadeActive);
    EXPECT_EQ(Gain(), 0.28F * 0.5F);
}

TEST_F(Player, WhatDoesNotLoopEndsAtItsLength) {
    LoadPatterns({{"MENU", "B"}, {"B", "B"}});
    Update();
    MIX_SetTrackLoops(Music.MusicTrack, 0);
    UpdateAfter(4400);
    EXPECT_EQ(Music.CurrentPatternName, "MENU");
    UpdateAfter(10);
    EXPECT_EQ(Music.CurrentPatternName, "B");
}

TEST_F(Player, ATrackThatHasStoppedIsPastItsEnd) {
    LoadPatterns({{"MENU", "B"}, {"B", "B"}});
    Update();
    MIX_SetTrackLoops(Music.MusicTrack, 0);
    Engine.Play(5000);
    ASSERT_FALSE(MIX_TrackPlaying(Music.MusicTrack));
    Update();
    EXPECT_EQ(Music.CurrentPatternName, "B");
    EXPECT_TRUE(MIX_TrackPlaying(Music.MusicTrack));
}

// --- Volumes

TEST_F(Player, EveryVolumeReachesTheTracks) {
    Music.FadeInMs = 0;
    LoadSfx(Music);
    for (const bool musicOn : {true, false}) {
        for (const bool sfxOn : {true, false}) {
            for (std::int32_t master = 0; master <= 100; master += 5) {
                for (std::int32_t channel = 0; channel <= 100; channel += 5) {
                    App.MusicEnabled = musicOn;
                    App.SfxEnabled = sfxOn;
                    App.MasterVolume = master;
                    App.MusicVolume = channel;
                    App.SfxVolume = 100 - channel;
                    Update();
                    const std::int32_t music = musicOn ? master * channel / 100 : 0;
                    const std::int32_t sfx = sfxOn ? master * (100 - channel) / 100 : 0;
                    ASSERT_EQ(Music.MusicGainPercent, music);
                    ASSERT_EQ(Music.SfxGainPercent, sfx);
                    ASSERT_EQ(Gain(), static_cast<float>(music) / 100.0F);
                    for (const TrackHandle& track : Music.SfxTracks) {
                        ASSERT_EQ(MIX_GetTrackGain(track.get()), static_cast<float>(sfx) / 100.0F);
                    }
                }
            }
        }
    }
}

TEST_F(Player, APendingVolumeCountsOnlyOnceItIsApplied) {
    Update();
    App.AudioEdit.MasterVolume = 10;
    App.AudioEdit.MusicEnabled = false;
    App.AudioEdit.Valid = true;
    Update();
    EXPECT_EQ(Music.MusicGainPercent, 50);
    App.MasterVolume = App.AudioEdit.MasterVolume;
    Update();
    EXPECT_EQ(Music.MusicGainPercent, 5);
}

TEST_F(Player, MusicThatIsOffPlaysOnAtGainZero) {
    Music.FadeInMs = 0;
    App.MusicEnabled = false;
    Update();
    EXPECT_TRUE(MIX_TrackPlaying(Music.MusicTrack));
    EXPECT_EQ(Testing::PeakOf(Engine.Play(1000)), 0.0F);
    EXPECT_EQ(Position(), 1000);
    App.MusicEnabled = true;
    Update();
    EXPECT_GT(Testing::PeakOf(Engine.Play(1000)), 0.2F);
}

TEST_F(Player, WithoutAReferenceTheGainIsZero) {
    Music.MusicGainReference = nullptr;
    EXPECT_TRUE(ApplyMusicGain(Music));
    EXPECT_EQ(Gain(), 0.0F);
    const std::int32_t loud = 250;
    Music.MusicGainReference = &loud;
    EXPECT_TRUE(ApplyMusicGain(Music));
    EXPECT_EQ(Gain(), 1.0F);
    Music.MusicGainReference = &Music.MusicGainPercent;
}

} // namespace
} // namespace Wirefall
