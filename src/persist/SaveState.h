#pragma once

// The saved run, SaveState.bin in the user storage, and when it is written: soon after a change, at
// once at the ends of a level, and again after a second when a write has failed. The new content is
// first put together in a temporary file, so a full disk is noticed while the old file is
// untouched.

namespace Wirefall {

struct GameApp;

/// Asks for a write in `delaySeconds`, or at once with 0 or less. A wait that runs already is cut
/// short by this, never drawn out.
void RequestSave(GameApp& app, float delaySeconds);

/// Lets `elapsedSeconds` (negative counts as 0) of the wait go by, and writes when none is left. A
/// failure is logged and tried again after a second.
void SaveTick(GameApp& app, float elapsedSeconds);

/// Writes the live run, or that there is none when HasSavedRun is not set. False when that failed;
/// the old file stays then.
bool WriteSaveState(const GameApp& app);

/// Reads the file at start. True when there was one, whether or not a run came of it; HasSavedRun
/// tells of the run. A file that holds no good run leaves the live run untouched and stays where it
/// is. Where a write of the last session was cut off in the middle, what it had put together in the
/// temporary file takes the place of the broken file.
bool LoadSaveState(GameApp& app);

} // namespace Wirefall
