#include "screens/BoardLayout.h"

#include <algorithm>

namespace Wirefall {

namespace {

constexpr std::int32_t CellsPerSide = 10;
constexpr std::int32_t LargestCell = 56;
constexpr std::int32_t Margin = 20;

} // namespace

BoardLayout PlaceBoard(std::int32_t width, std::int32_t height) {
    BoardLayout layout;
    layout.ScreenWidth = width;
    layout.ScreenHeight = height;
    layout.PanelWidth = width < 490 ? std::max(120, width - 260) : 230;

    const std::int32_t room = std::max(200, width - layout.PanelWidth - 3 * Margin);
    const std::int32_t tall = std::max(height - 2 * Margin, 180) / CellsPerSide;
    layout.CellSize = std::min(room / CellsPerSide, std::min(tall, LargestCell));

    const std::int32_t extent = BoardExtent(layout);
    layout.BoardX = Margin + (room - extent < 2 ? 0 : (room - extent) / 2);
    layout.BoardY = height - extent > 41 ? (height - extent) / 2 : Margin;
    layout.PanelX = width - Margin - layout.PanelWidth;
    return layout;
}

std::int32_t BoardExtent(const BoardLayout& layout) { return layout.CellSize * CellsPerSide; }

} // namespace Wirefall
