#pragma once

// The screens and the ways between them: what a press does on each, and how play ends in the result
// screens. How the screens look is in ui/.

#include "input/PressCodes.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

namespace Wirefall {

struct GameApp;

/// Starts the quit fade, the only way out of the game. Does nothing while it runs already.
void RequestQuit(GameApp& app);

/// On the Playing screen: when the run is over, stores its last status, gives up the saved run and
/// shows the GameOver screen.
void CheckGameOverTransition(GameApp& app);

/// On the Playing screen: when the level is complete, stores the status, saves at once and shows
/// the LevelComplete screen.
void CheckLevelCompleteTransition(GameApp& app);

/// Takes the run's present status as what the next one is compared with.
void CaptureRunSnapshot(GameApp& app);

/// The one entry for discrete input: does on the current screen what the press means there, and
/// queues its sound. Ignored during the quit fade, and for Press::None or a code above 511. Window
/// and renderer are for the Graphics page, which changes them.
void DispatchPress(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code);

} // namespace Wirefall
