#pragma once

// What the menus have in common: a table of rows, moved over in a circle, and the screens that any
// of two keys ends.

#include "audio/SoundEvent.h"
#include "game/GameApp.h"
#include "input/PressCodes.h"
#include "words/Localization.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace Wirefall {

using MenuAction = void (*)(GameApp& app);

struct MenuRow {
    GameText Label;
    MenuAction Confirm;
};

/// What the rows say, as long as the catalog is not loaded anew, written into `labels`, which has a
/// place for each. Returns those that are taken.
std::span<const std::string_view> MenuLabels(std::span<const MenuRow> rows,
                                             std::span<std::string_view> labels);

/// Moves the selection over the rows in a circle, or does what the selected row says, or goes back.
void PressInMenu(GameApp& app, PressCode code, std::span<const MenuRow> rows,
                 std::int32_t& selection, MenuAction back);

/// A press that ends a screen, by either of the two keys that can.
void PressToLeave(GameApp& app, PressCode code, SoundEvent confirmSound, MenuAction leave);

} // namespace Wirefall
