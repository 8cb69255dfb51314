#pragma once

// What a page of the Options is: a table with a line for each row, telling what the row says, what
// left and right do with it and what confirming it does. The screen draws any such table, and
// moves the selection over it.

#include "game/GameApp.h"
#include "input/ControllerSet.h"
#include "words/Localization.h"

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_video.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace Wirefall {

/// What a page tells of. Rows are numbered from 0 at the top of the page.
struct PageView {
    const GameApp& App;
    const ControllerSet& Controllers;
};

/// What a page works on. The window and the renderer are the Graphics page's, and may be null.
struct PageContext {
    GameApp& App;
    SDL_Window* Window;
    SDL_Renderer* Renderer;
};

using PageAction = void (*)(const PageContext& context);

struct PageRow {
    GameText Label;
    /// Null for a row that only does something.
    std::string (*Value)(const PageView& view, std::int32_t row) = nullptr;
    /// One step on (1) or back (-1). Null for a row that is no setting.
    void (*Adjust)(const PageContext& context, std::int32_t direction) = nullptr;
    /// Null for a row with nothing to confirm.
    void (*Confirm)(const PageContext& context, std::int32_t row) = nullptr;
};

/// The lines at the foot of a page.
struct PageHints {
    std::string Upper;
    std::string Lower; ///< Empty on the root page without a controller.
};

struct PageTable {
    GameText Heading;
    std::int32_t OptionsRows::*Row; ///< Where the selected row is kept.
    std::span<const PageRow> (*Rows)(const GameApp& app);
    PageHints (*Hints)(const PageView& view);
    PageAction
        Prepare; ///< Before each press, so that there is an edit and the row is one of its rows.
    PageAction Back;
    bool IsMenu = false;   ///< The rows have no values and stand in the middle.
    bool FitHints = false; ///< Hints that hold names of any length shrink to the panel.
};

/// Does what left (-1) or right (1) means on the selected row of the page.
void AdjustSelectedRow(const PageTable& page, const PageContext& context, std::int32_t direction);

/// The last four rows of every page that edits something.
constexpr std::array<PageRow, 4> ClosingRows(void (*reset)(const PageContext&, std::int32_t),
                                             void (*apply)(const PageContext&, std::int32_t),
                                             void (*revert)(const PageContext&, std::int32_t),
                                             void (*back)(const PageContext&, std::int32_t)) {
    return {{
        {.Label = {"Options.DefaultSettings", "DEFAULT SETTINGS"}, .Confirm = reset},
        {.Label = {"Common.Apply", "APPLY"}, .Confirm = apply},
        {.Label = {"Common.Revert", "REVERT"}, .Confirm = revert},
        {.Label = {"Common.Back", "BACK"}, .Confirm = back},
    }};
}

/// One list of rows behind the other.
template <std::size_t First, std::size_t Second>
constexpr std::array<PageRow, First + Second> JoinRows(const std::array<PageRow, First>& first,
                                                       const std::array<PageRow, Second>& second) {
    std::array<PageRow, First + Second> rows{};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i] = i < First ? first[i] : second[i - First];
    }
    return rows;
}

/// Confirming a row that has two values takes the other one.
template <auto Adjust>
void StepOn(const PageContext& context, std::int32_t /*row*/) {
    Adjust(context, 1);
}

/// Confirming a row that does the same as leaving the page, or another thing that needs no row.
template <PageAction Action>
void Do(const PageContext& context, std::int32_t /*row*/) {
    Action(context);
}

const std::string& OnOffText(bool on);

/// What confirms and what goes back: on the controller in hand, otherwise as `keyboardHint` has it.
std::string SelectBackHint(const PageView& view, const GameText& keyboardHint);

/// The hints of a page whose rows are values to be changed.
PageHints ValuePageHints(const PageView& view);

} // namespace Wirefall
