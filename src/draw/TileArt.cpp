#include "draw/TileArt.h"

#include "draw/RectBatch.h"
#include "sim/Direction.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Wirefall {

namespace {

struct TileLook {
    PackedColor Background;
    PackedColor Wire;
};

constexpr PackedColor RouteBackground = Rgba(0x142422ff);

constexpr auto Looks = TableBy<TileType, TileLook>({
    {Rgba(0x091214ff), Palette::Cyan},    // Empty
    {RouteBackground, Palette::Cyan},     // Straight
    {RouteBackground, Palette::Cyan},     // Corner
    {RouteBackground, Palette::Cyan},     // TJunction
    {RouteBackground, Palette::Cyan},     // Cross
    {Rgba(0x3e2616ff), Rgba(0xf4b06cff)}, // Firewall
    {Rgba(0x16422eff), Palette::Green},   // Antivirus
    {Rgba(0x1e3042ff), Rgba(0x92bcecff)}, // Buffer
});

constexpr TileLook UnknownLook = {Rgba(0x141414ff), Palette::Cyan};

const TileLook& LookOf(TileType type) {
    const TileLook* const look = Looks.Find(type);
    return look != nullptr ? *look : UnknownLook;
}

std::int32_t Rounded(float value) { return static_cast<std::int32_t>(std::round(value)); }

void AddPixels(RectBatch& batch, std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h) {
    batch.Add(static_cast<float>(x), static_cast<float>(y), static_cast<float>(std::max(w, 1)),
              static_cast<float>(std::max(h, 1)));
}

} // namespace

PackedColor TileBackgroundColor(TileType type) { return LookOf(type).Background; }

void DrawTile(SDL_Renderer* renderer, const Tile& tile, float x, float y, float w, float h) {
    if ((tile.Connections & AllExits) == NoExits) {
        return;
    }
    // Arms and hub overlap, which an opaque colour does not show: one batch is enough.
    static RectBatch wires;
    const std::int32_t cx = Rounded(x + w / 2.0F);
    const std::int32_t cy = Rounded(y + h / 2.0F);
    const std::int32_t inset = std::max(2, Rounded(0.12F * w));
    if (HasExit(tile.Connections, Direction::Up)) {
        const std::int32_t top = Rounded(y) + inset;
        AddPixels(wires, cx, top, 1, cy - top + 2);
    }
    if (HasExit(tile.Connections, Direction::Right)) {
        const std::int32_t left = cx - 1;
        AddPixels(wires, left, cy, Rounded(x + w) - inset - left + 1, 1);
    }
    if (HasExit(tile.Connections, Direction::Down)) {
        const std::int32_t top = cy - 1;
        AddPixels(wires, cx, top, 1, Rounded(y + h) - inset - top + 1);
    }
    if (HasExit(tile.Connections, Direction::Left)) {
        const std::int32_t left = Rounded(x) + inset;
        AddPixels(wires, left, cy, cx - left + 2, 1);
    }
    const std::int32_t hub = std::max(Rounded(0.08F * w), 2);
    AddPixels(wires, cx - hub / 2, cy - hub / 2, hub + 1, hub + 1);
    wires.Flush(renderer, LookOf(tile.Type).Wire);
}

} // namespace Wirefall
