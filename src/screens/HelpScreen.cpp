#include "screens/HelpScreen.h"

#include "display/LogicalCanvas.h"
#include "draw/BinaryRain.h"
#include "draw/Color.h"
#include "draw/Metrics.h"
#include "draw/NoteBox.h"
#include "draw/Page.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "draw/TileArt.h"
#include "screens/Menu.h"
#include "sim/Scoring.h"
#include "sim/Tile.h"
#include "words/CommandHints.h"
#include "words/ControllerHint.h"
#include "words/Localization.h"
#include "words/SharedTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Wirefall {

namespace {

constexpr std::uint8_t TitleAlpha = 196;
constexpr std::uint8_t FooterAlpha = 190;

constexpr PackedColor SystemsAccent = Rgba(0x62e8a6ff);
constexpr PackedColor ControlsAccent = Rgba(0xffd078ff);

struct LegendEntry {
    TileType Type;
    GameText Word;
};

constexpr std::array<LegendEntry, 3> Legend = {{
    {TileType::Firewall, {"Help.Systems.Legend.Firewall", "FIREWALL"}},
    {TileType::Antivirus, {"Help.Systems.Legend.Antivirus", "ANTIVIRUS"}},
    {TileType::Buffer, {"Help.Systems.Legend.Buffer", "BUFFER"}},
}};

using Paragraphs = std::vector<std::string>;

struct HelpTexts {
    Paragraphs Objective;
    Paragraphs Systems;
    Paragraphs Rules;
    Paragraphs Controls;
    std::string BackHint;
    std::string ControllerHint; // empty without a controller
};

std::string Signed(std::int32_t points) { return (points < 0 ? "" : "+") + std::to_string(points); }

const std::string& ScoringText() {
    static const std::string text = "SCORING: " + Signed(ScoreDelivered) + " DELIVERED, " +
                                    Signed(ScoreLost) + " LOST, " + Signed(ScoreCorrupted) +
                                    " CORRUPTED, " + Signed(ScoreLevelClear) + " LEVEL CLEAR";
    return text;
}

HelpTexts CollectTexts(const GameApp& app, const ControllerSet& controllers) {
    const CommandHints hints = BuildCommandHints(app, controllers);
    const bool toPause = app.HelpReturnScreen == AppScreen::Pause;
    const std::string& goal = LocalizedText(toPause ? Texts::PauseMenu : Texts::MainMenu);
    return {
        .Objective = {LocalizedText("Help.Objective.Line1",
                                    "ROUTE PACKETS FROM SOURCE TO DESTINATION"),
                      LocalizedText("Help.Objective.Line2",
                                    "KEEP TILES CLEAN TO CONTAIN VIRUS SPREAD")},
        .Systems = {LocalizedText("Help.Systems.Line1",
                                  "STRAIGHT, CORNER, T-JUNCTION, CROSS: ROUTE TRAFFIC"),
                    LocalizedText("Help.Systems.Line2", "FIREWALL BLOCKS VIRUS SPREAD"),
                    LocalizedText("Help.Systems.Line3",
                                  "ANTIVIRUS CLEARS INFECTION ON PACKET ENTRY"),
                    LocalizedText("Help.Systems.Line4", "BUFFER DELAYS PACKETS FOR 1 TICK")},
        .Rules = {LocalizedText("Help.Progression.Line1",
                                "GAME OVER: LOST + CORRUPTED >= FAILURE LIMIT"),
                  LocalizedText("Help.Progression.Line2", ScoringText().c_str())},
        .Controls = {hints.Move, hints.Rotate, hints.Place, hints.FastForward},
        .BackHint =
            toPause ? LocalizedText("Help.Hint.BackToPauseMenu", "ENTER OR ESC BACK TO PAUSE MENU")
                    : LocalizedText("Help.Hint.BackToMainMenu", "ENTER OR ESC BACK TO MAIN MENU"),
        .ControllerHint = BuildControllerHint(app, controllers, goal, goal),
    };
}

// The legend stands in as many columns as its words leave room for.
struct LegendLayout {
    float IconSide = 0.0F;
    float RowHeight = 0.0F;
    float ColumnStride = 0.0F;
    std::int32_t Columns = 1;
    float Height = 0.0F;
};

LegendLayout PlaceLegend(const UiMetrics& metrics, float panelWidth) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    constexpr auto Count = static_cast<std::int32_t>(Legend.size());
    const float bodyHeight = TextHeight(metrics.BodyScale);
    std::int32_t widest = 0;
    for (const LegendEntry& entry : Legend) {
        widest = std::max(widest, TextWidth(LocalizedText(entry.Word), metrics.BodyScale));
    }
    LegendLayout legend;
    legend.IconSide = std::max(std::round(d(4.0F)) + bodyHeight, 20.0F);
    legend.RowHeight = std::max(bodyHeight, legend.IconSide);
    legend.ColumnStride = legend.IconSide + d(8.0F) + static_cast<float>(widest) + d(20.0F);
    const float room = std::max(80.0F, panelWidth - 2.0F * d(16.0F));
    const auto fitting = static_cast<std::int32_t>((room + d(20.0F)) / legend.ColumnStride);
    legend.Columns = std::max(1, std::min(fitting, Count));
    const auto rows =
        static_cast<float>(std::max(1, (Count + legend.Columns - 1) / legend.Columns));
    legend.Height = rows * legend.RowHeight + d(8.0F) + (rows - 1.0F) * d(8.0F) + d(10.0F);
    return legend;
}

void DrawLegend(SDL_Renderer* renderer, const UiMetrics& metrics, const LegendLayout& legend,
                float top) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    for (std::size_t i = 0; i < Legend.size(); ++i) {
        const LegendEntry& entry = Legend[i];
        const auto index = static_cast<std::int32_t>(i);
        const auto column = static_cast<float>(index % legend.Columns);
        const std::int32_t line = index / legend.Columns;
        const auto row = static_cast<float>(line);
        const float x = Page::X + d(16.0F) + column * legend.ColumnStride;
        const float rowTop = top + d(8.0F) + row * (legend.RowHeight + d(8.0F));
        const float iconX = std::round(x);
        const float iconY = std::round(rowTop + (legend.RowHeight - legend.IconSide) / 2.0F);
        const float side = std::max(std::trunc(legend.IconSide), 2.0F);
        FillOutlinedRect(renderer, iconX, iconY, side, side, TileBackgroundColor(entry.Type),
                         Palette::FrameLine);
        DrawTile(renderer, MakeTile(entry.Type, 0), iconX - 1.0F, iconY - 1.0F, side + 1.0F,
                 side + 1.0F);
        const std::string& word = LocalizedText(entry.Word);
        DrawText(renderer, word, x + legend.IconSide + d(8.0F),
                 InkCenteredY(word, metrics.BodyScale, rowTop, legend.RowHeight), metrics.BodyScale,
                 Palette::NormalText);
    }
}

void DrawTitleBar(SDL_Renderer* renderer, const UiMetrics& metrics, float centerX, float panelWidth,
                  float height) {
    DrawPanel(renderer, Page::X, Page::Top, panelWidth, height, Palette::Accent, TitleAlpha);
    const std::string& title = LocalizedText("Help.Title", "HELP");
    DrawTextCentered(renderer, title, centerX,
                     InkCenteredY(title, metrics.ScreenTitleScale, Page::Top, height),
                     metrics.ScreenTitleScale, Palette::BrightText);
}

} // namespace

void DrawHelpScreen(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers) {
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    const HelpTexts texts = CollectTexts(app, controllers);
    const auto width = static_cast<float>(LogicalWidth);
    const float centerX = width / 2.0F;
    const float panelWidth = Page::WidthOn(width);
    const float half = (panelWidth - d(16.0F)) / 2.0F;
    const float gap = d(14.0F);
    const float hintHeight = TextHeight(metrics.HintScale);
    const NoteBoxContext boxes = {.Renderer = renderer,
                                  .Metrics = metrics,
                                  .HeadingScale = std::max(2, metrics.ScreenTitleScale - 3),
                                  .BodyScale = metrics.BodyScale,
                                  .LinePitch = TextHeight(metrics.BodyScale) + d(6.0F)};

    const float titleHeight = TextHeight(metrics.ScreenTitleScale) + 2.0F * gap;
    const LegendLayout legend = PlaceLegend(metrics, panelWidth);
    const float objectiveHeight = MeasureNoteBox(boxes, texts.Objective, panelWidth);
    const float systemsHeight = MeasureNoteBox(boxes, texts.Systems, panelWidth) + legend.Height;
    const float lowerHeight = std::max(MeasureNoteBox(boxes, texts.Rules, half),
                                       MeasureNoteBox(boxes, texts.Controls, half));
    const float footerHeight =
        2.0F * gap + hintHeight + (texts.ControllerHint.empty() ? 0.0F : hintHeight + d(12.0F));
    const float footerY = Page::Bottom - footerHeight;

    const float top = Page::Top + titleHeight + d(24.0F);
    const float free = std::max(0.0F, footerY - d(18.0F) - top) -
                       (objectiveHeight + gap + systemsHeight + gap + lowerHeight);
    const float objectiveY = top + std::max(0.0F, free / 2.0F);
    const float systemsY = objectiveY + objectiveHeight + gap;
    const float lowerY = systemsY + systemsHeight + gap;

    DrawBinaryRain(renderer, width, !app.QuitRequested);
    DrawTitleBar(renderer, metrics, centerX, panelWidth, titleHeight);
    DrawNoteBox(boxes, Page::X, objectiveY, panelWidth, objectiveHeight,
                LocalizedText("Help.Objective.Title", "OBJECTIVE"), Palette::Cyan, texts.Objective);
    DrawNoteBox(boxes, Page::X, systemsY, panelWidth, systemsHeight,
                LocalizedText("Help.Systems.Title", "SYSTEMS"), SystemsAccent, texts.Systems);
    DrawLegend(renderer, metrics, legend, systemsY + systemsHeight - legend.Height);
    DrawNoteBox(boxes, Page::X, lowerY, half, lowerHeight,
                LocalizedText("Help.Progression.Title", "RUN RULES"), Palette::Red, texts.Rules);
    DrawNoteBox(boxes, Page::X + half + d(16.0F), lowerY, half, lowerHeight,
                LocalizedText("Help.Controls.Title", "CONTROLS"), ControlsAccent, texts.Controls);

    DrawPanel(renderer, Page::X, footerY, panelWidth, footerHeight, Palette::Accent, FooterAlpha);
    DrawTextCentered(renderer, texts.BackHint, centerX, footerY + gap, metrics.HintScale,
                     Palette::HintText);
    DrawTextCentered(renderer, texts.ControllerHint, centerX, footerY + gap + hintHeight + d(12.0F),
                     metrics.HintScale, Palette::HintText);
}

void PressOnHelp(GameApp& app, PressCode code) {
    PressToLeave(app, code, SoundEvent::UiBack,
                 [](GameApp& leaving) { leaving.Screen = leaving.HelpReturnScreen; });
}

} // namespace Wirefall
