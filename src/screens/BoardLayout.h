#pragma once

// Where the grid and the HUD panel stand on a canvas, worked out anew each frame.

#include <cstdint>

namespace Wirefall {

struct BoardLayout {
    std::int32_t CellSize = 32;
    std::int32_t ScreenWidth = 1280;
    std::int32_t ScreenHeight = 720;
    std::int32_t BoardX = 20; ///< Left edge of the grid.
    std::int32_t BoardY = 20; ///< Top edge of the grid.
    std::int32_t PanelX = 20; ///< Left edge of the HUD panel.
    std::int32_t PanelY = 20; ///< Top edge of the HUD panel, on every canvas.
    std::int32_t PanelWidth = 220;

    bool operator==(const BoardLayout&) const = default;
};

/// The layout for a canvas of that size, which may be too small for it: the grid and the panel then
/// overrun the canvas. The cell is sized for ten by ten cells, whatever the run's board holds. Both
/// sizes lie within plus and minus 2^24.
BoardLayout PlaceBoard(std::int32_t width, std::int32_t height);

/// The side of the board of ten by ten cells.
std::int32_t BoardExtent(const BoardLayout& layout);

} // namespace Wirefall
