#include "app/InputPump.h"
#include "support/Allocations.h"
#include "support/InputFixture.h"

#include <array>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace Wirefall {

namespace {

constexpr std::size_t Index(InputAction action) { return ActionIndex(action); }

// The first of the actions, up to and with `last`.
std::vector<InputAction> ActionsTo(InputAction last) {
    std::vector<InputAction> actions;
    for (std::size_t i = 0; i <= Index(last); ++i) {
        actions.push_back(static_cast<InputAction>(i));
    }
    return actions;
}

const std::vector<InputAction> SteeringActions = ActionsTo(InputAction::RotateRight);
const std::vector<InputAction> KeyboardActions = ActionsTo(InputAction::FastForward);
const std::vector<InputAction> AllActions = ActionsTo(InputAction::MenuBack);

class InputSamplingTest : public InputTest {};

// The keyboard

TEST_F(InputSamplingTest, AKeyIsItsOwnPress) {
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP), Presses{82});
    EXPECT_EQ(PressKey(SDL_SCANCODE_DOWN), Presses{81});
    EXPECT_EQ(PressKey(SDL_SCANCODE_LEFT), Presses{80});
    EXPECT_EQ(PressKey(SDL_SCANCODE_RIGHT), Presses{79});
    EXPECT_EQ(PressKey(SDL_SCANCODE_Q), Presses{20});
    EXPECT_EQ(PressKey(SDL_SCANCODE_E), Presses{8});
    EXPECT_EQ(PressKey(SDL_SCANCODE_RETURN), Presses{40});
    EXPECT_EQ(PressKey(SDL_SCANCODE_KP_ENTER), Presses{88});
    EXPECT_EQ(PressKey(SDL_SCANCODE_ESCAPE), Presses{41});
    EXPECT_EQ(PressKey(SDL_SCANCODE_W), Presses{26});
    EXPECT_EQ(PressKey(SDL_SCANCODE_DELETE), Presses{76});
}

TEST_F(InputSamplingTest, AHeldKeyPressesOnce) {
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP), Presses{Press::Up});
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP, true), Presses{});
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP, true), Presses{});
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP), Presses{Press::Up});
}

TEST_F(InputSamplingTest, ARepeatedKeyIsNotEvenTheLastDevice) {
    App.LastInputDevice = InputDevice::Gamepad;
    PressKey(SDL_SCANCODE_UP, true);
    EXPECT_EQ(App.LastInputDevice, InputDevice::Gamepad);
    PressKey(SDL_SCANCODE_UP);
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
}

TEST_F(InputSamplingTest, ARepeatedKeyIsNotCaptured) {
    Capture(CaptureDevice::Keyboard, 0);
    EXPECT_EQ(PressKey(SDL_SCANCODE_X, true), Presses{});
}

TEST_F(InputSamplingTest, AFilteredKeyIsTheLastDeviceAllTheSame) {
    App.LastInputDevice = InputDevice::Joystick;
    EXPECT_EQ(PressKey(SDL_SCANCODE_SPACE), Presses{});
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
}

TEST_F(InputSamplingTest, NothingHappensWhenAKeyComesUp) {
    SDL_Event event = {};
    event.key.type = SDL_EVENT_KEY_UP;
    event.key.scancode = SDL_SCANCODE_UP;
    App.LastInputDevice = InputDevice::Gamepad;
    ASSERT_TRUE(SDL_PushEvent(&event));
    EXPECT_EQ(Pump(), Presses{});
    EXPECT_EQ(App.LastInputDevice, InputDevice::Gamepad);
}

// Keys that work only for their own action

struct FixedKeyCase {
    SDL_Scancode Key;
    InputAction Action;
};

void PrintTo(const FixedKeyCase& c, std::ostream* out) { *out << SDL_GetScancodeName(c.Key); }

// What the screens steer by are the keys from the factory. The one for placing is Return there,
// which also confirms; the key that is placing's alone is the space bar.
std::vector<FixedKeyCase> FixedKeys() {
    std::vector<FixedKeyCase> cases;
    for (const InputAction action : SteeringActions) {
        const auto key = static_cast<SDL_Scancode>(FactoryBindings::Keyboard[Index(action)]);
        cases.push_back({key, action});
    }
    cases.push_back({SDL_SCANCODE_SPACE, InputAction::Place});
    return cases;
}

class FixedKeyTest : public InputTest, public testing::WithParamInterface<FixedKeyCase> {};

TEST_P(FixedKeyTest, WorksWhileItsActionIsBoundToIt) {
    const auto [key, action] = GetParam();
    App.KeyboardBindings[Index(action)] = key;
    for (const AppScreen screen : {AppScreen::MainMenu, AppScreen::Playing, AppScreen::Options}) {
        App.Screen = screen;
        EXPECT_EQ(PressKey(key), Presses{key});
    }
}

TEST_P(FixedKeyTest, IsDeadOnEveryScreenOnceItsActionIsElsewhere) {
    const auto [key, action] = GetParam();
    App.KeyboardBindings[Index(action)] = SDL_SCANCODE_K;
    for (const AppScreen screen : {AppScreen::MainMenu, AppScreen::Playing, AppScreen::Options}) {
        App.Screen = screen;
        EXPECT_EQ(PressKey(key), Presses{});
        EXPECT_EQ(PressKey(SDL_SCANCODE_K), Presses{SDL_SCANCODE_K});
    }
    App.KeyboardBindings[Index(action)] = 0;
    EXPECT_EQ(PressKey(key), Presses{});
}

TEST_P(FixedKeyTest, WorksForNoOtherAction) {
    const auto [key, action] = GetParam();
    for (const InputAction bound : KeyboardActions) {
        App.KeyboardBindings.fill(UnboundKey);
        App.KeyboardBindings[Index(bound)] = key;
        EXPECT_EQ(PressKey(key), bound == action ? Presses{key} : Presses{}) << Index(bound);
    }
}

TEST_P(FixedKeyTest, IsDeadWhenBoundToAllOtherActions) {
    const auto [key, action] = GetParam();
    App.KeyboardBindings.fill(key);
    App.KeyboardBindings[Index(action)] = SDL_SCANCODE_K;
    EXPECT_EQ(PressKey(key), Presses{});
}

INSTANTIATE_TEST_SUITE_P(Keys, FixedKeyTest, testing::ValuesIn(FixedKeys()));

TEST_F(InputSamplingTest, SpaceDoesNothingUntilPlaceIsBoundToIt) {
    EXPECT_EQ(PressKey(SDL_SCANCODE_SPACE), Presses{});
    App.KeyboardBindings[Index(InputAction::Place)] = SDL_SCANCODE_SPACE;
    EXPECT_EQ(PressKey(SDL_SCANCODE_SPACE), Presses{SDL_SCANCODE_SPACE});
}

TEST_F(InputSamplingTest, ReturnEnterAndEscapeAreNeverFiltered) {
    App.KeyboardBindings.fill(0);
    EXPECT_EQ(PressKey(SDL_SCANCODE_RETURN), Presses{40});
    EXPECT_EQ(PressKey(SDL_SCANCODE_KP_ENTER), Presses{88});
    EXPECT_EQ(PressKey(SDL_SCANCODE_ESCAPE), Presses{41});
}

TEST_F(InputSamplingTest, AllOtherKeysPassTheFilter) {
    App.KeyboardBindings.fill(0);
    std::size_t filtered = 0;
    for (int key = 1; key < SDL_SCANCODE_COUNT; ++key) {
        const Presses presses = PressKey(static_cast<SDL_Scancode>(key));
        if (presses.empty()) {
            ++filtered;
        } else {
            EXPECT_EQ(presses, Presses{static_cast<PressCode>(key)});
        }
    }
    EXPECT_EQ(filtered, FixedKeys().size());
}

// Capturing a key

TEST_F(InputSamplingTest, ACaptureForTheKeyboardGetsKeysUnfiltered) {
    App.KeyboardBindings.fill(0);
    Capture(CaptureDevice::Keyboard, 0);
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP), Presses{Press::Up});
    EXPECT_EQ(PressKey(SDL_SCANCODE_SPACE), Presses{SDL_SCANCODE_SPACE});
    EXPECT_TRUE(App.Capture.CaptureActive) << "The screen ends it, not sampling.";
}

TEST_F(InputSamplingTest, ACaptureForAControllerLeavesTheFilterOn) {
    App.KeyboardBindings.fill(0);
    for (const CaptureDevice device : {CaptureDevice::Gamepad, CaptureDevice::Joystick}) {
        Capture(device, 0);
        EXPECT_EQ(PressKey(SDL_SCANCODE_UP), Presses{});
        EXPECT_EQ(PressKey(SDL_SCANCODE_ESCAPE), Presses{Press::Back});
        EXPECT_EQ(PressKey(SDL_SCANCODE_DELETE), Presses{SDL_SCANCODE_DELETE});
    }
}

TEST_F(InputSamplingTest, ACaptureCountsOnlyOnTheOptionsScreenAndWhileActive) {
    App.KeyboardBindings.fill(0);
    Capture(CaptureDevice::Keyboard, 0);
    App.Screen = AppScreen::MainMenu;
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP), Presses{});
    App.Screen = AppScreen::Options;
    App.Capture.CaptureActive = false;
    EXPECT_EQ(PressKey(SDL_SCANCODE_UP), Presses{});
}

// What both classes of controller do alike

struct DeviceCase {
    SDL_JoystickType Type;
    InputDevice Device;
    Wirefall::CaptureDevice CaptureDevice;
    // The table as an array that both tables are.
    std::array<std::int32_t, ActionCount> GameOptions::*Bindings;
    StickLatches ControllerSet::*Latches;
};

void PrintTo(const DeviceCase& c, std::ostream* out) {
    *out << (c.Device == InputDevice::Gamepad ? "gamepad" : "joystick");
}

constexpr DeviceCase GamepadCase = {SDL_JOYSTICK_TYPE_GAMEPAD, InputDevice::Gamepad,
                                    CaptureDevice::Gamepad, &GameOptions::GamepadBindings,
                                    &ControllerSet::GamepadLatches};
constexpr DeviceCase JoystickCase = {SDL_JOYSTICK_TYPE_FLIGHT_STICK, InputDevice::Joystick,
                                     CaptureDevice::Joystick, &GameOptions::JoystickBindings,
                                     &ControllerSet::JoystickLatches};

std::string DeviceName(const testing::TestParamInfo<DeviceCase>& info) {
    return info.param.Device == InputDevice::Gamepad ? "Gamepad" : "Joystick";
}

class StickTest : public InputTest, public testing::WithParamInterface<DeviceCase> {
protected:
    void SetUp() override { Pump(); }

    Presses Move(int axis, int value) {
        Device.MoveAxis(axis, value);
        return Pump();
    }

    VirtualDevice Device{GetParam().Type};
};

INSTANTIATE_TEST_SUITE_P(Devices, StickTest, testing::Values(GamepadCase, JoystickCase),
                         DeviceName);

TEST_P(StickTest, PressesInFourDirections) {
    EXPECT_EQ(Move(0, -32768), Presses{Press::Left});
    EXPECT_EQ(Move(0, 32767), Presses{Press::Right});
    EXPECT_EQ(Move(1, -32768), Presses{Press::Up});
    EXPECT_EQ(Move(1, 32767), Presses{Press::Down});
}

TEST_P(StickTest, PressesAtExactly19000) {
    for (const int axis : {0, 1}) {
        EXPECT_EQ(Move(axis, -18999), Presses{});
        EXPECT_EQ(Move(axis, -19000), Presses{axis == 0 ? Press::Left : Press::Up});
        EXPECT_EQ(Move(axis, 0), Presses{});
        EXPECT_EQ(Move(axis, 18999), Presses{});
        EXPECT_EQ(Move(axis, 19000), Presses{axis == 0 ? Press::Right : Press::Down});
        EXPECT_EQ(Move(axis, 0), Presses{});
    }
}

TEST_P(StickTest, LetsGoAtExactly9000) {
    for (const int axis : {0, 1}) {
        for (const int side : {-1, 1}) {
            ASSERT_EQ(Move(axis, side * 19000).size(), 1U);
            EXPECT_EQ(Move(axis, side * 9001), Presses{});
            EXPECT_EQ(Move(axis, side * 19000), Presses{}) << "Not let go yet.";
            EXPECT_EQ(Move(axis, side * 9000), Presses{});
            EXPECT_EQ(Move(axis, side * 19000).size(), 1U) << "Let go.";
            EXPECT_EQ(Move(axis, side * -9000), Presses{});
            EXPECT_EQ(Move(axis, side * 19000).size(), 1U) << "Let go on the other side as well.";
            EXPECT_EQ(Move(axis, 0), Presses{});
        }
    }
}

TEST_P(StickTest, HeldOverPressesOnce) {
    EXPECT_EQ(Move(0, 20000), Presses{Press::Right});
    EXPECT_EQ(Move(0, 32767), Presses{});
    EXPECT_EQ(Move(0, 25000), Presses{});
    EXPECT_EQ(Pump(), Presses{});
}

TEST_P(StickTest, SwungAcrossPressesTheOtherSideAtOnce) {
    EXPECT_EQ(Move(0, -32768), Presses{Press::Left});
    EXPECT_EQ(Move(0, 32767), Presses{Press::Right});
    EXPECT_EQ(Move(0, -32768), Presses{Press::Left});
    const StickLatches& latches = Controllers.*GetParam().Latches;
    EXPECT_TRUE(latches.Left);
    EXPECT_FALSE(latches.Right);
}

TEST_P(StickTest, TheAxesHaveLatchesOfTheirOwn) {
    EXPECT_EQ(Move(0, -32768), Presses{Press::Left});
    EXPECT_EQ(Move(1, -32768), Presses{Press::Up});
    EXPECT_EQ(Move(1, 0), Presses{});
    const StickLatches& latches = Controllers.*GetParam().Latches;
    EXPECT_TRUE(latches.Left);
    EXPECT_FALSE(latches.Up);
}

TEST_P(StickTest, OtherAxesAndTriggersAreNotRead) {
    for (int axis = 2; axis < SDL_GAMEPAD_AXIS_COUNT; ++axis) {
        EXPECT_EQ(Move(axis, 32767), Presses{}) << axis;
        EXPECT_EQ(Move(axis, -32768), Presses{}) << axis;
    }
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
}

TEST_P(StickTest, IsTheLastDeviceOnlyByAPress) {
    Move(0, 18999);
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
    Move(0, 19000);
    EXPECT_EQ(App.LastInputDevice, GetParam().Device);
    App.LastInputDevice = InputDevice::Keyboard;
    Move(0, 30000);
    Move(0, 0);
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
}

TEST_P(StickTest, HeldOverAcrossAChangeOfScreenDoesNotPressAgain) {
    App.Screen = AppScreen::Playing;
    EXPECT_EQ(Move(1, 32767), Presses{Press::Down});
    App.Screen = AppScreen::Pause;
    EXPECT_EQ(Move(1, 30000), Presses{});
    EXPECT_EQ(Move(1, 0), Presses{});
    EXPECT_EQ(Move(1, 32767), Presses{Press::Down});
}

TEST_P(StickTest, IgnoresTheBindings) {
    (App.*GetParam().Bindings).fill(-1);
    App.KeyboardBindings.fill(0);
    EXPECT_EQ(Move(0, -32768), Presses{Press::Left});
}

TEST_P(StickTest, PressesDuringACapture) {
    Capture(GetParam().CaptureDevice, 0);
    EXPECT_EQ(Move(0, -32768), Presses{Press::Left});
    EXPECT_TRUE(App.Capture.CaptureActive);
}

TEST_F(InputSamplingTest, GamepadAndJoystickHaveLatchesOfTheirOwn) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    gamepad.MoveAxis(0, 32767);
    EXPECT_EQ(Pump(), Presses{Press::Right});
    joystick.MoveAxis(0, 32767);
    EXPECT_EQ(Pump(), Presses{Press::Right});
    gamepad.MoveAxis(0, 0);
    Pump();
    EXPECT_TRUE(Controllers.JoystickLatches.Right);
}

// The hat

class HatTest : public InputTest {
protected:
    void SetUp() override { Pump(); }

    Presses Move(std::uint8_t value, int hat = 0) {
        Joystick.MoveHat(hat, value);
        return Pump();
    }

    VirtualJoystick Joystick;
};

TEST_F(HatTest, PressesInFourDirections) {
    EXPECT_EQ(Move(SDL_HAT_UP), Presses{Press::Up});
    EXPECT_EQ(Move(SDL_HAT_DOWN), Presses{Press::Down});
    EXPECT_EQ(Move(SDL_HAT_LEFT), Presses{Press::Left});
    EXPECT_EQ(Move(SDL_HAT_RIGHT), Presses{Press::Right});
    EXPECT_EQ(App.LastInputDevice, InputDevice::Joystick);
}

TEST_F(HatTest, CentredPressesNothing) {
    Move(SDL_HAT_UP);
    App.LastInputDevice = InputDevice::Keyboard;
    EXPECT_EQ(Move(SDL_HAT_CENTERED), Presses{});
    EXPECT_EQ(App.LastInputDevice, InputDevice::Keyboard);
}

TEST_F(HatTest, ADiagonalIsUpOrDown) {
    EXPECT_EQ(Move(SDL_HAT_LEFTUP), Presses{Press::Up});
    EXPECT_EQ(Move(SDL_HAT_RIGHTDOWN), Presses{Press::Down});
    EXPECT_EQ(Move(SDL_HAT_RIGHTUP), Presses{Press::Up});
    EXPECT_EQ(Move(SDL_HAT_LEFTDOWN), Presses{Press::Down});
}

TEST_F(HatTest, BitsThatNoHatSetsTogetherFollowTheSameOrder) {
    EXPECT_EQ(Move(SDL_HAT_UP | SDL_HAT_DOWN), Presses{Press::Up});
    EXPECT_EQ(Move(SDL_HAT_LEFT | SDL_HAT_RIGHT), Presses{Press::Left});
    EXPECT_EQ(Move(0x0F), Presses{Press::Up});
    EXPECT_EQ(Move(0xF0), Presses{});
}

TEST_F(HatTest, EachChangeIsAPressOfItsOwn) {
    EXPECT_EQ(Move(SDL_HAT_UP), Presses{Press::Up});
    EXPECT_EQ(Move(SDL_HAT_RIGHTUP), Presses{Press::Up});
    EXPECT_EQ(Move(SDL_HAT_UP), Presses{Press::Up});
}

TEST_F(HatTest, AnyHatCounts) { EXPECT_EQ(Move(SDL_HAT_LEFT, 1), Presses{Press::Left}); }

TEST_F(HatTest, HatAndStickDoNotBlockEachOther) {
    Joystick.MoveAxis(1, -32768);
    EXPECT_EQ(Pump(), Presses{Press::Up});
    EXPECT_EQ(Move(SDL_HAT_UP), Presses{Press::Up});
    Move(SDL_HAT_CENTERED);
    EXPECT_TRUE(Controllers.JoystickLatches.Up);
}

// Buttons

class ButtonTest : public InputTest, public testing::WithParamInterface<DeviceCase> {
protected:
    void SetUp() override {
        Pump();
        Table().fill(-1);
    }

    std::array<std::int32_t, ActionCount>& Table() { return App.*GetParam().Bindings; }

    void Bind(InputAction action, std::int32_t button) { Table()[Index(action)] = button; }

    // What a button of the action presses on the board, as the keyboard is bound.
    Presses PressesOf(InputAction action) const {
        switch (action) {
        case InputAction::MenuConfirm:
            return {Wirefall::Press::Confirm};
        case InputAction::MenuBack:
            return {Wirefall::Press::Back};
        case InputAction::Place:
            return {App.KeyboardBindings[Index(action)]};
        case InputAction::FastForward:
            return {};
        default:
            return {FactoryBindings::Keyboard[Index(action)]};
        }
    }

    Presses Press(int button) {
        Device.PressButton(button);
        Presses presses = Pump();
        Device.ReleaseButton(button);
        EXPECT_EQ(Pump(), Presses{}) << "Nothing happens when a button comes up.";
        return presses;
    }

    VirtualDevice Device{GetParam().Type};
};

INSTANTIATE_TEST_SUITE_P(Devices, ButtonTest, testing::Values(GamepadCase, JoystickCase),
                         DeviceName);

TEST_P(ButtonTest, EachActionIsThePressOfItsDefaultKey) {
    const auto buttonOf = [](InputAction action) {
        return MaxGamepadButton - static_cast<std::int32_t>(action);
    };
    for (const InputAction action : AllActions) {
        Bind(action, buttonOf(action));
    }
    App.KeyboardBindings[Index(InputAction::Place)] = SDL_SCANCODE_X;
    for (const AppScreen screen : {AppScreen::MainMenu, AppScreen::Playing}) {
        App.Screen = screen;
        for (const InputAction action : AllActions) {
            const bool isOfTheBoard = action == InputAction::Place;
            EXPECT_EQ(Press(buttonOf(action)),
                      isOfTheBoard && screen != AppScreen::Playing ? Presses{} : PressesOf(action))
                << Index(action);
        }
        EXPECT_EQ(Press(13), Presses{}) << "no action's button";
    }
}

TEST_P(ButtonTest, ButtonsAreNotFilteredByTheKeyboard) {
    App.KeyboardBindings.fill(0);
    Bind(InputAction::CursorUp, 15);
    EXPECT_EQ(Press(15), Presses{Press::Up});
}

TEST_P(ButtonTest, AButtonOfSeveralActionsIsTheFirst) {
    App.Screen = AppScreen::Playing;
    App.KeyboardBindings[Index(InputAction::Place)] = SDL_SCANCODE_SPACE;
    Table().fill(15);
    for (const InputAction action : AllActions) {
        // Held, not pressed: what counts is what comes behind it.
        if (action == InputAction::FastForward) {
            continue;
        }
        if (action == InputAction::MenuBack) {
            EXPECT_EQ(Press(15), Presses{}) << "Fast forward keeps the rest from meaning back.";
            Bind(InputAction::FastForward, -1);
        }
        EXPECT_EQ(Press(15), PressesOf(action)) << Index(action);
        Bind(action, -1);
    }
    EXPECT_EQ(Press(15), Presses{});
}

TEST_P(ButtonTest, PlaceTravelsThroughTheKeyboardsBinding) {
    App.Screen = AppScreen::Playing;
    Bind(InputAction::Place, 15);
    EXPECT_EQ(Press(15), Presses{SDL_SCANCODE_RETURN});
    App.KeyboardBindings[Index(InputAction::Place)] = SDL_SCANCODE_X;
    EXPECT_EQ(Press(15), Presses{SDL_SCANCODE_X});
}

TEST_P(ButtonTest, PlaceDoesNothingOnceTheKeyboardHasNoKeyForIt) {
    App.Screen = AppScreen::Playing;
    Bind(InputAction::Place, 15);
    Bind(InputAction::MenuConfirm, 15);
    App.KeyboardBindings[Index(InputAction::Place)] = 0;
    EXPECT_EQ(Press(15), Presses{}) << "Nor does it become a confirmation.";
}

TEST_P(ButtonTest, PlaceMeansNothingOffTheBoard) {
    Bind(InputAction::Place, 15);
    for (const AppScreen screen :
         {AppScreen::MainMenu, AppScreen::Options, AppScreen::Help, AppScreen::LevelComplete,
          AppScreen::Pause, AppScreen::Credits, AppScreen::GameOver}) {
        App.Screen = screen;
        EXPECT_EQ(Press(15), Presses{});
    }
    Bind(InputAction::MenuConfirm, 15);
    EXPECT_EQ(Press(15), Presses{Press::Confirm}) << "The shared button confirms there.";
}

TEST_P(ButtonTest, FastForwardIsNoPress) {
    Bind(InputAction::FastForward, 15);
    for (const AppScreen screen : {AppScreen::MainMenu, AppScreen::Playing}) {
        App.Screen = screen;
        EXPECT_EQ(Press(15), Presses{});
    }
}

TEST_P(ButtonTest, AButtonThatPlacesOrSpeedsUpNeverMeansBack) {
    Bind(InputAction::MenuBack, 15);
    Bind(InputAction::Place, 15);
    EXPECT_EQ(Press(15), Presses{});
    Bind(InputAction::Place, -1);
    Bind(InputAction::FastForward, 15);
    EXPECT_EQ(Press(15), Presses{});
    Bind(InputAction::FastForward, -1);
    EXPECT_EQ(Press(15), Presses{Press::Back});
}

TEST_P(ButtonTest, AnyButtonOfTheDeviceIsTheLastDevice) {
    EXPECT_EQ(Press(13), Presses{});
    EXPECT_EQ(App.LastInputDevice, GetParam().Device);
}

TEST_F(InputSamplingTest, TheFactoryBindingsPlayTheGame) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    App.Screen = AppScreen::Playing;
    const auto press = [this](VirtualDevice& device, int button) {
        device.PressButton(button);
        return Pump();
    };
    EXPECT_EQ(press(gamepad, SDL_GAMEPAD_BUTTON_DPAD_UP), Presses{Press::Up});
    EXPECT_EQ(press(gamepad, SDL_GAMEPAD_BUTTON_LEFT_SHOULDER), Presses{Press::RotateLeft});
    EXPECT_EQ(press(gamepad, SDL_GAMEPAD_BUTTON_SOUTH), Presses{SDL_SCANCODE_RETURN});
    EXPECT_EQ(press(gamepad, SDL_GAMEPAD_BUTTON_EAST), Presses{Press::Back});
    EXPECT_EQ(press(joystick, 1), Presses{Press::RotateLeft});
    EXPECT_EQ(press(joystick, 0), Presses{SDL_SCANCODE_RETURN});
    EXPECT_EQ(press(joystick, 3), Presses{Press::Back});
}

// Capturing a button

TEST_P(ButtonTest, ACaptureStoresTheButtonInTheWorkingCopy) {
    App.ControlsEdit.PendingValid = true;
    Capture(GetParam().CaptureDevice, 2);
    const std::array<std::int32_t, ActionCount> liveBefore = Table();
    EXPECT_EQ(Press(13), Presses{});
    const bool isGamepad = GetParam().Device == InputDevice::Gamepad;
    GamepadTable gamepad = FactoryBindings::Gamepad;
    JoystickTable joystick = FactoryBindings::Joystick;
    if (isGamepad) {
        gamepad[Index(InputAction::CursorLeft)] = 13;
    } else {
        joystick[Index(InputAction::Place)] = 13;
    }
    EXPECT_EQ(App.ControlsEdit.PendingGamepad, gamepad);
    EXPECT_EQ(App.ControlsEdit.PendingJoystick, joystick);
    EXPECT_EQ(Table(), liveBefore) << "The live table waits.";
    EXPECT_FALSE(App.Capture.CaptureActive);
    EXPECT_EQ(App.Capture.CaptureDevice, CaptureDevice::None);
    EXPECT_EQ(App.LastInputDevice, GetParam().Device);
    EXPECT_EQ(App.SoundQueueCount, 0U);
}

TEST_P(ButtonTest, ACaptureWithoutAWorkingCopyStoresInTheLiveTable) {
    const PendingControls before = App.ControlsEdit;
    Capture(GetParam().CaptureDevice, 2);
    EXPECT_EQ(Press(13), Presses{});
    const bool isGamepad = GetParam().Device == InputDevice::Gamepad;
    EXPECT_EQ(Table()[Index(isGamepad ? InputAction::CursorLeft : InputAction::Place)], 13);
    EXPECT_EQ(App.ControlsEdit.PendingGamepad, before.PendingGamepad);
    EXPECT_EQ(App.ControlsEdit.PendingJoystick, before.PendingJoystick);
    EXPECT_FALSE(App.Capture.CaptureActive);
}

TEST_P(ButtonTest, ACaptureTakesOneButton) {
    Bind(InputAction::MenuConfirm, 15);
    Capture(GetParam().CaptureDevice, 0);
    EXPECT_EQ(Press(15), Presses{}) << "The button is taken, not pressed.";
    EXPECT_EQ(Press(11), Presses{});
    const bool isGamepad = GetParam().Device == InputDevice::Gamepad;
    EXPECT_EQ(Table()[Index(isGamepad ? InputAction::CursorUp : InputAction::RotateLeft)], 15);
}

TEST_P(ButtonTest, ACaptureWithARowOutOfRangeEndsAndStoresNothing) {
    for (const std::int32_t row : {-1, 10, std::numeric_limits<std::int32_t>::max()}) {
        const std::array<std::int32_t, ActionCount> before = Table();
        Capture(GetParam().CaptureDevice, row);
        EXPECT_EQ(Press(13), Presses{});
        EXPECT_EQ(Table(), before);
        EXPECT_FALSE(App.Capture.CaptureActive);
    }
}

TEST_P(ButtonTest, ACaptureForAnotherDeviceTranslatesTheButton) {
    Bind(InputAction::MenuConfirm, 15);
    const bool isGamepad = GetParam().Device == InputDevice::Gamepad;
    for (const CaptureDevice device :
         {CaptureDevice::None, CaptureDevice::Keyboard,
          isGamepad ? CaptureDevice::Joystick : CaptureDevice::Gamepad}) {
        Capture(device, 0);
        EXPECT_EQ(Press(15), Presses{Press::Confirm});
        EXPECT_TRUE(App.Capture.CaptureActive);
    }
}

TEST_P(ButtonTest, ACaptureCountsOnlyOnTheOptionsScreenAndWhileActive) {
    Bind(InputAction::MenuConfirm, 15);
    Capture(GetParam().CaptureDevice, 0);
    App.Screen = AppScreen::MainMenu;
    EXPECT_EQ(Press(15), Presses{Press::Confirm});
    App.Screen = AppScreen::Options;
    App.Capture.CaptureActive = false;
    EXPECT_EQ(Press(15), Presses{Press::Confirm});
}

TEST_F(InputSamplingTest, TheHighestJoystickButtonCanBeCaptured) {
    const VirtualJoystick joystick;
    Pump();
    Capture(CaptureDevice::Joystick, 0);
    SDL_Event event = {};
    event.jbutton.type = SDL_EVENT_JOYSTICK_BUTTON_DOWN;
    event.jbutton.which = joystick.Id;
    event.jbutton.button = 255;
    ASSERT_TRUE(SDL_PushEvent(&event));
    Pump();
    EXPECT_EQ(App.JoystickBindings[Index(InputAction::RotateLeft)], 255);
}

TEST_F(InputSamplingTest, AGamepadButtonThatCannotBeBoundEndsTheCaptureAllTheSame) {
    const VirtualGamepad gamepad;
    Pump();
    Capture(CaptureDevice::Gamepad, 0);
    SDL_Event event = {};
    event.gbutton.type = SDL_EVENT_GAMEPAD_BUTTON_DOWN;
    event.gbutton.which = gamepad.Id;
    event.gbutton.button = 26;
    ASSERT_TRUE(SDL_PushEvent(&event));
    EXPECT_EQ(Pump(), Presses{});
    EXPECT_EQ(App.GamepadBindings, FactoryBindings::Gamepad);
    EXPECT_FALSE(App.Capture.CaptureActive);
}

// Everything else

TEST_F(InputSamplingTest, MouseTouchTextAndWindowsAreNoInput) {
    for (const SDL_EventType type :
         {SDL_EVENT_MOUSE_MOTION, SDL_EVENT_MOUSE_BUTTON_DOWN, SDL_EVENT_MOUSE_WHEEL,
          SDL_EVENT_FINGER_DOWN, SDL_EVENT_TEXT_INPUT, SDL_EVENT_WINDOW_RESIZED,
          SDL_EVENT_WINDOW_FOCUS_LOST, SDL_EVENT_WINDOW_CLOSE_REQUESTED,
          SDL_EVENT_GAMEPAD_BUTTON_UP, SDL_EVENT_JOYSTICK_BUTTON_UP, SDL_EVENT_USER}) {
        SDL_Event event = {};
        event.type = type;
        App.LastInputDevice = InputDevice::Joystick;
        EXPECT_EQ(PressFromEvent(App, Controllers, event), Press::None) << type;
        EXPECT_EQ(App.LastInputDevice, InputDevice::Joystick) << type;
    }
}

TEST_F(InputSamplingTest, SeveralPressesOfAFrameKeepTheirOrder) {
    VirtualGamepad gamepad;
    Pump();
    for (const SDL_Scancode key : {SDL_SCANCODE_LEFT, SDL_SCANCODE_Q, SDL_SCANCODE_RETURN}) {
        PushKey(key);
    }
    EXPECT_EQ(Pump(), (Presses{Press::Left, Press::RotateLeft, Press::Confirm}));
}

TEST_F(InputSamplingTest, AnEventAllocatesNothing) {
    VirtualGamepad gamepad;
    VirtualJoystick joystick;
    Pump();
    const auto allocationsOf = [this](const SDL_Event& event) {
        return Testing::AllocationsOf([&] { PressFromEvent(App, Controllers, event); });
    };
    SDL_Event event = {};
    event.key.type = SDL_EVENT_KEY_DOWN;
    event.key.scancode = SDL_SCANCODE_UP;
    EXPECT_EQ(allocationsOf(event), 0U);
    event = {};
    event.gbutton.type = SDL_EVENT_GAMEPAD_BUTTON_DOWN;
    event.gbutton.which = gamepad.Id;
    EXPECT_EQ(allocationsOf(event), 0U);
    event = {};
    event.jaxis.type = SDL_EVENT_JOYSTICK_AXIS_MOTION;
    event.jaxis.which = joystick.Id;
    event.jaxis.value = 32767;
    EXPECT_EQ(allocationsOf(event), 0U);
}

} // namespace

} // namespace Wirefall
