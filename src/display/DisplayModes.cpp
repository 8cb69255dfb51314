#include "display/DisplayModes.h"

#include "base/SdlMemory.h"
#include "display/Aspect.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <set>
#include <tuple>

namespace Wirefall {

namespace {

// The layouts need at least this much.
constexpr std::int32_t MinimumWidth = 1024;

constexpr std::array<Resolution, 4> ClassicResolutions = {{
    {1024, 768},
    {1280, 960},
    {1600, 1200},
    {1920, 1440},
}};

constexpr std::array<Resolution, 18> WidescreenResolutions = {{
    {1280, 720},
    {1280, 800},
    {1366, 768},
    {1440, 900},
    {1600, 900},
    {1680, 1050},
    {1920, 1080},
    {1920, 1200},
    {2160, 1440},
    {2560, 1080},
    {2560, 1440},
    {2560, 1600},
    {2880, 1800},
    {3000, 2000},
    {3440, 1440},
    {3840, 1600},
    {3840, 2160},
    {5120, 1440},
}};

std::int32_t ClampIndex(std::int32_t index, std::size_t count) {
    const auto last = static_cast<std::int64_t>(count) - 1;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(index, 0, last));
}

std::int32_t RoundedHz(const SDL_DisplayMode& mode) {
    auto rate = static_cast<double>(mode.refresh_rate);
    if (mode.refresh_rate_numerator > 0 && mode.refresh_rate_denominator > 0) {
        rate = static_cast<double>(mode.refresh_rate_numerator) / mode.refresh_rate_denominator;
    }
    // Written so that NaN is refused too. Above the limit the rounded value would not fit.
    const bool known = rate > 0.0 && rate <= std::numeric_limits<std::int32_t>::max();
    return known ? static_cast<std::int32_t>(std::lround(rate)) : 0;
}

// 0 when there is no display.
SDL_DisplayID FirstDisplay() {
    int count = 0;
    const SdlArray<SDL_DisplayID> displays(SDL_GetDisplays(&count));
    return displays && count > 0 ? displays[0] : 0;
}

// 0 when there is no display.
SDL_DisplayID DisplayOf(SDL_Window* window) {
    const SDL_DisplayID display = window != nullptr ? SDL_GetDisplayForWindow(window) : 0;
    return display != 0 ? display : FirstDisplay();
}

std::vector<DisplayMode> ModesOf(SDL_DisplayID display) {
    int count = 0;
    const SdlArray<SDL_DisplayMode*> modes(SDL_GetFullscreenDisplayModes(display, &count));
    if (!modes) {
        return {};
    }
    return CollectDisplayModes({modes.get(), static_cast<std::size_t>(count)});
}

// Null when there is no display, or none that tells its mode. SDL owns the result.
const SDL_DisplayMode* DesktopMode() {
    SDL_DisplayID display = SDL_GetPrimaryDisplay();
    if (display == 0) {
        display = FirstDisplay();
    }
    if (display == 0) {
        return nullptr;
    }
    const SDL_DisplayMode* const mode = SDL_GetDesktopDisplayMode(display);
    if (mode == nullptr || mode->w < 1 || mode->h < 1) {
        return SDL_GetCurrentDisplayMode(display);
    }
    return mode;
}

} // namespace

bool IsPlayable(std::int32_t width, std::int32_t height) {
    return width >= MinimumWidth && height >= 1;
}

std::span<const Resolution> BuiltInResolutions(AspectMode aspectMode) {
    if (aspectMode == AspectMode::Classic4x3) {
        return ClassicResolutions;
    }
    return WidescreenResolutions;
}

std::span<const Resolution> OfferedResolutions(const DisplayState& state) {
    if (state.Resolutions.empty()) {
        return BuiltInResolutions(state.AspectMode);
    }
    return state.Resolutions;
}

Resolution CurrentResolution(const DisplayState& state) {
    const std::span<const Resolution> offered = OfferedResolutions(state);
    return offered[static_cast<std::size_t>(ClampIndex(state.ResolutionIndex, offered.size()))];
}

DisplayChoice ChosenDisplay(const DisplayState& state) {
    const Resolution resolution = CurrentResolution(state);
    return {.Width = resolution.Width,
            .Height = resolution.Height,
            .AspectMode = state.AspectMode,
            .RefreshRate = state.RefreshRate,
            .Fullscreen = state.Fullscreen,
            .VSync = state.VSync};
}

void ChooseResolution(DisplayState& state, const Resolution& resolution) {
    if (IsPlayable(resolution.Width, resolution.Height) &&
        IsResolutionAllowed(state.AspectMode, resolution.Width, resolution.Height)) {
        const std::span<const Resolution> offered = OfferedResolutions(state);
        if (std::ranges::find(offered, resolution) == offered.end()) {
            state.Resolutions.push_back(resolution);
        }
    }
    state.ResolutionIndex =
        FindResolutionIndex(state, resolution.Width, resolution.Height, state.ResolutionIndex);
    const Resolution chosen = CurrentResolution(state);
    UpdateLogicalWidth(state.AspectMode, chosen.Width, chosen.Height);
}

std::int32_t FindResolutionIndex(const DisplayState& state, std::int32_t width, std::int32_t height,
                                 std::int32_t fallback) {
    const std::span<const Resolution> offered = OfferedResolutions(state);
    if (width >= 1 && height >= 1) {
        const auto found = std::ranges::find(offered, Resolution{width, height});
        if (found != offered.end()) {
            return static_cast<std::int32_t>(found - offered.begin());
        }
    }
    return ClampIndex(fallback, offered.size());
}

std::vector<DisplayMode> CollectDisplayModes(std::span<const SDL_DisplayMode* const> modes) {
    std::vector<DisplayMode> collected;
    std::set<std::tuple<std::int32_t, std::int32_t, std::int32_t>> seen;
    for (const SDL_DisplayMode* const mode : modes) {
        if (mode == nullptr || mode->w <= 0 || mode->h <= 0) {
            continue;
        }
        const std::int32_t hz = RoundedHz(*mode);
        if (seen.emplace(mode->w, mode->h, hz).second) {
            collected.push_back({mode->w, mode->h, hz});
        }
    }
    return collected;
}

std::vector<Resolution> SelectResolutions(std::span<const DisplayMode> modes,
                                          AspectMode aspectMode) {
    std::set<Resolution> selected;
    for (const DisplayMode& mode : modes) {
        if (IsPlayable(mode.Width, mode.Height) &&
            IsResolutionAllowed(aspectMode, mode.Width, mode.Height)) {
            selected.insert({mode.Width, mode.Height});
        }
    }
    if (selected.empty()) {
        const std::span<const Resolution> builtIn = BuiltInResolutions(aspectMode);
        selected.insert(builtIn.begin(), builtIn.end());
    }
    return {selected.begin(), selected.end()};
}

std::vector<std::int32_t> SelectRefreshRates(std::span<const DisplayMode> modes,
                                             const Resolution& resolution) {
    std::set<std::int32_t> rates = {0};
    for (const DisplayMode& mode : modes) {
        if (mode.Width == resolution.Width && mode.Height == resolution.Height && mode.Hz > 0) {
            rates.insert(mode.Hz);
        }
    }
    return {rates.begin(), rates.end()};
}

void RefreshDisplayModes(DisplayState& state, SDL_Window* window) {
    const Resolution saved = CurrentResolution(state);
    const SDL_DisplayID display = DisplayOf(window);
    state.DisplayModes = display != 0 ? ModesOf(display) : std::vector<DisplayMode>{};
    state.Resolutions = SelectResolutions(state.DisplayModes, state.AspectMode);
    state.ResolutionIndex = FindResolutionIndex(state, saved.Width, saved.Height, 0);
    RefreshRefreshRates(state);
}

void RefreshRefreshRates(DisplayState& state) {
    const Resolution resolution = CurrentResolution(state);
    state.RefreshRates = state.Fullscreen ? SelectRefreshRates(state.DisplayModes, resolution)
                                          : std::vector<std::int32_t>{0};
    // Negative values are in no list, so they become automatic as well.
    if (!std::ranges::binary_search(state.RefreshRates, state.RefreshRate)) {
        state.RefreshRate = 0;
    }
}

void AdoptDesktopMode(DisplayState& state) {
    const SDL_DisplayMode* const desktop = DesktopMode();
    if (desktop == nullptr || !IsPlayable(desktop->w, desktop->h)) {
        return;
    }
    state.AspectMode = IsResolutionAllowed(AspectMode::Classic4x3, desktop->w, desktop->h)
                           ? AspectMode::Classic4x3
                           : AspectMode::Widescreen;
    state.Resolutions = {{desktop->w, desktop->h}};
    state.ResolutionIndex = 0;
    UpdateLogicalWidth(state.AspectMode, desktop->w, desktop->h);
}

} // namespace Wirefall
