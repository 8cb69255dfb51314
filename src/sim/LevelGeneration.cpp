#include "sim/LevelGeneration.h"

#include "base/EnumTable.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Wirefall {

namespace {

enum class BoardEdge : std::uint8_t { Left, Right, Top, Bottom };

struct EdgeRow {
    BoardEdge Opposite;
    Direction Inward;
};

constexpr auto Edges = TableBy<BoardEdge, EdgeRow>({
    {BoardEdge::Right, Direction::Right}, // Left
    {BoardEdge::Left, Direction::Left},   // Right
    {BoardEdge::Bottom, Direction::Down}, // Top
    {BoardEdge::Top, Direction::Up},      // Bottom
});

constexpr std::array<TileType, 4> MixedKinds = {TileType::Empty, TileType::Straight,
                                                TileType::Corner, TileType::TJunction};

struct TileMix {
    std::int32_t FromLevel;
    std::array<std::uint32_t, MixedKinds.size()> Percent; // a Cross takes the rest
};

constexpr std::array<TileMix, 3> Mixes = {{
    {7, {45, 20, 17, 11}},
    {4, {50, 20, 16, 9}},
    {1, {55, 20, 15, 7}},
}};

const TileMix& MixForLevel(std::int32_t level) {
    const auto found = std::find_if(Mixes.begin(), Mixes.end(),
                                    [level](const TileMix& mix) { return level >= mix.FromLevel; });
    return found == Mixes.end() ? Mixes.back() : *found;
}

TileType KindForDraw(const TileMix& mix, std::uint32_t drawn) {
    std::uint32_t threshold = 0;
    for (std::size_t i = 0; i < MixedKinds.size(); ++i) {
        threshold += mix.Percent[i];
        if (drawn < threshold) {
            return MixedKinds[i];
        }
    }
    return TileType::Cross;
}

constexpr std::array<TileType, 7> QueueKinds = {
    TileType::Straight, TileType::Corner,    TileType::TJunction, TileType::Cross,
    TileType::Firewall, TileType::Antivirus, TileType::Buffer,
};

constexpr int MaxAttempts = 64;
constexpr std::int32_t MaxInfectedCells = 5;

constexpr Endpoint FallbackSource = {0, 5, Direction::Right};
constexpr Endpoint FallbackSink = {9, 5, Direction::Left};

std::int32_t EmptyFloor(const RunState& run) {
    const std::int32_t cells = run.GridWidth * run.GridHeight;
    return cells > 28 ? (cells - 2) / 3 : 8;
}

std::int32_t DrawBelow(MersenneTwister& engine, std::int32_t limit) {
    return static_cast<std::int32_t>(UniformDraw(engine, 0, static_cast<std::uint32_t>(limit) - 1));
}

Endpoint DrawEndpoint(RunState& run, BoardEdge edge) {
    Endpoint endpoint;
    endpoint.Dir = Edges[edge].Inward;
    switch (edge) {
    case BoardEdge::Left:
        endpoint.X = 0;
        endpoint.Y = DrawBelow(run.RandomEngine, run.GridHeight);
        break;
    case BoardEdge::Right:
        endpoint.X = run.GridWidth - 1;
        endpoint.Y = DrawBelow(run.RandomEngine, run.GridHeight);
        break;
    case BoardEdge::Top:
        endpoint.X = DrawBelow(run.RandomEngine, run.GridWidth);
        endpoint.Y = 0;
        break;
    case BoardEdge::Bottom:
        endpoint.X = DrawBelow(run.RandomEngine, run.GridWidth);
        endpoint.Y = run.GridHeight - 1;
        break;
    }
    return endpoint;
}

void ClearBoard(RunState& run) {
    run.GridWidth = BoardSide;
    run.GridHeight = BoardSide;
    run.Tiles.assign(static_cast<std::size_t>(BoardSide) * BoardSide, Tile{});
    run.Packets.clear();
    run.Sources.clear();
    run.Sinks.clear();
}

void DrawEndpoints(RunState& run) {
    const auto sourceEdge = static_cast<BoardEdge>(UniformDraw(run.RandomEngine, 0, 3));
    run.Sources.push_back(DrawEndpoint(run, sourceEdge));
    run.Sinks.push_back(DrawEndpoint(run, Edges[sourceEdge].Opposite));
    StampEndpointTile(run, run.Sources.front(), true);
    StampEndpointTile(run, run.Sinks.front(), false);
}

// Fills every cell but the two endpoints, and returns those cells in row order.
std::vector<Cell> ScatterTiles(RunState& run) {
    const TileMix& mix = MixForLevel(run.Level);
    std::vector<Cell> cells;
    cells.reserve(run.Tiles.size());
    for (std::int32_t y = 0; y < run.GridHeight; ++y) {
        for (std::int32_t x = 0; x < run.GridWidth; ++x) {
            if (IsEndpointCell(run, x, y)) {
                continue;
            }
            const TileType kind = KindForDraw(mix, UniformDraw(run.RandomEngine, 0, 99));
            TileAt(run, x, y) = MakeTile(kind, DrawBelow(run.RandomEngine, 4));
            cells.push_back({x, y});
        }
    }
    return cells;
}

void PlaceSpecials(RunState& run, std::vector<Cell> spots) {
    ShuffleCells(spots, run.RandomEngine);
    const std::array<std::pair<TileType, std::int32_t>, 3> counts = {{
        {TileType::Firewall, run.Level / 3 + 1},
        {TileType::Buffer, run.Level / 4 + 1},
        {TileType::Antivirus, 1},
    }};
    auto spot = spots.begin();
    for (const auto& [kind, count] : counts) {
        for (std::int32_t placed = 0; placed < count && spot != spots.end(); ++placed, ++spot) {
            TileAt(run, spot->X, spot->Y) = MakeTile(kind, DrawBelow(run.RandomEngine, 4));
        }
    }
}

// Clears plain cells until the floor of empty cells is reached or none is left.
void ClearToEmptyFloor(RunState& run, const std::vector<Cell>& cells) {
    std::int32_t emptyCount = 0;
    std::vector<Cell> plain;
    for (const Cell& cell : cells) {
        switch (TileAt(run, cell.X, cell.Y).Type) {
        case TileType::Empty:
            ++emptyCount;
            break;
        case TileType::Straight:
        case TileType::Corner:
        case TileType::TJunction:
        case TileType::Cross:
            plain.push_back(cell);
            break;
        default:
            break;
        }
    }
    ShuffleCells(plain, run.RandomEngine);
    for (const Cell& cell : plain) {
        if (emptyCount >= EmptyFloor(run)) {
            break;
        }
        TileAt(run, cell.X, cell.Y) = MakeTile(TileType::Empty, 0);
        ++emptyCount;
    }
}

void InfectCells(RunState& run, const std::vector<Cell>& cells) {
    std::vector<Cell> eligible;
    std::copy_if(cells.begin(), cells.end(), std::back_inserter(eligible),
                 [&run](const Cell& cell) {
                     const TileType type = TileAt(run, cell.X, cell.Y).Type;
                     return type != TileType::Empty && type != TileType::Firewall;
                 });
    ShuffleCells(eligible, run.RandomEngine);
    const auto wanted =
        static_cast<std::size_t>(std::clamp(run.Level / 3 + 1, 1, MaxInfectedCells));
    eligible.resize(std::min(eligible.size(), wanted));
    for (const Cell& cell : eligible) {
        TileAt(run, cell.X, cell.Y).VirusInfected = true;
    }
}

bool IsStampedEndpoint(const RunState& run, const Endpoint& endpoint, bool Tile::*flag) {
    return InBounds(run, endpoint.X, endpoint.Y) && TileAt(run, endpoint.X, endpoint.Y).*flag &&
           TileAt(run, endpoint.X, endpoint.Y).Connections == DirectionBit(endpoint.Dir);
}

bool IsGoodBoard(const RunState& run) {
    if (run.Sources.size() != 1 || run.Sinks.size() != 1 ||
        !IsStampedEndpoint(run, run.Sources.front(), &Tile::OccupiedBySource) ||
        !IsStampedEndpoint(run, run.Sinks.front(), &Tile::OccupiedBySink)) {
        return false;
    }
    std::int32_t emptyCount = 0;
    for (std::int32_t y = 0; y < run.GridHeight; ++y) {
        for (std::int32_t x = 0; x < run.GridWidth; ++x) {
            if (TileAt(run, x, y).Type == TileType::Empty && !IsEndpointCell(run, x, y)) {
                ++emptyCount;
            }
        }
    }
    return emptyCount >= EmptyFloor(run);
}

void DrawBoard(RunState& run) {
    ClearBoard(run);
    DrawEndpoints(run);
    const std::vector<Cell> cells = ScatterTiles(run);
    PlaceSpecials(run, cells);
    ClearToEmptyFloor(run, cells);
    InfectCells(run, cells);
}

void SetFallbackBoard(RunState& run) {
    ClearBoard(run);
    run.Sources.push_back(FallbackSource);
    run.Sinks.push_back(FallbackSink);
    StampEndpointTile(run, FallbackSource, true);
    StampEndpointTile(run, FallbackSink, false);
}

void StartLevelCounters(RunState& run) {
    run.CursorX = 5;
    run.CursorY = 5;
    run.PreviewRotation = 0;
    run.Tick = 0;
    run.GameOver = false;
    run.FastForward = false;
    run.NextSpawnTick = static_cast<std::uint64_t>(std::max(run.SpawnIntervalTicks, 1));
    run.PacketGraceRemaining = std::max(run.PacketGraceTicks, 0);
    run.VirusGraceRemaining = std::max(run.VirusGraceTicks, 0);
    run.VirusActiveTicks = 0;
    run.LostPackets = 0;
    run.CorruptedPackets = 0;
    run.DeliveredPackets = 0;
}

} // namespace

void GenerateLevel(RunState& run) {
    bool good = false;
    for (int attempt = 0; attempt < MaxAttempts && !good; ++attempt) {
        DrawBoard(run);
        good = IsGoodBoard(run);
    }
    if (!good) {
        SetFallbackBoard(run);
    }
    StartLevelCounters(run);
    for (TileType& queued : run.TileQueue) {
        queued = DrawQueueTile(run.RandomEngine);
    }
}

void ShuffleCells(std::vector<Cell>& list, MersenneTwister& engine) {
    const std::size_t count = list.size();
    if (count == 0) {
        return;
    }
    std::size_t i = 1;
    if (count % 2 == 0) {
        std::swap(list[1], list[UniformDraw(engine, 0, 1)]);
        i = 2;
    }
    while (i != count) {
        const auto outer = static_cast<std::uint32_t>(i) + 1;
        const std::uint32_t inner = outer + 1;
        const std::uint32_t drawn = UniformDraw(engine, 0, outer * inner - 1);
        std::swap(list[i], list[drawn / inner]);
        std::swap(list[i + 1], list[drawn % inner]);
        i += 2;
    }
}

TileType DrawQueueTile(MersenneTwister& engine) {
    return QueueKinds[UniformDraw(engine, 0, QueueKinds.size() - 1)];
}

} // namespace Wirefall
