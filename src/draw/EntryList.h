#pragma once

// The entries of a menu, one below the other, with a mark in front of the selected one.

#include <SDL3/SDL_render.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace Wirefall {

inline constexpr std::string_view SelectionMark = ">";

/// Where the entries stand and how large they are. All lengths are logical pixels.
struct EntryList {
    float X = 0.0F;     ///< Of the left edge of the entries.
    float Y = 0.0F;     ///< Of the top of the first.
    float Pitch = 0.0F; ///< From one to the next.
    std::int32_t Scale = 1;
    std::int32_t MarkScale = 1;
    float MarkGap = 0.0F;  ///< Between the mark and the entries.
    float MarkDrop = 0.0F; ///< How much lower than its entry the mark stands.
};

/// Draws the entries; `selected` may be none of them.
void DrawEntryList(SDL_Renderer* renderer, const EntryList& list,
                   std::span<const std::string_view> entries, std::int32_t selected);

/// The width of the widest entry.
float WidestEntry(std::span<const std::string_view> entries, std::int32_t scale);

} // namespace Wirefall
