#pragma once

// Moments of the game to take pictures of, by name. Each says what the world looks like and which
// screen draws it; the canvas it is drawn on is up to whoever draws it.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "support/SoftwareCanvas.h"
#include "words/Localization.h"

#include <SDL3/SDL_render.h>

#include <array>
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

inline constexpr std::array<PresentedScale, 3> Presented = {{
    {"roomy", 1.0F},
    {"tight", 0.7F},
    {"tightest", 0.5F},
}};

inline constexpr std::array<std::int32_t, 6> LogicalWidths = {960, 1080, 1152, 1280, 1728, 2560};

CanvasSize SizeOf(std::int32_t logicalWidth, const PresentedScale& presented);

/// What a scene may arrange beside the live run, the texts and the hints.
struct SceneWorld {
    GameApp App;
    ControllerSet Controllers;
};

struct GoldenSize {
    std::int32_t LogicalWidth;
    std::string_view Presented;
    std::string_view Language = "en";
};

struct Scene {
    std::string_view Name;
    void (*Arrange)(SceneWorld& world) = nullptr; ///< Null for the world as a fresh start has it.
    void (*Draw)(SDL_Renderer* renderer, const SceneWorld& world) = nullptr;
    /// The codes of the languages in which pictures are taken of it.
    std::vector<std::string_view> Languages = {"en", "de"};
    /// The sizes at which the whole picture is kept.
    std::vector<GoldenSize> Goldens = {};
};

std::span<const Scene> AllScenes();

/// Puts everything that a scene can depend on back to a fresh start with the clock standing still,
/// and then arranges the scene. `texts` are those of a language; without any, the built-in ones.
void EnterScene(const Scene& scene, std::int32_t logicalWidth, SceneWorld& world,
                const LocalizationCatalogRecord& texts = {});

/// The scene's picture on a canvas of its own.
Picture TakePicture(const Scene& scene, std::int32_t logicalWidth, const PresentedScale& presented,
                    const LocalizationCatalogRecord& texts);

/// Puts a controller in the player's hand, for screens that only ask whether there is one. Nobody
/// may talk to it.
void UseGamepad(SceneWorld& world);
void UseJoystick(SceneWorld& world);

} // namespace Wirefall::Testing
