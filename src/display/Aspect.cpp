#include "display/Aspect.h"

#include "display/LogicalCanvas.h"

#include <algorithm>
#include <array>
#include <span>

namespace Wirefall {

namespace {

struct Ratio {
    std::int32_t A;
    std::int32_t B;
};

constexpr Ratio Classic = {4, 3};
constexpr Ratio Wide = {16, 9};
constexpr Ratio WideTall = {16, 10};
constexpr Ratio ThreeToTwo = {3, 2};
constexpr Ratio SuperUltrawide = {32, 9};
constexpr std::array<Ratio, 4> Ultrawide = {{{64, 27}, {43, 18}, {21, 9}, {12, 5}}};

bool Matches(std::int32_t width, std::int32_t height, std::span<const Ratio> ratios) {
    return std::ranges::any_of(ratios, [width, height](const Ratio& ratio) {
        return AspectMatches(width, height, ratio.A, ratio.B);
    });
}

struct CanvasWidth {
    std::span<const Ratio> Ratios;
    std::int32_t Width;
};

// The first row that fits decides: a tiny size fits more than one.
constexpr std::array<CanvasWidth, 4> WidescreenCanvasWidths = {{
    {{&SuperUltrawide, 1}, 2560},
    {Ultrawide, 1728},
    {{&ThreeToTwo, 1}, 1080},
    {{&WideTall, 1}, 1152},
}};
constexpr std::int32_t ClassicCanvasWidth = 960;
constexpr std::int32_t DefaultCanvasWidth = 1280;

constexpr std::array<Ratio, 4> OtherWidescreenRatios = {Wide, WideTall, ThreeToTwo, SuperUltrawide};

} // namespace

bool AspectMatches(std::int32_t width, std::int32_t height, std::int32_t a, std::int32_t b) {
    if (width < 1 || height < 1) {
        return false;
    }
    // Sizes come from files and displays, so the products get twice the room.
    const std::int64_t l = std::int64_t{width} * b;
    const std::int64_t r = std::int64_t{a} * height;
    const std::int64_t larger = std::max(l, r);
    const std::int64_t tolerance = larger >= 400 ? larger / 200 : 1;
    const std::int64_t difference = l > r ? l - r : r - l;
    return difference <= tolerance;
}

bool IsUltrawide(std::int32_t width, std::int32_t height) {
    return Matches(width, height, Ultrawide);
}

bool IsResolutionAllowed(AspectMode aspectMode, std::int32_t width, std::int32_t height) {
    if (aspectMode == AspectMode::Classic4x3) {
        return AspectMatches(width, height, Classic.A, Classic.B);
    }
    return Matches(width, height, OtherWidescreenRatios) || IsUltrawide(width, height);
}

void UpdateLogicalWidth(AspectMode aspectMode, std::int32_t width, std::int32_t height) {
    if (aspectMode == AspectMode::Classic4x3) {
        LogicalWidth = ClassicCanvasWidth;
        return;
    }
    LogicalWidth = DefaultCanvasWidth;
    for (const CanvasWidth& row : WidescreenCanvasWidths) {
        if (Matches(width, height, row.Ratios)) {
            LogicalWidth = row.Width;
            return;
        }
    }
}

} // namespace Wirefall
