#pragma once

// Where everything of the HUD stands. The panel holds three boxes, one above the other: the queue,
// the status and the commands. A panel too low for them makes concessions in a fixed order: first
// the status box gives way to the commands, down to a floor, then the counters in it lose text
// size, gap and height. What still does not fit overflows its box. Everything is in float logical
// pixels.

#include "draw/Metrics.h"
#include "screens/BoardLayout.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Wirefall {

inline constexpr std::size_t ChipCount = 3;
inline constexpr std::size_t CommandRowCount = 4;

struct HudLayout {
    std::int32_t TitleScale = 1;
    std::int32_t TextScale = 1;
    float TitleHeight = 0.0F;
    float LineHeight = 0.0F;

    float PanelX = 0.0F;
    float PanelY = 0.0F;
    float PanelWidth = 0.0F;
    float PanelHeight = 0.0F;
    float BoxX = 0.0F; ///< Of all three boxes.
    float BoxWidth = 0.0F;
    float InnerX = 0.0F; ///< Of bars, counters, icons and texts.
    float InnerWidth = 0.0F;

    float QueueY = 0.0F;
    float QueueHeight = 0.0F;
    float TileX = 0.0F;
    float TileY = 0.0F; ///< Of the first tile.
    float TileSide = 0.0F;
    float TilePitch = 0.0F;

    float StatusY = 0.0F;
    float StatusHeight = 0.0F;
    float StatusTitleY = 0.0F;
    float LevelY = 0.0F;
    float ScoreY = 0.0F;
    float TargetY = 0.0F;
    float FailureLabelY = 0.0F;
    float FailureBarY = 0.0F;
    float InfectionLabelY = 0.0F;
    float InfectionBarY = 0.0F;
    float BarHeight = 0.0F;
    std::int32_t ChipScale = 1; ///< The text size that the counters would like.
    float ChipHeight = 0.0F;
    std::array<float, ChipCount> ChipY{};

    float CommandsY = 0.0F;
    float CommandsHeight = 0.0F;
    float CommandsTitleY = 0.0F;
    float RowsTop = 0.0F;
    float RowHeight = 0.0F;
    float RowGap = 0.0F;
    float LabelGap = 0.0F; ///< Between the label of a command and its keys.
    float ValueGap = 0.0F; ///< Between two lines of keys.
    float TextX = 0.0F;    ///< Of labels and keys; the icons stand at InnerX.
    float TextWidth = 0.0F;
};

HudLayout PlaceHud(const BoardLayout& board, const UiMetrics& metrics);

} // namespace Wirefall
