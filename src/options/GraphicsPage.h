#pragma once

// The Graphics page. It edits the live options, so that its lists follow each change, and keeps a
// snapshot to go back to; the window learns nothing before they are applied. A null window stands
// for the first display.

#include "game/GameApp.h"
#include "options/PageTable.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

#include <cstdint>

namespace Wirefall {

extern const PageTable GraphicsPage;

/// Takes the snapshot, and asks the display anew for what can be chosen.
void BeginGraphicsEdit(GameApp& app, SDL_Window* window);

/// Whether the options differ from the snapshot. False while there is none.
bool GraphicsEditIsDirty(const GameApp& app);

/// Goes back to the snapshot. Does nothing while there is none.
void RevertGraphicsEdit(GameApp& app, SDL_Window* window);

/// Changes the selected row, one step on (1) or back (-1). The rows that are no settings do
/// nothing.
void AdjustGraphicsRow(GameApp& app, SDL_Window* window, std::int32_t direction);

/// Sets everything on the page to the factory settings.
void ResetGraphicsEdit(GameApp& app, SDL_Window* window);

/// If the options have changed, gives them to the window and asks for them to be saved. Begins the
/// edit anew in any case.
void ApplyGraphicsEdit(GameApp& app, SDL_Window* window, SDL_Renderer* renderer);

} // namespace Wirefall
