#include "game/GameApp.h"
#include "options/ControlsPage.h"
#include "support/SameApp.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace Wirefall {

namespace {

TEST(ControlsEditTest, BeginsWithTheLiveBindings) {
    GameApp app;
    app.KeyboardBindings[0] = 100;
    app.GamepadBindings[1] = 20;
    app.JoystickBindings[2] = 77;
    app.ControlsDevice = ControlsDevice::Joystick;
    BeginControlsEdit(app);
    EXPECT_EQ(app.ControlsEdit.PendingKeyboard, app.KeyboardBindings);
    EXPECT_EQ(app.ControlsEdit.PendingGamepad, app.GamepadBindings);
    EXPECT_EQ(app.ControlsEdit.PendingJoystick, app.JoystickBindings);
    EXPECT_EQ(app.ControlsEdit.PendingDevice, ControlsDevice::Joystick);
    EXPECT_TRUE(app.ControlsEdit.PendingValid);
    EXPECT_FALSE(ControlsEditIsDirty(app));
}

TEST(ControlsEditTest, BeginningEndsACapture) {
    GameApp app;
    app.Capture.CaptureActive = true;
    app.Capture.CaptureDevice = CaptureDevice::Gamepad;
    app.Capture.CaptureGamepadRow = 7;
    BeginControlsEdit(app);
    EXPECT_FALSE(app.Capture.CaptureActive);
    EXPECT_EQ(app.Capture.CaptureDevice, CaptureDevice::None);
}

TEST(ControlsEditTest, BeginningAgainDropsTheChanges) {
    GameApp app;
    BeginControlsEdit(app);
    app.ControlsEdit.PendingKeyboard[3] = 5;
    app.ControlsEdit.PendingDevice = ControlsDevice::Gamepad;
    BeginControlsEdit(app);
    EXPECT_EQ(app.ControlsEdit.PendingKeyboard, FactoryBindings::Keyboard);
    EXPECT_EQ(app.ControlsEdit.PendingDevice, ControlsDevice::Keyboard);
}

TEST(ControlsEditTest, EachOfThe28ElementsMakesItDirty) {
    for (std::size_t i = 0; i < KeyboardActionCount; ++i) {
        GameApp app;
        BeginControlsEdit(app);
        app.ControlsEdit.PendingKeyboard[i] = 0;
        EXPECT_TRUE(ControlsEditIsDirty(app)) << i;
    }
    for (std::size_t i = 0; i < ActionCount; ++i) {
        GameApp app;
        BeginControlsEdit(app);
        app.ControlsEdit.PendingGamepad[i] = 25;
        EXPECT_TRUE(ControlsEditIsDirty(app)) << i;
        BeginControlsEdit(app);
        app.ControlsEdit.PendingJoystick[i] = 99;
        EXPECT_TRUE(ControlsEditIsDirty(app)) << i;
    }
}

TEST(ControlsEditTest, AChangeOfDeviceAloneMakesItDirty) {
    GameApp app;
    BeginControlsEdit(app);
    app.ControlsEdit.PendingDevice = ControlsDevice::Gamepad;
    EXPECT_TRUE(ControlsEditIsDirty(app));
}

TEST(ControlsEditTest, IsNeverDirtyWhileThereIsNone) {
    GameApp app;
    ASSERT_FALSE(app.ControlsEdit.PendingValid);
    app.ControlsEdit.PendingKeyboard = {};
    app.ControlsEdit.PendingGamepad = {};
    app.ControlsEdit.PendingJoystick = {};
    app.ControlsEdit.PendingDevice = ControlsDevice::Joystick;
    EXPECT_FALSE(ControlsEditIsDirty(app));
}

TEST(ControlsEditTest, TheFactorySettingsAreThoseOfAllDevices) {
    GameApp app;
    app.KeyboardBindings = {};
    app.GamepadBindings = {};
    app.JoystickBindings = {};
    app.ControlsDevice = ControlsDevice::Joystick;
    BeginControlsEdit(app);
    GameApp expected = app;
    expected.ControlsEdit = {.PendingKeyboard = FactoryBindings::Keyboard,
                             .PendingGamepad = FactoryBindings::Gamepad,
                             .PendingJoystick = FactoryBindings::Joystick,
                             .PendingDevice = ControlsDevice::Keyboard,
                             .PendingValid = true};
    ResetControlsEdit(app);
    EXPECT_TRUE(Testing::SameApp(expected, app));
}

TEST(ControlsEditTest, ApplyingMakesTheChangesLive) {
    GameApp app;
    BeginControlsEdit(app);
    app.ControlsEdit.PendingKeyboard[2] = 7;
    app.ControlsEdit.PendingGamepad[3] = UnboundButton;
    app.ControlsEdit.PendingJoystick[4] = 99;
    app.ControlsEdit.PendingDevice = ControlsDevice::Gamepad;
    GameApp expected = app;
    expected.KeyboardBindings[2] = 7;
    expected.GamepadBindings[3] = UnboundButton;
    expected.JoystickBindings[4] = 99;
    expected.ControlsDevice = ControlsDevice::Gamepad;
    expected.OptionsDirty = true;
    ApplyControlsEdit(app);
    EXPECT_TRUE(Testing::SameApp(expected, app));
}

TEST(ControlsEditTest, ApplyingNothingSavesNothing) {
    GameApp app;
    BeginControlsEdit(app);
    const GameApp before = app;
    ApplyControlsEdit(app);
    EXPECT_TRUE(Testing::SameApp(before, app));
    app.ControlsEdit.PendingValid = false;
    ApplyControlsEdit(app);
    EXPECT_TRUE(Testing::SameApp(before, app)) << "the edit begins anew";
}

TEST(ControlsEditTest, EditsGoToTheWorkingCopyOnceThereIsOne) {
    const auto bindOnEachDevice = [](GameApp& app, std::int32_t number) {
        app.Capture = {.CaptureActive = true, .CaptureDevice = CaptureDevice::Keyboard};
        PressDuringCapture(app, static_cast<PressCode>(number));
        CaptureButton(app, InputDevice::Gamepad, number);
        CaptureButton(app, InputDevice::Joystick, number);
    };
    constexpr std::size_t FirstJoystickRow = ActionIndex(InputAction::RotateLeft);
    GameApp app;
    bindOnEachDevice(app, 4);
    EXPECT_EQ(app.KeyboardBindings[0], 4U);
    EXPECT_EQ(app.GamepadBindings[0], 4);
    EXPECT_EQ(app.JoystickBindings[FirstJoystickRow], 4);

    BeginControlsEdit(app);
    bindOnEachDevice(app, 5);
    EXPECT_EQ(app.ControlsEdit.PendingKeyboard[0], 5U);
    EXPECT_EQ(app.ControlsEdit.PendingGamepad[0], 5);
    EXPECT_EQ(app.ControlsEdit.PendingJoystick[FirstJoystickRow], 5);
    EXPECT_EQ(app.KeyboardBindings[0], 4U) << "the live ones wait for Apply";
    EXPECT_EQ(app.GamepadBindings[0], 4);
    EXPECT_EQ(app.JoystickBindings[FirstJoystickRow], 4);
}

} // namespace

} // namespace Wirefall
