#include "words/CommandHints.h"

#include "words/BindingLabels.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>

namespace Wirefall {

namespace {

class Hints : public testing::Test {
protected:
    Hints() { LocalizationCatalog = {}; }

    // Hints only ask whether a device is open; nobody talks to it.
    void OpenGamepad() { Controllers.Gamepad = reinterpret_cast<SDL_Gamepad*>(&StandIn); }
    void OpenJoystick() { Controllers.Joystick = reinterpret_cast<SDL_Joystick*>(&StandIn); }

    CommandHints Build() const { return BuildCommandHints(App, Controllers); }

    int StandIn = 0;
    InputState App;
    ControllerSet Controllers;
};

TEST_F(Hints, TellTheKeysOfTheKeyboard) {
    EXPECT_EQ(Build(), (CommandHints{.Move = "MOVE UP/DN/LT/RT",
                                     .Rotate = "ROTATE Q/E",
                                     .Place = "PLACE ENT",
                                     .FastForward = "FAST FORWARD LEFTSH",
                                     .Menu = "ESC MENU"}));
}

TEST_F(Hints, NameEnterBesideAnotherKeyForPlacing) {
    App.KeyboardBindings[ActionIndex(InputAction::Place)] = 44;
    EXPECT_EQ(Build().Place, "PLACE SPC/ENT");
    App.KeyboardBindings[ActionIndex(InputAction::Place)] = 88;
    EXPECT_EQ(Build().Place, "PLACE ENT");
    App.KeyboardBindings[ActionIndex(InputAction::Place)] = UnboundKey;
    EXPECT_EQ(Build().Place, "PLACE UNB/ENT");
}

TEST_F(Hints, TellTheButtonsOfTheGamepadThatPressedLast) {
    OpenGamepad();
    App.LastInputDevice = InputDevice::Gamepad;
    EXPECT_EQ(Build(), (CommandHints{.Move = "MOVE D-PAD/STICK",
                                     .Rotate = "ROTATE LB/RB",
                                     .Place = "PLACE A",
                                     .FastForward = "FAST FORWARD Y",
                                     .Menu = "B MENU"}));
}

TEST_F(Hints, TellAllFourButtonsOnceOneCursorButtonIsRebound) {
    OpenGamepad();
    App.LastInputDevice = InputDevice::Gamepad;
    App.GamepadBindings[ActionIndex(InputAction::CursorRight)] = UnboundButton;
    EXPECT_EQ(Build().Move, "MOVE DUP/DDN/DLT/UNB");
    App.GamepadBindings = FactoryBindings::Gamepad;
    std::swap(App.GamepadBindings[0], App.GamepadBindings[1]);
    EXPECT_EQ(Build().Move, "MOVE DDN/DUP/DLT/DRT");
}

TEST_F(Hints, TellTheButtonsOfTheJoystickThatPressedLast) {
    OpenJoystick();
    App.LastInputDevice = InputDevice::Joystick;
    EXPECT_EQ(Build(), (CommandHints{.Move = "MOVE STICK/HAT",
                                     .Rotate = "ROTATE B1/B2",
                                     .Place = "PLACE B0",
                                     .FastForward = "FAST FORWARD B4",
                                     .Menu = "B3 MENU"}));
}

TEST_F(Hints, ReturnToTheKeyboardWhenTheDeviceIsGone) {
    const CommandHints keyboard = Build();
    App.LastInputDevice = InputDevice::Joystick;
    EXPECT_EQ(Build(), keyboard);
    App.LastInputDevice = InputDevice::Gamepad;
    EXPECT_EQ(Build(), keyboard);
    OpenJoystick();
    EXPECT_EQ(Build(), keyboard) << "the gamepad pressed last, and only a joystick is open";
}

TEST_F(Hints, SpeakThePlayersLanguage) {
    LocalizationCatalog.Texts["Hud.Command.Move"] = "BEWEGEN";
    LocalizationCatalog.Texts["Controller.Hint.Menu"] = "MENÜ";
    EXPECT_EQ(Build().Move, "BEWEGEN UP/DN/LT/RT");
    EXPECT_EQ(Build().Menu, "ESC MENÜ");
}

TEST_F(Hints, ShortenTheNamesOfKeys) {
    EXPECT_EQ(ShortKeyLabel(40), "ENT");
    EXPECT_EQ(ShortKeyLabel(88), "ENT");
    EXPECT_EQ(ShortKeyLabel(41), "ESC");
    EXPECT_EQ(ShortKeyLabel(44), "SPC");
    EXPECT_EQ(ShortKeyLabel(79), "RT");
    EXPECT_EQ(ShortKeyLabel(80), "LT");
    EXPECT_EQ(ShortKeyLabel(81), "DN");
    EXPECT_EQ(ShortKeyLabel(82), "UP");
    EXPECT_EQ(ShortKeyLabel(20), "Q");
    EXPECT_EQ(ShortKeyLabel(225), "LEFTSH");
}

TEST_F(Hints, CallKeysOutsideTheKeyboardUnbound) {
    EXPECT_EQ(ShortKeyLabel(0), "UNB");
    EXPECT_EQ(ShortKeyLabel(512), "UNB");
    EXPECT_EQ(ShortKeyLabel(std::numeric_limits<std::uint32_t>::max()), "UNB");
}

TEST_F(Hints, NumberAKeyWithoutAName) { EXPECT_EQ(ShortKeyLabel(511), "SCANCO"); }

TEST_F(Hints, ShortenTheNamesOfGamepadButtons) {
    constexpr const char* Labels[] = {"A",  "B",  "X",  "Y",   "BACK", "GUIDE", "START", "L3",
                                      "R3", "LB", "RB", "DUP", "DDN",  "DLT",   "DRT"};
    for (std::int32_t button = 0; button < 15; ++button) {
        EXPECT_EQ(ShortPadLabel(button), Labels[button]) << button;
    }
    EXPECT_EQ(ShortPadLabel(15), "MISC1");
    EXPECT_EQ(ShortPadLabel(16), "PADDLE");
    EXPECT_EQ(ShortPadLabel(25), "MISC6");
    EXPECT_EQ(ShortPadLabel(26), "UNB");
    EXPECT_EQ(ShortPadLabel(-1), "UNB");
}

TEST_F(Hints, NumberJoystickButtons) {
    EXPECT_EQ(ShortJoyLabel(0), "B0");
    EXPECT_EQ(ShortJoyLabel(std::numeric_limits<std::int32_t>::max()), "B2147483647");
    EXPECT_EQ(ShortJoyLabel(-1), "UNB");
}

TEST_F(Hints, CompressALabelToSixBytes) {
    EXPECT_EQ(CompressLabel("left shift"), "LEFTSH");
    EXPECT_EQ(CompressLabel("ä b"), "ÄB");
    EXPECT_EQ(CompressLabel("abcdeä"), "ABCDE\xc3");
    EXPECT_EQ(CompressLabel("\t"), "\t");
    EXPECT_EQ(CompressLabel("   "), "UNB");
    EXPECT_EQ(CompressLabel(""), "UNB");
}

class BindingTexts : public Hints {};

TEST_F(BindingTexts, NameKeysInCapitals) {
    EXPECT_EQ(KeyboardBindingText(20), "Q");
    EXPECT_EQ(KeyboardBindingText(225), "LEFT SHIFT");
    EXPECT_EQ(KeyboardBindingText(511), "SCANCODE 511");
    EXPECT_EQ(KeyboardBindingText(0), "UNBOUND");
    EXPECT_EQ(KeyboardBindingText(512), "UNBOUND");
}

TEST_F(BindingTexts, NameGamepadButtonsInCapitals) {
    EXPECT_EQ(GamepadBindingText(0), "A");
    EXPECT_EQ(GamepadBindingText(9), "LEFTSHOULDER");
    EXPECT_EQ(GamepadBindingText(25), "MISC6");
    EXPECT_EQ(GamepadBindingText(-1), "UNBOUND");
    EXPECT_EQ(GamepadBindingText(26), "UNBOUND");
}

TEST_F(BindingTexts, NumberJoystickButtons) {
    EXPECT_EQ(JoystickBindingText(0), "BUTTON 0");
    EXPECT_EQ(JoystickBindingText(1000), "BUTTON 1000");
    EXPECT_EQ(JoystickBindingText(-1), "UNBOUND");
}

TEST_F(BindingTexts, SpeakThePlayersLanguage) {
    LocalizationCatalog.Texts["Controls.ButtonPrefix"] = "KNOPF";
    LocalizationCatalog.Texts["Controls.ScancodePrefix"] = "TASTE";
    LocalizationCatalog.Texts["Controls.Unbound"] = "FREI";
    EXPECT_EQ(JoystickBindingText(2), "KNOPF 2");
    EXPECT_EQ(KeyboardBindingText(511), "TASTE 511");
    EXPECT_EQ(GamepadBindingText(-1), "FREI");
}

TEST(HudHintLines, ReplaceEmptyLinesByTheirDefaults) {
    StoreHudHintLines("", "", "", "", "");
    EXPECT_EQ(HudHintLines().Rows(),
              (std::array<std::string, 5>{"MOVE D-PAD/STICK", "ROTATE LEFT/RIGHT", "PLACE TILE",
                                          "FAST FORWARD SHIFT/RT", "ESC MENU"}));
    StoreHudHintLines("a", "b", "", "d", "e");
    EXPECT_EQ(HudHintLines().Rows(),
              (std::array<std::string, 5>{"a", "b", "PLACE TILE", "d", "e"}));
}

TEST(HudHintLines, MayBeStoredFromThemselves) {
    StoreHudHintLines("a", "b", "c", "d", "e");
    const auto& lines = HudHintLines().Rows();
    StoreHudHintLines(lines[4], lines[3], lines[2], lines[1], lines[0]);
    EXPECT_EQ(HudHintLines().Rows(), (std::array<std::string, 5>{"e", "d", "c", "b", "a"}));
}

} // namespace

} // namespace Wirefall
