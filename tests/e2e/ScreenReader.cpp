#include "e2e/ScreenReader.h"

#include "display/LogicalCanvas.h"
#include "draw/Color.h"
#include "draw/Metrics.h"
#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "options/OptionsScreen.h"
#include "screens/BoardLayout.h"
#include "screens/BoardScreen.h"
#include "screens/HudLayout.h"
#include "screens/MainMenu.h"
#include "sim/PacketTick.h"
#include "sim/Scoring.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"
#include "support/Fnv1a.h"
#include "words/CommandHints.h"

#include <SDL3/SDL_render.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Wirefall::Testing {

namespace {

// How much of a cell's rim a cursor may touch, in logical pixels.
constexpr float CellRim = 2.0F;

// More than a run on level 1 can reach.
constexpr std::int32_t CounterValues = 24;

constexpr std::int32_t Off = -1;

Rgb Opaque(PackedColor color) { return {RedOf(color), GreenOf(color), BlueOf(color)}; }

// The entries of a menu and the rows of a page.
Lettering LetteringOf(const Screenshot& picture) {
    const Rgb bright = Opaque(Palette::BrightText);
    const Rgb normal = Opaque(Palette::NormalText);
    Lettering lettering;
    for (std::size_t i = 0; i < picture.Pixels.size(); ++i) {
        if (picture.Pixels[i] == bright || picture.Pixels[i] == normal) {
            lettering.Places.push_back(i);
            lettering.Colors.push_back(picture.Pixels[i]);
        }
    }
    return lettering;
}

// Over the pixels of the rectangle.
std::uint64_t HashOf(const Screenshot& picture, const SDL_Rect& rect) {
    Fnv1a hash;
    for (int y = rect.y; y < rect.y + rect.h; ++y) {
        for (int x = rect.x; x < rect.x + rect.w; ++x) {
            const Rgb& pixel = picture.At(x, y);
            hash.AddByte(pixel.R);
            hash.AddByte(pixel.G);
            hash.AddByte(pixel.B);
        }
    }
    return hash.Value();
}

template <typename Map>
auto Lookup(const Map& map, const Screenshot& picture, const SDL_Rect& rect) {
    const auto found = map.find(HashOf(picture, rect));
    return found == map.end() ? std::optional<typename Map::mapped_type>()
                              : std::optional(found->second);
}

std::vector<Cell> AllCells() {
    std::vector<Cell> cells;
    for (std::int32_t y = 0; y < BoardSide; ++y) {
        for (std::int32_t x = 0; x < BoardSide; ++x) {
            cells.push_back({x, y});
        }
    }
    return cells;
}

std::size_t IndexOf(const Cell& cell) {
    return static_cast<std::size_t>(cell.Y) * BoardSide + static_cast<std::size_t>(cell.X);
}

RunState EmptyRun() {
    RunState run;
    run.Tiles.assign(static_cast<std::size_t>(BoardSide) * BoardSide, Tile{});
    run.CursorX = Off;
    run.CursorY = Off;
    return run;
}

void MakeLive(const RunState& run) {
    LiveSimulation().Run = run;
    LiveSimulation().RunInitialised = true;
}

std::int32_t QueueCode(TileType type, std::int32_t rotation) {
    return static_cast<std::int32_t>(type) * 4 + rotation;
}

// Each tile that looks different, by the smallest rotation.
std::vector<std::pair<TileType, std::int32_t>> DistinctTiles() {
    std::vector<std::pair<TileType, std::int32_t>> tiles;
    for (std::int32_t type = 0; type < TileTypeCount; ++type) {
        std::vector<ConnectionMask> seen;
        for (std::int32_t rotation = 0; rotation < 4; ++rotation) {
            const ConnectionMask mask = MakeTile(static_cast<TileType>(type), rotation).Connections;
            if (std::ranges::find(seen, mask) == seen.end()) {
                seen.push_back(mask);
                tiles.emplace_back(static_cast<TileType>(type), rotation);
            }
        }
    }
    return tiles;
}

} // namespace

ScreenReader::ScreenReader(const WindowSize& size, const KeyboardTable& keys)
    : Size(size),
      Canvas({.LogicalWidth = size.LogicalWidth,
              .LogicalHeight = LogicalHeight,
              .SurfaceWidth = size.Width,
              .SurfaceHeight = size.Height}) {
    SDL_GetRenderLogicalPresentationRect(Canvas.Renderer(), &Presented);
    LogicalWidth = size.LogicalWidth;
    GameApp player;
    player.KeyboardBindings = keys;
    const CommandHints hints = BuildCommandHints(player, ControllerSet{});
    StoreHudHintLines(hints.Move, hints.Rotate, hints.Place, hints.FastForward, hints.Menu);
    LearnMenu();
}

void ScreenReader::LearnRuns() {
    LearnStillParts();
    LearnLooks();
}

std::optional<MenuView> ScreenReader::ReadMenu(const Screenshot& screen) const {
    const auto shows = [&](const KnownMenu& menu) {
        const Lettering& entries = menu.Entries;
        for (std::size_t i = 0; i < entries.Places.size(); ++i) {
            const auto x = static_cast<std::int32_t>(entries.Places[i]) % Size.Width;
            const auto y = static_cast<std::int32_t>(entries.Places[i]) / Size.Width;
            if (Holds(screen, x, y) && screen.At(x, y) != entries.Colors[i]) {
                return false;
            }
        }
        return true;
    };
    const auto found = std::ranges::find_if(Menus, shows);
    return found == Menus.end() ? std::nullopt : std::optional(found->View);
}

Lettering ScreenReader::LearnOptions(const GameApp& app) {
    GameApp still = app;
    still.QuitRequested = true; // Without the rain, whose digits go by the clock.
    BeginDrawing();
    DrawOptionsScreen(Canvas.Renderer(), still, ControllerSet{});
    return LetteringOf(Canvas.Read());
}

bool ScreenReader::ShowsOptions(const Screenshot& screen, const Lettering& rows) const {
    if (!SeesAll(screen)) {
        throw std::invalid_argument("The Options are read off the whole window only");
    }
    const Lettering seen = LetteringOf(screen);
    return seen.Places == rows.Places && seen.Colors == rows.Colors;
}

std::uint64_t ScreenReader::MenuBrightness(const Screenshot& screen) const {
    std::uint64_t sum = 0;
    for (const std::size_t place : Menus.front().Entries.Places) {
        sum += screen.Pixels.at(place).G;
    }
    return sum;
}

std::optional<Cell> ScreenReader::ReadCursor(const Screenshot& screen) {
    LearnStillParts();
    // The box around everything that is not as it always is.
    std::int32_t left = Size.Width;
    std::int32_t top = Size.Height;
    std::int32_t right = Off;
    std::int32_t bottom = Off;
    const std::int32_t height = std::min(screen.Height, Size.Height);
    const std::int32_t width = std::min(screen.Width, Size.Width);
    for (std::int32_t y = 0; y < height; ++y) {
        for (std::int32_t x = 0; x < width; ++x) {
            if (IsStill[PlaceOf(x, y)] && screen.At(x, y) != StillPicture.At(x, y)) {
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x);
                bottom = std::max(bottom, y);
            }
        }
    }
    // On the play screen that is one cell, whose lines the cursor covers. A panel or a dim over the
    // board changes more.
    const BoardLayout layout = PlaceBoard(Size.LogicalWidth, LogicalHeight);
    const auto cellSize = static_cast<float>(layout.CellSize);
    const float scale = Presented.w / static_cast<float>(Size.LogicalWidth);
    constexpr float Rounding = 4.0F;
    const auto longest = static_cast<std::int32_t>(cellSize * scale + Rounding);
    if (right < left || right - left > longest || bottom - top > longest) {
        return std::nullopt;
    }
    const auto cellAt = [&](std::int32_t from, std::int32_t to, float canvas, std::int32_t board) {
        const float middle = (static_cast<float>(from + to + 1) / 2.0F - canvas) / scale;
        return static_cast<std::int32_t>(
            std::floor((middle - static_cast<float>(board)) / cellSize));
    };
    const Cell cell = {cellAt(left, right, Presented.x, layout.BoardX),
                       cellAt(top, bottom, Presented.y, layout.BoardY)};
    return InBounds(RunState{}, cell.X, cell.Y) ? std::optional(cell) : std::nullopt;
}

ReadResult ScreenReader::ReadRun(const Screenshot& screen, const RunState* hint) {
    if (!SeesAll(screen)) {
        throw std::invalid_argument("A run is read off the whole window only");
    }
    const std::optional<Cell> cursor = ReadCursor(screen);
    if (!cursor) {
        return {std::nullopt, "it is not the play screen"};
    }
    LearnRuns();
    RunState run = EmptyRun();
    run.CursorX = cursor->X;
    run.CursorY = cursor->Y;
    if (const std::optional<std::size_t> unknown = ReadQueue(screen, run)) {
        return {std::nullopt, "tile " + std::to_string(*unknown) + " of the queue is none"};
    }
    if (!ReadCounters(screen, run)) {
        return {std::nullopt, "a counter cannot be read"};
    }
    for (const Cell& cell : AllCells()) {
        const auto look = Lookup(CellLooks[IndexOf(cell)], screen, InnerPixels(cell));
        if (look) {
            Put(run, cell, Looks[*look]);
        } else if (cell != *cursor) {
            return {std::nullopt, "cell (" + std::to_string(cell.X) + ", " +
                                      std::to_string(cell.Y) + ") looks like no tile"};
        }
    }
    // On a source or a sink there is no preview, so there it has been read like any other.
    if (!IsEndpointCell(run, cursor->X, cursor->Y) && !ReadCursorCell(screen, run, hint)) {
        return {std::nullopt, "no tile explains the cell below the cursor"};
    }
    run.TotalScore = run.DeliveredPackets * ScoreDelivered + run.LostPackets * ScoreLost +
                     run.CorruptedPackets * ScoreCorrupted;
    const std::size_t unexplained = CountDifferences(DrawRun(run), screen);
    if (unexplained > 0) {
        return {std::nullopt,
                std::to_string(unexplained) + " pixels are not as the game draws what was read"};
    }
    return {run, ""};
}

Screenshot ScreenReader::DrawRun(const RunState& run) {
    BeginDrawing();
    DrawBoard(run);
    return Canvas.Read();
}

void ScreenReader::BeginDrawing() {
    SDL_SetRenderClipRect(Canvas.Renderer(), nullptr);
    Canvas.Clear();
}

void ScreenReader::DrawBoard(const RunState& run) {
    MakeLive(run);
    DrawBoardScreen(Canvas.Renderer(), Size.LogicalWidth, LogicalHeight);
}

// Only whole pixels inside.
SDL_Rect ScreenReader::PixelsOf(float x, float y, float w, float h) const {
    const float scaleX = Presented.w / static_cast<float>(Size.LogicalWidth);
    const float scaleY = Presented.h / static_cast<float>(LogicalHeight);
    const auto left = static_cast<int>(std::ceil(Presented.x + x * scaleX));
    const auto top = static_cast<int>(std::ceil(Presented.y + y * scaleY));
    const auto right = static_cast<int>(std::floor(Presented.x + (x + w) * scaleX));
    const auto bottom = static_cast<int>(std::floor(Presented.y + (y + h) * scaleY));
    return {left, top, right - left, bottom - top};
}

SDL_Rect ScreenReader::InnerPixels(const Cell& cell) const {
    const BoardLayout layout = PlaceBoard(Size.LogicalWidth, LogicalHeight);
    const float side = static_cast<float>(layout.CellSize) - 2.0F * CellRim;
    return PixelsOf(static_cast<float>(layout.BoardX + cell.X * layout.CellSize) + CellRim,
                    static_cast<float>(layout.BoardY + cell.Y * layout.CellSize) + CellRim, side,
                    side);
}

std::size_t ScreenReader::PlaceOf(std::int32_t x, std::int32_t y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(Size.Width) +
           static_cast<std::size_t>(x);
}

bool ScreenReader::SeesAll(const Screenshot& screen) const {
    return screen.Width == Size.Width && screen.Height == Size.Height;
}

void ScreenReader::LearnMenu() {
    constexpr std::int32_t MostRows = 6;
    for (const bool offersToContinue : {false, true}) {
        const std::int32_t rows = offersToContinue ? MostRows : MostRows - 1;
        for (std::int32_t selection = 0; selection < rows; ++selection) {
            GameApp app;
            app.HasSavedRun = offersToContinue;
            app.MenuSelection = selection;
            app.QuitRequested = true; // Without the rain, whose digits go by the clock.
            BeginDrawing();
            DrawMainMenu(Canvas.Renderer(), app);
            Menus.push_back({{offersToContinue, selection}, LetteringOf(Canvas.Read())});
        }
    }
}

void ScreenReader::LearnStillParts() {
    if (!IsStill.empty()) {
        return;
    }
    StillPicture = DrawRun(EmptyRun());
    const BoardLayout layout = PlaceBoard(Size.LogicalWidth, LogicalHeight);
    const UiMetrics metrics = MeasureUiMetrics(Canvas.Renderer(), Size.LogicalWidth, LogicalHeight);
    const HudLayout hud = PlaceHud(layout, metrics);
    for (std::size_t i = 0; i < QueueRects.size(); ++i) {
        QueueRects[i] = PixelsOf(hud.TileX, hud.TileY + static_cast<float>(i) * hud.TilePitch,
                                 hud.TileSide, hud.TileSide);
    }
    for (std::size_t i = 0; i < ChipRects.size(); ++i) {
        ChipRects[i] = PixelsOf(hud.InnerX, hud.ChipY[i], hud.InnerWidth, hud.ChipHeight);
    }
    constexpr float MarkRoom = 20.0F;
    MarkRect = PixelsOf(hud.InnerX + hud.InnerWidth - MarkRoom, hud.StatusTitleY - 2.0F, MarkRoom,
                        hud.LevelY - hud.StatusTitleY);

    IsStill.assign(StillPicture.Pixels.size(), true);
    const auto letChange = [&](SDL_Rect rect) {
        // Whatever lies partly inside may change too.
        rect = {rect.x - 1, rect.y - 1, rect.w + 2, rect.h + 2};
        for (int y = rect.y; y < rect.y + rect.h; ++y) {
            for (int x = rect.x; x < rect.x + rect.w; ++x) {
                IsStill[PlaceOf(x, y)] = false;
            }
        }
    };
    for (const SDL_Rect& rect : QueueRects) {
        letChange(rect);
    }
    letChange(PixelsOf(hud.BoxX, hud.StatusY, hud.BoxWidth, hud.StatusHeight));
    const Rgb line = Opaque(Palette::FrameLine);
    const auto extent = static_cast<float>(BoardExtent(layout));
    const SDL_Rect board = PixelsOf(static_cast<float>(layout.BoardX),
                                    static_cast<float>(layout.BoardY), extent, extent);
    for (int y = board.y; y < board.y + board.h; ++y) {
        for (int x = board.x; x < board.x + board.w; ++x) {
            const std::size_t i = PlaceOf(x, y);
            IsStill[i] = StillPicture.Pixels[i] == line;
        }
    }
}

void ScreenReader::LearnLooks() {
    if (!Looks.empty()) {
        return;
    }
    Looks = AllLooks();
    CellLooks.resize(static_cast<std::size_t>(BoardSide) * BoardSide);
    const auto tiles = DistinctTiles();
    const BoardLayout layout = PlaceBoard(Size.LogicalWidth, LogicalHeight);
    const SDL_Rect board = {layout.BoardX, layout.BoardY, BoardExtent(layout), BoardExtent(layout)};
    for (std::size_t i = 0; i < Looks.size(); ++i) {
        RunState run = EmptyRun();
        for (const Cell& cell : AllCells()) {
            Put(run, cell, Looks[i]);
        }
        const auto& [type, rotation] = tiles[i % tiles.size()];
        run.TileQueue = {type, type, type};
        run.PreviewRotation = rotation;
        const std::int32_t value = static_cast<std::int32_t>(i) % CounterValues;
        run.DeliveredPackets = value;
        run.LostPackets = value;
        run.CorruptedPackets = value;
        run.FastForward = i % 2 == 1;

        BeginDrawing();
        // All tiles of the queue and all counters have been seen by then.
        if (i >= tiles.size() && i >= static_cast<std::size_t>(CounterValues)) {
            SDL_SetRenderClipRect(Canvas.Renderer(), &board);
        }
        DrawBoard(run);
        const Screenshot picture = Canvas.Read();
        const bool seesPanel = !SDL_RenderClipEnabled(Canvas.Renderer());
        for (const Cell& cell : AllCells()) {
            CellLooks[IndexOf(cell)].try_emplace(HashOf(picture, InnerPixels(cell)), i);
        }
        if (!seesPanel) {
            continue;
        }
        for (std::size_t slot = 0; slot < QueueRects.size(); ++slot) {
            QueueTiles[slot].try_emplace(HashOf(picture, QueueRects[slot]),
                                         QueueCode(type, slot == 0 ? rotation : 0));
        }
        for (std::size_t chip = 0; chip < ChipRects.size(); ++chip) {
            ChipValues[chip].try_emplace(HashOf(picture, ChipRects[chip]), value);
        }
        MarkShown.try_emplace(HashOf(picture, MarkRect), run.FastForward ? 1 : 0);
    }
}

// The number of the tile that cannot be read, or nothing.
std::optional<std::size_t> ScreenReader::ReadQueue(const Screenshot& screen, RunState& run) const {
    for (std::size_t slot = 0; slot < QueueRects.size(); ++slot) {
        const auto code = Lookup(QueueTiles[slot], screen, QueueRects[slot]);
        if (!code) {
            return slot;
        }
        run.TileQueue[slot] = static_cast<TileType>(*code / 4);
        if (slot == 0) {
            run.PreviewRotation = *code % 4;
        }
    }
    return std::nullopt;
}

bool ScreenReader::ReadCounters(const Screenshot& screen, RunState& run) const {
    constexpr std::array<std::int32_t RunState::*, 3> Counters = {
        &RunState::DeliveredPackets, &RunState::LostPackets, &RunState::CorruptedPackets};
    for (std::size_t chip = 0; chip < Counters.size(); ++chip) {
        const auto value = Lookup(ChipValues[chip], screen, ChipRects[chip]);
        if (!value) {
            return false;
        }
        run.*Counters[chip] = *value;
    }
    const auto mark = Lookup(MarkShown, screen, MarkRect);
    run.FastForward = mark.value_or(0) == 1;
    return mark.has_value();
}

bool ScreenReader::ReadCursorCell(const Screenshot& screen, RunState& run, const RunState* hint) {
    const Cell cell = {run.CursorX, run.CursorY};
    const SDL_Rect inside = InnerPixels(cell);
    const std::uint64_t wanted = HashOf(screen, inside);
    const RunState without = run;
    const BoardLayout layout = PlaceBoard(Size.LogicalWidth, LogicalHeight);
    const SDL_Rect clip = {layout.BoardX + cell.X * layout.CellSize,
                           layout.BoardY + cell.Y * layout.CellSize, layout.CellSize,
                           layout.CellSize};
    const auto explains = [&](const Look& look) {
        run = without;
        Put(run, cell, look);
        BeginDrawing();
        // The rest of the picture would only cost time.
        SDL_SetRenderClipRect(Canvas.Renderer(), &clip);
        DrawBoard(run);
        return HashOf(Canvas.Read(), inside) == wanted;
    };
    if (hint != nullptr) {
        Look look = LookOf(*hint, cell);
        for (const auto traffic :
             {Look::Traffic::None, Look::Traffic::Clean, Look::Traffic::Corrupted}) {
            look.Packets = traffic;
            if (explains(look)) {
                return true;
            }
        }
    }
    return std::ranges::any_of(Looks, [&](const Look& look) {
        return look.Endpoint == Look::Role::Plain && explains(look);
    });
}

std::vector<ScreenReader::Look> ScreenReader::AllLooks() {
    std::vector<Look> shapes;
    for (const auto& [type, rotation] : DistinctTiles()) {
        Look look;
        look.Shown = MakeTile(type, rotation);
        shapes.push_back(look);
    }
    for (const Look::Role role : {Look::Role::Source, Look::Role::Sink}) {
        for (const Direction inward : AllDirections) {
            Look look;
            look.Endpoint = role;
            look.Inward = inward;
            shapes.push_back(look);
        }
    }
    std::vector<Look> looks;
    for (Look look : shapes) {
        for (const bool infected : {false, true}) {
            for (const auto traffic :
                 {Look::Traffic::None, Look::Traffic::Clean, Look::Traffic::Corrupted}) {
                look.Shown.VirusInfected = infected;
                look.Packets = traffic;
                looks.push_back(look);
            }
        }
    }
    return looks;
}

void ScreenReader::Put(RunState& run, const Cell& cell, const Look& look) {
    TileAt(run, cell.X, cell.Y) = look.Shown;
    if (look.Endpoint != Look::Role::Plain) {
        const bool isSource = look.Endpoint == Look::Role::Source;
        const Endpoint endpoint = {cell.X, cell.Y, look.Inward};
        (isSource ? run.Sources : run.Sinks).push_back(endpoint);
        StampEndpointTile(run, endpoint, isSource);
    }
    if (look.Packets != Look::Traffic::None) {
        Packet packet;
        packet.X = cell.X;
        packet.Y = cell.Y;
        packet.Corrupted = look.Packets == Look::Traffic::Corrupted;
        run.Packets.push_back(packet);
    }
}

ScreenReader::Look ScreenReader::LookOf(const RunState& run, const Cell& cell) {
    Look look;
    look.Shown = TileAt(run, cell.X, cell.Y);
    return look;
}

} // namespace Wirefall::Testing
