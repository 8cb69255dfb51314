#pragma once

// The vocabulary of input: the ten things a player can do, the three classes of device, and the
// tables that say which key or button does what. The tables are plain arrays in the order of
// InputAction; all three are live at all times.

#include <array>
#include <cstddef>
#include <cstdint>

namespace Wirefall {

/// In the order of the binding tables, of the keys in Config.ini and of the label texts.
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

inline constexpr std::size_t ActionCount = 10;
/// The keyboard has no bindings for MenuConfirm and MenuBack: those are fixed keys.
inline constexpr std::size_t KeyboardActionCount = 8;

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

namespace FactoryBindings {

inline constexpr KeyboardTable Keyboard = {
    82,  // CursorUp: Up
    81,  // CursorDown: Down
    80,  // CursorLeft: Left
    79,  // CursorRight: Right
    20,  // RotateLeft: Q
    8,   // RotateRight: E
    40,  // Place: Return
    225, // FastForward: left Shift
};

inline constexpr GamepadTable Gamepad = {
    11, // CursorUp: D-pad up
    12, // CursorDown: D-pad down
    13, // CursorLeft: D-pad left
    14, // CursorRight: D-pad right
    9,  // RotateLeft: left shoulder
    10, // RotateRight: right shoulder
    0,  // Place: south
    3,  // FastForward: north
    0,  // MenuConfirm: south
    1,  // MenuBack: east
};

/// A joystick steers with its axes and its hat, so its cursor actions have no button.
inline constexpr JoystickTable Joystick = {
    UnboundButton,
    UnboundButton,
    UnboundButton,
    UnboundButton,
    1, // RotateLeft
    2, // RotateRight
    0, // Place
    4, // FastForward
    0, // MenuConfirm
    3, // MenuBack
};

} // namespace FactoryBindings

/// The working copy that the Controls page edits.
struct PendingControls {
    KeyboardTable PendingKeyboard = FactoryBindings::Keyboard;
    GamepadTable PendingGamepad = FactoryBindings::Gamepad;
    JoystickTable PendingJoystick = FactoryBindings::Joystick;
    Wirefall::ControlsDevice PendingDevice = Wirefall::ControlsDevice::Keyboard;
    bool PendingValid = false;
};

/// Which class of device a capture waits for.
enum class CaptureDevice : std::int32_t { None = 0, Keyboard = 1, Gamepad = 2, Joystick = 3 };

/// The state of waiting for a press to bind. Rows are those of the Controls page.
struct BindingCapture {
    bool CaptureActive = false;
    Wirefall::CaptureDevice CaptureDevice = Wirefall::CaptureDevice::None;
    std::int32_t CaptureKeyboardRow = 0;
    std::int32_t CaptureGamepadRow = 0;
    std::int32_t CaptureJoystickRow = 0;
};

} // namespace Wirefall
