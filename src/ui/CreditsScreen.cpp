#include "ui/CreditsScreen.h"

#include "display/LogicalCanvas.h"
#include "ui/BinaryRain.h"
#include "ui/Color.h"
#include "ui/Localization.h"
#include "ui/Metrics.h"
#include "ui/Page.h"
#include "ui/Primitives.h"
#include "ui/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Wirefall {

namespace {

constexpr std::uint8_t PanelAlpha = 176;

// What of the panel the text shows in.
constexpr float SideMargin = 18.0F;
constexpr float TopMargin = 2.0F;

constexpr float NameBelow = 38.0F;
constexpr float CreditPitch = 114.0F;

constexpr std::array<GameText, 3> Credits = {{
    {"Credits.ProgrammedBy", "PROGRAMMED BY"},
    {"Credits.GfxBy", "GFX BY"},
    {"Credits.SfxMusicBy", "SFX & MUSIC BY"},
}};

SDL_Rect VisibleRect(float panelWidth) {
    const auto rounded = [](float value) { return static_cast<int>(std::round(value)); };
    return {rounded(Page::X + SideMargin), rounded(Page::Top + TopMargin),
            std::max(1, rounded(std::max(20.0F, panelWidth - 2.0F * SideMargin))),
            std::max(1, rounded(std::max(20.0F, Page::Height - 2.0F * TopMargin)))};
}

} // namespace

void DrawCreditsScreen(SDL_Renderer* renderer, const GameApp& app) {
    static const std::string name = "Tomas \"Velkor\" Quell";
    const auto width = static_cast<float>(LogicalWidth);
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    const float panelWidth = Page::WidthOn(width);
    DrawBinaryRain(renderer, width, !app.QuitRequested);
    DrawPanel(renderer, Page::X, Page::Top, panelWidth, Page::Height, Palette::Accent, PanelAlpha);

    const ClipRestorer restorer(renderer);
    const SDL_Rect visible = VisibleRect(panelWidth);
    SDL_SetRenderClipRect(renderer, &visible);
    const std::int32_t scale = std::max(2, metrics.MenuItemScale);
    const float centerX = Page::X + panelWidth / 2.0F;
    const float top = static_cast<float>(visible.y + visible.h) - app.CreditsScroll;
    for (std::size_t i = 0; i < Credits.size(); ++i) {
        const float y = top + static_cast<float>(i) * CreditPitch;
        DrawTextCentered(renderer, LocalizedText(Credits[i]), centerX, y, scale, Palette::Cyan);
        DrawTextCentered(renderer, name, centerX, y + NameBelow, scale, Palette::NormalText);
    }
}

} // namespace Wirefall
