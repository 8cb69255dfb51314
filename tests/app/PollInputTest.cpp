// The whole way of a press, from SDL's events of the keyboard and of virtual controllers to what it
// does on the screen.

#include "app/Game.h"
#include "app/InputPump.h"
#include "input/Controllers.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_joystick.h>
#include <gtest/gtest.h>

namespace Wirefall {
namespace {

class Input : public testing::Test {
protected:
    void SetUp() override {
        SDL_SetHint(SDL_HINT_VIDEO_DRIVER, "dummy");
        ASSERT_TRUE(SDL_Init(SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMEPAD));
        Testing::InstallLiveRun(Testing::DrawnRun({"→────────⇐"}));
        App.Screen = AppScreen::Playing;
    }
    void TearDown() override {
        CloseControllers(Controllers);
        SDL_Quit();
        SDL_ResetHint(SDL_HINT_VIDEO_DRIVER);
    }

    // Attaches a device and opens it, as its event asks for.
    SDL_Joystick* Attach(SDL_JoystickType type) {
        SDL_VirtualJoystickDesc desc;
        SDL_INIT_INTERFACE(&desc);
        desc.type = static_cast<Uint16>(type);
        desc.naxes = type == SDL_JOYSTICK_TYPE_GAMEPAD ? SDL_GAMEPAD_AXIS_COUNT : 2;
        desc.nbuttons = type == SDL_JOYSTICK_TYPE_GAMEPAD ? SDL_GAMEPAD_BUTTON_COUNT : 8;
        desc.nhats = type == SDL_JOYSTICK_TYPE_GAMEPAD ? 0 : 1;
        const SDL_JoystickID id = SDL_AttachVirtualJoystick(&desc);
        EXPECT_NE(id, 0U);
        Poll();
        return SDL_GetJoystickFromID(id);
    }

    void Poll() { PollInput(App, Controllers, nullptr, nullptr); }

    void PressButton(SDL_Joystick* joystick, int button) {
        SDL_SetJoystickVirtualButton(joystick, button, true);
        SDL_UpdateJoysticks();
        SDL_SetJoystickVirtualButton(joystick, button, false);
        SDL_UpdateJoysticks();
        Poll();
    }

    void MoveAxis(SDL_Joystick* joystick, int axis, Sint16 value) {
        SDL_SetJoystickVirtualAxis(joystick, axis, value);
        SDL_UpdateJoysticks();
        Poll();
    }

    static void PushKey(SDL_Scancode scancode, bool repeat = false) {
        SDL_Event event{};
        event.type = SDL_EVENT_KEY_DOWN;
        event.key.scancode = scancode;
        event.key.down = true;
        event.key.repeat = repeat;
        SDL_PushEvent(&event);
    }

    GameApp App;
    ControllerSet Controllers;
};

TEST_F(Input, KeysPlayTheBoard) {
    PushKey(SDL_SCANCODE_LEFT);
    PushKey(SDL_SCANCODE_UP);
    PushKey(SDL_SCANCODE_E);
    PushKey(SDL_SCANCODE_RETURN);
    Poll();
    EXPECT_EQ(LiveRun().CursorX, 4);
    EXPECT_EQ(LiveRun().CursorY, 4);
    EXPECT_EQ(LiveRun().PreviewRotation, 1);
    EXPECT_EQ(TileAt(LiveRun(), 4, 4).Type, TileType::Straight);
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
}

TEST_F(Input, AHeldKeyMakesOneStep) {
    PushKey(SDL_SCANCODE_LEFT);
    PushKey(SDL_SCANCODE_LEFT, true);
    PushKey(SDL_SCANCODE_LEFT, true);
    Poll();
    EXPECT_EQ(LiveRun().CursorX, 4);
}

TEST_F(Input, AnArrowThatWasBoundAwayIsDeadOnTheMenuToo) {
    App.KeyboardBindings.at(ActionIndex(InputAction::CursorDown)) = SDL_SCANCODE_S;
    App.Screen = AppScreen::MainMenu;
    PushKey(SDL_SCANCODE_DOWN);
    Poll();
    EXPECT_EQ(App.MenuSelection, 0);
    PushKey(SDL_SCANCODE_S);
    Poll();
    EXPECT_EQ(App.MenuSelection, 1);
}

TEST_F(Input, AGamepadPlaysTheBoard) {
    SDL_Joystick* const pad = Attach(SDL_JOYSTICK_TYPE_GAMEPAD);
    ASSERT_NE(Controllers.Gamepad, nullptr);
    PressButton(pad, SDL_GAMEPAD_BUTTON_DPAD_LEFT);
    PressButton(pad, SDL_GAMEPAD_BUTTON_RIGHT_SHOULDER);
    PressButton(pad, SDL_GAMEPAD_BUTTON_SOUTH);
    EXPECT_EQ(LiveRun().CursorX, 4);
    EXPECT_EQ(LiveRun().PreviewRotation, 1);
    EXPECT_EQ(TileAt(LiveRun(), 4, 5).Type, TileType::Straight);
    EXPECT_EQ(App.LastInputDevice, InputDevice::Gamepad);
    MoveAxis(pad, SDL_GAMEPAD_AXIS_LEFTY, 30000);
    MoveAxis(pad, SDL_GAMEPAD_AXIS_LEFTY, 32000);
    EXPECT_EQ(LiveRun().CursorY, 6) << "one step a push";
    PressButton(pad, SDL_GAMEPAD_BUTTON_EAST);
    EXPECT_EQ(App.Screen, AppScreen::Pause);
    PressButton(pad, SDL_GAMEPAD_BUTTON_SOUTH);
    EXPECT_EQ(App.Screen, AppScreen::Playing) << "the same button confirms on the menus";
}

TEST_F(Input, AJoystickPlaysTheBoard) {
    SDL_Joystick* const stick = Attach(SDL_JOYSTICK_TYPE_FLIGHT_STICK);
    ASSERT_NE(Controllers.Joystick, nullptr);
    SDL_SetJoystickVirtualHat(stick, 0, SDL_HAT_UP);
    SDL_UpdateJoysticks();
    Poll();
    EXPECT_EQ(LiveRun().CursorY, 4);
    MoveAxis(stick, 0, -32000);
    EXPECT_EQ(LiveRun().CursorX, 4);
    PressButton(stick, 1);
    EXPECT_EQ(LiveRun().PreviewRotation, 3);
    PressButton(stick, 0);
    EXPECT_EQ(TileAt(LiveRun(), 4, 4).Type, TileType::Straight);
    EXPECT_EQ(App.LastInputDevice, InputDevice::Joystick);
    PressButton(stick, 3);
    EXPECT_EQ(App.Screen, AppScreen::Pause);
}

TEST_F(Input, APadThatIsUnpluggedWhileItIsHeldLetsThePlayGoOn) {
    SDL_Joystick* const pad = Attach(SDL_JOYSTICK_TYPE_GAMEPAD);
    MoveAxis(pad, SDL_GAMEPAD_AXIS_LEFTX, 32000);
    EXPECT_EQ(LiveRun().CursorX, 6);
    EXPECT_TRUE(SDL_DetachVirtualJoystick(SDL_GetJoystickID(pad)));
    SDL_UpdateJoysticks();
    Poll();
    EXPECT_EQ(Controllers.Gamepad, nullptr);
    EXPECT_FALSE(Controllers.GamepadLatches.Right);
    SDL_Joystick* const next = Attach(SDL_JOYSTICK_TYPE_GAMEPAD);
    ASSERT_NE(Controllers.Gamepad, nullptr);
    PressButton(next, SDL_GAMEPAD_BUTTON_DPAD_RIGHT);
    EXPECT_EQ(LiveRun().CursorX, 7);
}

TEST_F(Input, AQuitEventEndsTheDraining) {
    SDL_Event quit{};
    quit.type = SDL_EVENT_QUIT;
    SDL_PushEvent(&quit);
    PushKey(SDL_SCANCODE_LEFT);
    Poll();
    EXPECT_TRUE(App.QuitRequested);
    EXPECT_TRUE(SDL_HasEvent(SDL_EVENT_KEY_DOWN));
}

TEST_F(Input, OtherEventsAreDrainedWithoutEffect) {
    for (const SDL_EventType type :
         {SDL_EVENT_MOUSE_BUTTON_DOWN, SDL_EVENT_MOUSE_MOTION, SDL_EVENT_KEY_UP,
          SDL_EVENT_WINDOW_RESIZED, SDL_EVENT_GAMEPAD_BUTTON_UP, SDL_EVENT_TEXT_INPUT}) {
        SDL_Event event{};
        event.type = type;
        SDL_PushEvent(&event);
    }
    const RunState before = LiveRun();
    Poll();
    EXPECT_EQ(LiveRun(), before);
    EXPECT_EQ(App.Screen, AppScreen::Playing);
    EXPECT_FALSE(SDL_HasEvents(SDL_EVENT_FIRST, SDL_EVENT_LAST));
}

} // namespace
} // namespace Wirefall
