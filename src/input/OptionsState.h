#pragma once

// Where the player is on the Options pages, and what the pages hold until it is applied. Rows stay
// where they were when the screen is left, so that a page opens on the row last used.

#include "display/DisplayTypes.h"

#include <cstdint>
#include <string>

namespace Wirefall {

enum class OptionsPage : std::int32_t { Root = 0, Controls = 1, Graphics = 2, Audio = 3 };

struct OptionsRows {
    std::int32_t OptionsRootRow = 0;
    std::int32_t ControlsRow = 0;
    std::int32_t GraphicsRow = 0;
    std::int32_t AudioRow = 0;
};

/// What the Graphics page returns to. That page edits the live options.
struct GraphicsSnapshot {
    std::int32_t Width = 1280;
    std::int32_t Height = 720;
    Wirefall::AspectMode AspectMode = Wirefall::AspectMode::Widescreen;
    std::int32_t RefreshRate = 0;
    bool Fullscreen = true;
    bool VSync = true;
    bool Valid = false;
};

/// The working copy that the Audio page edits.
struct PendingAudio {
    std::int32_t MasterVolume = 100;
    std::int32_t MusicVolume = 50;
    std::int32_t SfxVolume = 75;
    bool MusicEnabled = false;
    bool SfxEnabled = false;
    std::string Language = "en";
    bool Valid = false;
};

} // namespace Wirefall
