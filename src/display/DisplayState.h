#pragma once

// What the game knows of the display: what the player has chosen, what there is to choose from, and
// what the display has answered.

#include "display/DisplayTypes.h"

#include <cstdint>
#include <vector>

namespace Wirefall {

/// The player's choice. The defaults are those of a first start.
struct DisplaySettings {
    /// Into the list of resolutions, or, while that is empty, into the built-in one of AspectMode.
    std::int32_t ResolutionIndex = 0;
    Wirefall::AspectMode AspectMode = Wirefall::AspectMode::Widescreen;
    std::int32_t RefreshRate = 0; ///< Hz; 0 is automatic.
    bool Fullscreen = true;
    bool VSync = true;

    bool operator==(const DisplaySettings&) const = default;
};

struct DisplayState : DisplaySettings {
    /// What the player can choose from, ascending by width, then height. Empty before the display
    /// has been asked; the built-in tables serve then.
    std::vector<Resolution> Resolutions;
    std::vector<std::int32_t> RefreshRates; ///< Hz; element 0 is always 0, automatic.
    std::vector<DisplayMode> DisplayModes;  ///< What the display offers.

    /// What the renderer reports of vertical sync; without it the frame loop paces itself.
    bool VSyncActive = false;
    /// The next frame takes a time step of zero, because what came before it is not to be felt: a
    /// change of the display, or of the screen.
    bool ResetFrameClock = false;

    bool operator==(const DisplayState&) const = default;
};

/// The player's choice as it is kept where the lists are not: with the resolution itself. The
/// defaults are the factory settings.
struct DisplayChoice {
    std::int32_t Width = 1280;
    std::int32_t Height = 720;
    Wirefall::AspectMode AspectMode = Wirefall::AspectMode::Widescreen;
    std::int32_t RefreshRate = 0;
    bool Fullscreen = true;
    bool VSync = true;

    bool operator==(const DisplayChoice&) const = default;
};

} // namespace Wirefall
