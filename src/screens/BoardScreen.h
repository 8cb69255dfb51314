#pragma once

// The play screen: background, grid, tiles, packets, cursor, and the HUD on top. Its picture is
// also the backdrop of the pause and result screens.

#include "draw/Color.h"
#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "input/PressCodes.h"
#include "sim/Direction.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_render.h>

#include <cstdint>

namespace Wirefall {

/// Draws the Playing screen on a canvas of LogicalWidth, with the keys of the device in hand.
void DrawPlayingScreen(SDL_Renderer* renderer, const GameApp& app,
                       const ControllerSet& controllers);

/// Moves the cursor, turns or places the tile in hand, or pauses.
void PressOnPlaying(GameApp& app, PressCode code);

/// Draws the live run on a canvas of that size and changes nothing in it; only, if no run has been
/// started yet, it starts one, even for a null renderer, for which it draws nothing.
void DrawBoardScreen(SDL_Renderer* renderer, std::int32_t width, std::int32_t height);

/// The bar that marks a source or a sink along one side of its cell. A value that is no direction
/// counts as Up.
void DrawEndpointBar(SDL_Renderer* renderer, const SDL_FRect& cell, Direction side,
                     PackedColor color);

} // namespace Wirefall
