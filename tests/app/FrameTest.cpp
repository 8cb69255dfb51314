// Whole frames of the real game, on SDL's dummy drivers and a clock that stands still between them.

#include "app/FramePacing.h"
#include "app/Game.h"
#include "app/WindowTitle.h"
#include "audio/SoundQueue.h"
#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "game/ScreenFlow.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"
#include "support/TestHome.h"
#include "support/VirtualControllers.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_joystick.h>
#include <gtest/gtest.h>

#include <memory>

namespace Wirefall {
namespace {

constexpr std::uint64_t Start = 100000;

int HalfOf(int level) { return level / 2; }

class Frames : public testing::Test {
protected:
    void SetUp() override {
        FreezeClock(Start);
        ASSERT_TRUE(StartGame(G));
        // The dummy display has no vertical sync, and the waits between frames help no test here.
        G.App.VSyncActive = true;
        // Not a matter of these tests.
        G.App.SaveDirty = false;
    }
    void TearDown() override {
        ShutdownGame(G);
        ResumeClock();
    }

    // One frame, `ms` after the last.
    void FrameAfter(std::uint64_t ms) {
        Now += ms;
        FreezeClock(Now);
        RunFrame(G);
    }

    // On the Playing screen with the drawn board, past the zero step of the transition and the
    // fade.
    void PlayOn(const RunState& run) {
        FrameAfter(FadeMs);
        Testing::InstallLiveRun(run);
        G.App.Screen = AppScreen::Playing;
        G.App.LastSavedRevision = GetRevision();
        CaptureRunSnapshot(G.App);
        G.App.SaveDirty = false;
        G.App.SaveDelaySeconds = 0.0F;
    }

    static void PushKey(SDL_Scancode scancode) {
        SDL_Event event{};
        event.type = SDL_EVENT_KEY_DOWN;
        event.key.scancode = scancode;
        event.key.down = true;
        SDL_PushEvent(&event);
    }

    static void PushQuit() {
        SDL_Event event{};
        event.type = SDL_EVENT_QUIT;
        SDL_PushEvent(&event);
    }

    // The colour of one pixel in the middle of the left edge, as drawn last.
    SDL_Color EdgePixel() const {
        const std::unique_ptr<SDL_Surface, decltype(&SDL_DestroySurface)> surface(
            SDL_RenderReadPixels(G.Renderer, nullptr), SDL_DestroySurface);
        SDL_Color color{};
        if (surface) {
            SDL_ReadSurfacePixel(surface.get(), 2, surface->h / 2, &color.r, &color.g, &color.b,
                                 &color.a);
        }
        return color;
    }

    Testing::TestHome Home;
    Game G;
    std::uint64_t Now = Start;
};

const std::vector<std::string_view> OpenRoad = {"→────────⇐"};

TEST_F(Frames, TheGameOpensOnItsMenuOutOfBlack) {
    EXPECT_EQ(G.App.Screen, AppScreen::MainMenu);
    EXPECT_TRUE(G.App.FadeInActive);
    FrameAfter(0);
    const SDL_Color atFirst = EdgePixel();
    EXPECT_EQ(atFirst.r + atFirst.g + atFirst.b, 0);
    FrameAfter(FadeMs - 1);
    EXPECT_TRUE(G.App.FadeInActive);
    FrameAfter(1);
    EXPECT_FALSE(G.App.FadeInActive);
    const SDL_Color after = EdgePixel();
    EXPECT_GT(after.g, 0);
}

TEST_F(Frames, ThePictureComesUpInStepWithTheClock) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    FrameAfter(0);
    const SDL_Color full = EdgePixel();
    G.App.FadeInActive = true;
    G.App.FadeInStartTicks = Now;
    FrameAfter(FadeMs / 2);
    const SDL_Color half = EdgePixel();
    EXPECT_GT(full.g, 4);
    EXPECT_NEAR(half.g, HalfOf(full.g), 1);
}

TEST_F(Frames, TheSimulationGetsTheRawTime) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    FrameAfter(124);
    EXPECT_EQ(LiveRun().Tick, 0U);
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 124U);
    FrameAfter(1);
    EXPECT_EQ(LiveRun().Tick, 1U);
}

TEST_F(Frames, AfterAStallTheGameSlowsDownRatherThanJumps) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    G.App.SaveDirty = true;
    G.App.SaveDelaySeconds = 0.5F;
    FrameAfter(2000);
    EXPECT_EQ(LiveRun().Tick, 2U) << "a quarter of a second";
    EXPECT_FLOAT_EQ(G.App.SaveDelaySeconds, 0.5F - 0.033F);
}

TEST_F(Frames, TheFrameAfterAScreenChangeFeedsNoTime) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    LiveSimulation().AccumulatorMs = 124;
    G.App.ResetFrameClock = true;
    FrameAfter(5000);
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 124U);
    EXPECT_FALSE(G.App.ResetFrameClock);
    FrameAfter(1);
    EXPECT_EQ(LiveRun().Tick, 1U);
}

TEST_F(Frames, TheSimulationRestsOnEveryOtherScreen) {
    for (const AppScreen screen :
         {AppScreen::MainMenu, AppScreen::Options, AppScreen::Help, AppScreen::LevelComplete,
          AppScreen::Pause, AppScreen::Credits, AppScreen::GameOver}) {
        PlayOn(Testing::DrawnRun(OpenRoad));
        LiveSimulation().AccumulatorMs = 100;
        G.App.Screen = screen;
        FrameAfter(500);
        EXPECT_EQ(LiveRun().Tick, 0U);
        EXPECT_EQ(LiveSimulation().AccumulatorMs, 100U);
        EXPECT_FALSE(G.App.SaveDirty);
    }
}

TEST_F(Frames, AChangeOfTheRunIsSavedSoonAfter) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    FrameAfter(125);
    EXPECT_TRUE(G.App.SaveDirty);
    EXPECT_TRUE(G.App.HasSavedRun);
    EXPECT_FLOAT_EQ(G.App.SaveDelaySeconds, 0.8F - 0.033F);
    EXPECT_EQ(G.App.LastSavedRevision, GetRevision());
    FrameAfter(125);
    EXPECT_FLOAT_EQ(G.App.SaveDelaySeconds, 0.8F - 0.033F - 0.033F) << "the deadline stays";
}

// The queue is played and emptied at the end of the frame, but what stood in it can still be seen.
TEST_F(Frames, SoundsOfTheRunAreComparedWithTheLastFrame) {
    for (const bool comparable : {true, false}) {
        RunState run = Testing::DrawnRun({"→─⇐"});
        run.Packets = {Testing::PacketAt(1, 0, Direction::Right)};
        PlayOn(run);
        G.App.PreviousSnapshotValid = comparable;
        G.App.SoundQueue.fill(SoundEvent::UiBack);
        FrameAfter(125);
        EXPECT_EQ(LiveRun().DeliveredPackets, 1);
        EXPECT_EQ(G.App.PreviousSnapshot.DeliveredPackets, 1);
        EXPECT_TRUE(G.App.PreviousSnapshotValid);
        EXPECT_EQ(G.App.SoundQueueCount, 0U);
        EXPECT_EQ(G.App.SoundQueue[0],
                  comparable ? SoundEvent::PacketDelivered : SoundEvent::UiBack);
        EXPECT_EQ(G.App.SoundQueue[1], SoundEvent::UiBack);
        FrameAfter(125);
        EXPECT_EQ(G.App.SoundQueue[1], SoundEvent::UiBack) << "once";
    }
}

TEST_F(Frames, AReachedTargetShowsLevelCompleteInTheSameFrame) {
    RunState run = Testing::DrawnRun({"→─⇐"});
    run.Packets = {Testing::PacketAt(1, 0, Direction::Right)};
    run.DeliveredPackets = 19;
    PlayOn(run);
    FrameAfter(125);
    EXPECT_EQ(G.App.Screen, AppScreen::LevelComplete);
    PushKey(SDL_SCANCODE_RETURN);
    FrameAfter(1000);
    EXPECT_EQ(G.App.Screen, AppScreen::Playing);
    EXPECT_EQ(LiveRun().Level, 2);
    EXPECT_EQ(LiveRun().TotalScore, 110);
    EXPECT_EQ(LiveSimulation().AccumulatorMs, 0U) << "the time on the panel is not played";
}

TEST_F(Frames, AFailedRunShowsGameOverInTheSameFrame) {
    RunState run = Testing::DrawnRun({"─."});
    run.Packets = {Testing::PacketAt(0, 0, Direction::Right)};
    run.LostPackets = 9;
    PlayOn(run);
    FrameAfter(125);
    EXPECT_EQ(G.App.Screen, AppScreen::GameOver);
    EXPECT_FALSE(G.App.HasSavedRun);
    PushKey(SDL_SCANCODE_RETURN);
    FrameAfter(10);
    EXPECT_EQ(G.App.Screen, AppScreen::MainMenu);
    EXPECT_FALSE(G.App.HasSavedRun) << "the menu offers no way back into that run";
}

TEST_F(Frames, AResumedRunWhoseTargetIsMetGoesStraightToLevelComplete) {
    RunState run = Testing::DrawnRun(OpenRoad);
    run.DeliveredPackets = run.LevelTargetPackets;
    PlayOn(run);
    G.App.Screen = AppScreen::MainMenu;
    G.App.HasSavedRun = true;
    PushKey(SDL_SCANCODE_RETURN);
    FrameAfter(1000);
    EXPECT_EQ(G.App.Screen, AppScreen::LevelComplete);
    EXPECT_EQ(LiveRun().Tick, 0U);
    EXPECT_EQ(LiveRun().TotalScore, 0) << "the bonus comes with the next level";
}

TEST_F(Frames, GameOverWinsOverLevelComplete) {
    RunState run = Testing::DrawnRun({"→─⇐─."});
    run.Packets = {Testing::PacketAt(1, 0, Direction::Right),
                   Testing::PacketAt(3, 0, Direction::Right)};
    run.DeliveredPackets = 19;
    run.LostPackets = 9;
    PlayOn(run);
    FrameAfter(125);
    EXPECT_EQ(LiveRun().DeliveredPackets, 20);
    EXPECT_EQ(G.App.Screen, AppScreen::GameOver);
}

TEST_F(Frames, ATilePlacedInAFrameIsInForceForItsTicks) {
    RunState run = Testing::DrawnRun({"→.─⇐"});
    run.Packets = {Testing::PacketAt(0, 0, Direction::Right)};
    run.CursorX = 1;
    run.CursorY = 0;
    run.TileQueue[0] = TileType::Cross;
    PlayOn(run);
    PushKey(SDL_SCANCODE_RETURN);
    FrameAfter(125);
    EXPECT_EQ(LiveRun().Packets.size(), 1U);
    EXPECT_EQ(LiveRun().LostPackets, 0);
}

TEST_F(Frames, FastForwardIsOffOnEveryScreenButPlaying) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    LiveRun().FastForward = true;
    G.App.Screen = AppScreen::Pause;
    FrameAfter(10);
    EXPECT_FALSE(LiveRun().FastForward);
}

TEST_F(Frames, CreditsRollAtTheirSpeedAndEndInTheMenu) {
    FrameAfter(FadeMs);
    G.App.Screen = AppScreen::Credits;
    FrameAfter(20);
    EXPECT_FLOAT_EQ(G.App.CreditsScroll, 42.0F * 0.020F);
    // The end lies 930 above eight times the text scale, which is 4 on a roomy picture.
    G.App.CreditsScroll = 962.0F - 42.0F * 0.010F - 0.01F;
    FrameAfter(10);
    EXPECT_EQ(G.App.Screen, AppScreen::Credits);
    FrameAfter(10);
    EXPECT_EQ(G.App.Screen, AppScreen::MainMenu);
    EXPECT_EQ(G.App.CreditsScroll, 0.0F);
}

TEST_F(Frames, QuittingFadesToBlackInOrdinaryFrames) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    FrameAfter(10);
    const SDL_Color full = EdgePixel();
    PushQuit();
    FrameAfter(10);
    EXPECT_TRUE(G.App.QuitRequested);
    const std::uint64_t fadeStart = Now;
    FrameAfter(FadeMs / 2);
    EXPECT_NEAR(EdgePixel().g, HalfOf(full.g), 1);
    EXPECT_GT(LiveRun().Tick, 0U) << "the simulation goes on";
    PushKey(SDL_SCANCODE_ESCAPE);
    PushQuit();
    FrameAfter(FadeMs / 2 - 1);
    EXPECT_EQ(G.App.Screen, AppScreen::Playing) << "presses are ignored";
    EXPECT_EQ(G.App.FadeOutStartTicks, fadeStart) << "and the fade is not restarted";
    EXPECT_TRUE(G.App.Running);
    FrameAfter(1);
    EXPECT_FALSE(G.App.Running);
    EXPECT_EQ(EdgePixel().g, 0);
}

TEST_F(Frames, WhatIsQueuedBehindTheQuitWaitsForTheNextFrame) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    PushQuit();
    PushKey(SDL_SCANCODE_ESCAPE);
    FrameAfter(10);
    EXPECT_TRUE(SDL_HasEvent(SDL_EVENT_KEY_DOWN));
    FrameAfter(10);
    EXPECT_FALSE(SDL_HasEvent(SDL_EVENT_KEY_DOWN));
    EXPECT_EQ(G.App.Screen, AppScreen::Playing);
}

TEST_F(Frames, TheWindowBearsTheGamesNameAndVersion) {
    SDL_SetWindowTitle(G.Window, "something else");
    FrameAfter(10);
    EXPECT_STREQ(SDL_GetWindowTitle(G.Window), "Wirefall v0.1.0");
    EXPECT_EQ(WindowTitle(), "Wirefall v0.1.0");
}

TEST(FramePacing, FramesAreEightMillisecondsApartWithoutVerticalSync) {
    EXPECT_EQ(PaceDelayMs(false, 0), 8U);
    EXPECT_EQ(PaceDelayMs(false, 1), 7U);
    EXPECT_EQ(PaceDelayMs(false, 7), 1U);
    EXPECT_EQ(PaceDelayMs(false, 8), 0U);
    EXPECT_EQ(PaceDelayMs(false, 5000), 0U);
}

TEST(FramePacing, VerticalSyncIsTheOnlyWait) {
    EXPECT_EQ(PaceDelayMs(true, 0), 0U);
    EXPECT_EQ(PaceDelayMs(true, 5), 0U);
}

TEST_F(Frames, EveryScreenCanBeDrawnAtEveryCanvasWidth) {
    for (const std::int32_t width : {960, 1080, 1152, 1280, 1728, 2560}) {
        LogicalWidth = width;
        for (const AppScreen screen : {AppScreen::MainMenu, AppScreen::Playing}) {
            G.App.Screen = screen;
            FrameAfter(FadeMs);
            EXPECT_GT(EdgePixel().g, 0) << width;
        }
        for (int screen = 0; screen < 8; ++screen) {
            G.App.Screen = static_cast<AppScreen>(screen);
            FrameAfter(10);
            EXPECT_EQ(G.App.Screen, static_cast<AppScreen>(screen));
        }
    }
    LogicalWidth = 1280;
}

TEST_F(Frames, AChangeOnAnyScreenIsSaved) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    G.App.Screen = AppScreen::Help;
    ++LiveSimulation().Revision;
    FrameAfter(10);
    EXPECT_TRUE(G.App.SaveDirty);
    EXPECT_TRUE(G.App.HasSavedRun);
}

TEST_F(Frames, OfTwoFadesTheDarkerShows) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    FrameAfter(10);
    const int full = EdgePixel().g;
    G.App.FadeInActive = true;
    G.App.FadeInStartTicks = Now;
    FrameAfter(FadeMs / 4);
    G.App.QuitRequested = true;
    G.App.FadeOutStartTicks = Now;
    FrameAfter(FadeMs / 4);
    // Half way in and a quarter out.
    EXPECT_NEAR(EdgePixel().g, HalfOf(full), 1);
    FrameAfter(FadeMs / 4);
    // Three quarters in and half way out.
    EXPECT_NEAR(EdgePixel().g, HalfOf(full), 1);
}

TEST_F(Frames, FastForwardIsOnWhileItsKeyIsHeldInPlay) {
    PlayOn(Testing::DrawnRun(OpenRoad));
    G.App.JoystickBindings.at(ActionIndex(InputAction::FastForward)) = 2;
    VirtualJoystick stick;
    FrameAfter(0);
    ASSERT_NE(G.Controllers.Joystick, nullptr);
    stick.PressButton(2);
    SDL_UpdateJoysticks();
    FrameAfter(125);
    EXPECT_TRUE(LiveRun().FastForward);
    EXPECT_EQ(LiveRun().Tick, 3U);
    stick.ReleaseButton(2);
    SDL_UpdateJoysticks();
    FrameAfter(125);
    EXPECT_FALSE(LiveRun().FastForward);
    EXPECT_EQ(LiveRun().Tick, 4U);
}

} // namespace
} // namespace Wirefall
