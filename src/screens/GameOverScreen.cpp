#include "screens/GameOverScreen.h"

#include "display/LogicalCanvas.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "game/ScreenFlow.h"
#include "screens/Menu.h"
#include "screens/ResultPanel.h"
#include "words/ControllerHint.h"
#include "words/Localization.h"
#include "words/SharedTexts.h"

#include <string>

namespace Wirefall {

namespace {

// The one panel of the game that is red.
constexpr PackedColor Dim = Rgba(0x58080880);
constexpr PackedColor Body = Rgba(0x120404da);
constexpr PackedColor Stripe = Rgba(0xa82a2aff);
constexpr PackedColor Bar = Rgba(0x6c1818e0);
constexpr ResultColors Colors = {Palette::Red, Rgba(0xf0ceceff), Rgba(0xba7c7cff)};

constexpr float NarrowestPanel = 440.0F;
constexpr float LowestPanel = 180.0F;

ResultTexts CollectTexts(const GameApp& app, const ControllerSet& controllers) {
    const std::string menuLabel = LocalizedText(Texts::MainMenu);
    return {.Title = LocalizedText("GameOver.Title", "GAME OVER"),
            .Lines = {LocalizedText("GameOver.FinalScore", "FINAL SCORE") + " " +
                      std::to_string(FinalSnapshot(app).TotalScore)},
            .Hint = LocalizedText("GameOver.Hint.BackToMainMenu", "ENTER OR ESC BACK TO MAIN MENU"),
            .ControllerHint = BuildControllerHint(app, controllers, menuLabel, menuLabel)};
}

ResultLayout PlaceTexts(const ResultTexts& texts, const UiMetrics& metrics, float width) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    const float titleHeight = TextHeight(metrics.ScreenTitleScale);
    const PanelColumn column = {.TopMargin = d(34.0F),
                                .Content = d(24.0F) + titleHeight + TextHeight(metrics.RowScale),
                                .Slack = d(30.0F),
                                .Hints = ResultHintsHeight(texts, metrics),
                                .BottomMargin = d(30.0F)};
    ResultLayout layout;
    layout.Panel =
        PlaceCenteredPanel(width, {.Width = WantedResultWidth(texts, metrics),
                                   .Height = column.TopMargin + column.Content + column.Slack +
                                             column.Hints + column.BottomMargin,
                                   .Narrowest = NarrowestPanel,
                                   .Lowest = LowestPanel});
    layout.TitleY = ContentTop(layout.Panel, column);
    layout.LinesY = layout.TitleY + titleHeight + d(24.0F);
    return layout;
}

} // namespace

void DrawGameOverScreen(SDL_Renderer* renderer, const GameApp& app,
                        const ControllerSet& controllers) {
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    DrawDimmedBoard(renderer, Dim);
    const ResultTexts texts = CollectTexts(app, controllers);
    const ResultLayout layout = PlaceTexts(texts, metrics, static_cast<float>(LogicalWidth));
    DrawBarredBox(renderer, layout.Panel, Body, Stripe, Bar);
    DrawResultTexts(renderer, texts, layout, metrics, Colors);
}

void PressOnGameOver(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiConfirm, ShowMainMenu);
}

} // namespace Wirefall
