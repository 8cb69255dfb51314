#pragma once

#include <cstdint>

namespace Wirefall {

/// The screens of the game; exactly one is shown at a time.
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

} // namespace Wirefall
