#pragma once

// The vocabulary of input: the things a player can do, the three classes of device, and the tables
// that say which key or button does what. The tables are plain arrays in the order of InputAction;
// all three are live at all times.

#include "base/EnumTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Wirefall {

/// In the order of the binding tables and of the keys in Config.ini. The keyboard has no bindings
/// for the menus' two actions, which come last.
enum class InputAction : std::uint8_t {
    CursorUp,
    CursorDown,
    CursorLeft,
    CursorRight,
    RotateLeft,
    RotateRight,
    Place,
    FastForward,
    MenuConfirm,
    MenuBack,
};

inline constexpr std::size_t ActionCount = EnumCount<InputAction>;
inline constexpr std::size_t KeyboardActionCount =
    static_cast<std::size_t>(InputAction::FastForward) + 1;

/// The class of device whose bindings the Controls page shows. Stored in Config.ini by name.
enum class ControlsDevice : std::int32_t { Keyboard = 0, Gamepad = 1, Joystick = 2 };

/// The class of device that pressed last; the hints on the screens go by it.
enum class InputDevice : std::int32_t { Keyboard = 0, Gamepad = 1, Joystick = 2 };

/// SDL scancodes, 1 to 511; 0 is unbound.
using KeyboardTable = std::array<std::uint32_t, KeyboardActionCount>;
/// SDL_GamepadButton values, 0 to 25; -1 is unbound.
using GamepadTable = std::array<std::int32_t, ActionCount>;
/// Joystick button numbers from 0, without an upper limit; -1 is unbound.
using JoystickTable = std::array<std::int32_t, ActionCount>;

inline constexpr std::uint32_t UnboundKey = 0;
inline constexpr std::int32_t UnboundButton = -1;
inline constexpr std::uint32_t MaxScancode = 511;
inline constexpr std::int32_t MaxGamepadButton = 25;

/// The place of an action in a binding table.
constexpr std::size_t ActionIndex(InputAction action) { return static_cast<std::size_t>(action); }

/// Everything that belongs to an action but what it does.
struct ActionRow {
    const char* TextKey; ///< Of its name, in the language files.
    const char* Name;    ///< In English.
    std::uint32_t Scancode;
    std::int32_t GamepadButton;
    std::int32_t JoystickButton;

    /// Its key in Config.ini.
    constexpr std::string_view ConfigKey() const {
        return std::string_view(TextKey).substr(std::string_view("Action.").size());
    }
};

/// With the factory bindings: the key, the SDL_GamepadButton and the button of a joystick. A
/// joystick steers with its axes and its hat, so its cursor actions have no button.
inline constexpr auto Actions = TableBy<InputAction, ActionRow>({
    {"Action.CursorUp", "CURSOR UP", 82, 11, UnboundButton},       // Up; D-pad up
    {"Action.CursorDown", "CURSOR DOWN", 81, 12, UnboundButton},   // Down; D-pad down
    {"Action.CursorLeft", "CURSOR LEFT", 80, 13, UnboundButton},   // Left; D-pad left
    {"Action.CursorRight", "CURSOR RIGHT", 79, 14, UnboundButton}, // Right; D-pad right
    {"Action.RotateLeft", "ROTATE LEFT", 20, 9, 1},                // Q; left shoulder
    {"Action.RotateRight", "ROTATE RIGHT", 8, 10, 2},              // E; right shoulder
    {"Action.Place", "PLACE TILE", 40, 0, 0},                      // Return; south
    {"Action.FastForward", "FAST FORWARD", 225, 3, 4},             // left Shift; north
    {"Action.MenuConfirm", "MENU CONFIRM", UnboundKey, 0, 0},      // south
    {"Action.MenuBack", "MENU BACK", UnboundKey, 1, 3},            // east
});

namespace FactoryBindings {

/// The column of the table of actions, as long as a device's table is.
template <typename Table>
constexpr Table Column(typename Table::value_type ActionRow::*column) {
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = Actions.Rows()[i].*column;
    }
    return table;
}

inline constexpr KeyboardTable Keyboard = Column<KeyboardTable>(&ActionRow::Scancode);
inline constexpr GamepadTable Gamepad = Column<GamepadTable>(&ActionRow::GamepadButton);
inline constexpr JoystickTable Joystick = Column<JoystickTable>(&ActionRow::JoystickButton);

} // namespace FactoryBindings

/// The player's choice. The defaults are those of a first start.
struct InputSettings {
    Wirefall::ControlsDevice ControlsDevice = Wirefall::ControlsDevice::Keyboard;
    KeyboardTable KeyboardBindings = FactoryBindings::Keyboard;
    GamepadTable GamepadBindings = FactoryBindings::Gamepad;
    JoystickTable JoystickBindings = FactoryBindings::Joystick;

    bool operator==(const InputSettings&) const = default;
};

struct InputState : InputSettings {
    InputDevice LastInputDevice = InputDevice::Keyboard;

    bool operator==(const InputState&) const = default;
};

} // namespace Wirefall
