#include "persist/RunConversion.h"

#include "sim/Simulation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace Wirefall {

namespace {

constexpr std::int32_t RotationMask = 3;
constexpr std::size_t BoardCells = std::size_t{BoardSide} * BoardSide;

// A number and its blank take no more in the engine's text.
constexpr std::size_t WordTextLength = 11;

template <typename Value>
struct FieldPair {
    Value RunState::*InRun;
    Value SaveDocument::*InDocument;
};

// What the run and the document hold in the same form.
constexpr auto SameFields = std::to_array<FieldPair<std::int32_t>>({
    {&RunState::CursorX, &SaveDocument::CursorX},
    {&RunState::CursorY, &SaveDocument::CursorY},
    {&RunState::PreviewRotation, &SaveDocument::PreviewRotation},
    {&RunState::SpawnIntervalTicks, &SaveDocument::SpawnIntervalTicks},
    {&RunState::VirusSpreadIntervalTicks, &SaveDocument::VirusSpreadIntervalTicks},
    {&RunState::PacketGraceTicks, &SaveDocument::PacketGraceTicks},
    {&RunState::VirusGraceTicks, &SaveDocument::VirusGraceTicks},
    {&RunState::PacketGraceRemaining, &SaveDocument::PacketGraceRemaining},
    {&RunState::VirusGraceRemaining, &SaveDocument::VirusGraceRemaining},
    {&RunState::Level, &SaveDocument::Level},
    {&RunState::TotalScore, &SaveDocument::TotalScore},
    {&RunState::LevelTargetPackets, &SaveDocument::LevelTargetPackets},
    {&RunState::FailureThreshold, &SaveDocument::FailureThreshold},
    {&RunState::LostPackets, &SaveDocument::LostPackets},
    {&RunState::CorruptedPackets, &SaveDocument::CorruptedPackets},
    {&RunState::DeliveredPackets, &SaveDocument::DeliveredPackets},
    {&RunState::GridWidth, &SaveDocument::GridWidth},
    {&RunState::GridHeight, &SaveDocument::GridHeight},
});
constexpr auto SameWideFields = std::to_array<FieldPair<std::uint64_t>>({
    {&RunState::Tick, &SaveDocument::Tick},
    {&RunState::NextSpawnTick, &SaveDocument::NextSpawnTick},
    {&RunState::VirusActiveTicks, &SaveDocument::VirusActiveTicks},
});
constexpr FieldPair<std::uint32_t> SameSeed = {&RunState::Seed, &SaveDocument::Seed};
constexpr FieldPair<bool> SameGameOver = {&RunState::GameOver, &SaveDocument::GameOver};

// Calls visit(pair) with each of them.
template <typename Visit>
void VisitSameFields(Visit visit) {
    std::ranges::for_each(SameFields, visit);
    std::ranges::for_each(SameWideFields, visit);
    visit(SameSeed);
    visit(SameGameOver);
}

// Negative numbers count as large ones.
bool IsTileType(std::int32_t number) {
    return static_cast<std::uint32_t>(number) < EnumCount<TileType>;
}

bool IsDirection(std::int32_t number) {
    return static_cast<std::uint32_t>(number) < EnumCount<Direction>;
}

// As in the C locale.
bool IsWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::vector<DocumentEndpoint> MakeEndpoints(const std::vector<Endpoint>& endpoints) {
    std::vector<DocumentEndpoint> list;
    list.reserve(endpoints.size());
    for (const Endpoint& endpoint : endpoints) {
        list.push_back({endpoint.X, endpoint.Y, static_cast<std::int32_t>(endpoint.Dir)});
    }
    return list;
}

bool BuildTiles(const std::vector<DocumentTile>& list, std::vector<Tile>& tiles) {
    for (const DocumentTile& stored : list) {
        if (!IsTileType(stored.Type)) {
            return false;
        }
        Tile& tile = tiles.emplace_back();
        tile.Type = static_cast<TileType>(stored.Type);
        tile.Connections = static_cast<ConnectionMask>(stored.Connections & AllExits);
        tile.VirusInfected = stored.VirusInfected;
        tile.Consumed = stored.Consumed;
        tile.CooldownTicks = std::max(stored.CooldownTicks, 0);
    }
    return true;
}

bool BuildPackets(const std::vector<DocumentPacket>& list, std::vector<Packet>& packets) {
    for (const DocumentPacket& stored : list) {
        if (!IsDirection(stored.Dir)) {
            return false;
        }
        packets.push_back({stored.X, stored.Y, static_cast<Direction>(stored.Dir), stored.Corrupted,
                           std::max(stored.DelayTicks, 0)});
    }
    return true;
}

bool BuildTileQueue(const std::array<std::int32_t, 3>& list, std::array<TileType, 3>& queue) {
    std::ranges::transform(list, queue.begin(),
                           [](std::int32_t type) { return static_cast<TileType>(type); });
    return std::ranges::all_of(list, IsTileType);
}

// Takes from a tile what its type cannot have.
void NormaliseTile(Tile& tile) {
    switch (tile.Type) {
    case TileType::Empty:
        tile.Connections = NoExits;
        tile.Consumed = false;
        tile.CooldownTicks = 0;
        break;
    case TileType::Firewall:
        tile.Consumed = false;
        tile.VirusInfected = false;
        break;
    case TileType::Antivirus:
        if (tile.Consumed) {
            tile.Type = PlainTypeForMask(tile.Connections);
        }
        break;
    default:
        tile.Consumed = false;
        break;
    }
}

void StampEndpoints(RunState& run) {
    for (const Endpoint& source : run.Sources) {
        StampEndpointTile(run, source, true);
    }
    for (const Endpoint& sink : run.Sinks) {
        StampEndpointTile(run, sink, false);
    }
}

// What MeetsLimits refuses needs no clamp here.
void CopyScalars(const SaveDocument& document, RunState& run) {
    VisitSameFields([&](const auto& pair) { run.*pair.InRun = document.*pair.InDocument; });
    run.CursorX = std::clamp(run.CursorX, 0, run.GridWidth - 1);
    run.CursorY = std::clamp(run.CursorY, 0, run.GridHeight - 1);
    run.PreviewRotation &= RotationMask;
    run.SpawnIntervalTicks = std::max(run.SpawnIntervalTicks, 1);
    run.VirusSpreadIntervalTicks = std::max(run.VirusSpreadIntervalTicks, 1);
}

void RestoreEngine(const SaveDocument& document, RunState& run) {
    if (const std::optional<MersenneTwister> engine = ParseEngineText(document.RandomState)) {
        run.RandomEngine = *engine;
    } else {
        SeedEngine(run.RandomEngine, run.Seed);
    }
}

} // namespace

SaveDocument MakeSaveDocument() {
    const RunState& run = LiveRun();
    SaveDocument document;
    document.Revision = LiveSimulation().Revision;
    document.AccumulatorMs = LiveSimulation().AccumulatorMs;
    VisitSameFields([&](const auto& pair) { document.*pair.InDocument = run.*pair.InRun; });
    document.RandomState = EngineText(run.RandomEngine);
    std::ranges::transform(run.TileQueue, document.TileQueue.begin(),
                           [](TileType type) { return static_cast<std::int32_t>(type); });
    document.Tiles.reserve(run.Tiles.size());
    for (const Tile& tile : run.Tiles) {
        document.Tiles.push_back({static_cast<std::int32_t>(tile.Type), tile.Connections,
                                  tile.VirusInfected, tile.OccupiedBySource, tile.OccupiedBySink,
                                  tile.Consumed, tile.CooldownTicks});
    }
    document.Sources = MakeEndpoints(run.Sources);
    document.Sinks = MakeEndpoints(run.Sinks);
    for (const Packet& packet : run.Packets) {
        document.Packets.push_back({packet.X, packet.Y, static_cast<std::int32_t>(packet.Dir),
                                    packet.Corrupted, packet.DelayTicks});
    }
    return document;
}

bool InstallSaveDocument(Navigation& navigation, const SaveDocument& document) {
    const BoardSize boardSize = {document.GridWidth, document.GridHeight};
    if (boardSize.Width != BoardSide || boardSize.Height != BoardSide ||
        document.Tiles.size() != BoardCells || !MeetsLimits(document)) {
        return false;
    }
    RunState candidate;
    if (!BuildTiles(document.Tiles, candidate.Tiles) ||
        !BuildEndpoints(boardSize, document.Sources, candidate.Sources) ||
        !BuildEndpoints(boardSize, document.Sinks, candidate.Sinks) ||
        !BuildPackets(document.Packets, candidate.Packets) ||
        !BuildTileQueue(document.TileQueue, candidate.TileQueue)) {
        return false;
    }
    std::ranges::for_each(candidate.Tiles, NormaliseTile);
    StampEndpoints(candidate);
    CopyScalars(document, candidate);
    RestoreEngine(document, candidate);

    Simulation& simulation = LiveSimulation();
    simulation.Run = std::move(candidate);
    simulation.AccumulatorMs = document.AccumulatorMs;
    simulation.Revision = std::max<std::uint64_t>(document.Revision, 1);
    simulation.RunInitialised = true;

    navigation.Screen = AppScreen::MainMenu;
    navigation.MenuSelection = 0;
    navigation.PauseSelection = 0;
    return true;
}

bool BuildEndpoints(const BoardSize& boardSize, const std::vector<DocumentEndpoint>& list,
                    std::vector<Endpoint>& endpoints) {
    endpoints.clear();
    for (const DocumentEndpoint& stored : list) {
        if (!IsDirection(stored.Dir) || stored.X < 0 || stored.Y < 0 ||
            stored.X >= boardSize.Width || stored.Y >= boardSize.Height) {
            return false;
        }
        endpoints.push_back({stored.X, stored.Y, static_cast<Direction>(stored.Dir)});
    }
    return true;
}

std::string EngineText(const MersenneTwister& engine) {
    std::string text(WordTextLength * (engine.Words.size() + 1), '\0');
    char* end = text.data();
    for (const std::uint32_t word : engine.Words) {
        end = std::to_chars(end, text.data() + text.size(), word).ptr;
        *end++ = ' ';
    }
    end = std::to_chars(end, text.data() + text.size(), engine.Position).ptr;
    text.resize(static_cast<std::size_t>(end - text.data()));
    return text;
}

std::optional<MersenneTwister> ParseEngineText(std::string_view text) {
    const auto readNumber = [&text](std::uint32_t& number) {
        while (!text.empty() && IsWhiteSpace(text.front())) {
            text.remove_prefix(1);
        }
        const std::from_chars_result result =
            std::from_chars(text.data(), text.data() + text.size(), number);
        text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
        return result.ec == std::errc{};
    };
    MersenneTwister engine;
    if (!std::ranges::all_of(engine.Words, readNumber) || !readNumber(engine.Position)) {
        return std::nullopt;
    }
    return engine;
}

} // namespace Wirefall
