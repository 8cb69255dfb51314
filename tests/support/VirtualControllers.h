#pragma once

// Controllers that tests can plug in, move and pull out. SDL must be up with its joysticks.

#include <SDL3/SDL.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace Wirefall {

/// A device that SDL cannot tell from a real one. Plugged in by the constructor, pulled out at the
/// end or by PullOut. What it does shows at SDL's next look at the devices, so that between two
/// moves the events have to be drained.
class VirtualDevice {
public:
    explicit VirtualDevice(SDL_JoystickType type) {
        SDL_VirtualJoystickDesc description;
        SDL_INIT_INTERFACE(&description);
        description.type = static_cast<Uint16>(type);
        description.naxes = SDL_GAMEPAD_AXIS_COUNT;
        description.nbuttons = SDL_GAMEPAD_BUTTON_COUNT;
        description.nhats = 2;
        Id = SDL_AttachVirtualJoystick(&description);
        EXPECT_NE(Id, 0U) << SDL_GetError();
        Handle = SDL_OpenJoystick(Id);
        EXPECT_NE(Handle, nullptr) << SDL_GetError();
    }
    VirtualDevice(const VirtualDevice&) = delete;
    VirtualDevice(VirtualDevice&&) = delete;
    VirtualDevice& operator=(const VirtualDevice&) = delete;
    VirtualDevice& operator=(VirtualDevice&&) = delete;
    ~VirtualDevice() { PullOut(); }

    /// SDL posts the events of the removal, which stay queued until they are drained.
    void PullOut() {
        if (Handle != nullptr) {
            EXPECT_TRUE(SDL_DetachVirtualJoystick(Id));
            SDL_CloseJoystick(Handle);
            Handle = nullptr;
        }
    }

    void MoveAxis(int axis, int value) {
        EXPECT_TRUE(SDL_SetJoystickVirtualAxis(Handle, axis, static_cast<Sint16>(value)));
    }
    void PressButton(int button) {
        EXPECT_TRUE(SDL_SetJoystickVirtualButton(Handle, button, true));
    }
    void ReleaseButton(int button) {
        EXPECT_TRUE(SDL_SetJoystickVirtualButton(Handle, button, false));
    }
    void MoveHat(int hat, std::uint8_t value) {
        EXPECT_TRUE(SDL_SetJoystickVirtualHat(Handle, hat, value));
    }

    bool IsPressed(int button) const { return SDL_GetJoystickButton(Handle, button); }

    SDL_JoystickID Id = 0;

private:
    SDL_Joystick* Handle = nullptr;
};

class VirtualGamepad : public VirtualDevice {
public:
    VirtualGamepad() : VirtualDevice(SDL_JOYSTICK_TYPE_GAMEPAD) { EXPECT_TRUE(SDL_IsGamepad(Id)); }
};

class VirtualJoystick : public VirtualDevice {
public:
    VirtualJoystick() : VirtualDevice(SDL_JOYSTICK_TYPE_FLIGHT_STICK) {
        EXPECT_FALSE(SDL_IsGamepad(Id));
    }
};

} // namespace Wirefall
