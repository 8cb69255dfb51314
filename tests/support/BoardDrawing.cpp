#include "support/BoardDrawing.h"

#include "sim/Simulation.h"

#include <array>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>

namespace Wirefall::Testing {

namespace {

struct TileSign {
    std::string_view Sign;
    TileType Type;
    std::int32_t Rotation;
};

constexpr std::array<TileSign, 16> TileSigns = {{
    {".", TileType::Empty, 0},
    {"│", TileType::Straight, 0},
    {"─", TileType::Straight, 1},
    {"└", TileType::Corner, 0},
    {"┌", TileType::Corner, 1},
    {"┐", TileType::Corner, 2},
    {"┘", TileType::Corner, 3},
    {"├", TileType::TJunction, 0},
    {"┬", TileType::TJunction, 1},
    {"┤", TileType::TJunction, 2},
    {"┴", TileType::TJunction, 3},
    {"┼", TileType::Cross, 0},
    {"F", TileType::Firewall, 0},
    {"A", TileType::Antivirus, 0},
    {"B", TileType::Buffer, 0},
    {"b", TileType::Buffer, 1},
}};

struct EndpointSign {
    std::string_view Sign;
    bool IsSource;
    Direction Dir;
};

constexpr std::array<EndpointSign, 8> EndpointSigns = {{
    {"↑", true, Direction::Up},
    {"→", true, Direction::Right},
    {"↓", true, Direction::Down},
    {"←", true, Direction::Left},
    {"⇑", false, Direction::Up},
    {"⇒", false, Direction::Right},
    {"⇓", false, Direction::Down},
    {"⇐", false, Direction::Left},
}};

void DrawCell(RunState& run, std::string_view sign, std::int32_t x, std::int32_t y) {
    if (!InBounds(run, x, y)) {
        throw std::invalid_argument("The drawing is larger than the board");
    }
    for (const TileSign& row : TileSigns) {
        if (row.Sign == sign) {
            TileAt(run, x, y) = MakeTile(row.Type, row.Rotation);
            return;
        }
    }
    for (const EndpointSign& row : EndpointSigns) {
        if (row.Sign == sign) {
            const Endpoint endpoint = {x, y, row.Dir};
            (row.IsSource ? run.Sources : run.Sinks).push_back(endpoint);
            StampEndpointTile(run, endpoint, row.IsSource);
            return;
        }
    }
    throw std::invalid_argument("No tile is drawn as " + std::string(sign));
}

// The first byte of a UTF-8 character tells its length.
std::size_t CharacterLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0x80 ? 1 : byte < 0xe0 ? 2 : 3;
}

} // namespace

RunState DrawnRun(const std::vector<std::string_view>& rows) {
    RunState run;
    run.Tiles.assign(static_cast<std::size_t>(BoardSide) * BoardSide, Tile{});
    run.PacketGraceRemaining = 0;
    run.VirusGraceRemaining = 0;
    run.NextSpawnTick = std::numeric_limits<std::uint64_t>::max();
    SeedEngine(run.RandomEngine, run.Seed);
    LayTiles(run, rows);
    return run;
}

void LayTiles(RunState& run, const std::vector<std::string_view>& rows) {
    std::int32_t y = 0;
    for (std::string_view row : rows) {
        std::int32_t x = 0;
        while (!row.empty()) {
            const std::size_t length = CharacterLength(row.front());
            DrawCell(run, row.substr(0, length), x, y);
            row.remove_prefix(length);
            ++x;
        }
        ++y;
    }
}

Packet PacketAt(std::int32_t x, std::int32_t y, Direction dir) {
    Packet packet;
    packet.X = x;
    packet.Y = y;
    packet.Dir = dir;
    return packet;
}

void InstallLiveRun(const RunState& run) {
    Simulation& simulation = LiveSimulation();
    simulation.Run = run;
    simulation.AccumulatorMs = 0;
    simulation.RunInitialised = true;
}

} // namespace Wirefall::Testing
