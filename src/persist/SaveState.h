#pragma once

// The saved run, SaveState.bin in the user storage, and when it is written: soon after a change, at
// once at the ends of a level, and again after a second when a write has failed. The new content is
// first put together in a temporary file, so a full disk is noticed while the old file is
// untouched.
//
// A write that was asked for at once, the first of a session, and one at least every half minute of
// play are forced out to the disk, and what they wrote is kept a second time. So a loss of power
// costs half a minute at most.

#include "base/AppScreen.h"
#include "base/Slices.h"
#include "sim/LevelRules.h"

#include <cstdint>

namespace Wirefall {

/// What there is to save, and when.
struct SaveSchedule {
    /// A run exists that can be gone on with; the main menu offers it.
    bool HasSavedRun = false;
    /// A write of SaveState.bin is pending.
    bool SaveDirty = false;
    float SaveDelaySeconds = 0.0F; ///< Until that write.
    /// The Revision that the last save request covered.
    std::uint64_t LastSavedRevision = 0;
    /// The next write is forced out to the disk.
    bool ForceNextSave = true;
    /// The last write was not.
    bool LastSaveUnforced = false;
    std::uint64_t LastForcedTicks = 0; ///< Clock milliseconds of the last one that was.

    bool operator==(const SaveSchedule&) const = default;
};

/// Asks for a write in `delaySeconds`, or at once with 0 or less. A wait that runs already is cut
/// short by this, never drawn out.
void RequestSave(SaveSchedule& saves, float delaySeconds);

/// Lets `elapsedSeconds` (negative counts as 0) of the wait go by, and writes when none is left. A
/// failure is logged and tried again after a second.
void SaveTick(SaveSchedule& saves, float elapsedSeconds);

/// At the end of the program: writes what is pending, and has the last write on the disk, so that
/// nothing else need be kept.
void FinishSaving(SaveSchedule& saves);

/// Writes the live run, or that there is none when HasSavedRun is not set. False when that failed;
/// the old file stays then.
bool WriteSaveState(const SaveSchedule& saves);

/// Reads the file at start. True when there was one, whether or not a run came of it; HasSavedRun
/// tells of the run. With a run the main menu is shown. A file that holds no good run leaves the
/// live run untouched and stays where it is. Where a write of the last session was cut off in the
/// middle, what it had put together in the temporary file takes the place of the broken file; where
/// a loss of power has left an empty one, what was kept of the last forced write does.
bool LoadSaveState(SlicesOf<SaveSchedule, RunStatus, Navigation> game);

} // namespace Wirefall
