#include "options/GraphicsPage.h"

#include "display/DisplayModes.h"
#include "display/DisplaySettings.h"
#include "words/Localization.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace Wirefall {

namespace {

std::int32_t Cycled(std::int32_t index, std::int32_t direction, std::size_t size) {
    const auto count = static_cast<std::int32_t>(size);
    return (index + direction + count) % count;
}

// --- Resolution

std::string ResolutionText(const PageView& view, std::int32_t /*row*/) {
    const Resolution resolution = CurrentResolution(view.App);
    return std::to_string(resolution.Width) + "X" + std::to_string(resolution.Height);
}

void CycleResolution(const PageContext& context, std::int32_t direction) {
    GameApp& app = context.App;
    const std::size_t count = OfferedResolutions(app).size();
    const auto last = static_cast<std::int32_t>(count) - 1;
    app.ResolutionIndex = Cycled(std::clamp(app.ResolutionIndex, 0, last), direction, count);
    RefreshRefreshRates(app);
}

// --- Aspect mode

std::string AspectModeText(const PageView& view, std::int32_t /*row*/) {
    return view.App.AspectMode == AspectMode::Classic4x3
               ? LocalizedText("Options.Graphics.AspectMode.Classic4x3", "4:3")
               : LocalizedText("Options.Graphics.AspectMode.Widescreen", "WIDESCREEN");
}

void ToggleAspectMode(const PageContext& context, std::int32_t /*direction*/) {
    GameApp& app = context.App;
    app.AspectMode =
        app.AspectMode == AspectMode::Widescreen ? AspectMode::Classic4x3 : AspectMode::Widescreen;
    RefreshDisplayModes(app, context.Window);
}

// --- Refresh rate

std::string RefreshRateText(const PageView& view, std::int32_t /*row*/) {
    const std::int32_t rate = view.App.RefreshRate;
    return rate < 1 ? LocalizedText("Options.Graphics.AutoRefresh", "AUTO")
                    : std::to_string(rate) + " HZ";
}

void CycleRefreshRate(const PageContext& context, std::int32_t direction) {
    GameApp& app = context.App;
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

// --- Display mode and vertical sync

std::string DisplayModeText(const PageView& view, std::int32_t /*row*/) {
    return view.App.Fullscreen
               ? LocalizedText("Options.Graphics.DisplayMode.Fullscreen", "FULLSCREEN")
               : LocalizedText("Options.Graphics.DisplayMode.Windowed", "WINDOWED");
}

void ToggleFullscreen(const PageContext& context, std::int32_t /*direction*/) {
    context.App.Fullscreen = !context.App.Fullscreen;
    RefreshDisplayModes(context.App, context.Window);
}

std::string VSyncText(const PageView& view, std::int32_t /*row*/) {
    return OnOffText(view.App.VSync);
}

void ToggleVSync(const PageContext& context, std::int32_t /*direction*/) {
    context.App.VSync = !context.App.VSync;
}

// --- The page

void Prepare(const PageContext& context) {
    if (!context.App.GraphicsEdit.Valid) {
        BeginGraphicsEdit(context.App, context.Window);
    }
}

void Reset(const PageContext& context) { ResetGraphicsEdit(context.App, context.Window); }
void Apply(const PageContext& context) {
    ApplyGraphicsEdit(context.App, context.Window, context.Renderer);
}
void Revert(const PageContext& context) { RevertGraphicsEdit(context.App, context.Window); }

void Leave(const PageContext& context) {
    GameApp& app = context.App;
    if (GraphicsEditIsDirty(app)) {
        RevertGraphicsEdit(app, context.Window);
    }
    app.GraphicsEdit.Valid = false;
    app.OptionsPage = OptionsPage::Root;
}

constexpr auto Rows = JoinRows(std::to_array<PageRow>({
                                   {.Label = {"Options.Graphics.Resolution", "RESOLUTION"},
                                    .Value = ResolutionText,
                                    .Adjust = CycleResolution},
                                   {.Label = {"Options.Graphics.AspectMode", "ASPECT MODE"},
                                    .Value = AspectModeText,
                                    .Adjust = ToggleAspectMode},
                                   {.Label = {"Options.Graphics.RefreshRate", "REFRESH RATE"},
                                    .Value = RefreshRateText,
                                    .Adjust = CycleRefreshRate},
                                   {.Label = {"Options.Graphics.DisplayMode", "DISPLAY MODE"},
                                    .Value = DisplayModeText,
                                    .Adjust = ToggleFullscreen,
                                    .Confirm = StepOn<ToggleFullscreen>},
                                   {.Label = {"Options.Graphics.Vsync", "VSYNC"},
                                    .Value = VSyncText,
                                    .Adjust = ToggleVSync,
                                    .Confirm = StepOn<ToggleVSync>},
                               }),
                               ClosingRows(Do<Reset>, Do<Apply>, Do<Revert>, Do<Leave>));

// Finds the snapshot's resolution and refresh rate again in lists that have just been rebuilt.
void RestoreListChoices(GameApp& app) {
    const GraphicsSnapshot& snapshot = app.GraphicsEdit;
    app.ResolutionIndex =
        FindResolutionIndex(app, snapshot.Width, snapshot.Height, app.ResolutionIndex);
    app.RefreshRate = snapshot.RefreshRate;
    RefreshRefreshRates(app);
}

} // namespace

constinit const PageTable GraphicsPage = {
    .Heading = {"Options.Section.Graphics", "GRAPHICS"},
    .Row = &OptionsRows::GraphicsRow,
    .Rows = [](const GameApp& /*app*/) -> std::span<const PageRow> { return Rows; },
    .Hints = ValuePageHints,
    .Prepare = Prepare,
    .Back = Leave,
};

void BeginGraphicsEdit(GameApp& app, SDL_Window* window) {
    app.GraphicsEdit = {ChosenDisplay(app), true};
    RefreshDisplayModes(app, window);
    RestoreListChoices(app);
}

bool GraphicsEditIsDirty(const GameApp& app) {
    return app.GraphicsEdit.Valid &&
           ChosenDisplay(app) != static_cast<const DisplayChoice&>(app.GraphicsEdit);
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
    AdjustSelectedRow(GraphicsPage, {app, window, nullptr}, direction);
}

void ResetGraphicsEdit(GameApp& app, SDL_Window* window) {
    const DisplayChoice factory;
    app.AspectMode = factory.AspectMode;
    app.ResolutionIndex = FindResolutionIndex(app, factory.Width, factory.Height, 0);
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
