#include "ui/PauseScreen.h"

#include "display/LogicalCanvas.h"
#include "ui/BoardScreen.h"
#include "ui/Color.h"
#include "ui/ControllerHint.h"
#include "ui/Localization.h"
#include "ui/Metrics.h"
#include "ui/Primitives.h"
#include "ui/SharedTexts.h"
#include "ui/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Wirefall {

namespace {

constexpr std::uint8_t PanelAlpha = 214;
constexpr float LowestPanel = 250.0F;
constexpr float TallestPanel = 624.0F;
constexpr float NarrowestPanel = 420.0F;
constexpr float CanvasMargin = 96.0F;

constexpr std::size_t EntryCount = 4;

struct PauseTexts {
    std::string Title;
    std::array<std::string, EntryCount> Entries;
    std::string Hint;
    std::string ControllerHint; // empty without a controller
};

PauseTexts CollectTexts(const GameApp& app, const ControllerSet& controllers) {
    return {.Title = LocalizedText("Pause.Title", "PAUSED"),
            .Entries = {LocalizedText("Pause.Menu.Resume", "RESUME"),
                        LocalizedText("Pause.Menu.Options", "OPTIONS"),
                        LocalizedText("Pause.Menu.Help", "HELP"),
                        LocalizedText("Pause.Menu.MainMenu", "MAIN MENU")},
            .Hint = LocalizedText("Pause.Hint.Primary", "ENTER SELECT   ESC RESUME"),
            .ControllerHint =
                BuildControllerHint(app, controllers, LocalizedText(Texts::Select),
                                    LocalizedText("Controller.Hint.Resume", "RESUME"))};
}

float WidthOf(const std::string& text, std::int32_t scale) {
    return static_cast<float>(TextWidth(text, scale));
}

struct PauseLayout {
    float PanelX = 0.0F;
    float PanelY = 0.0F;
    float PanelWidth = 0.0F;
    float PanelHeight = 0.0F;
    float CenterX = 0.0F;
    float TitleY = 0.0F;
    float ItemsX = 0.0F;
    float ItemsY = 0.0F;
    float ItemHeight = 0.0F;
    float ItemPitch = 0.0F;
    float HintY = 0.0F;
    float ControllerHintY = 0.0F;
};

PauseLayout PlacePause(const PauseTexts& texts, const UiMetrics& metrics, float width) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    constexpr auto Height = static_cast<float>(LogicalHeight);
    PauseLayout pause;

    float widestEntry = 0.0F;
    for (const std::string& entry : texts.Entries) {
        widestEntry = std::max(widestEntry, WidthOf(entry, metrics.MenuItemScale));
    }
    const float widest = std::max({widestEntry + d(12.0F) + WidthOf(">", metrics.CursorScale),
                                   WidthOf(texts.Title, metrics.ScreenTitleScale),
                                   WidthOf(texts.Hint, metrics.HintScale),
                                   WidthOf(texts.ControllerHint, metrics.HintScale)});
    pause.PanelWidth =
        std::min(width - CanvasMargin, std::max(NarrowestPanel, widest + 2.0F * d(68.0F)));

    const float titleHeight = TextHeight(metrics.ScreenTitleScale);
    const float hintHeight = TextHeight(metrics.HintScale);
    const float hintBlock =
        hintHeight + (texts.ControllerHint.empty() ? 0.0F : hintHeight + d(10.0F));
    pause.ItemHeight = TextHeight(metrics.MenuItemScale);
    pause.ItemPitch = pause.ItemHeight + d(16.0F);
    const float items = static_cast<float>(EntryCount - 1) * pause.ItemPitch + pause.ItemHeight;
    const float content = items + titleHeight + d(54.0F);
    const float total = content + d(26.0F) + d(40.0F) + hintBlock + d(22.0F);
    pause.PanelHeight = total < LowestPanel ? LowestPanel : std::min(total, TallestPanel);
    pause.PanelX = (width - pause.PanelWidth) / 2.0F;
    pause.PanelY = (Height - pause.PanelHeight) / 2.0F;
    pause.CenterX = pause.PanelX + pause.PanelWidth / 2.0F;

    // A panel that is cut off at its tallest gives up its slack above the hint first.
    pause.HintY = pause.PanelY + pause.PanelHeight - d(22.0F) - hintBlock;
    pause.ControllerHintY = pause.HintY + hintHeight + d(10.0F);
    const float spare =
        std::max(0.0F, pause.PanelHeight - d(26.0F) - d(22.0F) - content - hintBlock);
    const float slack = std::min(spare, d(40.0F));
    const float top = pause.PanelY + d(26.0F);
    const float room = std::max(0.0F, pause.HintY - slack - top);
    pause.TitleY = top + std::max(0.0F, (room - content) / 2.0F);
    pause.ItemsY = pause.TitleY + titleHeight + d(54.0F);
    pause.ItemsX = pause.CenterX - widestEntry / 2.0F;
    return pause;
}

} // namespace

void DrawPauseScreen(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers) {
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);

    const PauseTexts texts = CollectTexts(app, controllers);
    const PauseLayout pause = PlacePause(texts, metrics, static_cast<float>(LogicalWidth));
    DrawPanel(renderer, pause.PanelX, pause.PanelY, pause.PanelWidth, pause.PanelHeight,
              Palette::Accent, PanelAlpha);
    DrawTextCentered(renderer, texts.Title, pause.CenterX, pause.TitleY, metrics.ScreenTitleScale,
                     Palette::BrightText);
    for (std::size_t i = 0; i < texts.Entries.size(); ++i) {
        const float y = pause.ItemsY + static_cast<float>(i) * pause.ItemPitch;
        const bool selected = static_cast<std::int32_t>(i) == app.PauseSelection;
        if (selected) {
            const float cursorX = pause.ItemsX - DensityPx(metrics.Density, 12.0F) -
                                  static_cast<float>(5 * metrics.CursorScale);
            const float cursorY = y + (pause.ItemHeight - TextHeight(metrics.CursorScale)) / 2.0F;
            DrawText(renderer, ">", cursorX, cursorY, metrics.CursorScale, Palette::BrightText);
        }
        DrawText(renderer, texts.Entries[i], pause.ItemsX, y, metrics.MenuItemScale,
                 selected ? Palette::BrightText : Palette::NormalText);
    }
    DrawTextCentered(renderer, texts.Hint, pause.CenterX, pause.HintY, metrics.HintScale,
                     Palette::HintText);
    DrawTextCentered(renderer, texts.ControllerHint, pause.CenterX, pause.ControllerHintY,
                     metrics.HintScale, Palette::HintText);
}

} // namespace Wirefall
