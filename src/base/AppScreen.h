#pragma once

// The screens of the game, and where the player is among them. What a screen shows and what a press
// does on it is told in screens/ and options/, and app/Screens.cpp puts them together.

#include "base/EnumTable.h"

#include <cstdint>

namespace Wirefall {

/// Exactly one is shown at a time.
enum class AppScreen : std::int32_t {
    MainMenu = 0,
    Options = 1,
    Help = 2,
    Playing = 3, ///< The only screen on which the simulation runs.
    LevelComplete = 4,
    Pause = 5,
    Credits = 6,
    GameOver = 7,
};

/// What kind of music suits a screen.
enum class ScreenMood : std::uint8_t {
    Menu,
    Board, ///< Follows the danger of the run.
    LevelComplete,
    GameOver,
};

namespace ScreenTables {

inline constexpr auto Moods = TableBy<AppScreen, ScreenMood>({
    ScreenMood::Menu,          // MainMenu
    ScreenMood::Menu,          // Options
    ScreenMood::Menu,          // Help
    ScreenMood::Board,         // Playing
    ScreenMood::LevelComplete, // LevelComplete
    ScreenMood::Board,         // Pause
    ScreenMood::Menu,          // Credits
    ScreenMood::GameOver,      // GameOver
});

} // namespace ScreenTables

/// The menu's for a value that is no screen.
constexpr ScreenMood MoodOf(AppScreen screen) {
    const ScreenMood* const mood = ScreenTables::Moods.Find(screen);
    return mood != nullptr ? *mood : ScreenMood::Menu;
}

/// Where the player is.
struct Navigation {
    AppScreen Screen = AppScreen::MainMenu;
    std::int32_t MenuSelection = 0;  ///< Row of the main menu.
    std::int32_t PauseSelection = 0; ///< Row of the pause menu, 0 to 3.
    AppScreen OptionsReturnScreen = AppScreen::MainMenu;
    AppScreen HelpReturnScreen = AppScreen::MainMenu;
    float CreditsScroll = 0.0F; ///< Logical pixels scrolled on the Credits screen.

    bool operator==(const Navigation&) const = default;
};

} // namespace Wirefall
