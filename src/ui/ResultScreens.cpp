#include "ui/ResultScreens.h"

#include "display/LogicalCanvas.h"
#include "sim/Arithmetic.h"
#include "sim/LevelRules.h"
#include "ui/BoardScreen.h"
#include "ui/Color.h"
#include "ui/ControllerHint.h"
#include "ui/Localization.h"
#include "ui/Metrics.h"
#include "ui/Primitives.h"
#include "ui/SharedTexts.h"
#include "ui/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Wirefall {

namespace {

constexpr float CanvasMargin = 96.0F;
constexpr float TallestPanel = 624.0F;

struct ResultTexts {
    std::string Title;
    std::vector<std::string> Lines;
    std::string Hint;
    std::string ControllerHint; // empty without a controller
};

struct ResultColors {
    PackedColor Title;
    PackedColor Line;
    PackedColor Hint;
};

float WidthOf(const std::string& text, std::int32_t scale) {
    return static_cast<float>(TextWidth(text, scale));
}

RunSnapshot FinalSnapshot(const GameApp& app) {
    return app.PreviousSnapshotValid ? app.PreviousSnapshot : BuildRunSnapshot();
}

// Where the texts of either screen stand on their panel.
struct ResultLayout {
    SDL_FRect Panel{};
    float CenterX = 0.0F;
    float TitleY = 0.0F;
    float LinesY = 0.0F;
    float LinePitch = 0.0F;
    float HintY = 0.0F;
    float ControllerHintY = 0.0F;
};

float PanelWidthFor(const ResultTexts& texts, const UiMetrics& metrics, float width,
                    float narrowest) {
    float widest = std::max({WidthOf(texts.Title, metrics.ScreenTitleScale),
                             WidthOf(texts.Hint, metrics.HintScale),
                             WidthOf(texts.ControllerHint, metrics.HintScale)});
    for (const std::string& line : texts.Lines) {
        widest = std::max(widest, WidthOf(line, metrics.RowScale));
    }
    const float margin = DensityPx(metrics.Density, 72.0F);
    return std::min(width - CanvasMargin, std::max(narrowest, widest + 2.0F * margin));
}

SDL_FRect CenteredPanel(float width, float panelWidth, float total, float lowest) {
    const float panelHeight = total < lowest ? lowest : std::min(total, TallestPanel);
    constexpr auto Height = static_cast<float>(LogicalHeight);
    return {(width - panelWidth) / 2.0F, (Height - panelHeight) / 2.0F, panelWidth, panelHeight};
}

float HintBlockHeight(const ResultTexts& texts, const UiMetrics& metrics) {
    const float hintHeight = TextHeight(metrics.HintScale);
    return texts.ControllerHint.empty()
               ? hintHeight
               : hintHeight + DensityPx(metrics.Density, 14.0F) + hintHeight;
}

// The hints stand at the panel's foot on both screens.
void PlaceHints(ResultLayout& layout, const ResultTexts& texts, const UiMetrics& metrics) {
    layout.CenterX = layout.Panel.x + layout.Panel.w / 2.0F;
    layout.HintY = layout.Panel.y + layout.Panel.h - DensityPx(metrics.Density, 30.0F) -
                   HintBlockHeight(texts, metrics);
    layout.ControllerHintY =
        layout.HintY + TextHeight(metrics.HintScale) + DensityPx(metrics.Density, 14.0F);
}

ResultLayout PlaceLevelComplete(const ResultTexts& texts, const UiMetrics& metrics, float width) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    const float titleHeight = TextHeight(metrics.ScreenTitleScale);
    const float lineHeight = TextHeight(metrics.RowScale);
    const float total = 3.0F * lineHeight + 2.0F * d(12.0F) + d(20.0F) + titleHeight +
                        2.0F * d(30.0F) + d(28.0F) + HintBlockHeight(texts, metrics);
    ResultLayout layout;
    layout.Panel =
        CenteredPanel(width, PanelWidthFor(texts, metrics, width, 500.0F), total, 210.0F);
    PlaceHints(layout, texts, metrics);
    layout.TitleY = layout.Panel.y + d(30.0F);
    layout.LinesY = layout.TitleY + titleHeight + d(20.0F);
    layout.LinePitch = lineHeight + d(12.0F);
    return layout;
}

ResultLayout PlaceGameOver(const ResultTexts& texts, const UiMetrics& metrics, float width) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    const float titleHeight = TextHeight(metrics.ScreenTitleScale);
    const float lineHeight = TextHeight(metrics.RowScale);
    const float hintBlock = HintBlockHeight(texts, metrics);
    const float content = d(24.0F) + titleHeight + lineHeight;
    const float total = d(34.0F) + content + d(30.0F) + hintBlock + d(30.0F);
    ResultLayout layout;
    layout.Panel =
        CenteredPanel(width, PanelWidthFor(texts, metrics, width, 440.0F), total, 180.0F);
    PlaceHints(layout, texts, metrics);

    const float spare = std::max(0.0F, layout.Panel.h - d(34.0F) - d(30.0F) - content - hintBlock);
    const float slack = std::min(spare, d(30.0F));
    const float top = layout.Panel.y + d(34.0F);
    const float room = std::max(0.0F, layout.HintY - slack - top);
    layout.TitleY = top + std::max(0.0F, (room - content) / 2.0F);
    layout.LinesY = layout.TitleY + titleHeight + d(24.0F);
    return layout;
}

void DrawResultTexts(SDL_Renderer* renderer, const ResultTexts& texts, const ResultLayout& layout,
                     const UiMetrics& metrics, const ResultColors& colors) {
    DrawTextCentered(renderer, texts.Title, layout.CenterX, layout.TitleY, metrics.ScreenTitleScale,
                     colors.Title);
    for (std::size_t i = 0; i < texts.Lines.size(); ++i) {
        DrawTextCentered(renderer, texts.Lines[i], layout.CenterX,
                         layout.LinesY + static_cast<float>(i) * layout.LinePitch, metrics.RowScale,
                         colors.Line);
    }
    DrawTextCentered(renderer, texts.Hint, layout.CenterX, layout.HintY, metrics.HintScale,
                     colors.Hint);
    DrawTextCentered(renderer, texts.ControllerHint, layout.CenterX, layout.ControllerHintY,
                     metrics.HintScale, colors.Hint);
}

void DrawDimmedBoard(SDL_Renderer* renderer, PackedColor dim) {
    DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);
    FillRect(renderer, 0.0F, 0.0F, static_cast<float>(LogicalWidth),
             static_cast<float>(LogicalHeight), dim);
}

} // namespace

void DrawLevelCompleteScreen(SDL_Renderer* renderer, const GameApp& app,
                             const ControllerSet& controllers) {
    constexpr PackedColor Dim = Rgba(0x0816148c);
    constexpr std::uint8_t PanelAlpha = 216;
    constexpr ResultColors Colors = {Palette::Green, Palette::BrightText, Palette::HintText};
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    DrawDimmedBoard(renderer, Dim);

    const RunSnapshot snapshot = FinalSnapshot(app);
    const std::int32_t level = std::max(snapshot.Level, 1);
    const std::string continueLabel = LocalizedText("Controller.Hint.Continue", "CONTINUE");
    const ResultTexts texts = {
        .Title = LocalizedText("LevelComplete.Title", "LEVEL COMPLETE"),
        .Lines = {LocalizedText("LevelComplete.CompletedLevel", "COMPLETED LEVEL") + " " +
                      std::to_string(level),
                  LocalizedText("LevelComplete.CurrentScore", "CURRENT SCORE") + " " +
                      std::to_string(snapshot.TotalScore),
                  LocalizedText("LevelComplete.NextLevel", "NEXT LEVEL") + " " +
                      std::to_string(WrappingAdd(level, 1))},
        .Hint = LocalizedText("LevelComplete.Hint.Continue", "ENTER OR ESC CONTINUE"),
        .ControllerHint = BuildControllerHint(app, controllers, continueLabel, continueLabel)};
    const ResultLayout layout =
        PlaceLevelComplete(texts, metrics, static_cast<float>(LogicalWidth));
    DrawPanel(renderer, layout.Panel.x, layout.Panel.y, layout.Panel.w, layout.Panel.h,
              Palette::Accent, PanelAlpha);
    DrawResultTexts(renderer, texts, layout, metrics, Colors);
}

void DrawGameOverScreen(SDL_Renderer* renderer, const GameApp& app,
                        const ControllerSet& controllers) {
    constexpr PackedColor Dim = Rgba(0x58080880);
    constexpr PackedColor Body = Rgba(0x120404da);
    constexpr PackedColor Stripe = Rgba(0xa82a2aff);
    constexpr PackedColor Bar = Rgba(0x6c1818e0);
    constexpr ResultColors Colors = {Palette::Red, Rgba(0xf0ceceff), Rgba(0xba7c7cff)};
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    DrawDimmedBoard(renderer, Dim);

    const std::string menuLabel = LocalizedText(Texts::MainMenu);
    const ResultTexts texts = {
        .Title = LocalizedText("GameOver.Title", "GAME OVER"),
        .Lines = {LocalizedText("GameOver.FinalScore", "FINAL SCORE") + " " +
                  std::to_string(FinalSnapshot(app).TotalScore)},
        .Hint = LocalizedText("GameOver.Hint.BackToMainMenu", "ENTER OR ESC BACK TO MAIN MENU"),
        .ControllerHint = BuildControllerHint(app, controllers, menuLabel, menuLabel)};
    const ResultLayout layout = PlaceGameOver(texts, metrics, static_cast<float>(LogicalWidth));
    // The one panel of the game that is red.
    DrawBarredBox(renderer, layout.Panel, Body, Stripe, Bar);
    DrawResultTexts(renderer, texts, layout, metrics, Colors);
}

} // namespace Wirefall
