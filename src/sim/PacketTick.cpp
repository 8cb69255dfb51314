#include "sim/PacketTick.h"

#include "sim/LevelRules.h"
#include "sim/Scoring.h"
#include "sim/Virus.h"

#include <algorithm>
#include <initializer_list>

namespace Wirefall {

namespace {

void CountDeliveredPacket(RunState& run) {
    run.DeliveredPackets = WrappingAdd(run.DeliveredPackets, 1);
    run.TotalScore = WrappingAdd(run.TotalScore, ScoreDelivered);
}

void CountCorruptedPacket(RunState& run) {
    run.CorruptedPackets = WrappingAdd(run.CorruptedPackets, 1);
    run.TotalScore = WrappingAdd(run.TotalScore, ScoreCorrupted);
}

void LosePacket(RunState& run) {
    run.LostPackets = WrappingAdd(run.LostPackets, 1);
    run.TotalScore = WrappingAdd(run.TotalScore, ScoreLost);
}

void SpawnPacket(RunState& run) {
    const auto last = static_cast<std::uint32_t>(run.Sources.size()) - 1;
    const Endpoint& source = run.Sources[UniformDraw(run.RandomEngine, 0, last)];
    Packet packet;
    packet.X = source.X;
    packet.Y = source.Y;
    packet.Dir = source.Dir;
    packet.Corrupted =
        InBounds(run, source.X, source.Y) && TileAt(run, source.X, source.Y).VirusInfected;
    if (packet.Corrupted) {
        CountCorruptedPacket(run);
    }
    run.Packets.push_back(packet);
    run.NextSpawnTick = run.Tick + static_cast<std::uint64_t>(std::max(run.SpawnIntervalTicks, 1));
}

// The tile stops being an Antivirus before anything else happens on it, so that it can be infected
// again by the very packet that used it up.
void UseAntivirus(RunState& run, Tile& tile, std::int32_t x, std::int32_t y) {
    tile.VirusInfected = false;
    VisitConnected(run, x, y, [](Tile& neighbour) {
        if (neighbour.Type != TileType::Firewall) {
            neighbour.VirusInfected = false;
        }
    });
    tile.Consumed = true;
    tile.Type = PlainTypeForMask(tile.Connections);
}

// Settles by which exit the packet leaves the tile that it has just entered: straight on if that
// leads anywhere, else to the right, else to the left, else back. False when there is no way.
bool RoutePacket(const RunState& run, const Tile& tile, Packet& packet) {
    if (HasAllExits(tile.Connections)) {
        return true;
    }
    for (const Direction choice :
         {packet.Dir, RightTurn(packet.Dir), LeftTurn(packet.Dir), OppositeDirection(packet.Dir)}) {
        if (CanExit(run, tile, packet.X, packet.Y, choice)) {
            packet.Dir = choice;
            return true;
        }
    }
    return false;
}

// A damaged save can list so many sinks that going through them for each packet would freeze the
// frame. From here on they are looked up on a map of the board.
constexpr std::size_t ManySinks = 64;

void MapManySinks(const RunState& run, TickScratch& scratch) {
    if (run.Sinks.size() < ManySinks) {
        return;
    }
    scratch.SinkCells.assign(run.Tiles.size(), false);
    for (const Endpoint& sink : run.Sinks) {
        if (InBounds(run, sink.X, sink.Y)) {
            scratch.SinkCells[TileIndex(run, sink.X, sink.Y)] = true;
        }
    }
}

bool HasArrived(const RunState& run, const TickScratch& scratch, const Packet& packet) {
    if (run.Sinks.size() < ManySinks) {
        return IsSinkCell(run, packet.X, packet.Y);
    }
    const std::size_t index = TileIndex(run, packet.X, packet.Y);
    return run.Tiles[index].OccupiedBySink || scratch.SinkCells[index];
}

// Takes the packet one cell further. False when it has left the board, as lost or as delivered; it
// is counted then.
bool MovePacket(RunState& run, const TickScratch& scratch, Packet& packet) {
    if (packet.DelayTicks > 0) {
        --packet.DelayTicks;
        return true;
    }
    if (!InBounds(run, packet.X, packet.Y) ||
        !CanExit(run, TileAt(run, packet.X, packet.Y), packet.X, packet.Y, packet.Dir)) {
        LosePacket(run);
        return false;
    }
    packet.X += DirectionDx(packet.Dir);
    packet.Y += DirectionDy(packet.Dir);
    Tile& tile = TileAt(run, packet.X, packet.Y);

    if (tile.Type == TileType::Antivirus) {
        UseAntivirus(run, tile, packet.X, packet.Y);
    }
    if (tile.VirusInfected && !packet.Corrupted) {
        packet.Corrupted = true;
        CountCorruptedPacket(run);
    }
    if (packet.Corrupted && tile.Type != TileType::Firewall) {
        tile.VirusInfected = true;
    }
    if (tile.Type == TileType::Buffer) {
        packet.DelayTicks = 1;
    }
    if (HasArrived(run, scratch, packet)) {
        if (packet.Corrupted) {
            LosePacket(run);
        } else {
            CountDeliveredPacket(run);
        }
        return false;
    }
    if (!RoutePacket(run, tile, packet)) {
        LosePacket(run);
        return false;
    }
    return true;
}

bool IsVertical(Direction d) {
    constexpr unsigned AxisBit = 1;
    return (static_cast<unsigned>(d) & ~(1U << AxisBit)) == 0;
}

// Drops, in list order, the packets for which keep() is false.
template <typename Keep>
void KeepPackets(std::vector<Packet>& packets, Keep keep) {
    auto end = packets.begin();
    for (Packet& packet : packets) {
        if (keep(packet)) {
            *end++ = packet;
        }
    }
    packets.erase(end, packets.end());
}

// Of the packets that share a cell the last one of each axis survives on a tile with four exits,
// and the last one of all on any other.
void CollidePackets(RunState& run, TickScratch& scratch) {
    scratch.CellCounts.assign(run.Tiles.size(), TickScratch::CellCount{});
    bool allAlone = true;
    for (const Packet& packet : run.Packets) {
        if (!InBounds(run, packet.X, packet.Y)) {
            allAlone = false;
            continue;
        }
        TickScratch::CellCount& count = scratch.CellCounts[TileIndex(run, packet.X, packet.Y)];
        ++(IsVertical(packet.Dir) ? count.Vertical : count.Horizontal);
        allAlone = ++count.Total == 1 && allAlone;
    }
    if (allAlone) {
        return;
    }
    KeepPackets(run.Packets, [&run, &scratch](const Packet& packet) {
        if (!InBounds(run, packet.X, packet.Y)) {
            return false;
        }
        const std::size_t index = TileIndex(run, packet.X, packet.Y);
        TickScratch::CellCount& count = scratch.CellCounts[index];
        std::int32_t& onAxis = IsVertical(packet.Dir) ? count.Vertical : count.Horizontal;
        const bool crossing = HasAllExits(run.Tiles[index].Connections);
        if ((crossing ? onAxis : count.Total) <= 1) {
            return true;
        }
        --onAxis;
        --count.Total;
        LosePacket(run);
        return false;
    });
}

} // namespace

void RunTick(RunState& run, TickScratch& scratch) {
    ++run.Tick;

    const bool spawning = run.PacketGraceRemaining <= 0;
    const bool spreading = run.VirusGraceRemaining <= 0;
    if (!spawning) {
        --run.PacketGraceRemaining;
    }
    if (!spreading) {
        --run.VirusGraceRemaining;
    }

    if (spawning && run.Tick >= run.NextSpawnTick && !run.Sources.empty()) {
        SpawnPacket(run);
    }
    MapManySinks(run, scratch);
    KeepPackets(run.Packets,
                [&run, &scratch](Packet& packet) { return MovePacket(run, scratch, packet); });
    if (run.Packets.size() >= 2) {
        CollidePackets(run, scratch);
    }
    if (FailureCount(run) >= run.FailureThreshold) {
        run.GameOver = true;
    } else if (spreading && run.DeliveredPackets < run.LevelTargetPackets) {
        StepVirus(run, scratch);
    }
}

} // namespace Wirefall
