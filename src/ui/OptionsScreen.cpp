#include "ui/OptionsScreen.h"

#include "display/LogicalCanvas.h"
#include "ui/BinaryRain.h"
#include "ui/Color.h"
#include "ui/Glyphs.h"
#include "ui/Localization.h"
#include "ui/Metrics.h"
#include "ui/OptionsPages.h"
#include "ui/Page.h"
#include "ui/Primitives.h"
#include "ui/Text.h"

#include <algorithm>
#include <cstddef>

namespace Wirefall {

namespace {

constexpr std::uint8_t PanelAlpha = 182;
constexpr const char* SelectionMark = ">";

// Where everything but the columns of the rows stands.
struct OptionsLayout {
    UiMetrics Metrics;
    float CenterX = 0.0F;
    float PanelWidth = 0.0F;
    float TitleY = 0.0F;
    float HeadingY = 0.0F;
    float RowsY = 0.0F;
    float RowPitch = 0.0F;
    float UpperHintY = 0.0F;
    float LowerHintY = 0.0F;

    float RowY(std::size_t row) const { return RowsY + static_cast<float>(row) * RowPitch; }
};

OptionsLayout PlaceOptions(const UiMetrics& metrics, float width, std::size_t rowCount) {
    const auto d = [&](float k) { return DensityPx(metrics.Density, k); };
    const auto rows = static_cast<std::int32_t>(rowCount);
    OptionsLayout layout;
    layout.Metrics = metrics;
    layout.CenterX = width / 2.0F;
    layout.PanelWidth = Page::WidthOn(width);
    layout.TitleY = Page::Top + d(24.0F);
    layout.HeadingY = TextHeight(metrics.ScreenTitleScale) + d(24.0F) + Page::Top + d(28.0F);

    const float hintHeight = TextHeight(metrics.HintScale);
    layout.LowerHintY = Page::Bottom - d(24.0F) - hintHeight;
    layout.UpperHintY = layout.LowerHintY - (hintHeight + d(12.0F));

    const OptionListArea area = {.ListAreaTop = layout.HeadingY,
                                 .SectionScale = metrics.SectionScale,
                                 .RowScale = metrics.RowScale,
                                 .HintTop = layout.UpperHintY,
                                 .PreferredPitch = TextHeight(metrics.RowScale) + d(10.0F),
                                 .Density = metrics.Density};
    layout.RowPitch = OptionRowPitch(area, rows);
    layout.RowsY = OptionListTop(area, rows, layout.RowPitch);
    return layout;
}

float WidestOf(const std::vector<OptionRow>& rows, std::string OptionRow::*column,
               std::int32_t scale) {
    std::int32_t widest = 0;
    for (const OptionRow& row : rows) {
        widest = std::max(widest, TextWidth(row.*column, scale));
    }
    return static_cast<float>(widest);
}

bool IsSelected(const OptionsPageTexts& page, std::size_t row) {
    return static_cast<std::int32_t>(row) == page.SelectedRow;
}

// The root page is a menu, and its mark is that of the menus.
void DrawMenuRows(SDL_Renderer* renderer, const OptionsPageTexts& page,
                  const OptionsLayout& layout) {
    const UiMetrics& metrics = layout.Metrics;
    const float x =
        layout.CenterX - WidestOf(page.Rows, &OptionRow::Label, metrics.RowScale) / 2.0F;
    const float markX =
        x - DensityPx(metrics.Density, 12.0F) - static_cast<float>(5 * metrics.CursorScale);
    for (std::size_t i = 0; i < page.Rows.size(); ++i) {
        const bool selected = IsSelected(page, i);
        if (selected) {
            DrawText(renderer, SelectionMark, markX, layout.RowY(i), metrics.CursorScale,
                     Palette::BrightText);
        }
        DrawText(renderer, page.Rows[i].Label, x, layout.RowY(i), metrics.RowScale,
                 selected ? Palette::BrightText : Palette::NormalText);
    }
}

// Two columns, in the middle together.
void DrawValueRows(SDL_Renderer* renderer, const OptionsPageTexts& page,
                   const OptionsLayout& layout) {
    const UiMetrics& metrics = layout.Metrics;
    const float labelWidth = WidestOf(page.Rows, &OptionRow::Label, metrics.RowScale);
    const float valueWidth = WidestOf(page.Rows, &OptionRow::Value, metrics.RowScale);
    const float gap = DensityPx(metrics.Density, 32.0F);
    const float labelX = layout.CenterX - (labelWidth + gap + valueWidth) / 2.0F;
    const OptionRowContext context = {.Renderer = renderer,
                                      .Density = metrics.Density,
                                      .RowScale = metrics.RowScale,
                                      .LabelX = labelX,
                                      .ValueX = labelX + labelWidth + gap};
    for (std::size_t i = 0; i < page.Rows.size(); ++i) {
        const OptionRow& row = page.Rows[i];
        DrawOptionRow(context, row.Label, row.Value, layout.RowY(i), IsSelected(page, i));
    }
}

void DrawHint(SDL_Renderer* renderer, const OptionsPageTexts& page, const OptionsLayout& layout,
              const std::string& hint, float y) {
    const UiMetrics& metrics = layout.Metrics;
    const float room =
        std::max(20.0F, layout.PanelWidth - 2.0F * DensityPx(metrics.Density, 24.0F));
    const std::int32_t scale =
        page.FitHints ? FitScaleToWidth(hint, room, metrics.HintScale) : metrics.HintScale;
    DrawTextCentered(renderer, hint, layout.CenterX, y, scale, Palette::HintText);
}

} // namespace

void DrawOptionsScreen(SDL_Renderer* renderer, const GameApp& app,
                       const ControllerSet& controllers) {
    const auto width = static_cast<float>(LogicalWidth);
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    const OptionsPageTexts page = CollectOptionsPage(app, controllers);
    const OptionsLayout layout = PlaceOptions(metrics, width, page.Rows.size());

    DrawBinaryRain(renderer, width, !app.QuitRequested);
    DrawPanel(renderer, Page::X, Page::Top, layout.PanelWidth, Page::Height, Palette::Accent,
              PanelAlpha);
    DrawTextCentered(renderer, LocalizedText("Options.Title", "OPTIONS"), layout.CenterX,
                     layout.TitleY, metrics.ScreenTitleScale, Palette::BrightText);
    DrawTextCentered(renderer, LocalizedText(page.Heading), layout.CenterX, layout.HeadingY,
                     metrics.SectionScale, Palette::Cyan);
    if (app.OptionsPage == OptionsPage::Root) {
        DrawMenuRows(renderer, page, layout);
    } else {
        DrawValueRows(renderer, page, layout);
    }
    DrawHint(renderer, page, layout, page.UpperHint, layout.UpperHintY);
    DrawHint(renderer, page, layout, page.LowerHint, layout.LowerHintY);
}

void DrawOptionRow(const OptionRowContext& context, const std::string& label,
                   const std::string& value, float y, bool selected) {
    const PackedColor color = selected ? Palette::BrightText : Palette::NormalText;
    if (selected) {
        DrawText(context.Renderer, SelectionMark,
                 context.LabelX - DensityPx(context.Density, 24.0F), y, context.RowScale, color);
    }
    DrawText(context.Renderer, label, context.LabelX, y, context.RowScale, color);
    DrawText(context.Renderer, value, context.ValueX, y, context.RowScale, color);
}

} // namespace Wirefall
