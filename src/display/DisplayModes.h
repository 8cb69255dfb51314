#pragma once

// What the player can choose from: the resolutions and refresh rates that the display offers, in
// the aspect mode of the options, with built-in tables for a display that offers nothing usable.
// The lists are rebuilt when the options change; the choice is then found again in the new list.

#include "display/DisplayState.h"

#include <SDL3/SDL_video.h>

#include <cstdint>
#include <span>
#include <vector>

namespace Wirefall {

/// Whether a screen of that size has room for the game: it is at least 1024 wide.
bool IsPlayable(std::int32_t width, std::int32_t height);

/// The resolutions that serve while the display's are not known, ascending by width, then height.
std::span<const Resolution> BuiltInResolutions(AspectMode aspectMode);

/// What the player chooses from: Resolutions, or the built-in table while that list is empty. Never
/// empty. Holds until Resolutions changes.
std::span<const Resolution> OfferedResolutions(const DisplayState& state);

/// The chosen resolution: that at ResolutionIndex, clamped into the offered ones.
Resolution CurrentResolution(const DisplayState& state);

/// The player's choice with the resolution itself.
DisplayChoice ChosenDisplay(const DisplayState& state);

/// Chooses the resolution, which is offered from now on if it is playable and the aspect mode
/// allows it. One that is not offered leaves the choice as it was. The logical canvas follows.
void ChooseResolution(DisplayState& state, const Resolution& resolution);

/// Where the pair stands among the offered resolutions. When it is not there, or is not a size at
/// all, `fallback` clamped into the list.
std::int32_t FindResolutionIndex(const DisplayState& state, std::int32_t width, std::int32_t height,
                                 std::int32_t fallback);

/// The modes of a display, each once, in the order of the list. Skips null entries and those
/// without a positive size. A rate that SDL gives as a fraction is rounded from that; one that is
/// not a positive 32-bit number of Hz becomes 0, unknown.
std::vector<DisplayMode> CollectDisplayModes(std::span<const SDL_DisplayMode* const> modes);

/// The resolutions among `modes` that the aspect mode allows and that are wide enough to play on,
/// or the built-in table when there are none. Each once, ascending by width, then height.
std::vector<Resolution> SelectResolutions(std::span<const DisplayMode> modes,
                                          AspectMode aspectMode);

/// The rates above 0 that `modes` has for the resolution, each once and ascending, after a leading
/// 0 for automatic.
std::vector<std::int32_t> SelectRefreshRates(std::span<const DisplayMode> modes,
                                             const Resolution& resolution);

/// Asks the display that the window is on, or the first one for a null window, and rebuilds
/// DisplayModes, Resolutions and RefreshRates. The chosen resolution stays chosen if the new list
/// has it; otherwise the smallest is. Without a display the built-in resolutions are offered.
void RefreshDisplayModes(DisplayState& state, SDL_Window* window);

/// Rebuilds RefreshRates for the chosen resolution, and sets RefreshRate to automatic unless it is
/// in the new list. In a window only automatic is.
void RefreshRefreshRates(DisplayState& state);

/// Chooses the desktop's own resolution and shape, as a first start does. Changes nothing when
/// there is no display or its desktop is too small to play on.
void AdoptDesktopMode(DisplayState& state);

} // namespace Wirefall
