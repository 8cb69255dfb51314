#include "sim/Virus.h"

#include <algorithm>

namespace Wirefall {

namespace {

bool CarriesVirus(const Tile& tile) {
    return tile.VirusInfected && tile.Type != TileType::Firewall;
}

bool CanTakeVirus(const Tile& tile) {
    return !tile.VirusInfected && tile.Type != TileType::Firewall;
}

} // namespace

void StepVirus(RunState& run, TickScratch& scratch) {
    ++run.VirusActiveTicks;
    const auto interval = static_cast<std::uint64_t>(std::max(run.VirusSpreadIntervalTicks, 1));
    if (run.VirusActiveTicks % interval != 0) {
        return;
    }
    scratch.SpreadTargets.clear();
    for (std::int32_t y = 0; y < run.GridHeight; ++y) {
        for (std::int32_t x = 0; x < run.GridWidth; ++x) {
            if (!CarriesVirus(TileAt(run, x, y))) {
                continue;
            }
            VisitConnected(run, x, y, [&scratch](Tile& neighbour) {
                if (CanTakeVirus(neighbour)) {
                    scratch.SpreadTargets.push_back(&neighbour);
                }
            });
        }
    }
    for (Tile* target : scratch.SpreadTargets) {
        target->VirusInfected = true;
    }
}

float InfectionRatio(const RunState& run) {
    std::int32_t live = 0;
    std::int32_t infected = 0;
    for (const Tile& tile : run.Tiles) {
        if (tile.Connections != NoExits || tile.OccupiedBySource || tile.OccupiedBySink) {
            ++live;
            infected += tile.VirusInfected ? 1 : 0;
        }
    }
    return live == 0 ? 0.0F : static_cast<float>(infected) / static_cast<float>(live);
}

} // namespace Wirefall
