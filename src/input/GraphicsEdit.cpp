#include "input/GraphicsEdit.h"

#include "app/GameApp.h"
#include "display/DisplayModes.h"
#include "display/DisplaySettings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace Wirefall {

namespace {

constexpr Resolution FactoryResolution = {1280, 720};

Resolution SnapshotResolution(const GraphicsSnapshot& snapshot) {
    return {snapshot.Width, snapshot.Height};
}

/// Finds the snapshot's resolution and refresh rate again in lists that have just been rebuilt.
void RestoreListChoices(GameApp& app) {
    const GraphicsSnapshot& snapshot = app.GraphicsEdit;
    app.ResolutionIndex =
        FindResolutionIndex(app, snapshot.Width, snapshot.Height, app.ResolutionIndex);
    app.RefreshRate = snapshot.RefreshRate;
    RefreshRefreshRates(app);
}

std::int32_t Cycled(std::int32_t index, std::int32_t direction, std::size_t size) {
    const auto count = static_cast<std::int32_t>(size);
    return (index + direction + count) % count;
}

void CycleResolution(GameApp& app, SDL_Window* /*window*/, std::int32_t direction) {
    const std::size_t count = OfferedResolutions(app).size();
    const auto last = static_cast<std::int32_t>(count) - 1;
    app.ResolutionIndex = Cycled(std::clamp(app.ResolutionIndex, 0, last), direction, count);
    RefreshRefreshRates(app);
}

void ToggleAspectMode(GameApp& app, SDL_Window* window, std::int32_t /*direction*/) {
    app.AspectMode =
        app.AspectMode == AspectMode::Widescreen ? AspectMode::Classic4x3 : AspectMode::Widescreen;
    RefreshDisplayModes(app, window);
}

void CycleRefreshRate(GameApp& app, SDL_Window* /*window*/, std::int32_t direction) {
    const std::vector<std::int32_t>& rates = app.RefreshRates;
    if (rates.empty()) {
        app.RefreshRate = 0;
        return;
    }
    const auto found = std::ranges::find(rates, app.RefreshRate);
    const auto position =
        static_cast<std::int32_t>(found == rates.end() ? 0 : found - rates.begin());
    app.RefreshRate = rates[static_cast<std::size_t>(Cycled(position, direction, rates.size()))];
}

void ToggleFullscreen(GameApp& app, SDL_Window* window, std::int32_t /*direction*/) {
    app.Fullscreen = !app.Fullscreen;
    RefreshDisplayModes(app, window);
}

void ToggleVSync(GameApp& app, SDL_Window* /*window*/, std::int32_t /*direction*/) {
    app.VSync = !app.VSync;
}

using Adjustment = void (*)(GameApp& app, SDL_Window* window, std::int32_t direction);

// By row.
constexpr std::array<Adjustment, 5> Adjustments = {
    CycleResolution, ToggleAspectMode, CycleRefreshRate, ToggleFullscreen, ToggleVSync,
};

} // namespace

void BeginGraphicsEdit(GameApp& app, SDL_Window* window) {
    const Resolution resolution = CurrentResolution(app);
    app.GraphicsEdit = {
        .Width = resolution.Width,
        .Height = resolution.Height,
        .AspectMode = app.AspectMode,
        .RefreshRate = app.RefreshRate,
        .Fullscreen = app.Fullscreen,
        .VSync = app.VSync,
        .Valid = true,
    };
    RefreshDisplayModes(app, window);
    RestoreListChoices(app);
}

bool GraphicsEditIsDirty(const GameApp& app) {
    const GraphicsSnapshot& snapshot = app.GraphicsEdit;
    return snapshot.Valid &&
           (CurrentResolution(app) != SnapshotResolution(snapshot) ||
            app.AspectMode != snapshot.AspectMode || app.RefreshRate != snapshot.RefreshRate ||
            app.Fullscreen != snapshot.Fullscreen || app.VSync != snapshot.VSync);
}

void RevertGraphicsEdit(GameApp& app, SDL_Window* window) {
    const GraphicsSnapshot& snapshot = app.GraphicsEdit;
    if (!snapshot.Valid) {
        return;
    }
    app.AspectMode = snapshot.AspectMode;
    app.Fullscreen = snapshot.Fullscreen;
    app.VSync = snapshot.VSync;
    RefreshDisplayModes(app, window);
    RestoreListChoices(app);
}

void AdjustGraphicsRow(GameApp& app, SDL_Window* window, std::int32_t direction) {
    const auto row = static_cast<std::size_t>(app.Rows.GraphicsRow);
    if (row < Adjustments.size()) {
        Adjustments[row](app, window, direction);
    }
}

void ResetGraphicsEdit(GameApp& app, SDL_Window* window) {
    const GameOptions factory;
    app.AspectMode = factory.AspectMode;
    app.ResolutionIndex =
        FindResolutionIndex(app, FactoryResolution.Width, FactoryResolution.Height, 0);
    app.RefreshRate = factory.RefreshRate;
    app.Fullscreen = factory.Fullscreen;
    app.VSync = factory.VSync;
    RefreshDisplayModes(app, window);
}

void ApplyGraphicsEdit(GameApp& app, SDL_Window* window, SDL_Renderer* renderer) {
    if (GraphicsEditIsDirty(app)) {
        ApplyDisplaySettings(app, window, renderer);
        app.OptionsDirty = true;
    }
    BeginGraphicsEdit(app, window);
}

} // namespace Wirefall
