#include "display/DisplaySettings.h"

#include "display/Aspect.h"
#include "display/DisplayModes.h"
#include "display/LogicalCanvas.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_events.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_timer.h>

#include <optional>

namespace Wirefall {

namespace {

bool IsWindowFullscreen(SDL_Window* window) {
    return (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN) != 0;
}

// Empty when SDL refuses to tell; its error says why.
std::optional<Resolution> WindowSize(SDL_Window* window) {
    int width = 0;
    int height = 0;
    if (!SDL_GetWindowSize(window, &width, &height)) {
        return std::nullopt;
    }
    return Resolution{width, height};
}

// Window managers resize in their own time; until then the window tells its former size, by which
// it would be centred wrongly. The wait is bounded, since a display may refuse the size. The pauses
// are counted, so that a clock that stands still cannot draw it out.
void AwaitSize(SDL_Window* window, const Resolution& wanted) {
    constexpr int PauseMs = 5;
    constexpr int LongestMs = 100;
    for (int waited = 0; waited < LongestMs; waited += PauseMs) {
        SDL_PumpEvents();
        const std::optional<Resolution> size = WindowSize(window);
        if (!size || *size == wanted) {
            return;
        }
        SDL_Delay(PauseMs);
    }
}

// The part of the window's display that panels and docks leave free. Empty when unknown.
std::optional<SDL_Rect> UsableBounds(SDL_Window* window) {
    const SDL_DisplayID display = SDL_GetDisplayForWindow(window);
    if (display == 0) {
        return std::nullopt;
    }
    SDL_Rect bounds = {};
    if (!SDL_GetDisplayUsableBounds(display, &bounds)) {
        SDL_Log("SDL_GetDisplayUsableBounds failed: %s", SDL_GetError());
        return std::nullopt;
    }
    return bounds;
}

// Where a window of that length begins within the bounds: centred, and never before their start,
// where its title bar would be out of reach.
int CentredStart(int boundsStart, int boundsLength, int windowLength) {
    const int spare = boundsLength - windowLength;
    return spare >= 2 ? boundsStart + spare / 2 : boundsStart;
}

void CentreWindow(SDL_Window* window) {
    const std::optional<Resolution> size = WindowSize(window);
    if (!size) {
        SDL_Log("SDL_GetWindowSize failed before centering: %s", SDL_GetError());
        return;
    }
    if (const std::optional<SDL_Rect> bounds = UsableBounds(window)) {
        const int x = CentredStart(bounds->x, bounds->w, size->Width);
        const int y = CentredStart(bounds->y, bounds->h, size->Height);
        if (!SDL_SetWindowPosition(window, x, y)) {
            SDL_Log("SDL_SetWindowPosition(%d, %d) failed: %s", x, y, SDL_GetError());
        }
        return;
    }
    if (!SDL_SetWindowPosition(window, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED)) {
        SDL_Log("SDL_SetWindowPosition(centered) failed: %s", SDL_GetError());
    }
}

void ApplyFullscreen(SDL_Window* window) {
    const bool wasFullscreen = IsWindowFullscreen(window);
    // Without a mode of its own, fullscreen is borderless at the desktop's resolution.
    if (!SDL_SetWindowFullscreenMode(window, nullptr)) {
        SDL_Log("SDL_SetWindowFullscreenMode(borderless) failed: %s", SDL_GetError());
    }
    if (!wasFullscreen && !SDL_SetWindowFullscreen(window, true)) {
        SDL_Log("SDL_SetWindowFullscreen(true) failed: %s", SDL_GetError());
    }
}

void ApplyWindowed(SDL_Window* window, const Resolution& wanted) {
    bool recentre = IsWindowFullscreen(window);
    if (recentre && !SDL_SetWindowFullscreen(window, false)) {
        SDL_Log("SDL_SetWindowFullscreen(false) failed: %s", SDL_GetError());
    }
    const std::optional<Resolution> before = WindowSize(window);
    if (!before) {
        SDL_Log("SDL_GetWindowSize failed before SDL_SetWindowSize: %s", SDL_GetError());
    }
    if (!SDL_SetWindowSize(window, wanted.Width, wanted.Height)) {
        SDL_Log("SDL_SetWindowSize(%d, %d) failed: %s", wanted.Width, wanted.Height,
                SDL_GetError());
    }
    // A window that keeps its size stays where the player has put it.
    recentre = recentre || (before && *before != wanted);
    if (recentre) {
        AwaitSize(window, wanted);
        CentreWindow(window);
    }
}

void ApplyVSync(DisplayState& state, SDL_Renderer* renderer) {
    const int wanted = state.VSync ? 1 : 0;
    if (!SDL_SetRenderVSync(renderer, wanted)) {
        SDL_Log("SDL_SetRenderVSync(%d) failed: %s", wanted, SDL_GetError());
    }
    // The renderer may have refused, so the frame loop goes by what it says of itself.
    int active = 0;
    if (SDL_GetRenderVSync(renderer, &active)) {
        state.VSyncActive = active != 0;
    } else {
        state.VSyncActive = false;
        SDL_Log("SDL_GetRenderVSync failed: %s", SDL_GetError());
    }
}

} // namespace

void ApplyDisplaySettings(DisplayState& state, SDL_Window* window, SDL_Renderer* renderer) {
    if (window == nullptr) {
        return;
    }
    const Resolution resolution = CurrentResolution(state);
    UpdateLogicalWidth(state.AspectMode, resolution.Width, resolution.Height);
    if (state.Fullscreen) {
        ApplyFullscreen(window);
    } else {
        ApplyWindowed(window, resolution);
    }
    ApplyVSync(state, renderer);
    ApplyLogicalPresentation(window, renderer);
    // The switch can take a second or more, which must not reach the simulation.
    state.ResetFrameClock = true;
}

void ApplyLogicalPresentation(SDL_Window* window, SDL_Renderer* renderer) {
    if (window == nullptr) {
        return;
    }
    if (!SDL_SetRenderLogicalPresentation(renderer, LogicalWidth, LogicalHeight,
                                          SDL_LOGICAL_PRESENTATION_LETTERBOX)) {
        SDL_Log("SDL_SetRenderLogicalPresentation failed: %s", SDL_GetError());
    }
}

} // namespace Wirefall
