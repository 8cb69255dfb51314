#include "support/InputFixture.h"

#include <optional>

namespace Wirefall {

namespace {

constexpr int ConfirmButton = 0; // On both classes of device.

class ControllersTest : public InputTest {
protected:
    void ExpectGamepad(const VirtualDevice& device) const {
        ASSERT_NE(Controllers.Gamepad, nullptr);
        EXPECT_EQ(Controllers.GamepadId, device.Id);
        EXPECT_EQ(SDL_GetGamepadID(Controllers.Gamepad), device.Id);
    }
    void ExpectJoystick(const VirtualDevice& device) const {
        ASSERT_NE(Controllers.Joystick, nullptr);
        EXPECT_EQ(Controllers.JoystickId, device.Id);
        EXPECT_EQ(SDL_GetJoystickID(Controllers.Joystick), device.Id);
    }
    void ExpectNoGamepad() const {
        EXPECT_EQ(Controllers.Gamepad, nullptr);
        EXPECT_EQ(Controllers.GamepadId, 0U);
    }
    void ExpectNoJoystick() const {
        EXPECT_EQ(Controllers.Joystick, nullptr);
        EXPECT_EQ(Controllers.JoystickId, 0U);
    }
};

bool AnyLatch(const StickLatches& latches) {
    return latches.Left || latches.Right || latches.Up || latches.Down;
}

// At the start

TEST_F(ControllersTest, NothingIsHeldWhereNothingIs) {
    OpenAvailableControllers(Controllers);
    ExpectNoGamepad();
    ExpectNoJoystick();
}

TEST_F(ControllersTest, OneOfEachClassIsHeld) {
    const VirtualJoystick joystick;
    const VirtualGamepad gamepad;
    OpenAvailableControllers(Controllers);
    ExpectGamepad(gamepad);
    ExpectJoystick(joystick);
}

TEST_F(ControllersTest, ALoneGamepadLeavesTheJoystickOut) {
    const VirtualGamepad gamepad;
    OpenAvailableControllers(Controllers);
    ExpectGamepad(gamepad);
    ExpectNoJoystick();
}

TEST_F(ControllersTest, OfTwoOfAClassTheFirstIsHeld) {
    const VirtualGamepad firstGamepad;
    const VirtualJoystick firstJoystick;
    const VirtualGamepad secondGamepad;
    const VirtualJoystick secondJoystick;
    OpenAvailableControllers(Controllers);
    ExpectGamepad(firstGamepad);
    ExpectJoystick(firstJoystick);
}

TEST_F(ControllersTest, WhatIsHeldIsKept) {
    const VirtualGamepad firstGamepad;
    const VirtualJoystick firstJoystick;
    const VirtualGamepad gamepad;
    const VirtualJoystick joystick;
    TryOpenGamepad(Controllers, gamepad.Id);
    ASSERT_TRUE(TryOpenJoystick(Controllers, joystick.Id));
    OpenAvailableControllers(Controllers);
    ExpectGamepad(gamepad);
    ExpectJoystick(joystick);
}

TEST(WithoutControllersTest, AnSdlWithoutControllersIsPlayedByKeyboard) {
    ASSERT_FALSE(SDL_WasInit(SDL_INIT_GAMEPAD));
    ControllerSet controllers;
    OpenAvailableControllers(controllers);
    EXPECT_EQ(controllers.Gamepad, nullptr);
    EXPECT_EQ(controllers.Joystick, nullptr);
    EXPECT_FALSE(TryOpenJoystick(controllers, 1));
    CloseControllers(controllers);
}

// Opening one joystick

TEST_F(ControllersTest, AGamepadDoesNotOpenAsAJoystick) {
    const VirtualGamepad gamepad;
    EXPECT_FALSE(TryOpenJoystick(Controllers, gamepad.Id));
    ExpectNoJoystick();
}

TEST_F(ControllersTest, AJoystickThatIsNotThereDoesNotOpen) {
    EXPECT_FALSE(TryOpenJoystick(Controllers, 4711));
    ExpectNoJoystick();
}

TEST_F(ControllersTest, AHeldJoystickAnswersForAnyOther) {
    const VirtualJoystick joystick;
    const VirtualGamepad gamepad;
    ASSERT_TRUE(TryOpenJoystick(Controllers, joystick.Id));
    EXPECT_TRUE(TryOpenJoystick(Controllers, 4711));
    EXPECT_TRUE(TryOpenJoystick(Controllers, gamepad.Id));
    ExpectJoystick(joystick);
}

// Closing

TEST_F(ControllersTest, ClosingReleasesTheDevices) {
    std::optional<VirtualGamepad> gamepad(std::in_place);
    std::optional<VirtualJoystick> joystick(std::in_place);
    const SDL_JoystickID gamepadId = gamepad->Id;
    const SDL_JoystickID joystickId = joystick->Id;
    OpenAvailableControllers(Controllers);
    gamepad.reset();
    joystick.reset();
    ASSERT_NE(SDL_GetGamepadFromID(gamepadId), nullptr) << "Held beyond the unplugging.";
    ASSERT_NE(SDL_GetJoystickFromID(joystickId), nullptr);

    CloseControllers(Controllers);
    EXPECT_EQ(SDL_GetGamepadFromID(gamepadId), nullptr);
    EXPECT_EQ(SDL_GetJoystickFromID(joystickId), nullptr);
    ExpectNoGamepad();
    ExpectNoJoystick();
    CloseControllers(Controllers);
}

TEST_F(ControllersTest, ClosingLetsGoOfTheSticks) {
    const VirtualGamepad gamepad;
    const VirtualJoystick joystick;
    OpenAvailableControllers(Controllers);
    Controllers.GamepadLatches = {true, true, true, true};
    Controllers.JoystickLatches = {true, true, true, true};
    CloseGamepad(Controllers);
    EXPECT_FALSE(AnyLatch(Controllers.GamepadLatches));
    EXPECT_TRUE(AnyLatch(Controllers.JoystickLatches)) << "Each device has latches of its own.";
    CloseJoystick(Controllers);
    EXPECT_FALSE(AnyLatch(Controllers.JoystickLatches));
}

// Devices that come

TEST_F(ControllersTest, DevicesThatArePluggedInAreHeld) {
    Pump();
    const VirtualGamepad gamepad;
    const VirtualJoystick joystick;
    EXPECT_EQ(Pump(), Presses{});
    ExpectGamepad(gamepad);
    ExpectJoystick(joystick);
}

TEST_F(ControllersTest, ASecondDeviceOfAClassIsIgnored) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    VirtualGamepad otherGamepad;
    VirtualJoystick otherJoystick;
    Pump();
    ExpectGamepad(gamepad);
    ExpectJoystick(joystick);

    otherGamepad.PressButton(ConfirmButton);
    otherJoystick.PressButton(ConfirmButton);
    otherGamepad.MoveAxis(0, 32767);
    otherJoystick.MoveAxis(0, 32767);
    otherJoystick.MoveHat(0, SDL_HAT_UP);
    EXPECT_EQ(Pump(), Presses{});
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
    EXPECT_FALSE(AnyLatch(Controllers.GamepadLatches));
    EXPECT_FALSE(AnyLatch(Controllers.JoystickLatches));

    gamepad.PressButton(ConfirmButton);
    joystick.PressButton(ConfirmButton);
    EXPECT_EQ(Pump(), (Presses{Press::Confirm, Press::Confirm}));
}

TEST_F(ControllersTest, ADeviceThatIsGoneBeforeItIsLookedAtIsNotHeld) {
    {
        const VirtualGamepad gamepad;
        const VirtualJoystick joystick;
    }
    EXPECT_EQ(Pump(), Presses{});
    ExpectNoGamepad();
    ExpectNoJoystick();
}

// Devices that go

TEST_F(ControllersTest, AGamepadThatIsPulledOutWhileHeldOverLetsGo) {
    std::optional<VirtualGamepad> gamepad(std::in_place);
    Pump();
    gamepad->MoveAxis(0, -32768);
    gamepad->PressButton(SDL_GAMEPAD_BUTTON_NORTH);
    ASSERT_EQ(Pump(), Presses{Press::Left});
    gamepad.reset();
    EXPECT_EQ(Pump(), Presses{});
    ExpectNoGamepad();
    EXPECT_FALSE(AnyLatch(Controllers.GamepadLatches));

    gamepad.emplace();
    Pump();
    ExpectGamepad(*gamepad);
    gamepad->MoveAxis(0, -32768);
    EXPECT_EQ(Pump(), Presses{Press::Left}) << "The new stick presses at once.";
}

TEST_F(ControllersTest, AJoystickThatIsPulledOutWhileHeldOverLetsGo) {
    std::optional<VirtualJoystick> joystick(std::in_place);
    Pump();
    joystick->MoveAxis(1, 32767);
    ASSERT_EQ(Pump(), Presses{Press::Down});
    joystick.reset();
    EXPECT_EQ(Pump(), Presses{});
    ExpectNoJoystick();
    EXPECT_FALSE(AnyLatch(Controllers.JoystickLatches));

    joystick.emplace();
    Pump();
    ExpectJoystick(*joystick);
    joystick->MoveAxis(1, 32767);
    EXPECT_EQ(Pump(), Presses{Press::Down});
}

TEST_F(ControllersTest, TheNextOfTheClassTakesOver) {
    std::optional<VirtualGamepad> gamepad(std::in_place);
    std::optional<VirtualJoystick> joystick(std::in_place);
    const VirtualGamepad nextGamepad;
    const VirtualJoystick nextJoystick;
    Pump();
    ExpectGamepad(*gamepad);
    ExpectJoystick(*joystick);
    gamepad.reset();
    Pump();
    ExpectGamepad(nextGamepad);
    ExpectJoystick(*joystick);
    joystick.reset();
    Pump();
    ExpectGamepad(nextGamepad);
    ExpectJoystick(nextJoystick);
}

TEST_F(ControllersTest, TheOthersGoingChangesNothing) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    {
        const VirtualGamepad otherGamepad;
        const VirtualJoystick otherJoystick;
        Pump();
        gamepad.MoveAxis(0, 32767);
        joystick.MoveAxis(0, 32767);
        Pump();
    }
    Pump();
    ExpectGamepad(gamepad);
    ExpectJoystick(joystick);
    EXPECT_TRUE(Controllers.GamepadLatches.Right) << "Still held over.";
    EXPECT_TRUE(Controllers.JoystickLatches.Right);
}

// SDL tells of a gamepad's going twice, once as of a joystick. Either is enough.

void PushRemoval(Uint32 type, SDL_JoystickID id) {
    SDL_Event event = {};
    event.jdevice.type = static_cast<SDL_EventType>(type);
    event.jdevice.which = id;
    ASSERT_TRUE(SDL_PushEvent(&event));
}

TEST_F(ControllersTest, AGamepadsGoingIsEnoughToldOnce) {
    const VirtualGamepad gamepad;
    const VirtualGamepad nextGamepad;
    for (const Uint32 type : {SDL_EVENT_GAMEPAD_REMOVED, SDL_EVENT_JOYSTICK_REMOVED}) {
        Pump();
        TryOpenGamepad(Controllers, nextGamepad.Id);
        const SDL_JoystickID held = Controllers.GamepadId;
        Controllers.GamepadLatches.Up = true;
        PushRemoval(type, held);
        Pump();
        EXPECT_FALSE(Controllers.GamepadLatches.Up);
        ExpectGamepad(gamepad); // It is still plugged in, and the first of the list.
    }
}

TEST_F(ControllersTest, AnUnrelatedJoysticksGoingLooksForControllers) {
    const VirtualGamepad gamepad;
    const VirtualJoystick joystick;
    SDL_FlushEvents(SDL_EVENT_FIRST, SDL_EVENT_LAST); // The game has not heard of them.
    PushRemoval(SDL_EVENT_JOYSTICK_REMOVED, 4711);
    Pump();
    ExpectGamepad(gamepad);
    ExpectJoystick(joystick);
}

TEST_F(ControllersTest, AnUnrelatedGamepadsGoingDoesNot) {
    const VirtualGamepad gamepad;
    const VirtualJoystick joystick;
    SDL_FlushEvents(SDL_EVENT_FIRST, SDL_EVENT_LAST);
    PushRemoval(SDL_EVENT_GAMEPAD_REMOVED, 4711);
    Pump();
    ExpectNoGamepad();
    ExpectNoJoystick();
}

TEST_F(ControllersTest, AnIdOfNoneMatchesNoEmptyPlace) {
    Controllers.GamepadLatches.Left = true;
    Controllers.JoystickLatches.Left = true;
    PushRemoval(SDL_EVENT_GAMEPAD_REMOVED, 0);
    PushRemoval(SDL_EVENT_JOYSTICK_REMOVED, 0);
    SDL_Event event = {};
    event.gbutton.type = SDL_EVENT_GAMEPAD_BUTTON_DOWN;
    ASSERT_TRUE(SDL_PushEvent(&event));
    event.jbutton.type = SDL_EVENT_JOYSTICK_BUTTON_DOWN;
    ASSERT_TRUE(SDL_PushEvent(&event));
    EXPECT_EQ(Pump(), Presses{});
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
}

} // namespace

} // namespace Wirefall
