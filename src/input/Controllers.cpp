#include "input/Controllers.h"

#include "base/SdlMemory.h"

#include <cstddef>
#include <span>

namespace Wirefall {

namespace {

using ControllerList = SdlArray<SDL_JoystickID>;
using ListFunction = SDL_JoystickID* (*)(int* count);

// Calls `tryOpen` on the ids of a list in order until it returns true. A list that SDL could not
// make has no ids.
template <typename TryOpen>
void OpenFirst(ListFunction list, TryOpen tryOpen) {
    int count = 0;
    const ControllerList ids(list(&count));
    if (!ids) {
        return;
    }
    for (const SDL_JoystickID id : std::span(ids.get(), static_cast<std::size_t>(count))) {
        if (tryOpen(id)) {
            return;
        }
    }
}

} // namespace

void OpenAvailableControllers(ControllerSet& controllers) {
    if (controllers.Gamepad == nullptr) {
        OpenFirst(SDL_GetGamepads, [&controllers](SDL_JoystickID id) {
            TryOpenGamepad(controllers, id);
            return controllers.Gamepad != nullptr;
        });
    }
    if (controllers.Joystick == nullptr) {
        OpenFirst(SDL_GetJoysticks,
                  [&controllers](SDL_JoystickID id) { return TryOpenJoystick(controllers, id); });
    }
}

void TryOpenGamepad(ControllerSet& controllers, SDL_JoystickID id) {
    if (controllers.Gamepad != nullptr) {
        return;
    }
    controllers.Gamepad = SDL_OpenGamepad(id);
    if (controllers.Gamepad != nullptr) {
        controllers.GamepadId = id;
    }
}

bool TryOpenJoystick(ControllerSet& controllers, SDL_JoystickID id) {
    if (controllers.Joystick != nullptr) {
        return true;
    }
    if (SDL_IsGamepad(id)) {
        return false;
    }
    controllers.Joystick = SDL_OpenJoystick(id);
    if (controllers.Joystick == nullptr) {
        return false;
    }
    controllers.JoystickId = id;
    return true;
}

void CloseGamepad(ControllerSet& controllers) {
    if (controllers.Gamepad == nullptr) {
        return;
    }
    SDL_CloseGamepad(controllers.Gamepad);
    controllers.Gamepad = nullptr;
    controllers.GamepadId = 0;
    controllers.GamepadLatches = {};
}

void CloseJoystick(ControllerSet& controllers) {
    if (controllers.Joystick == nullptr) {
        return;
    }
    SDL_CloseJoystick(controllers.Joystick);
    controllers.Joystick = nullptr;
    controllers.JoystickId = 0;
    controllers.JoystickLatches = {};
}

void CloseControllers(ControllerSet& controllers) {
    CloseGamepad(controllers);
    CloseJoystick(controllers);
}

InputDevice DeviceInHand(const InputState& input, const ControllerSet& controllers) {
    const InputDevice last = input.LastInputDevice;
    const bool inHand = (last == InputDevice::Gamepad && controllers.Gamepad != nullptr) ||
                        (last == InputDevice::Joystick && controllers.Joystick != nullptr);
    return inHand ? last : InputDevice::Keyboard;
}

} // namespace Wirefall
