#pragma once

// What the four pages of the Options screen say: their rows and hints, in words. Where it stands is
// the screen's business.

#include "app/GameApp.h"
#include "input/ControllerSet.h"
#include "ui/Localization.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Wirefall {

struct OptionRow {
    std::string Label;
    std::string Value; ///< Empty on a row that only does something.
};

struct OptionsPageTexts {
    GameText Heading = {};
    std::vector<OptionRow> Rows = {};
    std::int32_t SelectedRow = 0; ///< May be none of the rows.
    std::string UpperHint = {};
    std::string LowerHint = {}; ///< Empty on the root page without a controller.
    bool FitHints = false;      ///< Hints that hold names of any length shrink to the panel.
};

/// The page of app.OptionsPage.
OptionsPageTexts CollectOptionsPage(const GameApp& app, const ControllerSet& controllers);

} // namespace Wirefall
