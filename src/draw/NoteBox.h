#pragma once

// A framed block of text with a heading and a bullet before each paragraph.

#include "draw/Color.h"
#include "draw/Metrics.h"

#include <SDL3/SDL_render.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace Wirefall {

/// What all boxes of a screen have in common.
struct NoteBoxContext {
    SDL_Renderer* Renderer;
    const UiMetrics& Metrics;
    std::int32_t HeadingScale;
    std::int32_t BodyScale;
    float LinePitch; ///< From one line of body text to the next.
};

/// Paragraphs are wrapped to the width of the box; too much text overflows its bottom.
void DrawNoteBox(const NoteBoxContext& context, float x, float y, float w, float h,
                 std::string_view heading, PackedColor accent,
                 std::span<const std::string> paragraphs);

/// The height of a box of width `boxWidth` for these paragraphs. Measured in no more room than the
/// text is drawn in, and in less at the two tight densities, so that a box is never too low.
float MeasureNoteBox(const NoteBoxContext& context, std::span<const std::string> paragraphs,
                     float boxWidth);

} // namespace Wirefall
