#pragma once

// The top-level record of the program: one instance, owned by main and passed by reference to
// nearly everything above the simulation. Data only. The player's settings live directly in it, and
// what a function needs of it says how much of it the function should take.

#include "app/AppScreen.h"
#include "audio/SoundEvent.h"
#include "display/DisplayTypes.h"
#include "input/Bindings.h"
#include "input/OptionsState.h"
#include "persist/GameOptions.h"
#include "sim/LevelRules.h"
#include "sim/MersenneTwister.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Wirefall {

struct GameApp : GameOptions {
    AppScreen Screen = AppScreen::MainMenu;
    bool Running = true;             ///< The frame loop goes on while this is true.
    std::int32_t MenuSelection = 0;  ///< Row of the main menu.
    std::int32_t PauseSelection = 0; ///< Row of the pause menu, 0 to 3.
    AppScreen OptionsReturnScreen = AppScreen::MainMenu;
    AppScreen HelpReturnScreen = AppScreen::MainMenu;
    float CreditsScroll = 0.0F; ///< Logical pixels scrolled on the Credits screen.

    InputDevice LastInputDevice = InputDevice::Keyboard;
    Wirefall::OptionsPage OptionsPage = Wirefall::OptionsPage::Root;
    OptionsRows Rows;
    BindingCapture Capture;
    PendingControls ControlsEdit;
    GraphicsSnapshot GraphicsEdit;
    PendingAudio AudioEdit;

    /// What the renderer reports of vertical sync; without it the frame loop paces itself.
    bool VSyncActive = false;
    /// Config.ini must be rewritten.
    bool OptionsDirty = false;
    /// A run exists that can be gone on with; the main menu offers it.
    bool HasSavedRun = false;
    /// A write of SaveState.bin is pending.
    bool SaveDirty = false;
    float SaveDelaySeconds = 0.0F; ///< Until that write.
    /// The next frame takes a time step of zero.
    bool ResetFrameClock = false;
    bool FadeInActive = false;
    std::uint64_t FadeInStartTicks = 0; ///< Clock milliseconds.
    /// The quit fade is running.
    bool QuitRequested = false;
    std::uint64_t FadeOutStartTicks = 0; ///< Clock milliseconds.

    /// What the player can choose from, ascending by width, then height. Empty before the display
    /// has been asked; the built-in tables serve then.
    std::vector<Resolution> Resolutions;
    std::vector<std::int32_t> RefreshRates; ///< Hz; element 0 is always 0, automatic.
    std::vector<DisplayMode> DisplayModes;  ///< What the display offers.

    std::array<SoundEvent, SoundQueueCapacity> SoundQueue{};
    std::size_t SoundQueueCount = 0;

    /// The last status taken from the simulation, if PreviousSnapshotValid.
    RunSnapshot PreviousSnapshot;
    bool PreviousSnapshotValid = false;
    /// The Revision that the last save request covered.
    std::uint64_t LastSavedRevision = 0;
    /// Apart from the simulation's engine; no rule of the game draws from it.
    MersenneTwister SpareEngine;
};

} // namespace Wirefall
