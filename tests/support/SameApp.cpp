#include "support/SameApp.h"

#include <algorithm>
#include <string>

namespace Wirefall::Testing {

namespace {

class Comparison {
public:
    template <typename Value>
    void Field(const char* name, const Value& expected, const Value& actual) {
        if (!(expected == actual)) {
            Differences += std::string("\n  ") + name + ": " + testing::PrintToString(actual) +
                           ", expected " + testing::PrintToString(expected);
        }
    }

    testing::AssertionResult Result() const {
        return Differences.empty() ? testing::AssertionSuccess()
                                   : testing::AssertionFailure() << "differ:" << Differences;
    }

private:
    std::string Differences;
};

void CompareOptions(Comparison& c, const GameOptions& e, const GameOptions& a) {
    c.Field("ControlsDevice", e.ControlsDevice, a.ControlsDevice);
    c.Field("Language", e.Language, a.Language);
    c.Field("KeyboardBindings", e.KeyboardBindings, a.KeyboardBindings);
    c.Field("GamepadBindings", e.GamepadBindings, a.GamepadBindings);
    c.Field("JoystickBindings", e.JoystickBindings, a.JoystickBindings);
    c.Field("ResolutionIndex", e.ResolutionIndex, a.ResolutionIndex);
    c.Field("AspectMode", e.AspectMode, a.AspectMode);
    c.Field("RefreshRate", e.RefreshRate, a.RefreshRate);
    c.Field("Fullscreen", e.Fullscreen, a.Fullscreen);
    c.Field("VSync", e.VSync, a.VSync);
    c.Field("MasterVolume", e.MasterVolume, a.MasterVolume);
    c.Field("MusicVolume", e.MusicVolume, a.MusicVolume);
    c.Field("SfxVolume", e.SfxVolume, a.SfxVolume);
    c.Field("MusicEnabled", e.MusicEnabled, a.MusicEnabled);
    c.Field("SfxEnabled", e.SfxEnabled, a.SfxEnabled);
}

void CompareOptionsScreen(Comparison& c, const GameApp& e, const GameApp& a) {
    c.Field("OptionsPage", e.OptionsPage, a.OptionsPage);
    c.Field("OptionsRootRow", e.Rows.OptionsRootRow, a.Rows.OptionsRootRow);
    c.Field("ControlsRow", e.Rows.ControlsRow, a.Rows.ControlsRow);
    c.Field("GraphicsRow", e.Rows.GraphicsRow, a.Rows.GraphicsRow);
    c.Field("AudioRow", e.Rows.AudioRow, a.Rows.AudioRow);
    c.Field("CaptureActive", e.Capture.CaptureActive, a.Capture.CaptureActive);
    c.Field("CaptureDevice", e.Capture.CaptureDevice, a.Capture.CaptureDevice);
    c.Field("CaptureKeyboardRow", e.Capture.CaptureKeyboardRow, a.Capture.CaptureKeyboardRow);
    c.Field("CaptureGamepadRow", e.Capture.CaptureGamepadRow, a.Capture.CaptureGamepadRow);
    c.Field("CaptureJoystickRow", e.Capture.CaptureJoystickRow, a.Capture.CaptureJoystickRow);
    c.Field("PendingKeyboard", e.ControlsEdit.PendingKeyboard, a.ControlsEdit.PendingKeyboard);
    c.Field("PendingGamepad", e.ControlsEdit.PendingGamepad, a.ControlsEdit.PendingGamepad);
    c.Field("PendingJoystick", e.ControlsEdit.PendingJoystick, a.ControlsEdit.PendingJoystick);
    c.Field("PendingDevice", e.ControlsEdit.PendingDevice, a.ControlsEdit.PendingDevice);
    c.Field("PendingValid", e.ControlsEdit.PendingValid, a.ControlsEdit.PendingValid);
    c.Field("GraphicsEdit.Width", e.GraphicsEdit.Width, a.GraphicsEdit.Width);
    c.Field("GraphicsEdit.Height", e.GraphicsEdit.Height, a.GraphicsEdit.Height);
    c.Field("GraphicsEdit.AspectMode", e.GraphicsEdit.AspectMode, a.GraphicsEdit.AspectMode);
    c.Field("GraphicsEdit.RefreshRate", e.GraphicsEdit.RefreshRate, a.GraphicsEdit.RefreshRate);
    c.Field("GraphicsEdit.Fullscreen", e.GraphicsEdit.Fullscreen, a.GraphicsEdit.Fullscreen);
    c.Field("GraphicsEdit.VSync", e.GraphicsEdit.VSync, a.GraphicsEdit.VSync);
    c.Field("GraphicsEdit.Valid", e.GraphicsEdit.Valid, a.GraphicsEdit.Valid);
    c.Field("AudioEdit.MasterVolume", e.AudioEdit.MasterVolume, a.AudioEdit.MasterVolume);
    c.Field("AudioEdit.MusicVolume", e.AudioEdit.MusicVolume, a.AudioEdit.MusicVolume);
    c.Field("AudioEdit.SfxVolume", e.AudioEdit.SfxVolume, a.AudioEdit.SfxVolume);
    c.Field("AudioEdit.MusicEnabled", e.AudioEdit.MusicEnabled, a.AudioEdit.MusicEnabled);
    c.Field("AudioEdit.SfxEnabled", e.AudioEdit.SfxEnabled, a.AudioEdit.SfxEnabled);
    c.Field("AudioEdit.Language", e.AudioEdit.Language, a.AudioEdit.Language);
    c.Field("AudioEdit.Valid", e.AudioEdit.Valid, a.AudioEdit.Valid);
}

} // namespace

Sounds QueuedSounds(const GameApp& app) {
    return {app.SoundQueue.begin(),
            app.SoundQueue.begin() + static_cast<std::ptrdiff_t>(app.SoundQueueCount)};
}

void SetQueuedSounds(GameApp& app, const Sounds& sounds) {
    std::ranges::copy(sounds, app.SoundQueue.begin());
    app.SoundQueueCount = sounds.size();
}

testing::AssertionResult SameApp(const GameApp& expected, const GameApp& actual) {
    Comparison c;
    CompareOptions(c, expected, actual);
    CompareOptionsScreen(c, expected, actual);
    c.Field("Screen", expected.Screen, actual.Screen);
    c.Field("Running", expected.Running, actual.Running);
    c.Field("MenuSelection", expected.MenuSelection, actual.MenuSelection);
    c.Field("PauseSelection", expected.PauseSelection, actual.PauseSelection);
    c.Field("OptionsReturnScreen", expected.OptionsReturnScreen, actual.OptionsReturnScreen);
    c.Field("HelpReturnScreen", expected.HelpReturnScreen, actual.HelpReturnScreen);
    c.Field("CreditsScroll", expected.CreditsScroll, actual.CreditsScroll);
    c.Field("LastInputDevice", expected.LastInputDevice, actual.LastInputDevice);
    c.Field("VSyncActive", expected.VSyncActive, actual.VSyncActive);
    c.Field("OptionsDirty", expected.OptionsDirty, actual.OptionsDirty);
    c.Field("HasSavedRun", expected.HasSavedRun, actual.HasSavedRun);
    c.Field("SaveDirty", expected.SaveDirty, actual.SaveDirty);
    c.Field("SaveDelaySeconds", expected.SaveDelaySeconds, actual.SaveDelaySeconds);
    c.Field("ResetFrameClock", expected.ResetFrameClock, actual.ResetFrameClock);
    c.Field("FadeInActive", expected.FadeInActive, actual.FadeInActive);
    c.Field("FadeInStartTicks", expected.FadeInStartTicks, actual.FadeInStartTicks);
    c.Field("QuitRequested", expected.QuitRequested, actual.QuitRequested);
    c.Field("FadeOutStartTicks", expected.FadeOutStartTicks, actual.FadeOutStartTicks);
    c.Field("Resolutions", expected.Resolutions, actual.Resolutions);
    c.Field("RefreshRates", expected.RefreshRates, actual.RefreshRates);
    c.Field("DisplayModes", expected.DisplayModes, actual.DisplayModes);
    c.Field("SoundQueue", QueuedSounds(expected), QueuedSounds(actual));
    c.Field("PreviousSnapshot", expected.PreviousSnapshot, actual.PreviousSnapshot);
    c.Field("PreviousSnapshotValid", expected.PreviousSnapshotValid, actual.PreviousSnapshotValid);
    c.Field("LastSavedRevision", expected.LastSavedRevision, actual.LastSavedRevision);
    return c.Result();
}

} // namespace Wirefall::Testing
