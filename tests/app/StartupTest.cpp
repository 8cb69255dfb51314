#include "app/Game.h"
#include "app/SessionLog.h"
#include "audio/SoundQueue.h"
#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "draw/BinaryRain.h"
#include "draw/SpriteAtlas.h"
#include "sim/Simulation.h"
#include "support/CapturedLog.h"
#include "support/TestHome.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_mouse.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Wirefall {
namespace {

using Testing::CapturedLog;
using Testing::ScopedVariable;

class Startup : public testing::Test {
protected:
    Testing::TestHome Home;
    Game G;
};

TEST_F(Startup, BringsTheGameUpOnItsMenu) {
    LiveSimulation() = Simulation{};
    ASSERT_TRUE(StartGame(G));
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMEPAD),
              SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMEPAD);
    EXPECT_NE(G.Window, nullptr);
    EXPECT_NE(G.Renderer, nullptr);
    EXPECT_FALSE((SDL_GetWindowFlags(G.Window) & SDL_WINDOW_RESIZABLE) != 0);
    EXPECT_FALSE(SDL_CursorVisible());
    EXPECT_NE(SpriteAtlas.Texture, nullptr);
    SDL_BlendMode blend = SDL_BLENDMODE_INVALID;
    EXPECT_TRUE(SDL_GetRenderDrawBlendMode(G.Renderer, &blend));
    EXPECT_EQ(blend, SDL_BLENDMODE_BLEND);
    int width = 0;
    int height = 0;
    SDL_RendererLogicalPresentation mode = SDL_LOGICAL_PRESENTATION_DISABLED;
    EXPECT_TRUE(SDL_GetRenderLogicalPresentation(G.Renderer, &width, &height, &mode));
    EXPECT_EQ(width, LogicalWidth);
    EXPECT_EQ(height, 720);
    EXPECT_EQ(mode, SDL_LOGICAL_PRESENTATION_LETTERBOX);
    EXPECT_EQ(G.App.Screen, AppScreen::MainMenu);
    EXPECT_TRUE(G.App.FadeInActive);
    EXPECT_TRUE(G.App.PreviousSnapshotValid);
    EXPECT_EQ(G.App.LastSavedRevision, GetRevision());
    EXPECT_TRUE(LiveSimulation().RunInitialised) << "a run stands ready behind the menu";
    EXPECT_FALSE(G.App.HasSavedRun);
    EXPECT_TRUE(G.App.SaveDirty) << "an empty document is to replace a missing save";
    EXPECT_FALSE(G.App.Resolutions.empty());
    int vsync = 0;
    EXPECT_TRUE(SDL_GetRenderVSync(G.Renderer, &vsync));
    EXPECT_EQ(G.App.VSyncActive, vsync != 0);
    EXPECT_NE(G.App.SpareEngine, MersenneTwister{}) << "seeded";
    ShutdownGame(G);
}

TEST_F(Startup, TakesEverythingDownAgain) {
    ASSERT_TRUE(StartGame(G));
    RunFrame(G);
    EXPECT_NE(RainCache.Texture, nullptr);
    ShutdownGame(G);
    EXPECT_EQ(SDL_WasInit(0), 0U);
    EXPECT_EQ(G.Window, nullptr);
    EXPECT_EQ(G.Renderer, nullptr);
    EXPECT_EQ(SpriteAtlas.Texture, nullptr);
    EXPECT_EQ(RainCache.Texture, nullptr);
    EXPECT_FALSE(RainCache.Valid);
}

TEST_F(Startup, CanBeDoneTwiceInOneProcess) {
    for (int i = 0; i < 2; ++i) {
        G = Game{};
        ASSERT_TRUE(StartGame(G));
        RunFrame(G);
        ShutdownGame(G);
    }
}

TEST_F(Startup, HasTheFactoryOptionsOnAFirstStart) {
    const GameApp app;
    EXPECT_EQ(app.ControlsDevice, ControlsDevice::Keyboard);
    EXPECT_EQ(app.KeyboardBindings, FactoryBindings::Keyboard);
    EXPECT_EQ(app.GamepadBindings, FactoryBindings::Gamepad);
    EXPECT_EQ(app.JoystickBindings, FactoryBindings::Joystick);
    EXPECT_EQ(app.AspectMode, AspectMode::Widescreen);
    EXPECT_EQ(app.ResolutionIndex, 0);
    EXPECT_EQ(app.RefreshRate, 0);
    EXPECT_TRUE(app.Fullscreen);
    EXPECT_TRUE(app.VSync);
    EXPECT_EQ(app.MasterVolume, 100);
    EXPECT_EQ(app.MusicVolume, 50);
    EXPECT_EQ(app.SfxVolume, 75);
    EXPECT_TRUE(app.MusicEnabled);
    EXPECT_TRUE(app.SfxEnabled);
    EXPECT_EQ(app.Language, "en");
    EXPECT_TRUE(app.Running);
    EXPECT_EQ(app.PreviousSnapshot.Level, 1);
    EXPECT_EQ(app.ControlsEdit.PendingKeyboard, FactoryBindings::Keyboard);
    EXPECT_EQ(app.GraphicsEdit.Width, 1280);
    EXPECT_EQ(app.GraphicsEdit.Height, 720);
    EXPECT_TRUE(app.GraphicsEdit.Fullscreen);
    EXPECT_EQ(app.AudioEdit.Language, "en");
    EXPECT_EQ(app.AudioEdit.MusicVolume, 50);
}

// --- What is kept from one start to the next

class Restart : public Startup {
protected:
    std::filesystem::path Stored(const char* name) const {
        return Home.Folder() / "Velkor" / "Wirefall" / name;
    }

    // Ends the game and starts it again, as another process would find it.
    void StartAgain() {
        ShutdownGame(G);
        G = Game{};
        LiveSimulation() = Simulation{};
        ASSERT_TRUE(StartGame(G));
    }
};

TEST_F(Restart, AFirstStartWritesItsOptionsBeforeTheFirstFrame) {
    ASSERT_TRUE(StartGame(G));
    EXPECT_TRUE(std::filesystem::exists(Stored("Config.ini")));
    EXPECT_FALSE(std::filesystem::exists(Stored("SaveState.bin")));
    RunFrame(G);
    EXPECT_TRUE(std::filesystem::exists(Stored("SaveState.bin"))) << "a document without a run";
    ShutdownGame(G);
}

TEST_F(Restart, ALaterStartKeepsTheOptionsAsTheyAre) {
    ASSERT_TRUE(StartGame(G));
    G.App.MusicVolume = 35;
    G.App.OptionsDirty = true;
    StartAgain();
    EXPECT_EQ(G.App.MusicVolume, 35);
    const auto written = std::filesystem::last_write_time(Stored("Config.ini"));
    StartAgain();
    EXPECT_EQ(std::filesystem::last_write_time(Stored("Config.ini")), written);
    ShutdownGame(G);
}

TEST_F(Restart, AnUnknownLanguageIsPutRightInTheOptionsFile) {
    ASSERT_TRUE(StartGame(G));
    EXPECT_FALSE(G.App.OptionsDirty) << "the first one is known";
    G.App.Language = "klingon";
    G.App.OptionsDirty = true;
    StartAgain();
    EXPECT_EQ(G.App.Language, "en");
    EXPECT_TRUE(G.App.OptionsDirty);
    StartAgain();
    EXPECT_EQ(G.App.Language, "en");
    EXPECT_FALSE(G.App.OptionsDirty) << "the file has it by now";
    ShutdownGame(G);
}

TEST_F(Restart, QuittingWritesAPendingSaveAtOnce) {
    ASSERT_TRUE(StartGame(G));
    ResetRun();
    LiveRun().TotalScore = 1234;
    G.App.HasSavedRun = true;
    G.App.SaveDirty = true;
    G.App.SaveDelaySeconds = 0.8F;
    StartAgain();
    EXPECT_TRUE(G.App.HasSavedRun) << "the menu offers to continue";
    EXPECT_EQ(LiveRun().TotalScore, 1234) << "and the start has not replaced the run";
    EXPECT_EQ(G.App.Screen, AppScreen::MainMenu);
    EXPECT_FALSE(G.App.SaveDirty);
    EXPECT_EQ(G.App.LastSavedRevision, GetRevision());
    ShutdownGame(G);
}

// --- Fatal failures

bool Contains(const std::vector<std::string>& messages, const std::string& start) {
    return std::any_of(messages.begin(), messages.end(), [&start](const std::string& message) {
        return message.starts_with(start) && message.size() > start.size();
    });
}

TEST_F(Startup, WithoutADisplayItSaysSoAndGivesUp) {
    const ScopedVariable noDriver("SDL_VIDEO_DRIVER", "no such driver");
    const CapturedLog log;
    EXPECT_FALSE(StartGame(G));
    EXPECT_TRUE(Contains(log.Messages(), "SDL_Init failed: "));
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
}

TEST_F(Startup, WithoutARendererItSaysSoAndTakesTheWindowDown) {
    // With no folder to write to there is no log file, and the message can be caught here.
    const ScopedVariable nowhere("XDG_DATA_HOME", "/dev/null/nowhere");
    const ScopedVariable verbose("WIREFALL_VERBOSE_LOG", "1");
    const ScopedVariable noRenderer("SDL_RENDER_DRIVER", "no such renderer");
    const CapturedLog log;
    EXPECT_FALSE(StartGame(G));
    EXPECT_TRUE(Contains(log.Messages(), "SDL_CreateRenderer failed: "));
    EXPECT_EQ(G.Window, nullptr);
    EXPECT_EQ(SDL_WasInit(0), 0U);
}

// --- Without sound

TEST_F(Startup, WithoutASoundDeviceTheGameRunsInSilence) {
    const ScopedVariable nowhere("XDG_DATA_HOME", "/dev/null/nowhere");
    const ScopedVariable verbose("WIREFALL_VERBOSE_LOG", "1");
    const ScopedVariable noDevice("SDL_AUDIO_DRIVER", "no such driver");
    const CapturedLog log;
    ASSERT_TRUE(StartGame(G));
    EXPECT_TRUE(Contains(log.Messages(), "MIX_CreateMixerDevice failed: "));
    EXPECT_EQ(std::ranges::count(log.Messages(),
                                 "Music runtime unavailable; game will run without music"),
              1);
    EXPECT_FALSE(G.Music.Ready);
    for (const AppScreen screen : {AppScreen::MainMenu, AppScreen::Playing, AppScreen::Pause}) {
        G.App.Screen = screen;
        EnqueueSound(G.App, SoundEvent::UiConfirm);
        RunFrame(G);
        EXPECT_EQ(G.App.SoundQueueCount, 0U);
    }
    ShutdownGame(G);
    EXPECT_EQ(SDL_WasInit(0), 0U);
}

// --- How much is logged

struct VerboseCase {
    const char* Value;
    bool Verbose;
};

TEST(LogPriorities, TheVariableTurnsOnAllMessages) {
    for (const VerboseCase& c : std::vector<VerboseCase>{
             {"1", true},
             {"true", true},
             {"yes", true},
             {"on", true},
             {"  TRUE", true},
             {" Yes", true},
             {"\t\nOn", true},
             {"TRUE ", false},
             {"1 ", false},
             {"2", false},
             {"Y", false},
             {"  ", false},
             {"", false},
             {"off", false},
         }) {
        const ScopedVariable variable("WIREFALL_VERBOSE_LOG", c.Value);
        SetLogPriorities();
        EXPECT_EQ(SDL_GetLogPriority(SDL_LOG_CATEGORY_APPLICATION),
                  c.Verbose ? SDL_LOG_PRIORITY_VERBOSE : SDL_LOG_PRIORITY_WARN)
            << '"' << c.Value << '"';
    }
}

TEST(LogPriorities, OnlyWarningsGetThroughOtherwise) {
    const ScopedVariable unset("WIREFALL_VERBOSE_LOG", std::nullopt);
    SetLogPriorities();
    EXPECT_EQ(SDL_GetLogPriority(SDL_LOG_CATEGORY_APPLICATION), SDL_LOG_PRIORITY_WARN);
    const CapturedLog log;
    SDL_Log("a message of the game");
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "a warning");
    EXPECT_EQ(log.Messages(), (std::vector<std::string>{"a warning"}));
}

} // namespace
} // namespace Wirefall
