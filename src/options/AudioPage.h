#pragma once

// The Audio page: volumes, switches and the language, edited in a working copy.

#include "game/GameApp.h"
#include "options/PageTable.h"

#include <cstdint>

namespace Wirefall {

extern const PageTable AudioPage;

/// Takes a fresh working copy of the live options.
void BeginAudioEdit(GameApp& app);

/// Whether the working copy differs from the live options. False while there is none. Two ways to
/// write one language are no difference.
bool AudioEditIsDirty(const GameApp& app);

/// Changes the selected row of the working copy, one step on (1) or back (-1). The rows that are no
/// settings do nothing.
void AdjustAudioRow(GameApp& app, std::int32_t direction);

/// Sets the working copy to the factory settings, but for the language.
void ResetAudioEdit(GameApp& app);

/// If the working copy has changes, makes it the live options and asks for them to be saved; a
/// change of language shows at once, and makes every reference to a text invalid. Begins the edit
/// anew in any case.
void ApplyAudioEdit(GameApp& app);

} // namespace Wirefall
