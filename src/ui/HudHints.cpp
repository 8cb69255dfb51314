#include "ui/HudHints.h"

namespace Wirefall {

namespace {

constexpr std::array<std::string_view, HudHintCount> DefaultHintLines = {
    "MOVE D-PAD/STICK", "ROTATE LEFT/RIGHT", "PLACE TILE", "FAST FORWARD SHIFT/RT", "ESC MENU",
};

using HintLines = std::array<std::string, HudHintCount>;

HintLines WithDefaults(const std::array<std::string_view, HudHintCount>& lines) {
    HintLines stored;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        stored[i] = lines[i].empty() ? DefaultHintLines[i] : lines[i];
    }
    return stored;
}

HintLines StoredLines = WithDefaults({});

} // namespace

void StoreHudHintLines(std::string_view move, std::string_view rotate, std::string_view place,
                       std::string_view fastForward, std::string_view menu) {
    StoredLines = WithDefaults({move, rotate, place, fastForward, menu});
}

const std::array<std::string, HudHintCount>& HudHintLines() { return StoredLines; }

} // namespace Wirefall
