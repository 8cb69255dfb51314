#pragma once

// SDL's video subsystem for one test, on a driver of choice.

#include <SDL3/SDL.h>
#include <gtest/gtest.h>

#include <memory>

namespace Wirefall {

/// Brings video up for as long as it lives. Drivers: "dummy" and "offscreen" have one display of
/// 1024x768 and do everything at once; "x11" needs an XServer.
class Video {
public:
    explicit Video(const char* driver) {
        // Whatever driver the environment asks for.
        SDL_SetHintWithPriority(SDL_HINT_VIDEO_DRIVER, driver, SDL_HINT_OVERRIDE);
        // No graphics driver takes part: it would differ from machine to machine.
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
        Started = SDL_Init(SDL_INIT_VIDEO);
        EXPECT_TRUE(Started) << SDL_GetError();
    }
    Video(const Video&) = delete;
    Video(Video&&) = delete;
    Video& operator=(const Video&) = delete;
    Video& operator=(Video&&) = delete;
    ~Video() {
        SDL_Quit();
        SDL_ResetHints();
    }

private:
    bool Started = false;
};

struct SdlDestroy {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
    void operator()(SDL_Surface* surface) const { SDL_DestroySurface(surface); }
};

using WindowPointer = std::unique_ptr<SDL_Window, SdlDestroy>;
using RendererPointer = std::unique_ptr<SDL_Renderer, SdlDestroy>;
using SurfacePointer = std::unique_ptr<SDL_Surface, SdlDestroy>;

/// A window as the game makes it, shown and settled.
inline WindowPointer MakeWindow(int width, int height, SDL_WindowFlags flags = 0) {
    WindowPointer window(SDL_CreateWindow("Wirefall test", width, height, flags));
    EXPECT_TRUE(window) << SDL_GetError();
    SDL_SetWindowResizable(window.get(), false);
    SDL_SyncWindow(window.get());
    return window;
}

} // namespace Wirefall
