#include "sim/RunState.h"

#include "sim/LevelGeneration.h"

namespace Wirefall {

bool IsEndpointCell(const RunState& run, std::int32_t x, std::int32_t y) {
    if (InBounds(run, x, y) &&
        (TileAt(run, x, y).OccupiedBySource || FindEndpoint(run.Sources, x, y) != nullptr)) {
        return true;
    }
    return IsSinkCell(run, x, y);
}

void StampEndpointTile(RunState& run, const Endpoint& endpoint, bool isSource) {
    if (!InBounds(run, endpoint.X, endpoint.Y)) {
        return;
    }
    Tile& cell = TileAt(run, endpoint.X, endpoint.Y);
    const bool infected = cell.VirusInfected;
    cell = MakeTile(TileType::Straight, 0);
    cell.Connections = DirectionBit(endpoint.Dir);
    cell.OccupiedBySource = isSource;
    cell.OccupiedBySink = !isSource;
    cell.VirusInfected = infected;
}

void ConstructRunState(RunState& run) {
    run = RunState{};
    SeedEngine(run.RandomEngine, run.Seed);
    GenerateLevel(run);
}

} // namespace Wirefall
