#include "screens/LevelCompleteScreen.h"

#include "display/LogicalCanvas.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "game/ScreenFlow.h"
#include "screens/Menu.h"
#include "screens/ResultPanel.h"
#include "sim/Arithmetic.h"
#include "sim/Simulation.h"
#include "words/ControllerHint.h"
#include "words/Localization.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace Wirefall {

namespace {

constexpr PackedColor Dim = Rgba(0x0816148c);
constexpr std::uint8_t PanelAlpha = 216;
constexpr ResultColors Colors = {Palette::Green, Palette::BrightText, Palette::HintText};

constexpr float NarrowestPanel = 500.0F;
constexpr float LowestPanel = 210.0F;

ResultTexts CollectTexts(const GameApp& app, const ControllerSet& controllers) {
    const RunSnapshot snapshot = FinalSnapshot(app);
    const std::int32_t level = std::max(snapshot.Level, 1);
    const std::string continueLabel = LocalizedText("Controller.Hint.Continue", "CONTINUE");
    return {.Title = LocalizedText("LevelComplete.Title", "LEVEL COMPLETE"),
            .Lines = {LocalizedText("LevelComplete.CompletedLevel", "COMPLETED LEVEL") + " " +
                          std::to_string(level),
                      LocalizedText("LevelComplete.CurrentScore", "CURRENT SCORE") + " " +
                          std::to_string(snapshot.TotalScore),
                      LocalizedText("LevelComplete.NextLevel", "NEXT LEVEL") + " " +
                          std::to_string(WrappingAdd(level, 1))},
            .Hint = LocalizedText("LevelComplete.Hint.Continue", "ENTER OR ESC CONTINUE"),
            .ControllerHint = BuildControllerHint(app, controllers, continueLabel, continueLabel)};
}

ResultLayout PlaceTexts(const ResultTexts& texts, const UiMetrics& metrics, float width) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    const float titleHeight = TextHeight(metrics.ScreenTitleScale);
    const float lineHeight = TextHeight(metrics.RowScale);
    const float total = 3.0F * lineHeight + 2.0F * d(12.0F) + d(20.0F) + titleHeight +
                        2.0F * d(30.0F) + d(28.0F) + ResultHintsHeight(texts, metrics);
    ResultLayout layout;
    layout.Panel = PlaceCenteredPanel(width, {.Width = WantedResultWidth(texts, metrics),
                                              .Height = total,
                                              .Narrowest = NarrowestPanel,
                                              .Lowest = LowestPanel});
    layout.TitleY = layout.Panel.y + d(30.0F);
    layout.LinesY = layout.TitleY + titleHeight + d(20.0F);
    layout.LinePitch = lineHeight + d(12.0F);
    return layout;
}

void PlayOn(GameApp& app) {
    AdvanceLevel();
    CaptureRunSnapshot(app);
    app.LastSavedRevision = GetRevision();
    app.HasSavedRun = true;
    ShowPlaying(app);
}

} // namespace

void DrawLevelCompleteScreen(SDL_Renderer* renderer, const GameApp& app,
                             const ControllerSet& controllers) {
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    DrawDimmedBoard(renderer, Dim);
    const ResultTexts texts = CollectTexts(app, controllers);
    const ResultLayout layout = PlaceTexts(texts, metrics, static_cast<float>(LogicalWidth));
    DrawPanel(renderer, layout.Panel.x, layout.Panel.y, layout.Panel.w, layout.Panel.h,
              Palette::Accent, PanelAlpha);
    DrawResultTexts(renderer, texts, layout, metrics, Colors);
}

void PressOnLevelComplete(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiConfirm, PlayOn);
}

} // namespace Wirefall
