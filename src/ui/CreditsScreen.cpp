#include "ui/CreditsScreen.h"

#include "display/LogicalCanvas.h"
#include "ui/BinaryRain.h"
#include "ui/Color.h"
#include "ui/Localization.h"
#include "ui/Metrics.h"
#include "ui/Primitives.h"
#include "ui/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

namespace Wirefall {

namespace {

constexpr float PanelX = 56.0F;
constexpr float PanelY = 42.0F;
constexpr float PanelHeight = 636.0F;
constexpr std::uint8_t PanelAlpha = 176;

// What of the panel the text shows in.
constexpr float SideMargin = 18.0F;
constexpr float TopMargin = 2.0F;

constexpr float NameBelow = 38.0F;
constexpr float NextBelow = 76.0F;

struct Credit {
    const char* Key;
    const char* DefaultText;
};

constexpr std::array<Credit, 3> Credits = {{
    {"Credits.ProgrammedBy", "PROGRAMMED BY"},
    {"Credits.GfxBy", "GFX BY"},
    {"Credits.SfxMusicBy", "SFX & MUSIC BY"},
}};

SDL_Rect VisibleRect(float panelWidth) {
    const auto rounded = [](float value) { return static_cast<int>(std::round(value)); };
    return {rounded(PanelX + SideMargin), rounded(PanelY + TopMargin),
            std::max(1, rounded(std::max(20.0F, panelWidth - 2.0F * SideMargin))),
            std::max(1, rounded(std::max(20.0F, PanelHeight - 2.0F * TopMargin)))};
}

} // namespace

void DrawCreditsScreen(SDL_Renderer* renderer, const GameApp& app) {
    static const std::string name = "Tomas \"Velkor\" Quell";
    const auto width = static_cast<float>(LogicalWidth);
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    const float panelWidth = std::max(120.0F, width - 2.0F * PanelX);
    DrawBinaryRain(renderer, width, !app.QuitRequested);
    DrawPanel(renderer, PanelX, PanelY, panelWidth, PanelHeight, Palette::Accent, PanelAlpha);

    const ClipRestorer restorer(renderer);
    const SDL_Rect visible = VisibleRect(panelWidth);
    SDL_SetRenderClipRect(renderer, &visible);
    const std::int32_t scale = std::max(2, metrics.MenuItemScale);
    const float centerX = PanelX + panelWidth / 2.0F;
    float y = static_cast<float>(visible.y + visible.h) - app.CreditsScroll;
    for (const Credit& credit : Credits) {
        DrawTextCentered(renderer, LocalizedText(credit.Key, credit.DefaultText), centerX, y, scale,
                         Palette::Cyan);
        DrawTextCentered(renderer, name, centerX, y + NameBelow, scale, Palette::NormalText);
        y += NameBelow + NextBelow;
    }
}

} // namespace Wirefall
