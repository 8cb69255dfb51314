#include "options/RootPage.h"

#include "options/AudioPage.h"
#include "options/ControlsPage.h"
#include "options/GraphicsPage.h"
#include "words/ControllerHint.h"
#include "words/SharedTexts.h"

namespace Wirefall {

namespace {

void Leave(const PageContext& context) { context.App.Screen = context.App.OptionsReturnScreen; }

void OpenControls(const PageContext& context) {
    context.App.OptionsPage = OptionsPage::Controls;
    BeginControlsEdit(context.App);
}

void OpenGraphics(const PageContext& context) {
    context.App.OptionsPage = OptionsPage::Graphics;
    BeginGraphicsEdit(context.App, context.Window);
}

void OpenAudio(const PageContext& context) {
    context.App.OptionsPage = OptionsPage::Audio;
    BeginAudioEdit(context.App);
}

constexpr auto Rows = std::to_array<PageRow>({
    {.Label = {"Options.Main.Controls", "CONTROLS"}, .Confirm = Do<OpenControls>},
    {.Label = {"Options.Main.Graphics", "GRAPHICS"}, .Confirm = Do<OpenGraphics>},
    {.Label = {"Options.Main.Audio", "AUDIO"}, .Confirm = Do<OpenAudio>},
    {.Label = {"Common.Back", "BACK"}, .Confirm = Do<Leave>},
});

PageHints Hints(const PageView& view) {
    const bool toPause = view.App.OptionsReturnScreen == AppScreen::Pause;
    return {
        .Upper = toPause ? LocalizedText("Options.Hint.MainBackToPauseMenu",
                                         "ENTER SELECT   ESC BACK TO PAUSE MENU")
                         : LocalizedText("Options.Hint.MainBackToMainMenu",
                                         "ENTER SELECT   ESC BACK TO MAIN MENU"),
        .Lower = BuildControllerHint(view.App, view.Controllers, LocalizedText(Texts::Select),
                                     LocalizedText(toPause ? Texts::PauseMenu : Texts::MainMenu)),
    };
}

} // namespace

constinit const PageTable RootPage = {
    .Heading = {"Options.Section.Menu", "MENU"},
    .Row = &OptionsRows::OptionsRootRow,
    .Rows = [](const GameApp& /*app*/) -> std::span<const PageRow> { return Rows; },
    .Hints = Hints,
    .Prepare = [](const PageContext& /*context*/) {},
    .Back = Leave,
    .IsMenu = true,
};

} // namespace Wirefall
