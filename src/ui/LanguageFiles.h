#pragma once

// The language files, which add to the built-in texts or replace them.

#include "persist/GameOptions.h"

namespace Wirefall {

/// Fills the catalog for the language of the options, and sets that to the one really loaded. Every
/// reference to a text that was looked up before is invalid afterwards.
void LoadLocalization(GameOptions& options);

} // namespace Wirefall
