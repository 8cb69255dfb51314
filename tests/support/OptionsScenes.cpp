#include "support/OptionsScenes.h"

#include "options/BindingRows.h"
#include "options/OptionsScreen.h"

#include <SDL3/SDL_scancode.h>

#include <cstdint>

namespace Wirefall::Testing {

namespace {

void DrawOptions(SDL_Renderer* renderer, const SceneWorld& world) {
    DrawOptionsScreen(renderer, world.App, world.Controllers);
}

void OpenControls(SceneWorld& world, ControlsDevice device) {
    GameApp& app = world.App;
    app.OptionsPage = OptionsPage::Controls;
    app.ControlsEdit.PendingDevice = device;
    app.ControlsEdit.PendingValid = true;
}

// The row of Back, behind those of the bindings and three others.
void SelectLastControlsRow(SceneWorld& world) {
    world.App.Rows.ControlsRow = ShownRowCount(world.App.ControlsEdit.PendingDevice) + 4;
}

void Capture(SceneWorld& world, CaptureDevice device, std::int32_t row) {
    GameApp& app = world.App;
    app.Rows.ControlsRow = row + 1;
    app.Capture = {.CaptureActive = true,
                   .CaptureDevice = device,
                   .CaptureKeyboardRow = row,
                   .CaptureGamepadRow = row,
                   .CaptureJoystickRow = row};
}

void OpenGraphics(SceneWorld& world) {
    world.App.OptionsPage = OptionsPage::Graphics;
    world.App.Resolutions = {{1280, 720}, {1920, 1080}};
}

void OpenAudio(SceneWorld& world) {
    world.App.OptionsPage = OptionsPage::Audio;
    world.App.AudioEdit = {{.MasterVolume = 90,
                            .MusicVolume = 0,
                            .SfxVolume = 100,
                            .MusicEnabled = false,
                            .SfxEnabled = true},
                           {"de"},
                           true};
}

} // namespace

std::vector<Scene> OptionsScenes() {
    return {
        {.Name = "options-root-first",
         .Draw = DrawOptions,
         .Languages = {"en", "de", "long"},
         .Goldens = {{1280, "roomy"}, {960, "roomy"}, {960, "roomy", "de"}}},
        {.Name = "options-root-last",
         .Arrange =
             [](SceneWorld& world) {
                 UseGamepad(world);
                 world.App.OptionsReturnScreen = AppScreen::Pause;
                 world.App.Rows.OptionsRootRow = 3;
             },
         .Draw = DrawOptions,
         .Goldens = {{1280, "tight"}, {960, "tight", "de"}}},
        {.Name = "options-root-joystick",
         .Arrange =
             [](SceneWorld& world) {
                 UseJoystick(world);
                 world.App.Rows.OptionsRootRow = 1;
             },
         .Draw = DrawOptions},
        {.Name = "options-root-quitting",
         .Arrange = [](SceneWorld& world) { world.App.QuitRequested = true; },
         .Draw = DrawOptions,
         .Languages = {"en"}},
        {.Name = "options-controls-live",
         .Arrange =
             [](SceneWorld& world) {
                 // Without a working copy the live bindings show, whatever the copy holds.
                 world.App.OptionsPage = OptionsPage::Controls;
                 world.App.ControlsEdit.PendingDevice = ControlsDevice::Joystick;
                 world.App.KeyboardBindings[0] = SDL_SCANCODE_W;
             },
         .Draw = DrawOptions},
        {.Name = "options-controls-keyboard-first",
         .Arrange = [](SceneWorld& world) { OpenControls(world, ControlsDevice::Keyboard); },
         .Draw = DrawOptions,
         .Goldens = {{1280, "roomy"}, {960, "roomy", "de"}, {1280, "tightest", "de"}}},
        {.Name = "options-controls-keyboard-last",
         .Arrange =
             [](SceneWorld& world) {
                 // A key with a long name, one without a name, and none.
                 OpenControls(world, ControlsDevice::Keyboard);
                 world.App.ControlsEdit.PendingKeyboard[3] = SDL_SCANCODE_KP_MEMSUBTRACT;
                 world.App.ControlsEdit.PendingKeyboard[5] = 509;
                 world.App.ControlsEdit.PendingKeyboard[7] = UnboundKey;
                 SelectLastControlsRow(world);
             },
         .Draw = DrawOptions,
         .Goldens = {{960, "tight", "de"}}},
        {.Name = "options-controls-gamepad-first",
         .Arrange =
             [](SceneWorld& world) {
                 OpenControls(world, ControlsDevice::Gamepad);
                 UseGamepad(world);
             },
         .Draw = DrawOptions,
         .Languages = {"en", "de", "long"},
         .Goldens = {{1280, "roomy"}, {960, "roomy", "de"}, {2560, "tightest"}}},
        {.Name = "options-controls-gamepad-last",
         .Arrange =
             [](SceneWorld& world) {
                 OpenControls(world, ControlsDevice::Gamepad);
                 world.App.ControlsEdit.PendingGamepad[4] = UnboundButton;
                 world.App.ControlsEdit.PendingGamepad[5] = MaxGamepadButton;
                 SelectLastControlsRow(world);
             },
         .Draw = DrawOptions,
         .Goldens = {{1080, "tightest"}}},
        {.Name = "options-controls-joystick-first",
         .Arrange =
             [](SceneWorld& world) {
                 OpenControls(world, ControlsDevice::Joystick);
                 UseJoystick(world);
             },
         .Draw = DrawOptions,
         .Goldens = {{1152, "roomy"}, {1152, "roomy", "de"}}},
        {.Name = "options-controls-joystick-last",
         .Arrange =
             [](SceneWorld& world) {
                 OpenControls(world, ControlsDevice::Joystick);
                 world.App.ControlsEdit.PendingJoystick[9] = UnboundButton;
                 SelectLastControlsRow(world);
             },
         .Draw = DrawOptions},
        {.Name = "options-controls-unknown-device",
         .Arrange = [](SceneWorld& world) { OpenControls(world, static_cast<ControlsDevice>(3)); },
         .Draw = DrawOptions},
        {.Name = "options-capture-keyboard",
         .Arrange =
             [](SceneWorld& world) {
                 OpenControls(world, ControlsDevice::Keyboard);
                 Capture(world, CaptureDevice::Keyboard, 0);
             },
         .Draw = DrawOptions,
         .Languages = {"en", "de", "long"},
         .Goldens = {{1280, "roomy"}, {960, "roomy", "de"}}},
        {.Name = "options-capture-gamepad",
         .Arrange =
             [](SceneWorld& world) {
                 // Nobody has to hold the device that is waited for.
                 OpenControls(world, ControlsDevice::Gamepad);
                 Capture(world, CaptureDevice::Gamepad, 8);
             },
         .Draw = DrawOptions,
         .Goldens = {{960, "roomy"}, {960, "roomy", "de"}}},
        {.Name = "options-capture-joystick",
         .Arrange =
             [](SceneWorld& world) {
                 OpenControls(world, ControlsDevice::Joystick);
                 Capture(world, CaptureDevice::Joystick, 5);
                 UseJoystick(world);
             },
         .Draw = DrawOptions,
         .Goldens = {{960, "tight", "de"}}},
        {.Name = "options-capture-any",
         .Arrange =
             [](SceneWorld& world) {
                 OpenControls(world, ControlsDevice::Keyboard);
                 Capture(world, CaptureDevice::None, 3);
             },
         .Draw = DrawOptions},
        {.Name = "options-graphics-first",
         .Arrange = OpenGraphics,
         .Draw = DrawOptions,
         .Languages = {"en", "de", "long"},
         .Goldens = {{1280, "roomy"}, {960, "roomy", "de"}, {1728, "tight"}}},
        {.Name = "options-graphics-last",
         .Arrange =
             [](SceneWorld& world) {
                 OpenGraphics(world);
                 UseGamepad(world);
                 world.App.Resolutions = {{1280, 1024}};
                 world.App.AspectMode = AspectMode::Classic4x3;
                 world.App.RefreshRate = 75;
                 world.App.Fullscreen = false;
                 world.App.VSync = false;
                 world.App.Rows.GraphicsRow = 8;
             },
         .Draw = DrawOptions,
         .Goldens = {{960, "tight"}, {960, "tight", "de"}}},
        {.Name = "options-graphics-widest",
         .Arrange =
             [](SceneWorld& world) {
                 OpenGraphics(world);
                 world.App.Resolutions = {{2147483647, 2147483647}};
                 world.App.RefreshRate = 2147483647;
                 world.App.Rows.GraphicsRow = 2;
             },
         .Draw = DrawOptions,
         .Goldens = {{960, "roomy"}}},
        {.Name = "options-audio-first",
         .Arrange = OpenAudio,
         .Draw = DrawOptions,
         .Languages = {"en", "de", "long"},
         .Goldens = {{1280, "roomy"}, {960, "roomy", "de"}, {2560, "tightest", "de"}}},
        {.Name = "options-audio-last",
         .Arrange =
             [](SceneWorld& world) {
                 OpenAudio(world);
                 UseJoystick(world);
                 world.App.AudioEdit.Valid = false; // the live options
                 world.App.Rows.AudioRow = 9;
             },
         .Draw = DrawOptions,
         .Goldens = {{1080, "tight"}, {960, "tightest", "de"}}},
        {.Name = "options-page-unknown",
         .Arrange =
             [](SceneWorld& world) {
                 OpenAudio(world);
                 world.App.OptionsPage = static_cast<OptionsPage>(4);
                 world.App.Rows.AudioRow = 5;
             },
         .Draw = DrawOptions,
         .Languages = {"en"}},
    };
}

} // namespace Wirefall::Testing
