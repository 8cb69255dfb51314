#pragma once

// SDL with controllers that tests can plug in, move and pull out, and the way of the frame loop to
// drain its events.

#include "app/InputPump.h"
#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/Controllers.h"
#include "input/InputSampling.h"

#include <SDL3/SDL.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace Wirefall {

using Presses = std::vector<PressCode>;

/// Drains SDL's events as the frame loop does, up to a quit event, and returns what was to hand to
/// the screens.
inline Presses PumpInput(GameApp& app, ControllerSet& controllers) {
    Presses presses;
    SDL_Event event;
    while (SDL_PollEvent(&event) && event.type != SDL_EVENT_QUIT) {
        const PressCode press = PressFromEvent(app, controllers, event);
        if (press != Press::None) {
            presses.push_back(press);
        }
    }
    return presses;
}

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
            SDL_DetachVirtualJoystick(Id);
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

/// Brings SDL up as the game does, without a display, and without controllers.
class InputTest : public testing::Test {
public:
    InputTest(const InputTest&) = delete;
    InputTest(InputTest&&) = delete;
    InputTest& operator=(const InputTest&) = delete;
    InputTest& operator=(InputTest&&) = delete;
    ~InputTest() override {
        CloseControllers(Controllers);
        SDL_Quit();
        SDL_ResetHints();
    }

protected:
    InputTest() {
        SDL_SetHintWithPriority(SDL_HINT_VIDEO_DRIVER, "dummy", SDL_HINT_OVERRIDE);
        EXPECT_TRUE(SDL_Init(SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMEPAD))
            << SDL_GetError();
        EXPECT_FALSE(SDL_HasJoystick()) << "A real controller would take part in the tests.";
    }

    /// What one frame hands to the screens.
    Presses Pump() { return PumpInput(App, Controllers); }

    /// What the screens get when the key goes down.
    Presses PressKey(SDL_Scancode key, bool repeat = false) {
        SDL_Event event = {};
        event.key.type = SDL_EVENT_KEY_DOWN;
        event.key.scancode = key;
        event.key.down = true;
        event.key.repeat = repeat;
        EXPECT_TRUE(SDL_PushEvent(&event));
        return Pump();
    }

    /// Waits for a press of the device for its row; the rows of the others are elsewhere.
    void Capture(CaptureDevice device, std::int32_t row) {
        App.Screen = AppScreen::Options;
        App.Capture = {
            .CaptureActive = true,
            .CaptureDevice = device,
            .CaptureKeyboardRow = device == CaptureDevice::Keyboard ? row : 7,
            .CaptureGamepadRow = device == CaptureDevice::Gamepad ? row : 7,
            .CaptureJoystickRow = device == CaptureDevice::Joystick ? row : 7,
        };
    }

    GameApp App;
    ControllerSet Controllers;
};

} // namespace Wirefall
