// The whole way of a press, from SDL's events of the keyboard and of virtual controllers to what it
// does on the screen.

#include "app/Game.h"
#include "app/InputPump.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"
#include "support/InputFixture.h"

namespace Wirefall {
namespace {

class Input : public InputTest {
protected:
    void SetUp() override {
        Testing::InstallLiveRun(Testing::DrawnRun({"→────────⇐"}));
        App.Screen = AppScreen::Playing;
    }

    void Poll() { PollInput(App, Controllers, nullptr, nullptr); }

    void PressButton(VirtualDevice& device, int button) {
        device.PressButton(button);
        SDL_UpdateJoysticks();
        device.ReleaseButton(button);
        SDL_UpdateJoysticks();
        Poll();
    }

    void MoveAxis(VirtualDevice& device, int axis, int value) {
        device.MoveAxis(axis, value);
        SDL_UpdateJoysticks();
        Poll();
    }
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
    VirtualGamepad pad;
    Poll();
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
    VirtualJoystick stick;
    Poll();
    ASSERT_NE(Controllers.Joystick, nullptr);
    stick.MoveHat(0, SDL_HAT_UP);
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
    VirtualGamepad pad;
    Poll();
    MoveAxis(pad, SDL_GAMEPAD_AXIS_LEFTX, 32000);
    EXPECT_EQ(LiveRun().CursorX, 6);
    pad.PullOut();
    SDL_UpdateJoysticks();
    Poll();
    EXPECT_EQ(Controllers.Gamepad, nullptr);
    EXPECT_FALSE(Controllers.GamepadLatches.Right);
    VirtualGamepad next;
    Poll();
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
