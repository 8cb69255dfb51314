#pragma once

// Everything that the player can set and that Config.ini keeps. The defaults are those of a first
// start.

#include "display/DisplayTypes.h"
#include "input/Bindings.h"

#include <cstdint>
#include <string>

namespace Wirefall {

inline constexpr std::int32_t MaxVolume = 100;

struct GameOptions {
    Wirefall::ControlsDevice ControlsDevice = Wirefall::ControlsDevice::Keyboard;
    std::string Language = "en"; ///< A normalised language code.
    KeyboardTable KeyboardBindings = FactoryBindings::Keyboard;
    GamepadTable GamepadBindings = FactoryBindings::Gamepad;
    JoystickTable JoystickBindings = FactoryBindings::Joystick;
    /// Into the list of resolutions, or, while that is empty, into the built-in one of AspectMode.
    std::int32_t ResolutionIndex = 0;
    Wirefall::AspectMode AspectMode = Wirefall::AspectMode::Widescreen;
    std::int32_t RefreshRate = 0; ///< Hz; 0 is automatic.
    bool Fullscreen = true;
    bool VSync = true;
    std::int32_t MasterVolume = MaxVolume; ///< Percent, as the next two.
    std::int32_t MusicVolume = 50;
    std::int32_t SfxVolume = 75;
    bool MusicEnabled = true;
    bool SfxEnabled = true;
};

} // namespace Wirefall
