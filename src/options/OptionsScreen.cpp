#include "options/OptionsScreen.h"

#include "audio/SoundQueue.h"
#include "base/EnumTable.h"
#include "display/LogicalCanvas.h"
#include "draw/BinaryRain.h"
#include "draw/Color.h"
#include "draw/EntryList.h"
#include "draw/Metrics.h"
#include "draw/Page.h"
#include "draw/Primitives.h"
#include "draw/Text.h"
#include "input/PressMeaning.h"
#include "options/AudioPage.h"
#include "options/ControlsPage.h"
#include "options/GraphicsPage.h"
#include "options/PageTable.h"
#include "options/RootPage.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

namespace Wirefall {

namespace {

constexpr std::uint8_t PanelAlpha = 182;

// --- The pages

constexpr auto Pages = TableBy<OptionsPage, const PageTable*>({
    &RootPage,
    &ControlsPage,
    &GraphicsPage,
    &AudioPage,
});

// The last one for a value that is no page.
const PageTable& PageOf(const GameApp& app) {
    const PageTable* const* const page = Pages.Find(app.OptionsPage);
    return page != nullptr ? **page : *Pages.back();
}

// --- How they look

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

// The root page is a menu like the others.
void DrawMenuPage(SDL_Renderer* renderer, const OptionsPageTexts& page,
                  const OptionsLayout& layout) {
    const UiMetrics& metrics = layout.Metrics;
    std::vector<std::string_view> labels;
    for (const OptionRow& row : page.Rows) {
        labels.emplace_back(row.Label);
    }
    EntryList list;
    list.X = layout.CenterX - WidestOf(page.Rows, &OptionRow::Label, metrics.RowScale) / 2.0F;
    list.Y = layout.RowsY;
    list.Pitch = layout.RowPitch;
    list.Scale = metrics.RowScale;
    list.MarkScale = metrics.CursorScale;
    list.MarkGap = DensityPx(metrics.Density, 12.0F);
    DrawEntryList(renderer, list, labels, page.SelectedRow);
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

// --- What a press does

enum class Meaning : std::uint8_t { Other, Up, Down, Left, Right, Confirm, Back };

Meaning MeaningOf(const KeyboardTable& bindings, PressCode code) {
    if (IsUp(bindings, code)) {
        return Meaning::Up;
    }
    if (IsDown(bindings, code)) {
        return Meaning::Down;
    }
    if (IsLeft(bindings, code)) {
        return Meaning::Left;
    }
    if (IsRight(bindings, code)) {
        return Meaning::Right;
    }
    if (IsConfirm(code)) {
        return Meaning::Confirm;
    }
    return IsBack(code) ? Meaning::Back : Meaning::Other;
}

void QueueSoundOf(GameApp& app, Meaning meaning) {
    switch (meaning) {
    case Meaning::Up:
    case Meaning::Down:
    case Meaning::Left:
    case Meaning::Right:
        EnqueueSound(app, SoundEvent::UiMove);
        break;
    case Meaning::Confirm:
        EnqueueSound(app, SoundEvent::UiConfirm);
        break;
    case Meaning::Back:
        EnqueueSound(app, SoundEvent::UiBack);
        break;
    case Meaning::Other:
        break;
    }
}

void ConfirmRow(const PageTable& page, const PageContext& context, std::int32_t row) {
    const std::span<const PageRow> rows = page.Rows(context.App);
    const auto index = static_cast<std::size_t>(row);
    if (index < rows.size() && rows[index].Confirm != nullptr) {
        rows[index].Confirm(context, row);
    }
}

void PressOnPage(const PageTable& page, const PageContext& context, Meaning meaning) {
    page.Prepare(context);
    std::int32_t& row = context.App.Rows.*page.Row;
    const auto count = static_cast<std::int32_t>(page.Rows(context.App).size());
    switch (meaning) {
    case Meaning::Up:
        row = (row + count - 1) % count;
        break;
    case Meaning::Down:
        row = (row + 1) % count;
        break;
    case Meaning::Left:
        AdjustSelectedRow(page, context, -1);
        break;
    case Meaning::Right:
        AdjustSelectedRow(page, context, 1);
        break;
    case Meaning::Confirm:
        ConfirmRow(page, context, row);
        break;
    case Meaning::Back:
        page.Back(context);
        break;
    case Meaning::Other:
        break;
    }
}

} // namespace

OptionsPageTexts CollectOptionsPage(const GameApp& app, const ControllerSet& controllers) {
    const PageTable& page = PageOf(app);
    const PageView view = {app, controllers};
    PageHints hints = page.Hints(view);
    OptionsPageTexts texts = {.Heading = page.Heading,
                              .SelectedRow = app.Rows.*page.Row,
                              .UpperHint = std::move(hints.Upper),
                              .LowerHint = std::move(hints.Lower),
                              .IsMenu = page.IsMenu,
                              .FitHints = page.FitHints};
    std::int32_t number = 0;
    for (const PageRow& row : page.Rows(app)) {
        texts.Rows.push_back({LocalizedText(row.Label),
                              row.Value != nullptr ? row.Value(view, number) : std::string()});
        ++number;
    }
    return texts;
}

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
    if (page.IsMenu) {
        DrawMenuPage(renderer, page, layout);
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

void PressOnOptions(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code) {
    const Meaning meaning = MeaningOf(app.KeyboardBindings, code);
    QueueSoundOf(app, meaning);
    if (app.Capture.CaptureActive) {
        PressDuringCapture(app, code);
        return;
    }
    PressOnPage(PageOf(app), {app, window, renderer}, meaning);
}

} // namespace Wirefall
