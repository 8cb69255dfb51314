#include "sim/RunCommands.h"

#include "sim/LevelGeneration.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace Wirefall {

namespace {

// Usages of the keyboard page of the USB HID tables, by which the commands are named.
namespace Key {

constexpr std::uint32_t A = 4;
constexpr std::uint32_t D = 7;
constexpr std::uint32_t E = 8;
constexpr std::uint32_t Q = 20;
constexpr std::uint32_t S = 22;
constexpr std::uint32_t W = 26;
constexpr std::uint32_t Return = 40;
constexpr std::uint32_t Space = 44;
constexpr std::uint32_t Right = 79;
constexpr std::uint32_t Left = 80;
constexpr std::uint32_t Down = 81;
constexpr std::uint32_t Up = 82;
constexpr std::uint32_t KeypadEnter = 88;

} // namespace Key

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
    {Key::Up, CursorUp},
    {Key::W, CursorUp},
    {Key::Down, CursorDown},
    {Key::S, CursorDown},
    {Key::Left, CursorLeft},
    {Key::A, CursorLeft},
    {Key::Right, CursorRight},
    {Key::D, CursorRight},
    {Key::Q, RotateLeft},
    {Key::E, RotateRight},
    {Key::Return, PlaceTile},
    {Key::Space, PlaceTile},
    {Key::KeypadEnter, PlaceTile},
}};

} // namespace

bool ApplyCommand(RunState& run, std::uint32_t code) {
    if (run.GameOver) {
        return false;
    }
    const auto command = std::find_if(Commands.begin(), Commands.end(),
                                      [code](const CommandRow& row) { return row.Code == code; });
    return command != Commands.end() && command->Apply(run);
}

} // namespace Wirefall
