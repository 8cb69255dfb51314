#include "draw/NoteBox.h"

#include "draw/Primitives.h"
#include "draw/RectBatch.h"
#include "draw/Text.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Wirefall {

namespace {

constexpr PackedColor BoxBody = Rgba(0x081614e4);

void DrawFrame(SDL_Renderer* renderer, float x, float y, float w, float h, PackedColor accent) {
    constexpr float T = BarThickness;
    FillRect(renderer, x, y, w, h, BoxBody);
    FillRect(renderer, x, y, w, T, Palette::FrameLine);
    FillRect(renderer, x, y + h - T, w, T, Palette::FrameLine);
    FillRect(renderer, x, y, T, h, Palette::FrameLine);
    FillRect(renderer, x + w - T, y, T, h, Palette::FrameLine);
    FillRect(renderer, x, y, w, T, accent);
}

// A small disc, one row of pixels at a time.
void DrawBullet(SDL_Renderer* renderer, float x, float middleY, PackedColor color) {
    constexpr std::int32_t Reach = 3;
    constexpr float RadiusSquared = 6.25F;
    static RectBatch rows;
    for (std::int32_t i = -Reach; i <= Reach; ++i) {
        const auto d = static_cast<float>(i);
        const float r = std::sqrt(std::max(0.0F, RadiusSquared - d * d));
        rows.Add(x - r, middleY + d, 2.0F * r + 1.0F, 1.0F);
    }
    rows.Flush(renderer, color);
}

} // namespace

// A rectangle as its callers have it, and colours. NOLINTNEXTLINE(readability-function-size)
void DrawNoteBox(const NoteBoxContext& context, float x, float y, float w, float h,
                 std::string_view heading, PackedColor accent,
                 std::span<const std::string> paragraphs) {
    const auto d = [&](float k) { return DensityPx(context.Metrics.Density, k); };
    const float margin = d(16.0F);
    const float top = d(10.0F);
    const float bodyHeight = TextHeight(context.BodyScale);
    const float headingHeight = TextHeight(context.HeadingScale);

    DrawFrame(context.Renderer, x, y, w, h, accent);
    DrawText(context.Renderer, heading, x + margin, y + top, context.HeadingScale,
             Palette::BrightText);

    const float bulletX = x + margin;
    const float textX = bulletX + d(16.0F);
    const float wrapWidth = std::max(40.0F, w - 2.0F * margin - d(18.0F));
    float lineY = y + top + headingHeight + d(8.0F);
    for (const std::string& paragraph : paragraphs) {
        const std::vector<std::string> lines = WrapWords(context.BodyScale, paragraph, wrapWidth);
        DrawBullet(context.Renderer, bulletX + d(4.0F), lineY + bodyHeight / 2.0F, accent);
        for (const std::string& line : lines) {
            DrawText(context.Renderer, line, textX, lineY, context.BodyScale, Palette::NormalText);
            lineY += context.LinePitch;
        }
    }
}

float MeasureNoteBox(const NoteBoxContext& context, std::span<const std::string> paragraphs,
                     float boxWidth) {
    const auto d = [&](float k) { return DensityPx(context.Metrics.Density, k); };
    // The 18 is the same at every density, unlike that of the drawing.
    const float wrapWidth = std::max(40.0F, boxWidth - 2.0F * d(16.0F) - 18.0F);
    std::size_t lines = 0;
    for (const std::string& paragraph : paragraphs) {
        lines += WrapWords(context.BodyScale, paragraph, wrapWidth).size();
    }
    const auto lineCount = static_cast<float>(std::max<std::size_t>(1, lines));
    return lineCount * context.LinePitch + TextHeight(context.HeadingScale) + 2.0F * d(10.0F) +
           d(8.0F);
}

} // namespace Wirefall
