#include "screens/ResultPanel.h"

#include "display/LogicalCanvas.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "screens/BoardScreen.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <cstddef>

namespace Wirefall {

namespace {

float HintGap(const UiMetrics& metrics) { return DensityPx(metrics.Density, 14.0F); }

} // namespace

RunSnapshot FinalSnapshot(const GameApp& app) {
    return app.PreviousSnapshotValid ? app.PreviousSnapshot : BuildRunSnapshot();
}

float WantedResultWidth(const ResultTexts& texts, const UiMetrics& metrics) {
    float widest = std::max({TextWidthPx(texts.Title, metrics.ScreenTitleScale),
                             TextWidthPx(texts.Hint, metrics.HintScale),
                             TextWidthPx(texts.ControllerHint, metrics.HintScale)});
    for (const std::string& line : texts.Lines) {
        widest = std::max(widest, TextWidthPx(line, metrics.RowScale));
    }
    return widest + 2.0F * DensityPx(metrics.Density, 72.0F);
}

float ResultHintsHeight(const ResultTexts& texts, const UiMetrics& metrics) {
    const float hintHeight = TextHeight(metrics.HintScale);
    return texts.ControllerHint.empty() ? hintHeight : hintHeight + HintGap(metrics) + hintHeight;
}

void DrawDimmedBoard(SDL_Renderer* renderer, PackedColor dim) {
    DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);
    FillRect(renderer, 0.0F, 0.0F, static_cast<float>(LogicalWidth),
             static_cast<float>(LogicalHeight), dim);
}

void DrawResultTexts(SDL_Renderer* renderer, const ResultTexts& texts, const ResultLayout& layout,
                     const UiMetrics& metrics, const ResultColors& colors) {
    const float centerX = layout.Panel.x + layout.Panel.w / 2.0F;
    const float hintY = HintsTop(layout.Panel, {.Hints = ResultHintsHeight(texts, metrics),
                                                .BottomMargin = DensityPx(metrics.Density, 30.0F)});
    DrawTextCentered(renderer, texts.Title, centerX, layout.TitleY, metrics.ScreenTitleScale,
                     colors.Title);
    for (std::size_t i = 0; i < texts.Lines.size(); ++i) {
        DrawTextCentered(renderer, texts.Lines[i], centerX,
                         layout.LinesY + static_cast<float>(i) * layout.LinePitch, metrics.RowScale,
                         colors.Line);
    }
    DrawTextCentered(renderer, texts.Hint, centerX, hintY, metrics.HintScale, colors.Hint);
    DrawTextCentered(renderer, texts.ControllerHint, centerX,
                     hintY + TextHeight(metrics.HintScale) + HintGap(metrics), metrics.HintScale,
                     colors.Hint);
}

} // namespace Wirefall
