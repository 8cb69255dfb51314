#include "screens/MainMenu.h"

#include "base/BuildInfo.h"
#include "display/LogicalCanvas.h"
#include "draw/BinaryRain.h"
#include "draw/Color.h"
#include "draw/EntryList.h"
#include "draw/Metrics.h"
#include "draw/Page.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "game/ScreenFlow.h"
#include "persist/SaveState.h"
#include "screens/Menu.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace Wirefall {

namespace {

constexpr std::string_view TitleLeft = "WIRE";
constexpr std::string_view TitleRight = "FALL";
constexpr PackedColor TitleRightColor = Rgba(0x54e6c3ff);

constexpr std::uint8_t PanelAlpha = 196;

// --- The rows

void ContinueGame(GameApp& app) {
    ShowPlaying(app);
    app.LastSavedRevision = GetRevision();
}

void StartNewGame(GameApp& app) {
    ResetRun();
    CaptureRunSnapshot(app);
    app.LastSavedRevision = GetRevision();
    app.HasSavedRun = true;
    RequestSave(app, 0.0F);
    ShowPlaying(app);
}

void OpenCredits(GameApp& app) {
    app.CreditsScroll = 0.0F;
    app.Screen = AppScreen::Credits;
}

// The first row is there only with a saved run.
constexpr auto MenuRows = std::to_array<MenuRow>({
    {{"MainMenu.ContinueGame", "CONTINUE GAME"}, ContinueGame},
    {{"MainMenu.NewGame", "NEW GAME"}, StartNewGame},
    {{"MainMenu.Options", "OPTIONS"}, [](GameApp& app) { OpenOptions(app, AppScreen::MainMenu); }},
    {{"MainMenu.Help", "HELP"}, [](GameApp& app) { OpenHelp(app, AppScreen::MainMenu); }},
    {{"MainMenu.Credits", "CREDITS"}, OpenCredits},
    {{"MainMenu.Quit", "QUIT"}, RequestQuit},
});

std::span<const MenuRow> ShownRows(const GameApp& app) {
    return std::span(MenuRows).subspan(app.HasSavedRun ? 0 : 1);
}

// --- How they look

struct MenuLayout {
    float CenterX = 0.0F;
    float PanelWidth = 0.0F;
    std::int32_t TitleScale = 1;
    std::int32_t VersionScale = 1;
    float ItemHeight = 0.0F;
    float ItemPitch = 0.0F;
    float TitleY = 0.0F;
    float VersionY = 0.0F;
    float ItemsY = 0.0F;
    float FooterY = 0.0F;
    float FooterHeight = 0.0F;
};

MenuLayout PlaceMenu(float width, const UiMetrics& metrics, std::size_t rows) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    constexpr auto Height = static_cast<float>(LogicalHeight);
    constexpr std::size_t TitleBytes = TitleLeft.size() + 1 + TitleRight.size();

    MenuLayout menu;
    menu.CenterX = width / 2.0F;
    menu.PanelWidth = Page::WidthOn(width);
    menu.TitleScale = FitScaleToLength(TitleBytes, std::max(160.0F, menu.PanelWidth - 96.0F),
                                       metrics.MenuTitleScale);
    menu.VersionScale = menu.TitleScale > 8 ? menu.TitleScale / 3 : 2;
    menu.ItemHeight = TextHeight(metrics.MenuItemScale);
    menu.ItemPitch = menu.ItemHeight + d(4.0F);
    menu.FooterHeight = TextHeight(metrics.MenuFooterScale);

    const float titleHeight = TextHeight(menu.TitleScale);
    const float versionHeight = TextHeight(menu.VersionScale);
    const float listHeight = static_cast<float>(rows - 1) * menu.ItemPitch + menu.ItemHeight;
    const float content = titleHeight + d(6.0F) + versionHeight + d(28.0F) + listHeight + d(30.0F) +
                          menu.FooterHeight;
    menu.TitleY = d(24.0F) + std::max(0.0F, (Height - d(24.0F) - d(14.0F) - content) / 2.0F);
    menu.VersionY = menu.TitleY + titleHeight + d(6.0F);
    menu.ItemsY = menu.VersionY + versionHeight + d(28.0F);
    menu.FooterY = menu.ItemsY + listHeight + d(30.0F);
    return menu;
}

void DrawMenuPanel(SDL_Renderer* renderer, const MenuLayout& menu, const UiMetrics& metrics) {
    const float margin = DensityPx(metrics.Density, 28.0F);
    const float top = std::max(Page::Top, menu.TitleY - margin);
    const float bottom = std::min(menu.FooterY + menu.FooterHeight + margin, Page::Bottom);
    DrawPanel(renderer, Page::X, top, menu.PanelWidth, std::max(48.0F, bottom - top),
              Palette::Accent, PanelAlpha);
}

// Two words of different colours, centred as one line.
void DrawTitle(SDL_Renderer* renderer, const MenuLayout& menu) {
    const auto widthOf = [&](std::string_view text) { return TextWidthPx(text, menu.TitleScale); };
    const float blank = widthOf(" ");
    const float left = menu.CenterX - (blank + widthOf(TitleLeft) + widthOf(TitleRight)) / 2.0F;
    const float right = left + widthOf(TitleLeft) + blank;
    DrawText(renderer, TitleLeft, left, menu.TitleY, menu.TitleScale, Palette::Green);
    DrawText(renderer, TitleRight, right, menu.TitleY, menu.TitleScale, TitleRightColor);
}

void DrawEntries(SDL_Renderer* renderer, const MenuLayout& menu, const UiMetrics& metrics,
                 std::span<const std::string_view> entries, std::int32_t selection) {
    EntryList list;
    list.X = menu.CenterX - WidestEntry(entries, metrics.MenuItemScale) / 2.0F;
    list.Y = menu.ItemsY;
    list.Pitch = menu.ItemPitch;
    list.Scale = metrics.MenuItemScale;
    list.MarkScale = metrics.MenuCursorScale;
    list.MarkGap = DensityPx(metrics.Density, 13.0F);
    list.MarkDrop = (menu.ItemHeight - TextHeight(metrics.MenuCursorScale)) / 2.0F;
    const std::int32_t last = static_cast<std::int32_t>(entries.size()) - 1;
    DrawEntryList(renderer, list, entries, std::clamp(selection, 0, last));
}

void DrawFooter(SDL_Renderer* renderer, const MenuLayout& menu, const UiMetrics& metrics) {
    static const std::string footer = std::string("ENTER SELECT") + "   ESC QUIT";
    DrawTextCentered(renderer, footer, menu.CenterX, menu.FooterY, metrics.MenuFooterScale,
                     Palette::HintText);
}

} // namespace

void DrawMainMenu(SDL_Renderer* renderer, const GameApp& app) {
    static const std::string version = std::string("v") + Version;
    const auto width = static_cast<float>(LogicalWidth);
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    std::array<std::string_view, MenuRows.size()> labels;
    const auto entries = MenuLabels(ShownRows(app), labels);
    const MenuLayout menu = PlaceMenu(width, metrics, entries.size());

    DrawBinaryRain(renderer, width, !app.QuitRequested);
    DrawMenuPanel(renderer, menu, metrics);
    DrawTitle(renderer, menu);
    DrawTextCentered(renderer, version, menu.CenterX, menu.VersionY, menu.VersionScale,
                     Palette::Cyan);
    DrawEntries(renderer, menu, metrics, entries, app.MenuSelection);
    DrawFooter(renderer, menu, metrics);
}

void PressOnMainMenu(GameApp& app, PressCode code) {
    const std::span<const MenuRow> rows = ShownRows(app);
    if (app.MenuSelection >= static_cast<std::int32_t>(rows.size())) {
        app.MenuSelection = 0;
    }
    PressInMenu(app, code, rows, app.MenuSelection, RequestQuit);
}

} // namespace Wirefall
