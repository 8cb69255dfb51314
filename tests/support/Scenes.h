#pragma once

// Moments of the game to take pictures of, by name. Each says what the world looks like and which
// screen draws it; the canvas it is drawn on is up to whoever draws it.

#include "app/GameApp.h"
#include "input/ControllerSet.h"
#include "support/SoftwareCanvas.h"

#include <SDL3/SDL_render.h>

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace Wirefall::Testing {

/// How much smaller than its logical size a canvas is presented: one scale for each density.
struct PresentedScale {
    std::string_view Name;
    float Scale;
};

inline constexpr PresentedScale Presented[] = {
    {"roomy", 1.0F},
    {"tight", 0.7F},
    {"tightest", 0.5F},
};

inline constexpr std::int32_t LogicalWidths[] = {960, 1080, 1152, 1280, 1728, 2560};

CanvasSize SizeOf(std::int32_t logicalWidth, const PresentedScale& presented);

/// What a scene may arrange beside the live run, the texts and the hints.
struct SceneWorld {
    GameApp App;
    ControllerSet Controllers;
};

struct GoldenSize {
    std::int32_t LogicalWidth;
    std::string_view Presented;
};

struct Scene {
    std::string_view Name;
    void (*Arrange)(SceneWorld& world) = nullptr; ///< Null for the world as a fresh start has it.
    void (*Draw)(SDL_Renderer* renderer, const SceneWorld& world) = nullptr;
    /// The sizes at which the whole picture is kept.
    std::vector<GoldenSize> Goldens = {};
};

std::span<const Scene> AllScenes();

/// Puts everything that a scene can depend on back to a fresh start with the clock standing still,
/// and then arranges the scene.
void EnterScene(const Scene& scene, std::int32_t logicalWidth, SceneWorld& world);

/// The scene's picture on a canvas of its own.
Picture TakePicture(const Scene& scene, std::int32_t logicalWidth, const PresentedScale& presented);

} // namespace Wirefall::Testing
