#include "screens/BoardScreen.h"

#include "audio/SoundQueue.h"
#include "display/LogicalCanvas.h"
#include "draw/Metrics.h"
#include "draw/Primitives.h"
#include "draw/RectBatch.h"
#include "draw/TileArt.h"
#include "input/PressMeaning.h"
#include "screens/BoardLayout.h"
#include "screens/Hud.h"
#include "sim/RunState.h"
#include "sim/Simulation.h"
#include "words/CommandHints.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Wirefall {

namespace {

constexpr PackedColor CanvasColor = Rgba(0x040a0cff);

// Some lines of the canvas, picked by one step of a linear congruential generator on the line's
// number, as if an old screen were badly tuned.
void DrawScanLines(SDL_Renderer* renderer, std::int32_t width, std::int32_t height) {
    constexpr PackedColor Rgb = Rgba(0x122a2200);
    constexpr std::uint32_t Faintest = 22;
    static std::array<RectBatch, 32> batches; // by brightness
    for (std::int32_t y = 0; y < height; ++y) {
        const std::uint32_t v = static_cast<std::uint32_t>(y) * 1103515245U + 12345U;
        if ((v & 3U) == 0) {
            batches[(v >> 8U) & 31U].Add(0.0F, static_cast<float>(y), static_cast<float>(width),
                                         1.0F);
        }
    }
    for (std::size_t i = 0; i < batches.size(); ++i) {
        batches[i].Flush(renderer, WithAlpha(Rgb, static_cast<std::uint8_t>(i + Faintest)));
    }
}

constexpr std::uint32_t GrainHash(std::uint32_t x, std::uint32_t y) {
    const std::uint32_t v = (x * 73856093U) ^ (y * 19349663U) ^ 0x9e3779b9U;
    const std::uint32_t a = (v ^ (v >> 15U)) * 0x85ebca6bU;
    return a ^ (a >> 13U);
}

// A dot or none in each square of five by five pixels, and if so, on one of four of its pixels. All
// from a hash of the square's place, so that the grain stands still without being stored.
void DrawGrain(SDL_Renderer* renderer, std::int32_t width, std::int32_t height) {
    constexpr PackedColor CoarseColor = Rgba(0x1840344e);
    constexpr PackedColor FineColor = Rgba(0x122c2640);
    constexpr std::uint32_t Step = 5;
    static RectBatch coarse;
    static RectBatch fine;
    for (std::uint32_t y = 0; y < static_cast<std::uint32_t>(height); y += Step) {
        for (std::uint32_t x = 0; x < static_cast<std::uint32_t>(width); x += Step) {
            const std::uint32_t h = GrainHash(x, y);
            if ((h & 11U) == 0) {
                coarse.Add(static_cast<float>(x + 1U + ((h >> 7U) & 1U)),
                           static_cast<float>(y + 1U + ((h >> 8U) & 1U)), 1.0F, 1.0F);
            } else if ((h & 15U) == 7U) {
                fine.Add(static_cast<float>(x + 1U + ((h >> 9U) & 1U)),
                         static_cast<float>(y + 1U + ((h >> 10U) & 1U)), 1.0F, 1.0F);
            }
        }
    }
    coarse.Flush(renderer, CoarseColor);
    fine.Flush(renderer, FineColor);
}

// Light that comes in from the top and the bottom and fades with the square of the distance.
void DrawGlow(SDL_Renderer* renderer, std::int32_t width, std::int32_t height) {
    constexpr PackedColor Rgb = Rgba(0x10342800);
    static RectBatch lines;
    const float depth = std::min(0.22F * static_cast<float>(height), 140.0F);
    const auto lineCount = static_cast<std::int32_t>(depth);
    for (std::int32_t i = 0; i < lineCount; ++i) {
        const float t = static_cast<float>(i) / depth;
        const float alpha = std::round((1.0F - t) * 40.0F * (1.0F - t));
        if (alpha > 0.0F) {
            const auto canvasWidth = static_cast<float>(width);
            lines.Add(0.0F, static_cast<float>(i), canvasWidth, 1.0F);
            lines.Add(0.0F, static_cast<float>(height - 1 - i), canvasWidth, 1.0F);
            lines.Flush(renderer, WithAlpha(Rgb, static_cast<std::uint8_t>(alpha)));
        }
    }
}

// Nested frames, each fainter, that darken the rim of the canvas. Their lines cross at the corners,
// where the shade counts twice.
void DrawFrameShade(SDL_Renderer* renderer, std::int32_t width, std::int32_t height) {
    constexpr std::int32_t Frames = 16;
    constexpr std::int32_t Darkest = 30;
    for (std::int32_t i = 0; i < Frames; ++i) {
        const std::int32_t w = width - 4 * i;
        const std::int32_t h = height - 4 * i;
        if (w <= 0 || h <= 0) {
            return;
        }
        const PackedColor color =
            WithAlpha(Rgba(0x00000000), static_cast<std::uint8_t>(Darkest - i));
        const auto inset = static_cast<float>(2 * i);
        const auto innerWidth = static_cast<float>(w);
        const auto innerHeight = static_cast<float>(h);
        FillRect(renderer, inset, inset, innerWidth, 1.0F, color);
        FillRect(renderer, inset, inset + innerHeight - 1.0F, innerWidth, 1.0F, color);
        FillRect(renderer, inset, inset, 1.0F, innerHeight, color);
        FillRect(renderer, inset + innerWidth - 1.0F, inset, 1.0F, innerHeight, color);
    }
}

void DrawBackground(SDL_Renderer* renderer, std::int32_t width, std::int32_t height) {
    if (width < 1 || height < 1) {
        return;
    }
    FillRect(renderer, 0.0F, 0.0F, static_cast<float>(width), static_cast<float>(height),
             CanvasColor);
    DrawScanLines(renderer, width, height);
    DrawGrain(renderer, width, height);
    DrawGlow(renderer, width, height);
    DrawFrameShade(renderer, width, height);
}

void DrawGridFrame(SDL_Renderer* renderer, const BoardLayout& layout) {
    constexpr std::int32_t Border = 6;
    const auto x = static_cast<float>(layout.BoardX - Border);
    const auto y = static_cast<float>(layout.BoardY - Border);
    const auto side = static_cast<float>(BoardExtent(layout) + 2 * Border);
    FillOutlinedRect(renderer, x, y, side, side, Palette::PanelBody, Palette::FrameLine);
    FillRect(renderer, x, y, side, BarThickness, Palette::Accent);
}

SDL_FRect CellRect(const BoardLayout& layout, std::int32_t x, std::int32_t y) {
    const auto side = static_cast<float>(layout.CellSize);
    return {static_cast<float>(layout.BoardX + x * layout.CellSize),
            static_cast<float>(layout.BoardY + y * layout.CellSize), side, side};
}

void DrawEndpoint(SDL_Renderer* renderer, const SDL_FRect& cell, const Endpoint* endpoint,
                  PackedColor color) {
    if (endpoint != nullptr) {
        // The bar stands at the board's edge, behind whoever looks inward.
        DrawEndpointBar(renderer, cell, OppositeDirection(endpoint->Dir), color);
    }
}

void DrawCells(SDL_Renderer* renderer, const RunState& run, const BoardLayout& layout) {
    constexpr PackedColor Infection = Rgba(0xc0363670);
    for (std::int32_t y = 0; y < run.GridHeight; ++y) {
        for (std::int32_t x = 0; x < run.GridWidth; ++x) {
            const Tile& tile = TileAt(run, x, y);
            const SDL_FRect cell = CellRect(layout, x, y);
            FillRect(renderer, cell.x, cell.y, cell.w, cell.h, TileBackgroundColor(tile.Type));
            DrawEndpoint(renderer, cell, FindEndpoint(run.Sources, x, y), Palette::Cyan);
            DrawEndpoint(renderer, cell, FindEndpoint(run.Sinks, x, y), Palette::Green);
            if (tile.VirusInfected) {
                FillRect(renderer, cell.x, cell.y, cell.w, cell.h, Infection);
            }
            DrawTile(renderer, tile, cell.x, cell.y, cell.w, cell.h);
            OutlineRect(renderer, cell.x, cell.y, cell.w, cell.h, Palette::FrameLine);
        }
    }
}

void DrawPackets(SDL_Renderer* renderer, const RunState& run, const BoardLayout& layout) {
    constexpr PackedColor Corrupted = Rgba(0xf67474ff);
    constexpr PackedColor Rim = Rgba(0x081614e6);
    const auto cellSize = static_cast<float>(layout.CellSize);
    const float side = std::max(5.0F, 0.28F * cellSize);
    const float margin = (cellSize - side) / 2.0F;
    for (const Packet& packet : run.Packets) {
        if (InBounds(run, packet.X, packet.Y)) {
            const SDL_FRect cell = CellRect(layout, packet.X, packet.Y);
            FillOutlinedRect(renderer, cell.x + margin, cell.y + margin, side, side,
                             packet.Corrupted ? Corrupted : Palette::Cyan, Rim);
        }
    }
}

void DrawCursor(SDL_Renderer* renderer, const RunState& run, const BoardLayout& layout) {
    constexpr PackedColor Free = Rgba(0xeada96ff);
    constexpr PackedColor PreviewShade = Rgba(0x0a181680);
    if (!InBounds(run, run.CursorX, run.CursorY)) {
        return;
    }
    const bool onEndpoint = IsEndpointCell(run, run.CursorX, run.CursorY);
    const SDL_FRect cell = CellRect(layout, run.CursorX, run.CursorY);
    OutlineRect(renderer, cell.x, cell.y, cell.w, cell.h, onEndpoint ? Palette::Red : Free);
    if (!onEndpoint && !run.GameOver) {
        FillRect(renderer, cell.x + 2.0F, cell.y + 2.0F, cell.w - 4.0F, cell.h - 4.0F,
                 PreviewShade);
        DrawTile(renderer, MakeTile(run.TileQueue[0], run.PreviewRotation), cell.x, cell.y, cell.w,
                 cell.h);
    }
}

// --- What a press does

// The first row that matches decides. A row matches its fixed code and the key bound to its action.
struct PlayRow {
    PressCode FixedCode;
    InputAction Action;
    SoundEvent Sound;
    std::uint32_t Command;
};

constexpr std::uint32_t PlaceCommand = SDL_SCANCODE_SPACE;

constexpr auto PlayRows = std::to_array<PlayRow>({
    {Press::Up, InputAction::CursorUp, SoundEvent::CursorMove, Press::Up},
    {Press::Down, InputAction::CursorDown, SoundEvent::CursorMove, Press::Down},
    {Press::Left, InputAction::CursorLeft, SoundEvent::CursorMove, Press::Left},
    {Press::Right, InputAction::CursorRight, SoundEvent::CursorMove, Press::Right},
    {Press::RotateLeft, InputAction::RotateLeft, SoundEvent::Rotate, Press::RotateLeft},
    {Press::RotateRight, InputAction::RotateRight, SoundEvent::Rotate, Press::RotateRight},
    {Press::None, InputAction::Place, SoundEvent::Place, PlaceCommand},
});

} // namespace

void DrawPlayingScreen(SDL_Renderer* renderer, const GameApp& app,
                       const ControllerSet& controllers) {
    const CommandHints hints = BuildCommandHints(app, controllers);
    StoreHudHintLines(hints.Move, hints.Rotate, hints.Place, hints.FastForward, hints.Menu);
    DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);
}

void PressOnPlaying(GameApp& app, PressCode code) {
    if (IsBack(code)) {
        EnqueueSound(app, SoundEvent::UiBack);
        app.Screen = AppScreen::Pause;
        app.PauseSelection = 0;
        app.ResetFrameClock = true;
        return;
    }
    const auto row = std::ranges::find_if(PlayRows, [&app, code](const PlayRow& candidate) {
        return code == candidate.FixedCode ||
               IsBoundTo(app.KeyboardBindings, code, candidate.Action);
    });
    if (row != PlayRows.end()) {
        EnqueueSound(app, row->Sound);
        ApplyRunCommand(row->Command);
    }
}

void DrawBoardScreen(SDL_Renderer* renderer, std::int32_t width, std::int32_t height) {
    const RunState& run = LiveRun();
    if (renderer == nullptr) {
        return;
    }
    const BoardLayout layout = PlaceBoard(width, height);
    const UiMetrics metrics = MeasureUiMetrics(renderer, width, height);
    DrawBackground(renderer, width, height);
    DrawGridFrame(renderer, layout);
    DrawCells(renderer, run, layout);
    DrawPackets(renderer, run, layout);
    DrawCursor(renderer, run, layout);
    DrawHud(renderer, layout, metrics);
}

void DrawEndpointBar(SDL_Renderer* renderer, const SDL_FRect& cell, Direction side,
                     PackedColor color) {
    const auto& [x, y, w, h] = cell;
    const float t = std::max(4.0F, 0.16F * std::min(w, h));
    const auto bars = TableBy<Direction, SDL_FRect>({
        {x, y, w, t},         // Up
        {x + w - t, y, t, h}, // Right
        {x, y + h - t, w, t}, // Down
        {x, y, t, h},         // Left
    });
    const SDL_FRect* const found = bars.Find(side);
    const SDL_FRect& bar = found != nullptr ? *found : bars[Direction::Up];
    FillRect(renderer, bar.x, bar.y, bar.w, bar.h, color);
}

} // namespace Wirefall
