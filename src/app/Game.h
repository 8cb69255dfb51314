#pragma once

// The life of the process: the start, one frame, the shutdown. main calls the three; a test can
// call them too, with SDL's dummy or offscreen drivers. Game owns everything that lives as long as
// the process, apart from the live run and the few caches of the drawing code.

#include "audio/MusicRuntime.h"
#include "game/GameApp.h"
#include "input/ControllerSet.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

#include <cstdint>

namespace Wirefall {

struct Game {
    GameApp App;
    ControllerSet Controllers;
    MusicRuntime Music;
    SDL_Window* Window = nullptr;
    SDL_Renderer* Renderer = nullptr;
    std::uint64_t PreviousTicks = 0; ///< Clock milliseconds of the last frame's time step.
};

/// The fades at start and at quit, in milliseconds.
inline constexpr std::uint64_t FadeMs = 420;

/// Brings SDL, the window and all subsystems up, in an order that matters. False when SDL, the
/// window, the renderer or the icons cannot be had: that is logged, and everything that had come up
/// is down again. Every other failure is logged and the game goes on without.
bool StartGame(Game& game);

/// One frame: input, simulation, saving, sound, drawing. To be called while App.Running is set.
void RunFrame(Game& game);

/// Writes what is still to be written and takes everything down again. For a game that has started.
void ShutdownGame(Game& game);

} // namespace Wirefall
