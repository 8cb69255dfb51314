#include "support/RunChecksum.h"

#include "support/Fnv1a.h"

#include <vector>

namespace Wirefall::Testing {

std::uint64_t PlayChecksum(const RunState& run) {
    Fnv1a sum;
    const auto add = [&sum](auto number) { sum.Add(static_cast<std::uint64_t>(number)); };
    for (const Tile& tile : run.Tiles) {
        add(tile.Type);
        add(tile.Connections);
        add(tile.VirusInfected);
        add(tile.OccupiedBySource);
        add(tile.OccupiedBySink);
        add(tile.Consumed);
        add(tile.CooldownTicks);
    }
    for (const std::vector<Endpoint>* const list : {&run.Sources, &run.Sinks}) {
        for (const Endpoint& endpoint : *list) {
            add(endpoint.X);
            add(endpoint.Y);
            add(endpoint.Dir);
        }
    }
    for (const Packet& packet : run.Packets) {
        add(packet.X);
        add(packet.Y);
        add(packet.Dir);
        add(packet.Corrupted);
        add(packet.DelayTicks);
    }
    for (const TileType tile : run.TileQueue) {
        add(tile);
    }
    for (const std::int32_t number :
         {run.CursorX, run.CursorY, run.PreviewRotation, run.Level, run.TotalScore,
          run.LevelTargetPackets, run.FailureThreshold, run.SpawnIntervalTicks,
          run.VirusSpreadIntervalTicks, run.PacketGraceTicks, run.VirusGraceTicks,
          run.PacketGraceRemaining, run.VirusGraceRemaining, run.LostPackets, run.CorruptedPackets,
          run.DeliveredPackets}) {
        add(number);
    }
    add(run.Tick);
    add(run.NextSpawnTick);
    add(run.VirusActiveTicks);
    add(run.GameOver);
    add(run.RandomEngine.Position);
    for (const std::uint32_t word : run.RandomEngine.Words) {
        add(word);
    }
    return sum.Value();
}

std::uint64_t RunChecksum(const RunState& run) {
    Fnv1a sum;
    sum.Add(PlayChecksum(run));
    // Where one list ends and the next begins.
    for (const std::size_t size : {run.Sources.size(), run.Sinks.size(), run.Packets.size()}) {
        sum.Add(size);
    }
    for (const std::int32_t number : {run.GridWidth, run.GridHeight}) {
        sum.Add(static_cast<std::uint64_t>(number));
    }
    sum.Add(run.Seed);
    return sum.Value();
}

} // namespace Wirefall::Testing
