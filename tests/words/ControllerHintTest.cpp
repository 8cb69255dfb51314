#include "words/ControllerHint.h"

#include "support/Scenes.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

namespace Wirefall {

namespace {

using Testing::UseGamepad;
using Testing::UseJoystick;

class ControllerHint : public testing::Test {
protected:
    ControllerHint() { LocalizationCatalog = {}; }
    void TearDown() override { LocalizationCatalog = {}; }

    std::string Hint(std::string_view select, std::string_view back) const {
        return BuildControllerHint(World.App, World.Controllers, select, back);
    }

    Testing::SceneWorld World;
    GameApp& App = World.App;
};

TEST_F(ControllerHint, IsEmptyForAKeyboard) {
    EXPECT_EQ(Hint("SELECT", "BACK"), "");
    UseGamepad(World);
    UseJoystick(World);
    App.LastInputDevice = InputDevice::Keyboard;
    EXPECT_EQ(Hint("SELECT", "BACK"), "");
}

TEST_F(ControllerHint, IsEmptyWhenTheDeviceThatPressedLastIsGone) {
    UseJoystick(World);
    App.LastInputDevice = InputDevice::Gamepad;
    EXPECT_EQ(Hint("SELECT", "BACK"), "");
    UseGamepad(World);
    World.Controllers.Joystick = nullptr;
    App.LastInputDevice = InputDevice::Joystick;
    EXPECT_EQ(Hint("SELECT", "BACK"), "");
    App.LastInputDevice = static_cast<InputDevice>(3);
    EXPECT_EQ(Hint("SELECT", "BACK"), "");
}

TEST_F(ControllerHint, NamesTheButtonsOfAGamepad) {
    UseGamepad(World);
    EXPECT_EQ(Hint("SELECT", "RESUME"), "PAD A SELECT B RESUME");
    App.GamepadBindings[ActionIndex(InputAction::MenuConfirm)] = 6;
    App.GamepadBindings[ActionIndex(InputAction::MenuBack)] = UnboundButton;
    EXPECT_EQ(Hint("SELECT", "RESUME"), "PAD START SELECT UNBOUND RESUME");
}

TEST_F(ControllerHint, NamesTheButtonsOfAJoystick) {
    UseJoystick(World);
    EXPECT_EQ(Hint("SELECT", "RESUME"), "JOY BUTTON 0 SELECT BUTTON 3 RESUME");
    App.JoystickBindings[ActionIndex(InputAction::MenuConfirm)] = 300;
    App.JoystickBindings[ActionIndex(InputAction::MenuBack)] = UnboundButton;
    EXPECT_EQ(Hint("SELECT", "RESUME"), "JOY BUTTON 300 SELECT UNBOUND RESUME");
}

TEST_F(ControllerHint, SaysOnceWhatBothButtonsDo) {
    UseGamepad(World);
    EXPECT_EQ(Hint("CONTINUE", "CONTINUE"), "PAD A OR B CONTINUE");
    EXPECT_EQ(Hint("CONTINUE", "continue"), "PAD A CONTINUE B continue");
}

TEST_F(ControllerHint, HasWordsOfItsOwnForEmptyLabels) {
    UseGamepad(World);
    EXPECT_EQ(Hint("", ""), "PAD A SELECT B BACK");
    EXPECT_EQ(Hint("", "SELECT"), "PAD A OR B SELECT");
    EXPECT_EQ(Hint("BACK", ""), "PAD A OR B BACK");
}

TEST_F(ControllerHint, IsInTheLanguageOfTheGame) {
    UseGamepad(World);
    LocalizationCatalog.Texts = {{"Controller.Hint.PadPrefix", "GERÄT"},
                                 {"Controller.Hint.Or", "ODER"},
                                 {"Controller.Hint.Select", "WÄHLEN"},
                                 {"Controller.Hint.Back", "ZURÜCK"}};
    EXPECT_EQ(Hint("", ""), "GERÄT A WÄHLEN B ZURÜCK");
    EXPECT_EQ(Hint("WEITER", "WEITER"), "GERÄT A ODER B WEITER");
}

} // namespace

} // namespace Wirefall
