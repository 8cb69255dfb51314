#pragma once

// Lists that a tick needs for its own work, kept so that a tick allocates nothing. What is in them
// means nothing outside the tick.

#include "sim/Tile.h"

#include <cstdint>
#include <vector>

namespace Wirefall {

struct TickScratch {
    struct CellCount {
        std::int32_t Total = 0;
        std::int32_t Vertical = 0;
        std::int32_t Horizontal = 0;
    };
    std::vector<CellCount> CellCounts;
    std::vector<bool> SinkCells; ///< Only of a run with many sinks.
    std::vector<Tile*> SpreadTargets;
};

} // namespace Wirefall
