#include "draw/Metrics.h"

#include "draw/Text.h"

#include <algorithm>
#include <cmath>

namespace Wirefall {

namespace {

constexpr float SmallestScale = 0.01F;
constexpr float TightBelow = 0.78F;
constexpr float TightestBelow = 0.62F;

constexpr UiMetrics Roomy = {};

constexpr UiMetrics Tight = {.Density = 1,
                             .MenuTitleScale = 9,
                             .MenuItemScale = 3,
                             .MenuCursorScale = 2,
                             .MenuFooterScale = 2,
                             .ScreenTitleScale = 5,
                             .SectionScale = 3,
                             .RowScale = 2,
                             .BodyScale = 2,
                             .HintScale = 2,
                             .CursorScale = 2,
                             .HudTitleScale = 3,
                             .HudTextScale = 2,
                             .HudCompact = true};

constexpr UiMetrics Tightest = {.Density = 2,
                                .MenuTitleScale = 7,
                                .MenuItemScale = 2,
                                .MenuCursorScale = 2,
                                .MenuFooterScale = 2,
                                .ScreenTitleScale = 4,
                                .SectionScale = 2,
                                .RowScale = 2,
                                .BodyScale = 1,
                                .HintScale = 1,
                                .CursorScale = 2,
                                .HudTitleScale = 3,
                                .HudTextScale = 2,
                                .HudCompact = true};

UiMetrics MetricsAtScale(float scale) {
    UiMetrics metrics = scale < TightestBelow ? Tightest : scale < TightBelow ? Tight : Roomy;
    metrics.Scale = scale;
    return metrics;
}

float RowHeight(const OptionListArea& area) { return TextHeight(area.RowScale); }

float ListTop(const OptionListArea& area) {
    return area.ListAreaTop + TextHeight(area.SectionScale) + DensityPx(area.Density, 18.0F);
}

float FreeHeight(const OptionListArea& area) {
    return std::max(0.0F, area.HintTop - DensityPx(area.Density, 20.0F) - ListTop(area));
}

} // namespace

UiMetrics MeasureUiMetrics(SDL_Renderer* renderer, std::int32_t logicalWidth,
                           std::int32_t logicalHeight) {
    if (renderer == nullptr || logicalWidth < 1 || logicalHeight < 1) {
        return Roomy;
    }
    SDL_FRect presented = {};
    if (!SDL_GetRenderLogicalPresentationRect(renderer, &presented) || !(presented.w > 0.0F) ||
        !(presented.h > 0.0F)) {
        return Roomy;
    }
    const float scale = std::min(presented.w / static_cast<float>(logicalWidth),
                                 presented.h / static_cast<float>(logicalHeight));
    return MetricsAtScale(scale > SmallestScale ? scale : SmallestScale);
}

float DensityPx(std::int32_t density, float k) {
    switch (density) {
    case 1:
        return 0.9F * k;
    case 2:
        return 0.82F * k;
    default:
        return k;
    }
}

float OptionRowPitch(const OptionListArea& area, std::int32_t rows) {
    if (rows < 2) {
        return area.PreferredPitch;
    }
    const float rowHeight = RowHeight(area);
    const float fitting = (FreeHeight(area) - rowHeight) / static_cast<float>(rows - 1);
    return std::min(area.PreferredPitch, std::max(2.0F + rowHeight, fitting));
}

float OptionListTop(const OptionListArea& area, std::int32_t rows, float pitch) {
    const float listHeight = RowHeight(area) + static_cast<float>(rows - 1) * pitch;
    return ListTop(area) + std::max(0.0F, (FreeHeight(area) - listHeight) / 2.0F);
}

std::string PercentText(float fraction) {
    return std::to_string(std::lround(fraction * 100.0F)) + "%";
}

} // namespace Wirefall
