#pragma once

// What to press for each command, in the words of the device that the player used last, and the
// short labels of keys and buttons that it takes. A hint is a line, the command's word and its
// keys; the frame of play makes the five lines and keeps them for the HUD, which shows word and
// keys apart.

#include "base/EnumTable.h"
#include "input/Bindings.h"
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
CommandHints BuildCommandHints(const InputState& input, const ControllerSet& controllers);

/// The five lines, in the order of CommandHints.
enum class HudHint : std::uint8_t { Move, Rotate, Place, FastForward, Menu };

/// Keeps the five lines for the HUD. An empty one is replaced by its default.
void StoreHudHintLines(std::string_view move, std::string_view rotate, std::string_view place,
                       std::string_view fastForward, std::string_view menu);

/// What was stored last; the defaults before that.
const EnumTable<HudHint, std::string>& HudHintLines();

/// The keys of a hint line: the line without `label`, the command's word, and the blanks after it,
/// if it begins with it.
std::string StripLabelPrefix(std::string_view text, std::string_view label);

/// "UNB" outside 1 to 511, as for every other input without a name.
std::string ShortKeyLabel(std::uint32_t scancode);

/// `button` is an SDL_GamepadButton; "UNB" outside 0 to 25.
std::string ShortPadLabel(std::int32_t button);

/// "UNB" below 0.
std::string ShortJoyLabel(std::int32_t button);

/// The text without blanks, in upper case, cut to 6 bytes; "UNB" if nothing is left.
std::string CompressLabel(std::string_view text);

} // namespace Wirefall
