#include "options/OptionsScreen.h"
#include "support/Scenes.h"

#include <SDL3/SDL_scancode.h>
#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace Wirefall {

bool operator==(const OptionRow& a, const OptionRow& b) {
    return a.Label == b.Label && a.Value == b.Value;
}

void PrintTo(const OptionRow& row, std::ostream* out) { *out << row.Label << " = " << row.Value; }

namespace {

using Rows = std::vector<OptionRow>;

class OptionsPages : public testing::Test {
protected:
    OptionsPages() { LocalizationCatalog = {}; }
    void TearDown() override { LocalizationCatalog = {}; }

    OptionsPageTexts Page(OptionsPage page) {
        App.OptionsPage = page;
        return CollectOptionsPage(App, World.Controllers);
    }
    OptionRow RowOf(OptionsPage page, std::size_t row) { return Page(page).Rows.at(row); }

    void EditControlsOf(ControlsDevice device) {
        App.ControlsEdit.PendingDevice = device;
        App.ControlsEdit.PendingValid = true;
    }
    void Capture(CaptureDevice device, std::int32_t row) {
        App.Capture = {.CaptureActive = true,
                       .CaptureDevice = device,
                       .CaptureKeyboardRow = row,
                       .CaptureGamepadRow = row + 1,
                       .CaptureJoystickRow = row + 2};
    }

    Testing::SceneWorld World;
    GameApp& App = World.App;
};

constexpr const char* PadHint = "PAD A SELECT B BACK";
constexpr const char* JoyHint = "JOY BUTTON 0 SELECT BUTTON 3 BACK";

// --- The root page

TEST_F(OptionsPages, BeginWithARootOfFourRows) {
    App.Rows.OptionsRootRow = 2;
    const OptionsPageTexts page = Page(OptionsPage::Root);
    EXPECT_EQ(LocalizedText(page.Heading), "MENU");
    EXPECT_EQ(page.Rows, (Rows{{"CONTROLS", ""}, {"GRAPHICS", ""}, {"AUDIO", ""}, {"BACK", ""}}));
    EXPECT_EQ(page.SelectedRow, 2);
    EXPECT_FALSE(page.FitHints);
}

TEST_F(OptionsPages, SayOnTheRootWhereBackLeads) {
    EXPECT_EQ(Page(OptionsPage::Root).UpperHint, "ENTER SELECT   ESC BACK TO MAIN MENU");
    EXPECT_EQ(Page(OptionsPage::Root).LowerHint, "");
    App.OptionsReturnScreen = AppScreen::Pause;
    EXPECT_EQ(Page(OptionsPage::Root).UpperHint, "ENTER SELECT   ESC BACK TO PAUSE MENU");
    EXPECT_EQ(Page(OptionsPage::Root).LowerHint, "");
    UseGamepad(World);
    EXPECT_EQ(Page(OptionsPage::Root).LowerHint, "PAD A SELECT B PAUSE MENU");
    App.OptionsReturnScreen = AppScreen::Playing;
    EXPECT_EQ(Page(OptionsPage::Root).UpperHint, "ENTER SELECT   ESC BACK TO MAIN MENU");
    EXPECT_EQ(Page(OptionsPage::Root).LowerHint, "PAD A SELECT B MAIN MENU");
    UseJoystick(World);
    EXPECT_EQ(Page(OptionsPage::Root).LowerHint, "JOY BUTTON 0 SELECT BUTTON 3 MAIN MENU");
}

// --- Controls

TEST_F(OptionsPages, ListTheKeysOfAKeyboard) {
    App.Rows.ControlsRow = 12;
    const OptionsPageTexts page = Page(OptionsPage::Controls);
    EXPECT_EQ(LocalizedText(page.Heading), "CONTROLS");
    EXPECT_EQ(page.Rows, (Rows{{"DEVICE", "KEYBOARD"},
                               {"CURSOR UP", "UP"},
                               {"CURSOR DOWN", "DOWN"},
                               {"CURSOR LEFT", "LEFT"},
                               {"CURSOR RIGHT", "RIGHT"},
                               {"ROTATE LEFT", "Q"},
                               {"ROTATE RIGHT", "E"},
                               {"PLACE TILE", "RETURN"},
                               {"FAST FORWARD", "LEFT SHIFT"},
                               {"DEFAULT SETTINGS", ""},
                               {"APPLY", ""},
                               {"REVERT", ""},
                               {"BACK", ""}}));
    EXPECT_EQ(page.SelectedRow, 12);
    EXPECT_TRUE(page.FitHints);
}

TEST_F(OptionsPages, ListTheButtonsOfAGamepad) {
    EditControlsOf(ControlsDevice::Gamepad);
    EXPECT_EQ(Page(OptionsPage::Controls).Rows, (Rows{{"DEVICE", "GAMEPAD (OFF)"},
                                                      {"CURSOR UP", "DPUP"},
                                                      {"CURSOR DOWN", "DPDOWN"},
                                                      {"CURSOR LEFT", "DPLEFT"},
                                                      {"CURSOR RIGHT", "DPRIGHT"},
                                                      {"ROTATE LEFT", "LEFTSHOULDER"},
                                                      {"ROTATE RIGHT", "RIGHTSHOULDER"},
                                                      {"PLACE TILE", "A"},
                                                      {"FAST FORWARD", "Y"},
                                                      {"MENU CONFIRM", "A"},
                                                      {"MENU BACK", "B"},
                                                      {"DEFAULT SETTINGS", ""},
                                                      {"APPLY", ""},
                                                      {"REVERT", ""},
                                                      {"BACK", ""}}));
}

TEST_F(OptionsPages, ListTheButtonsOfAJoystickWithoutTheCursor) {
    EditControlsOf(ControlsDevice::Joystick);
    App.ControlsEdit.PendingJoystick = {90, 91, 92, 93, 4, 5, 6, 7, 8, -1};
    EXPECT_EQ(Page(OptionsPage::Controls).Rows, (Rows{{"DEVICE", "JOYSTICK (OFF)"},
                                                      {"ROTATE LEFT", "BUTTON 4"},
                                                      {"ROTATE RIGHT", "BUTTON 5"},
                                                      {"PLACE TILE", "BUTTON 6"},
                                                      {"FAST FORWARD", "BUTTON 7"},
                                                      {"MENU CONFIRM", "BUTTON 8"},
                                                      {"MENU BACK", "UNBOUND"},
                                                      {"DEFAULT SETTINGS", ""},
                                                      {"APPLY", ""},
                                                      {"REVERT", ""},
                                                      {"BACK", ""}}));
}

TEST_F(OptionsPages, TakeAnUnknownDeviceForAJoystickWithoutAName) {
    EditControlsOf(ControlsDevice::Joystick);
    Rows rows = Page(OptionsPage::Controls).Rows;
    rows[0].Value = "UNKNOWN";
    for (const std::int32_t device : {3, -1, std::numeric_limits<std::int32_t>::max()}) {
        EditControlsOf(static_cast<ControlsDevice>(device));
        EXPECT_EQ(Page(OptionsPage::Controls).Rows, rows) << device;
    }
}

TEST_F(OptionsPages, TellWhetherAControllerIsThere) {
    UseGamepad(World);
    EditControlsOf(ControlsDevice::Gamepad);
    EXPECT_EQ(RowOf(OptionsPage::Controls, 0).Value, "GAMEPAD (ON)");
    EditControlsOf(ControlsDevice::Joystick);
    EXPECT_EQ(RowOf(OptionsPage::Controls, 0).Value, "JOYSTICK (OFF)");
    UseJoystick(World);
    EXPECT_EQ(RowOf(OptionsPage::Controls, 0).Value, "JOYSTICK (ON)");
    EditControlsOf(ControlsDevice::Keyboard);
    EXPECT_EQ(RowOf(OptionsPage::Controls, 0).Value, "KEYBOARD");
}

TEST_F(OptionsPages, ShowTheWorkingCopyOfTheBindingsOrElseTheLiveOnes) {
    App.ControlsDevice = ControlsDevice::Keyboard;
    App.KeyboardBindings[0] = SDL_SCANCODE_W;
    App.ControlsEdit.PendingDevice = ControlsDevice::Gamepad;
    App.ControlsEdit.PendingGamepad[0] = 5;
    EXPECT_EQ(RowOf(OptionsPage::Controls, 0).Value, "KEYBOARD");
    EXPECT_EQ(RowOf(OptionsPage::Controls, 1).Value, "W");
    App.ControlsEdit.PendingValid = true;
    EXPECT_EQ(RowOf(OptionsPage::Controls, 0).Value, "GAMEPAD (OFF)");
    EXPECT_EQ(RowOf(OptionsPage::Controls, 1).Value, "GUIDE");
    App.ControlsEdit.PendingDevice = ControlsDevice::Keyboard;
    EXPECT_EQ(RowOf(OptionsPage::Controls, 1).Value, "UP");
    App.ControlsEdit.PendingValid = false;
    App.ControlsDevice = ControlsDevice::Gamepad;
    App.GamepadBindings[9] = UnboundButton;
    EXPECT_EQ(RowOf(OptionsPage::Controls, 10).Value, "UNBOUND");
    App.ControlsDevice = ControlsDevice::Joystick;
    App.JoystickBindings[4] = 40;
    EXPECT_EQ(RowOf(OptionsPage::Controls, 1).Value, "BUTTON 40");
}

TEST_F(OptionsPages, TellHowToRebind) {
    EXPECT_EQ(Page(OptionsPage::Controls).UpperHint, "ENTER REBIND   LEFT / RIGHT DEVICE");
    EXPECT_EQ(Page(OptionsPage::Controls).LowerHint, "ESC BACK");
    UseGamepad(World);
    EXPECT_EQ(Page(OptionsPage::Controls).LowerHint, PadHint);
    UseJoystick(World);
    EXPECT_EQ(Page(OptionsPage::Controls).LowerHint, JoyHint);
}

TEST_F(OptionsPages, AskForThePressThatIsToBeBound) {
    UseGamepad(World);
    Capture(CaptureDevice::Keyboard, 7);
    EXPECT_EQ(Page(OptionsPage::Controls).UpperHint, "PRESS A KEY FOR FAST FORWARD");
    EXPECT_EQ(Page(OptionsPage::Controls).LowerHint, "ESC CANCEL   DEL CLEAR");
    Capture(CaptureDevice::Gamepad, 7);
    EXPECT_EQ(Page(OptionsPage::Controls).UpperHint, "PRESS A GAMEPAD BUTTON FOR MENU CONFIRM");
    Capture(CaptureDevice::Joystick, -2);
    EXPECT_EQ(Page(OptionsPage::Controls).UpperHint, "PRESS A JOYSTICK BUTTON FOR ROTATE LEFT");
    Capture(CaptureDevice::None, 0);
    EXPECT_EQ(Page(OptionsPage::Controls).UpperHint, "PRESS AN INPUT FOR ");
    Capture(static_cast<CaptureDevice>(4), 0);
    EXPECT_EQ(Page(OptionsPage::Controls).UpperHint, "PRESS AN INPUT FOR ");
    EXPECT_EQ(Page(OptionsPage::Controls).LowerHint, "ESC CANCEL   DEL CLEAR");
    Capture(CaptureDevice::Keyboard, 8);
    EXPECT_EQ(Page(OptionsPage::Controls).UpperHint, "PRESS A KEY FOR ") << "no such row";
}

TEST_F(OptionsPages, AskOnlyOnTheControlsPage) {
    Capture(CaptureDevice::Keyboard, 0);
    EXPECT_EQ(Page(OptionsPage::Graphics).UpperHint, "LEFT / RIGHT CHANGE VALUE");
    EXPECT_EQ(Page(OptionsPage::Root).UpperHint, "ENTER SELECT   ESC BACK TO MAIN MENU");
}

// --- Graphics

TEST_F(OptionsPages, ListTheGraphicsOfTheLiveOptions) {
    App.Resolutions = {{1280, 720}, {2560, 1440}};
    App.ResolutionIndex = 1;
    App.Rows.GraphicsRow = 8;
    App.GraphicsEdit = {{.Width = 1, .Height = 2, .RefreshRate = 99}, true};
    const OptionsPageTexts page = Page(OptionsPage::Graphics);
    EXPECT_EQ(LocalizedText(page.Heading), "GRAPHICS");
    EXPECT_EQ(page.Rows, (Rows{{"RESOLUTION", "2560X1440"},
                               {"ASPECT MODE", "WIDESCREEN"},
                               {"REFRESH RATE", "AUTO"},
                               {"DISPLAY MODE", "FULLSCREEN"},
                               {"VSYNC", "ON"},
                               {"DEFAULT SETTINGS", ""},
                               {"APPLY", ""},
                               {"REVERT", ""},
                               {"BACK", ""}}));
    EXPECT_EQ(page.SelectedRow, 8);
    EXPECT_EQ(page.UpperHint, "LEFT / RIGHT CHANGE VALUE");
    EXPECT_EQ(page.LowerHint, "ENTER SELECT     ESC BACK");
    EXPECT_FALSE(page.FitHints);
}

TEST_F(OptionsPages, ListTheOtherValuesOfGraphics) {
    App.AspectMode = AspectMode::Classic4x3;
    App.RefreshRate = 1;
    App.Fullscreen = false;
    App.VSync = false;
    const Rows rows = Page(OptionsPage::Graphics).Rows;
    EXPECT_EQ(rows[0].Value, "1024X768") << "of the built-in ones, while there are no others";
    EXPECT_EQ(rows[1].Value, "4:3");
    EXPECT_EQ(rows[2].Value, "1 HZ");
    EXPECT_EQ(rows[3].Value, "WINDOWED");
    EXPECT_EQ(rows[4].Value, "OFF");
    App.RefreshRate = -1;
    EXPECT_EQ(RowOf(OptionsPage::Graphics, 2).Value, "AUTO");
    App.AspectMode = static_cast<AspectMode>(2);
    EXPECT_EQ(RowOf(OptionsPage::Graphics, 1).Value, "WIDESCREEN");
}

// --- Audio

TEST_F(OptionsPages, ListTheAudioOfTheLiveOptions) {
    LocalizationCatalog.Languages = {{.Code = "de", .Name = "Deutsch", .File = "d.ini"}};
    App.Language = "de";
    App.MasterVolume = 95;
    App.SfxEnabled = false;
    App.Rows.AudioRow = 9;
    const OptionsPageTexts page = Page(OptionsPage::Audio);
    EXPECT_EQ(LocalizedText(page.Heading), "AUDIO");
    EXPECT_EQ(page.Rows, (Rows{{"MASTER VOLUME", "95%"},
                               {"MUSIC VOLUME", "50%"},
                               {"SFX VOLUME", "75%"},
                               {"MUSIC", "ON"},
                               {"SFX", "OFF"},
                               {"LANGUAGE", "DEUTSCH"},
                               {"DEFAULT SETTINGS", ""},
                               {"APPLY", ""},
                               {"REVERT", ""},
                               {"BACK", ""}}));
    EXPECT_EQ(page.SelectedRow, 9);
    EXPECT_EQ(page.UpperHint, "LEFT / RIGHT CHANGE VALUE");
    EXPECT_EQ(page.LowerHint, "ENTER SELECT     ESC BACK");
    EXPECT_FALSE(page.FitHints);
}

TEST_F(OptionsPages, ListTheWorkingCopyOfTheAudioWhileThereIsOne) {
    App.AudioEdit = {{.MasterVolume = 0,
                      .MusicVolume = 5,
                      .SfxVolume = 100,
                      .MusicEnabled = false,
                      .SfxEnabled = true},
                     {"fr"},
                     true};
    const Rows rows = Page(OptionsPage::Audio).Rows;
    EXPECT_EQ(rows[0].Value, "0%");
    EXPECT_EQ(rows[1].Value, "5%");
    EXPECT_EQ(rows[2].Value, "100%");
    EXPECT_EQ(rows[3].Value, "OFF");
    EXPECT_EQ(rows[4].Value, "ON");
    EXPECT_EQ(rows[5].Value, "FR") << "the code of a language that is not in the list";
}

TEST_F(OptionsPages, ShowEveryPercentAsItIs) {
    for (std::int32_t percent = 0; percent <= 100; ++percent) {
        App.MusicVolume = percent;
        EXPECT_EQ(RowOf(OptionsPage::Audio, 1).Value, std::to_string(percent) + "%");
    }
}

TEST_F(OptionsPages, TellAControllersButtonsOnThePagesOfValues) {
    UseGamepad(World);
    EXPECT_EQ(Page(OptionsPage::Graphics).LowerHint, PadHint);
    EXPECT_EQ(Page(OptionsPage::Audio).LowerHint, PadHint);
    UseJoystick(World);
    EXPECT_EQ(Page(OptionsPage::Graphics).LowerHint, JoyHint);
    EXPECT_EQ(Page(OptionsPage::Audio).LowerHint, JoyHint);
}

TEST_F(OptionsPages, ShowAudioForAPageThatThereIsNot) {
    App.Rows.AudioRow = 4;
    for (const std::int32_t page : {4, -1, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(LocalizedText(Page(static_cast<OptionsPage>(page)).Heading), "AUDIO");
        EXPECT_EQ(Page(static_cast<OptionsPage>(page)).SelectedRow, 4);
    }
}

} // namespace

} // namespace Wirefall
