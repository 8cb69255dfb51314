#pragma once

// SDL as the game has it up, with the way of the frame loop to drain its events. The controllers
// are those that a test plugs in (support/VirtualControllers.h).

#include "app/InputPump.h"
#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/Controllers.h"
#include "input/InputSampling.h"
#include "support/VirtualControllers.h"

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

    /// Lets the key go down in the next frame.
    static void PushKey(SDL_Scancode key, bool repeat = false) {
        SDL_Event event = {};
        event.key.type = SDL_EVENT_KEY_DOWN;
        event.key.scancode = key;
        event.key.down = true;
        event.key.repeat = repeat;
        EXPECT_TRUE(SDL_PushEvent(&event));
    }

    /// What the screens get when the key goes down.
    Presses PressKey(SDL_Scancode key, bool repeat = false) {
        PushKey(key, repeat);
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
