#include "sim/RunCommands.h"

#include "sim/LevelGeneration.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace Wirefall {

namespace {

// The commands return whether the run has changed.

bool MoveCursor(std::int32_t& position, std::int32_t step, std::int32_t size) {
    const std::int64_t wanted = std::int64_t{position} + step;
    const std::int64_t moved =
        step < 0 ? std::max<std::int64_t>(wanted, 0) : std::min(wanted, std::int64_t{size} - 1);
    const bool changed = moved != position;
    position = static_cast<std::int32_t>(moved);
    return changed;
}

bool CursorUp(RunState& run) { return MoveCursor(run.CursorY, -1, run.GridHeight); }
bool CursorDown(RunState& run) { return MoveCursor(run.CursorY, +1, run.GridHeight); }
bool CursorLeft(RunState& run) { return MoveCursor(run.CursorX, -1, run.GridWidth); }
bool CursorRight(RunState& run) { return MoveCursor(run.CursorX, +1, run.GridWidth); }

bool Rotate(RunState& run, std::int32_t quarterTurns) {
    run.PreviewRotation = (run.PreviewRotation % 4 + 4 + quarterTurns) % 4;
    return true;
}

bool RotateLeft(RunState& run) { return Rotate(run, 3); }
bool RotateRight(RunState& run) { return Rotate(run, 1); }

bool PlaceTile(RunState& run) {
    if (!InBounds(run, run.CursorX, run.CursorY) || IsEndpointCell(run, run.CursorX, run.CursorY)) {
        return false;
    }
    Tile& cell = TileAt(run, run.CursorX, run.CursorY);
    const bool infected = cell.VirusInfected;
    cell = MakeTile(run.TileQueue[0], run.PreviewRotation);
    cell.VirusInfected = infected;
    run.TileQueue = {run.TileQueue[1], run.TileQueue[2], DrawQueueTile(run.RandomEngine)};
    return true;
}

struct CommandRow {
    std::uint32_t Code;
    bool (*Apply)(RunState& run);
};

constexpr std::array<CommandRow, 13> Commands = {{
    {82, CursorUp},    // Up
    {26, CursorUp},    // W
    {81, CursorDown},  // Down
    {22, CursorDown},  // S
    {80, CursorLeft},  // Left
    {4, CursorLeft},   // A
    {79, CursorRight}, // Right
    {7, CursorRight},  // D
    {20, RotateLeft},  // Q
    {8, RotateRight},  // E
    {40, PlaceTile},   // Return
    {44, PlaceTile},   // Space
    {88, PlaceTile},   // Keypad Enter
}};

} // namespace

void ApplyRunCommand(std::uint32_t code) {
    RunState& run = LiveRun();
    if (run.GameOver) {
        return;
    }
    const auto command = std::find_if(Commands.begin(), Commands.end(),
                                      [code](const CommandRow& row) { return row.Code == code; });
    if (command != Commands.end() && command->Apply(run)) {
        ++LiveSimulation().Revision;
    }
}

} // namespace Wirefall
