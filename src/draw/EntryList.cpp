#include "draw/EntryList.h"

#include "draw/Color.h"
#include "draw/Text.h"

#include <algorithm>
#include <cstddef>

namespace Wirefall {

namespace {

constexpr std::int32_t MarkColumns = 5; // Those of its glyph that show.

} // namespace

void DrawEntryList(SDL_Renderer* renderer, const EntryList& list,
                   std::span<const std::string_view> entries, std::int32_t selected) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const float y = list.Y + static_cast<float>(i) * list.Pitch;
        const bool isSelected = static_cast<std::int32_t>(i) == selected;
        if (isSelected) {
            const float markX =
                list.X - list.MarkGap - static_cast<float>(MarkColumns * list.MarkScale);
            DrawText(renderer, SelectionMark, markX, y + list.MarkDrop, list.MarkScale,
                     Palette::BrightText);
        }
        DrawText(renderer, entries[i], list.X, y, list.Scale,
                 isSelected ? Palette::BrightText : Palette::NormalText);
    }
}

float WidestEntry(std::span<const std::string_view> entries, std::int32_t scale) {
    std::int32_t widest = 0;
    for (const std::string_view entry : entries) {
        widest = std::max(widest, TextWidth(entry, scale));
    }
    return static_cast<float>(widest);
}

} // namespace Wirefall
