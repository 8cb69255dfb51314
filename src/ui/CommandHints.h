#pragma once

// What to press for each command, in the words of the device that the player used last, and the
// short labels of keys and buttons that it takes.

#include "app/GameApp.h"
#include "input/ControllerSet.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Wirefall {

/// Each line holds the command's word and its keys.
struct CommandHints {
    std::string Move;
    std::string Rotate;
    std::string Place;
    std::string FastForward;
    std::string Menu;

    bool operator==(const CommandHints&) const = default;
};

/// The hints for the device that pressed last, or for the keyboard if that device is gone.
CommandHints BuildCommandHints(const GameApp& app, const ControllerSet& controllers);

/// "UNB" outside 1 to 511, as for every other input without a name.
std::string ShortKeyLabel(std::uint32_t scancode);

/// `button` is an SDL_GamepadButton; "UNB" outside 0 to 25.
std::string ShortPadLabel(std::int32_t button);

/// "UNB" below 0.
std::string ShortJoyLabel(std::int32_t button);

/// The text without blanks, in upper case, cut to 6 bytes; "UNB" if nothing is left.
std::string CompressLabel(std::string_view text);

} // namespace Wirefall
