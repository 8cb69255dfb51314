#include "options/BindingRows.h"

#include "words/Localization.h"

#include <SDL3/SDL_gamepad.h>
#include <SDL3/SDL_scancode.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace Wirefall {

namespace {

constexpr std::int32_t Largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Smallest = std::numeric_limits<std::int32_t>::min();

TEST(FactoryBindingsTest, KeyboardPlaysWithArrowsQEReturnAndShift) {
    EXPECT_EQ(
        FactoryBindings::Keyboard,
        (KeyboardTable{SDL_SCANCODE_UP, SDL_SCANCODE_DOWN, SDL_SCANCODE_LEFT, SDL_SCANCODE_RIGHT,
                       SDL_SCANCODE_Q, SDL_SCANCODE_E, SDL_SCANCODE_RETURN, SDL_SCANCODE_LSHIFT}));
}

TEST(FactoryBindingsTest, GamepadSteersWithItsDirectionalPad) {
    EXPECT_EQ(FactoryBindings::Gamepad,
              (GamepadTable{SDL_GAMEPAD_BUTTON_DPAD_UP, SDL_GAMEPAD_BUTTON_DPAD_DOWN,
                            SDL_GAMEPAD_BUTTON_DPAD_LEFT, SDL_GAMEPAD_BUTTON_DPAD_RIGHT,
                            SDL_GAMEPAD_BUTTON_LEFT_SHOULDER, SDL_GAMEPAD_BUTTON_RIGHT_SHOULDER,
                            SDL_GAMEPAD_BUTTON_SOUTH, SDL_GAMEPAD_BUTTON_NORTH,
                            SDL_GAMEPAD_BUTTON_SOUTH, SDL_GAMEPAD_BUTTON_EAST}));
}

TEST(FactoryBindingsTest, JoystickHasNoButtonsForTheCursor) {
    EXPECT_EQ(FactoryBindings::Joystick, (JoystickTable{-1, -1, -1, -1, 1, 2, 0, 4, 0, 3}));
}

TEST(FactoryBindingsTest, DevicesAndActionsKeepTheirNumbers) {
    EXPECT_EQ(static_cast<int>(ControlsDevice::Keyboard), 0);
    EXPECT_EQ(static_cast<int>(ControlsDevice::Gamepad), 1);
    EXPECT_EQ(static_cast<int>(ControlsDevice::Joystick), 2);
    static_assert(std::is_same_v<std::underlying_type_t<ControlsDevice>, std::int32_t>);
    EXPECT_EQ(ActionIndex(InputAction::CursorUp), 0U);
    EXPECT_EQ(ActionIndex(InputAction::FastForward), 7U);
    EXPECT_EQ(ActionIndex(InputAction::MenuBack), 9U);
}

TEST(RowTest, KeyboardAndGamepadRowsAreTheActionsInOrder) {
    for (std::size_t row = 0; row < KeyboardRows.size(); ++row) {
        EXPECT_EQ(ActionIndex(KeyboardRows[row]), row);
    }
    for (std::size_t row = 0; row < GamepadRows.size(); ++row) {
        EXPECT_EQ(ActionIndex(GamepadRows[row]), row);
    }
}

TEST(RowTest, JoystickRowsBeginWithRotatingAndEndWithTheCursor) {
    for (std::size_t row = 0; row < JoystickRows.size(); ++row) {
        EXPECT_EQ(ActionIndex(JoystickRows[row]), row <= 5 ? row + 4 : row - 6);
    }
}

TEST(RowTest, AJoystickShowsSixOfItsRows) {
    EXPECT_EQ(ShownRowCount(ControlsDevice::Keyboard), 8);
    EXPECT_EQ(ShownRowCount(ControlsDevice::Gamepad), 10);
    EXPECT_EQ(ShownRowCount(ControlsDevice::Joystick), 6);
    EXPECT_EQ(ShownRowCount(static_cast<ControlsDevice>(3)), 6) << "as a joystick";
    EXPECT_EQ(ShownRowCount(static_cast<ControlsDevice>(-1)), 6);
}

// Keyboard

TEST(KeyboardBindingTest, EachRowStoresIntoItsOwnElement) {
    for (std::int32_t row = 0; row < 8; ++row) {
        KeyboardTable table = {};
        SetKeyboardBinding(table, row, 100);
        KeyboardTable wanted = {};
        wanted[static_cast<std::size_t>(row)] = 100;
        EXPECT_EQ(table, wanted) << row;
    }
}

TEST(KeyboardBindingTest, OnlyScancodesOfKeysAreStored) {
    KeyboardTable table = FactoryBindings::Keyboard;
    for (const std::uint32_t bad : {0U, 512U, 0xFFFFFFFFU}) {
        SetKeyboardBinding(table, 0, bad);
        EXPECT_EQ(table, FactoryBindings::Keyboard) << bad;
    }
    SetKeyboardBinding(table, 0, 1);
    EXPECT_EQ(table[0], 1U);
    SetKeyboardBinding(table, 0, 511);
    EXPECT_EQ(table[0], 511U);
}

TEST(KeyboardBindingTest, ClearingUnbindsTheRow) {
    KeyboardTable table = FactoryBindings::Keyboard;
    ClearKeyboardBinding(table, 6);
    KeyboardTable wanted = FactoryBindings::Keyboard;
    wanted[6] = 0;
    EXPECT_EQ(table, wanted);
}

TEST(KeyboardBindingTest, RowsOutsideTheTableAreLeftAlone) {
    KeyboardTable table = FactoryBindings::Keyboard;
    for (const std::int32_t row : {-1, 8, 9, Smallest, Largest}) {
        SetKeyboardBinding(table, row, 100);
        ClearKeyboardBinding(table, row);
        EXPECT_EQ(table, FactoryBindings::Keyboard) << row;
        EXPECT_EQ(KeyboardRowValue(table, row), 0U) << row;
    }
}

TEST(KeyboardBindingTest, ARowShowsItsElement) {
    EXPECT_EQ(KeyboardRowValue(FactoryBindings::Keyboard, 0), 82U);
    EXPECT_EQ(KeyboardRowValue(FactoryBindings::Keyboard, 7), 225U);
}

// Gamepad

TEST(GamepadBindingTest, EachRowStoresIntoItsOwnElement) {
    for (std::int32_t row = 0; row < 10; ++row) {
        GamepadTable table = {};
        SetGamepadBinding(table, row, 20);
        GamepadTable wanted = {};
        wanted[static_cast<std::size_t>(row)] = 20;
        EXPECT_EQ(table, wanted) << row;
    }
}

TEST(GamepadBindingTest, ButtonsAbove25AreRefused) {
    GamepadTable table = FactoryBindings::Gamepad;
    SetGamepadBinding(table, 0, 26);
    SetGamepadBinding(table, 0, Largest);
    EXPECT_EQ(table, FactoryBindings::Gamepad);
    SetGamepadBinding(table, 0, 25);
    EXPECT_EQ(table[0], 25);
}

TEST(GamepadBindingTest, NegativeButtonsAreStored) {
    GamepadTable table = FactoryBindings::Gamepad;
    SetGamepadBinding(table, 0, -1);
    EXPECT_EQ(table[0], -1);
    SetGamepadBinding(table, 0, Smallest);
    EXPECT_EQ(table[0], Smallest);
}

TEST(GamepadBindingTest, ClearingUnbindsTheRow) {
    GamepadTable table = FactoryBindings::Gamepad;
    ClearGamepadBinding(table, 9);
    GamepadTable wanted = FactoryBindings::Gamepad;
    wanted[9] = -1;
    EXPECT_EQ(table, wanted);
}

TEST(GamepadBindingTest, RowsOutsideTheTableAreLeftAloneAndShowTheFirst) {
    GamepadTable table = FactoryBindings::Gamepad;
    for (const std::int32_t row : {-1, 10, Smallest, Largest}) {
        SetGamepadBinding(table, row, 20);
        ClearGamepadBinding(table, row);
        EXPECT_EQ(table, FactoryBindings::Gamepad) << row;
        EXPECT_EQ(GamepadRowValue(table, row), 11) << row;
    }
    EXPECT_EQ(GamepadRowValue(table, 0), 11);
    EXPECT_EQ(GamepadRowValue(table, 9), 1);
}

// Joystick

TEST(JoystickBindingTest, TheFirstRowIsRotateLeft) {
    JoystickTable table = FactoryBindings::Joystick;
    SetJoystickBinding(table, 0, 77);
    EXPECT_EQ(table[ActionIndex(InputAction::RotateLeft)], 77);
    EXPECT_EQ(table[ActionIndex(InputAction::CursorUp)], -1);
}

TEST(JoystickBindingTest, EachRowStoresAndShowsTheRotatedElement) {
    for (std::int32_t row = 0; row < 10; ++row) {
        const auto element = static_cast<std::size_t>(row <= 5 ? row + 4 : row - 6);
        JoystickTable table = {};
        SetJoystickBinding(table, row, 77);
        JoystickTable wanted = {};
        wanted[element] = 77;
        EXPECT_EQ(table, wanted) << row;
        EXPECT_EQ(JoystickRowValue(table, row), 77) << row;
        ClearJoystickBinding(table, row);
        wanted[element] = -1;
        EXPECT_EQ(table, wanted) << row;
    }
}

TEST(JoystickBindingTest, AnyButtonIsStored) {
    JoystickTable table = FactoryBindings::Joystick;
    for (const std::int32_t button : {26, 1000, Largest, -1, Smallest}) {
        SetJoystickBinding(table, 0, button);
        EXPECT_EQ(table[4], button);
    }
}

TEST(JoystickBindingTest, RowsOutsideTheTableAreLeftAloneAndShowTheFirst) {
    JoystickTable table = FactoryBindings::Joystick;
    for (const std::int32_t row : {-1, 10, Smallest, Largest}) {
        SetJoystickBinding(table, row, 77);
        ClearJoystickBinding(table, row);
        EXPECT_EQ(table, FactoryBindings::Joystick) << row;
        EXPECT_EQ(JoystickRowValue(table, row), 1) << row;
    }
}

class ActionLabels : public testing::Test {
protected:
    ActionLabels() { LocalizationCatalog = {}; }
};

TEST_F(ActionLabels, NameTheActionsOfEachDevice) {
    EXPECT_EQ(ActionLabel(ControlsDevice::Keyboard, 0), "CURSOR UP");
    EXPECT_EQ(ActionLabel(ControlsDevice::Keyboard, 7), "FAST FORWARD");
    EXPECT_EQ(ActionLabel(ControlsDevice::Gamepad, 6), "PLACE TILE");
    EXPECT_EQ(ActionLabel(ControlsDevice::Gamepad, 9), "MENU BACK");
}

TEST_F(ActionLabels, BeginAJoysticksTableWithRotation) {
    constexpr auto Labels =
        std::to_array({"ROTATE LEFT", "ROTATE RIGHT", "PLACE TILE", "FAST FORWARD", "MENU CONFIRM",
                       "MENU BACK", "CURSOR UP", "CURSOR DOWN", "CURSOR LEFT", "CURSOR RIGHT"});
    for (std::size_t i = 0; i < Labels.size(); ++i) {
        EXPECT_EQ(ActionLabel(ControlsDevice::Joystick, static_cast<std::int32_t>(i)), Labels[i]);
    }
}

TEST_F(ActionLabels, NameNoActionOutsideTheTable) {
    EXPECT_EQ(ActionLabel(ControlsDevice::Keyboard, 8), "");
    EXPECT_EQ(ActionLabel(ControlsDevice::Keyboard, -1), "");
    EXPECT_EQ(ActionLabel(ControlsDevice::Gamepad, 10), "");
    EXPECT_EQ(ActionLabel(ControlsDevice::Joystick, 10), "");
    EXPECT_EQ(ActionLabel(static_cast<ControlsDevice>(3), 0), "ROTATE LEFT") << "as a joystick";
}

TEST_F(ActionLabels, SpeakThePlayersLanguage) {
    LocalizationCatalog.Texts["Action.Place"] = "SETZEN";
    EXPECT_EQ(ActionLabel(ControlsDevice::Joystick, 2), "SETZEN");
}

} // namespace

} // namespace Wirefall
