#pragma once

// Reads the game's state off its picture. The reader draws with the game's own code what a screen
// can look like and finds what it sees among that, so it knows no colours and no layout of its own.
// A run that it has read explains every pixel of the picture.

#include "e2e/Screenshot.h"
#include "game/GameApp.h"
#include "sim/LevelGeneration.h"
#include "sim/RunState.h"
#include "support/SoftwareCanvas.h"

#include <SDL3/SDL_rect.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Wirefall::Testing {

struct WindowSize {
    std::int32_t Width;
    std::int32_t Height;
    std::int32_t LogicalWidth; ///< Of the canvas that a window of this size shows.
};

/// What the main menu shows.
struct MenuView {
    bool OffersToContinue = false;
    std::int32_t Selection = 0;

    bool operator==(const MenuView&) const = default;
};

/// The lettering of a picture, pixel by pixel: what is the same whatever lies behind it.
struct Lettering {
    std::vector<std::size_t> Places; ///< Ascending.
    std::vector<Rgb> Colors;
};

/// A run as it can be seen: on level 1, with the smallest PreviewRotation that looks right, and
/// with directions of packets, clocks and engine unknown. Or, if there is none, why not.
struct ReadResult {
    std::optional<RunState> Run;
    std::string Trouble;
};

/// One at a time: it uses the live run and the drawing code's own caches.
class ScreenReader {
public:
    /// For a window of that size, drawn by SDL's software renderer and with its top left corner in
    /// that of the screen, whose player has those keys.
    explicit ScreenReader(const WindowSize& size,
                          const KeyboardTable& keys = FactoryBindings::Keyboard);

    /// Draws beforehand all that ReadRun needs, which takes a second. Else its first call does, and
    /// the run goes on meanwhile.
    void LearnRuns();

    /// Nothing when it is not the main menu at full brightness. The screen may be smaller than the
    /// window.
    std::optional<MenuView> ReadMenu(const Screenshot& screen) const;

    /// The rows of the Options page that this record shows, on the player's keyboard, in the words
    /// of the catalog.
    Lettering LearnOptions(const GameApp& app);

    /// Whether the screen shows these rows and no others, at full brightness.
    bool ShowsOptions(const Screenshot& screen, const Lettering& rows) const;

    /// How bright the lettering of the main menu is, on a picture that may be fading.
    std::uint64_t MenuBrightness(const Screenshot& screen) const;

    /// The cell with the cursor on the play screen; nothing when it is not the play screen. The
    /// screen may be smaller than the window, as long as the cursor is on it.
    std::optional<Cell> ReadCursor(const Screenshot& screen);

    /// `hint` is what the run may be: it decides only what the picture leaves open, the tile below
    /// the preview of a tile that covers it.
    ReadResult ReadRun(const Screenshot& screen, const RunState* hint = nullptr);

    /// The play screen of that run.
    Screenshot DrawRun(const RunState& run);

private:
    struct KnownMenu {
        MenuView View;
        Lettering Entries;
    };

    /// What can be seen in a cell, but for the cursor.
    struct Look {
        enum class Role : std::uint8_t { Plain, Source, Sink };
        enum class Traffic : std::uint8_t { None, Clean, Corrupted };

        Tile Shown;
        Role Endpoint = Role::Plain;
        Direction Inward = Direction::Up;
        Traffic Packets = Traffic::None;

        bool operator==(const Look&) const = default;
    };

    using LookByHash = std::unordered_map<std::uint64_t, std::size_t>;
    using ValueByHash = std::unordered_map<std::uint64_t, std::int32_t>;

    void BeginDrawing();
    void DrawBoard(const RunState& run);
    SDL_Rect PixelsOf(float x, float y, float w, float h) const;
    SDL_Rect InnerPixels(const Cell& cell) const;
    std::size_t PlaceOf(std::int32_t x, std::int32_t y) const;
    bool SeesAll(const Screenshot& screen) const;

    void LearnMenu();
    void LearnStillParts();
    void LearnLooks();
    std::optional<std::size_t> ReadQueue(const Screenshot& screen, RunState& run) const;
    bool ReadCounters(const Screenshot& screen, RunState& run) const;
    bool ReadCursorCell(const Screenshot& screen, RunState& run, const RunState* hint);

    static std::vector<Look> AllLooks();
    static void Put(RunState& run, const Cell& cell, const Look& look);
    static Look LookOf(const RunState& run, const Cell& cell);

    WindowSize Size;
    SoftwareCanvas Canvas;
    SDL_FRect Presented{}; ///< Where the logical canvas lies in the window.

    std::vector<KnownMenu> Menus;
    Screenshot StillPicture; ///< The play screen with nothing on it.
    std::vector<bool> IsStill;
    std::vector<Look> Looks;
    std::vector<LookByHash> CellLooks; ///< By cell, row by row.
    std::array<SDL_Rect, 3> QueueRects{};
    std::array<ValueByHash, 3> QueueTiles; ///< To type * 4 + rotation.
    std::array<SDL_Rect, 3> ChipRects{};
    std::array<ValueByHash, 3> ChipValues;
    SDL_Rect MarkRect{};
    ValueByHash MarkShown;
};

} // namespace Wirefall::Testing
