#pragma once

// The values by which the game speaks of displays: aspect modes, resolutions and refresh rates.

#include <compare>
#include <cstdint>

namespace Wirefall {

/// Which family of resolutions the player chooses from. The values are stored in Config.ini by
/// name.
enum class AspectMode : std::int32_t { Widescreen = 0, Classic4x3 = 1 };

struct Resolution {
    std::int32_t Width = 0;
    std::int32_t Height = 0;

    auto operator<=>(const Resolution&) const = default; // NOLINT(modernize-use-nullptr)
};

struct DisplayMode {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::int32_t Hz = 0; ///< 0 when the display does not say.

    bool operator==(const DisplayMode&) const = default;
};

} // namespace Wirefall
