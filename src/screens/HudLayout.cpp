#include "screens/HudLayout.h"

#include "draw/Glyphs.h"
#include "draw/Text.h"

#include <algorithm>

namespace Wirefall {

namespace {

constexpr float Gap = 10.0F; // Around and between the boxes.
constexpr float LowestStatus = 112.0F;

// Inside the boxes, from top to bottom.
constexpr float BoxInset = 8.0F; // Above the title and below what comes last.
constexpr float BelowStatusTitle = 4.0F;
constexpr float BelowStatusLine = 3.0F;
constexpr float AboveBars = 6.0F;
constexpr float AboveChips = 10.0F;
constexpr float SmallestChipGap = 2.0F;
constexpr float BelowCommandsTitle = 8.0F;

// What they come to where the boxes share the height of the panel.
constexpr float StatusGaps = 2.0F * BoxInset + BelowStatusTitle + 2.0F * BelowStatusLine +
                             AboveBars + AboveChips + 2.0F * SmallestChipGap;
constexpr float CommandsGaps = 2.0F * BoxInset + BelowCommandsTitle;

// What the HUD's sizes depend on beside the panel's own.
struct HudSizes {
    float SeparatorGap;
    float BarGap;
    std::int32_t SmallestChipScale;
    float RowGap; // before the rows spread
};

HudSizes SizesFor(const HudLayout& hud, bool compact) {
    return {.SeparatorGap = std::max(4.0F, 0.35F * hud.LineHeight),
            .BarGap = compact ? 10.0F : 8.0F,
            .SmallestChipScale = compact ? 2 : 1,
            .RowGap = std::max(6.0F, 0.7F * hud.LineHeight)};
}

float ChipHeightAt(std::int32_t scale) {
    return static_cast<float>(std::max(12, scale * GlyphRows + 2));
}

void PlaceColumns(HudLayout& hud, const BoardLayout& board) {
    hud.PanelX = static_cast<float>(board.PanelX);
    hud.PanelY = static_cast<float>(board.PanelY);
    hud.PanelWidth = static_cast<float>(board.PanelWidth);
    hud.PanelHeight = static_cast<float>(std::max(180, board.ScreenHeight - 2 * board.PanelY));
    hud.BoxX = hud.PanelX + 12.0F;
    hud.BoxWidth = std::max(40.0F, hud.PanelWidth - 24.0F);
    hud.InnerX = hud.PanelX + 22.0F;
    hud.InnerWidth = std::max(32.0F, hud.BoxWidth - 20.0F);
    hud.TextX = hud.InnerX + 22.0F;
    hud.TextWidth = std::max(20.0F, hud.BoxX + hud.BoxWidth - hud.TextX - 8.0F);
}

void PlaceQueue(HudLayout& hud, const BoardLayout& board) {
    const auto wanted = static_cast<float>(std::min(board.CellSize + 24, 72));
    const float fitting = (std::max(92.0F, hud.PanelHeight - 280.0F) - 20.0F) / 3.0F;
    hud.TileSide = std::min(wanted, std::max(30.0F, fitting));
    hud.TilePitch = hud.TileSide + 10.0F;
    hud.QueueY = hud.PanelY + Gap;
    hud.QueueHeight = std::max(96.0F, 3.0F * hud.TileSide + 62.0F);
    hud.TileX = hud.BoxX + (hud.BoxWidth - hud.TileSide) / 2.0F;
    hud.TileY = hud.PanelY + 42.0F;
}

void SplitHeight(HudLayout& hud, const HudSizes& sizes) {
    hud.StatusY = hud.PanelY + Gap + hud.QueueHeight + Gap;
    const float available = std::max(0.0F, hud.PanelY + hud.PanelHeight - Gap - hud.StatusY);
    const float statusNeed = 3.0F * ChipHeightAt(sizes.SmallestChipScale) + StatusGaps +
                             5.0F * hud.LineHeight + 2.0F * sizes.SeparatorGap +
                             2.0F * hud.BarHeight + sizes.BarGap + hud.TitleHeight;
    const float commandsNeed =
        4.0F * hud.RowHeight + 3.0F * sizes.RowGap + hud.TitleHeight + CommandsGaps;

    hud.StatusHeight = std::min(statusNeed, std::max(0.0F, available - Gap));
    hud.CommandsHeight = std::max(0.0F, available - hud.StatusHeight - Gap);
    if (hud.CommandsHeight < commandsNeed) {
        hud.StatusHeight =
            std::min(std::max(0.0F, available - Gap),
                     std::max(LowestStatus, std::max(0.0F, available - Gap - commandsNeed)));
        hud.CommandsHeight = std::max(0.0F, available - hud.StatusHeight - Gap);
    }
    if (hud.StatusHeight < LowestStatus && available >= LowestStatus + Gap) {
        hud.StatusHeight = LowestStatus;
        hud.CommandsHeight = std::max(0.0F, available - (LowestStatus + Gap));
    }
    hud.CommandsY = hud.StatusY + hud.StatusHeight + Gap;
}

void PlaceStatusLines(HudLayout& hud, const HudSizes& sizes) {
    hud.StatusTitleY = hud.StatusY + BoxInset;
    hud.LevelY = hud.StatusTitleY + hud.TitleHeight + BelowStatusTitle;
    hud.ScoreY = hud.LevelY + hud.LineHeight + BelowStatusLine;
    hud.TargetY = hud.ScoreY + hud.LineHeight + BelowStatusLine;
    hud.FailureLabelY = hud.TargetY + hud.LineHeight + AboveBars;
    hud.FailureBarY = hud.FailureLabelY + hud.LineHeight + sizes.SeparatorGap;
    hud.InfectionLabelY = hud.FailureBarY + hud.BarHeight + sizes.BarGap;
    hud.InfectionBarY = hud.InfectionLabelY + hud.LineHeight + sizes.SeparatorGap;
}

void PlaceChips(HudLayout& hud, const HudSizes& sizes, bool compact) {
    const float top = hud.InfectionBarY + hud.BarHeight + AboveChips;
    const float available = std::max(0.0F, hud.StatusY + hud.StatusHeight - BoxInset - top);
    float gap = std::clamp((compact ? 0.07F : 0.08F) * available, 6.0F, 14.0F);
    std::int32_t scale = std::max(hud.TextScale, sizes.SmallestChipScale);
    float height = ChipHeightAt(scale);
    const auto stackHeight = [&] { return 3.0F * height + 2.0F * gap; };

    while (scale > sizes.SmallestChipScale && stackHeight() > available) {
        --scale;
        height = ChipHeightAt(scale);
    }
    while (gap > SmallestChipGap && stackHeight() > available) {
        gap -= 1.0F;
    }
    if (stackHeight() > available) {
        height = std::max(10.0F, (available - 2.0F * gap) / 3.0F);
    }

    hud.ChipScale = scale;
    hud.ChipHeight = height;
    hud.ChipY[0] = top + std::max(0.0F, (available - stackHeight()) / 2.0F);
    hud.ChipY[1] = hud.ChipY[0] + height + gap;
    hud.ChipY[2] = hud.ChipY[1] + height + gap;
}

void PlaceCommandRows(HudLayout& hud, const HudSizes& sizes) {
    hud.CommandsTitleY = hud.CommandsY + BoxInset;
    const float top = hud.CommandsTitleY + hud.TitleHeight + BelowCommandsTitle;
    const float available = std::max(0.0F, hud.CommandsY + hud.CommandsHeight - BoxInset - top);
    hud.RowGap = sizes.RowGap;
    const auto rowsHeight = [&] { return 4.0F * hud.RowHeight + 3.0F * hud.RowGap; };
    if (available > rowsHeight()) {
        hud.RowGap += (available - rowsHeight()) / 3.0F;
    }
    hud.RowsTop = top + std::max(0.0F, (available - rowsHeight()) / 2.0F);
}

} // namespace

HudLayout PlaceHud(const BoardLayout& board, const UiMetrics& metrics) {
    HudLayout hud;
    hud.TitleScale = metrics.HudTitleScale;
    hud.TextScale = metrics.HudTextScale;
    hud.TitleHeight = TextHeight(metrics.HudTitleScale);
    hud.LineHeight = TextHeight(metrics.HudTextScale);
    hud.BarHeight = metrics.HudCompact ? 14.0F : 12.0F;
    hud.LabelGap = std::max(2.0F, 0.35F * hud.LineHeight);
    hud.ValueGap = std::max(1.0F, 0.25F * hud.LineHeight);
    hud.RowHeight = std::max(16.0F, hud.LabelGap + 3.0F * hud.LineHeight + hud.ValueGap);

    const HudSizes sizes = SizesFor(hud, metrics.HudCompact);
    PlaceColumns(hud, board);
    PlaceQueue(hud, board);
    SplitHeight(hud, sizes);
    PlaceStatusLines(hud, sizes);
    PlaceChips(hud, sizes, metrics.HudCompact);
    PlaceCommandRows(hud, sizes);
    return hud;
}

} // namespace Wirefall
