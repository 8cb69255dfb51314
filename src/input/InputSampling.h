#pragma once

// From SDL's events to presses. ReadDevicePress keeps track of the devices and tells what the
// player has done with one; PressFromKey and PressFromButton translate that into the code that the
// screens know. One physical press makes one step: there is no repeat, and nothing happens when a
// key comes up. The one input that is held, fast forward, is sampled once the events are drained.
// Nothing here knows what the press is for; app/InputPump.h does.

#include "input/Bindings.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"

#include <SDL3/SDL_events.h>

#include <cstdint>

namespace Wirefall {

enum class PressKind : std::uint8_t {
    None,
    Key,    ///< Of the keyboard.
    Step,   ///< A stick or a hat pushed in one of four directions.
    Button, ///< Of a controller.
};

struct DevicePress {
    PressKind Kind = PressKind::None;
    InputDevice Device = InputDevice::Keyboard;
    PressCode Code = Press::None;  ///< Of a Key as it stands; of a Step.
    std::int32_t ButtonNumber = 0; ///< Of a Button.
};

/// Does all that an event asks for short of the screens: notes the device that pressed last, opens
/// and closes controllers, follows the sticks. Events of other kinds give no press. Allocates
/// nothing.
DevicePress ReadDevicePress(InputState& input, ControllerSet& controllers, const SDL_Event& event);

/// The code of a key: its own, but for the keys that mean something to the screens by default.
/// Those work only while their own action is bound to them; a key that the player has taken away
/// from its action must not reach the screens.
PressCode PressFromKey(const KeyboardTable& bindings, PressCode key);

/// The code of a controller's button, by the bindings of its device. On the board the button for
/// placing counts before those of the menus.
PressCode PressFromButton(const InputSettings& settings, InputDevice device, std::int32_t button,
                          bool onBoard);

/// Whether fast forward is held on any device. Asks SDL for the state of now, so the events must
/// have been drained.
bool IsFastForwardHeld(const InputSettings& settings, const ControllerSet& controllers);

} // namespace Wirefall
