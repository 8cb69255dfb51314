#pragma once

// The save file in memory: a flat record between the run and the file, so that the run is never
// touched by a file that is read only in part. The order of the members is their order in the file,
// and their names are its keys. SaveState.h is what the game calls; docs/formats.md describes the
// file for people.

#include "persist/TaggedStream.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Wirefall {

struct DocumentTile {
    std::int32_t Type = 0;
    std::int32_t Connections = 0;
    bool VirusInfected = false;
    bool OccupiedBySource = false;
    bool OccupiedBySink = false;
    bool Consumed = false;
    std::int32_t CooldownTicks = 0;

    bool operator==(const DocumentTile&) const = default;
};

/// A source or a sink.
struct DocumentEndpoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Dir = 0;

    bool operator==(const DocumentEndpoint&) const = default;
};

struct DocumentPacket {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Dir = 0;
    bool Corrupted = false;
    std::int32_t DelayTicks = 0;

    bool operator==(const DocumentPacket&) const = default;
};

struct SaveDocument {
    std::uint64_t Revision = 1;
    std::uint64_t AccumulatorMs = 0;
    std::int32_t CursorX = 0;
    std::int32_t CursorY = 0;
    std::int32_t PreviewRotation = 0;
    std::uint64_t Tick = 0;
    std::int32_t SpawnIntervalTicks = 0;
    std::int32_t VirusSpreadIntervalTicks = 0;
    std::uint64_t NextSpawnTick = 0;
    std::int32_t PacketGraceTicks = 0;
    std::int32_t VirusGraceTicks = 0;
    std::int32_t PacketGraceRemaining = 0;
    std::int32_t VirusGraceRemaining = 0;
    std::uint64_t VirusActiveTicks = 0;
    std::int32_t Level = 1;
    std::int32_t TotalScore = 0;
    std::int32_t LevelTargetPackets = 20;
    std::int32_t FailureThreshold = 10;
    std::int32_t LostPackets = 0;
    std::int32_t CorruptedPackets = 0;
    std::int32_t DeliveredPackets = 0;
    bool GameOver = false;
    std::uint32_t Seed = 0;
    std::int32_t GridWidth = 0;
    std::int32_t GridHeight = 0;
    /// The random engine: its 624 words and its position, decimal, with one blank between any two.
    std::string RandomState;
    std::array<std::int32_t, 3> TileQueue{};
    std::vector<DocumentTile> Tiles;
    std::vector<DocumentEndpoint> Sources;
    std::vector<DocumentEndpoint> Sinks;
    std::vector<DocumentPacket> Packets;

    bool operator==(const SaveDocument&) const = default;
};

/// What a save file says.
struct SavedGame {
    bool RootIsObject = false;
    /// All of the file could be read, down to the End of its root.
    bool Complete = false;
    bool HasRunState = false;
    /// Run holds every member, each within its limits, and the root has come to its End.
    bool RunIsGood = false;
    SaveDocument Run;

    /// The file is as a session has written it. It may still say that there is no run.
    bool IsWhole() const { return Complete && (!HasRunState || RunIsGood); }
};

/// Writes the whole file: the document as its run, or no run for null.
void WriteSaveDocument(TaggedWriter& writer, const SaveDocument* run);

/// Reads a whole file. Members may stand in any order, unknown ones are passed over, and of several
/// with the same key the last one counts. Data that runs out, or is damaged in any other way, ends
/// in a run that is not good; so does everything that MeetsLimits refuses.
SavedGame ReadSavedGame(TaggedReader& reader);

/// Whether the counters are possible at all: none negative that must not be, no grace longer than
/// it started, and as many tiles as the board has cells. What is only clamped is not looked at.
bool MeetsLimits(const SaveDocument& document);

/// Reads a source or a sink. False unless `element` is an object in which `X`, `Y` and `Dir` are
/// all there and numbers.
bool ReadEndpointObject(TaggedReader& reader, const TaggedValue& element,
                        DocumentEndpoint& endpoint);

} // namespace Wirefall
