#pragma once

// The player's settings as a file, Config.ini in the user storage.

namespace Wirefall {

struct GameApp;

/// Reads the file into the options. False when there was none, which makes this a first start.
bool LoadOptions(GameApp& app);

/// Writes the options. False when that failed; the old file stays then.
bool SaveOptions(const GameApp& app);

/// Writes the options if OptionsDirty is set, and clears it. A failure is logged and leaves it set.
void SaveOptionsIfDirty(GameApp& app);

} // namespace Wirefall
