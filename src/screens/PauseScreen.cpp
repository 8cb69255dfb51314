#include "screens/PauseScreen.h"

#include "display/LogicalCanvas.h"
#include "draw/CenteredPanel.h"
#include "draw/Color.h"
#include "draw/EntryList.h"
#include "draw/Metrics.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "game/ScreenFlow.h"
#include "screens/BoardScreen.h"
#include "screens/Menu.h"
#include "words/ControllerHint.h"
#include "words/Localization.h"
#include "words/SharedTexts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace Wirefall {

namespace {

// --- The rows

void Resume(GameApp& app) { app.Screen = AppScreen::Playing; }

constexpr auto MenuRows = std::to_array<MenuRow>({
    {{"Pause.Menu.Resume", "RESUME"}, Resume},
    {{"Pause.Menu.Options", "OPTIONS"}, [](GameApp& app) { OpenOptions(app, AppScreen::Pause); }},
    {{"Pause.Menu.Help", "HELP"}, [](GameApp& app) { OpenHelp(app, AppScreen::Pause); }},
    {{"Pause.Menu.MainMenu", "MAIN MENU"}, ShowMainMenu},
});

// --- How they look

constexpr std::uint8_t PanelAlpha = 214;
constexpr float LowestPanel = 250.0F;
constexpr float NarrowestPanel = 420.0F;

struct PauseTexts {
    std::string Title;
    std::array<std::string_view, MenuRows.size()> Entries;
    std::string Hint;
    std::string ControllerHint; // Empty without a controller.
};

PauseTexts CollectTexts(const GameApp& app, const ControllerSet& controllers) {
    PauseTexts texts;
    texts.Title = LocalizedText("Pause.Title", "PAUSED");
    MenuLabels(MenuRows, texts.Entries);
    texts.Hint = LocalizedText("Pause.Hint.Primary", "ENTER SELECT   ESC RESUME");
    texts.ControllerHint = BuildControllerHint(app, controllers, LocalizedText(Texts::Select),
                                               LocalizedText("Controller.Hint.Resume", "RESUME"));
    return texts;
}

struct PauseLayout {
    SDL_FRect Panel{};
    float CenterX = 0.0F;
    float TitleY = 0.0F;
    EntryList Entries;
    float HintY = 0.0F;
    float ControllerHintY = 0.0F;
};

PauseLayout PlacePause(const PauseTexts& texts, const UiMetrics& metrics, float width) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    const float widestEntry = WidestEntry(texts.Entries, metrics.MenuItemScale);
    const float widest =
        std::max({widestEntry + d(12.0F) + TextWidthPx(SelectionMark, metrics.CursorScale),
                  TextWidthPx(texts.Title, metrics.ScreenTitleScale),
                  TextWidthPx(texts.Hint, metrics.HintScale),
                  TextWidthPx(texts.ControllerHint, metrics.HintScale)});

    const float titleHeight = TextHeight(metrics.ScreenTitleScale);
    const float hintHeight = TextHeight(metrics.HintScale);
    const float itemHeight = TextHeight(metrics.MenuItemScale);
    const float itemPitch = itemHeight + d(16.0F);
    const float items = static_cast<float>(MenuRows.size() - 1) * itemPitch + itemHeight;
    const PanelColumn column = {
        .TopMargin = d(26.0F),
        .Content = items + titleHeight + d(54.0F),
        .Slack = d(40.0F),
        .Hints = hintHeight + (texts.ControllerHint.empty() ? 0.0F : hintHeight + d(10.0F)),
        .BottomMargin = d(22.0F)};

    PauseLayout pause;
    pause.Panel =
        PlaceCenteredPanel(width, {.Width = widest + 2.0F * d(68.0F),
                                   .Height = column.Content + column.TopMargin + column.Slack +
                                             column.Hints + column.BottomMargin,
                                   .Narrowest = NarrowestPanel,
                                   .Lowest = LowestPanel});
    pause.CenterX = pause.Panel.x + pause.Panel.w / 2.0F;
    pause.HintY = HintsTop(pause.Panel, column);
    pause.ControllerHintY = pause.HintY + hintHeight + d(10.0F);
    pause.TitleY = ContentTop(pause.Panel, column);
    pause.Entries = {.X = pause.CenterX - widestEntry / 2.0F,
                     .Y = pause.TitleY + titleHeight + d(54.0F),
                     .Pitch = itemPitch,
                     .Scale = metrics.MenuItemScale,
                     .MarkScale = metrics.CursorScale,
                     .MarkGap = d(12.0F),
                     .MarkDrop = (itemHeight - TextHeight(metrics.CursorScale)) / 2.0F};
    return pause;
}

} // namespace

void DrawPauseScreen(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers) {
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);

    const PauseTexts texts = CollectTexts(app, controllers);
    const PauseLayout pause = PlacePause(texts, metrics, static_cast<float>(LogicalWidth));
    DrawPanel(renderer, pause.Panel.x, pause.Panel.y, pause.Panel.w, pause.Panel.h, Palette::Accent,
              PanelAlpha);
    DrawTextCentered(renderer, texts.Title, pause.CenterX, pause.TitleY, metrics.ScreenTitleScale,
                     Palette::BrightText);
    DrawEntryList(renderer, pause.Entries, texts.Entries, app.PauseSelection);
    DrawTextCentered(renderer, texts.Hint, pause.CenterX, pause.HintY, metrics.HintScale,
                     Palette::HintText);
    DrawTextCentered(renderer, texts.ControllerHint, pause.CenterX, pause.ControllerHintY,
                     metrics.HintScale, Palette::HintText);
}

void PressOnPause(GameApp& app, PressCode code) {
    PressInMenu(app, code, MenuRows, app.PauseSelection, Resume);
}

} // namespace Wirefall
