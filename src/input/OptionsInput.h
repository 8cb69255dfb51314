#pragma once

// What a press does on the Options screen: on its root page, and on the Controls, Graphics and
// Audio pages below it. A page begins an edit when it is entered and drops what was not applied
// when it is left. How the pages look is in ui/.

#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

namespace Wirefall {

struct GameApp;

/// Does what the press means on the page that is open, and queues its sound; while a capture waits,
/// the press goes to that alone. Applying the Graphics page changes the window and the renderer,
/// which may be null. Leaving the root page shows app.OptionsReturnScreen.
void PressOnOptions(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code);

} // namespace Wirefall
