#pragma once

// How a tile looks: its background and its wires. The board, the queue and the help page draw them
// at different sizes.

#include "draw/Color.h"
#include "sim/Tile.h"

#include <SDL3/SDL_render.h>

namespace Wirefall {

/// A neutral grey for a type value above 7.
PackedColor TileBackgroundColor(TileType type);

/// The wires of the tile in its cell: an arm toward each exit and a hub. Nothing for a tile without
/// exits. The cell's background is the caller's.
void DrawTile(SDL_Renderer* renderer, const Tile& tile, float x, float y, float w, float h);

} // namespace Wirefall
