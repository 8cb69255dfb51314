#include "screens/CreditsScreen.h"

#include "display/LogicalCanvas.h"
#include "draw/BinaryRain.h"
#include "draw/Color.h"
#include "draw/Metrics.h"
#include "draw/Page.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "screens/Menu.h"
#include "words/Localization.h"

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

constexpr float RollSpeed = 42.0F; // Logical pixels a second.

constexpr float NameBelow = 38.0F;
constexpr float CreditPitch = 114.0F;

constexpr std::array<GameText, 3> Credits = {{
    {"Credits.ProgrammedBy", "PROGRAMMED BY"},
    {"Credits.GfxBy", "GFX BY"},
    {"Credits.SfxMusicBy", "SFX & MUSIC BY"},
}};

std::int32_t TextScale(const UiMetrics& metrics) { return std::max(2, metrics.MenuItemScale); }

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
    const std::int32_t scale = TextScale(metrics);
    const float centerX = Page::X + panelWidth / 2.0F;
    const float top = static_cast<float>(visible.y + visible.h) - app.CreditsScroll;
    for (std::size_t i = 0; i < Credits.size(); ++i) {
        const float y = top + static_cast<float>(i) * CreditPitch;
        DrawTextCentered(renderer, LocalizedText(Credits[i]), centerX, y, scale, Palette::Cyan);
        DrawTextCentered(renderer, name, centerX, y + NameBelow, scale, Palette::NormalText);
    }
}

void RollCredits(GameApp& app, SDL_Renderer* renderer, float seconds) {
    app.CreditsScroll += RollSpeed * seconds;
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    // Until the last line has left the panel.
    if (app.CreditsScroll > TextHeight(TextScale(metrics)) + 930.0F) {
        app.CreditsScroll = 0.0F;
        app.Screen = AppScreen::MainMenu;
    }
}

void PressOnCredits(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiBack,
                 [](GameApp& leaving) { leaving.Screen = AppScreen::MainMenu; });
}

} // namespace Wirefall
