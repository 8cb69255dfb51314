#include "persist/SaveState.h"

#include "base/Clock.h"
#include "persist/RunConversion.h"
#include "persist/SaveDocument.h"
#include "persist/TaggedStream.h"
#include "sim/Simulation.h"
#include "storage/LocalFiles.h"
#include "storage/Storage.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_log.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Wirefall {

namespace {

constexpr const char* StorageName = "SaveState.bin";
constexpr const char* StagedName = ".SaveState.bin.tmp";
// The last write that was forced out to the disk, a second time. The file in the storage is written
// in place, and until the disk has the new content, a loss of power can leave it with none.
constexpr const char* KeptName = ".SaveState.bin.bak";

constexpr float RetrySeconds = 1.0F;
// Less than half a minute, since a save waits a moment after a change.
constexpr std::uint64_t ForceEveryMs = 25000;

void StageSave(const SaveSchedule& saves, const std::string& path) {
    TaggedWriter writer;
    if (!writer.OpenForWriting(path)) {
        throw std::runtime_error("Unable to write file: " + path);
    }
    if (saves.HasSavedRun) {
        const SaveDocument document = MakeSaveDocument();
        WriteSaveDocument(writer, &document);
    } else {
        WriteSaveDocument(writer, nullptr);
    }
    if (!writer.Close()) {
        throw std::runtime_error("Unable to write file: " + path);
    }
}

enum class Writing : std::uint8_t { Plain, Forced };

// Where the user storage is a folder on this machine, its file is the pref path's.
bool IsFile(const std::string& path, SDL_PathInfo& info) {
    return SDL_GetPathInfo(path.c_str(), &info) && info.type == SDL_PATHTYPE_FILE;
}

// Has what was stored on the disk, and keeps a run a second time in place of the staged file.
void ForceStored(const SaveSchedule& saves, const std::string& stagedPath) {
    SDL_PathInfo info = {};
    const std::string storedPath = GetPrefFilePath(StorageName);
    const std::string keptPath = GetPrefFilePath(KeptName);
    if (!IsFile(storedPath, info) || !ForceToDisk(storedPath)) {
        return;
    }
    if (saves.HasSavedRun) {
        ReplaceLocalFile(stagedPath, keptPath);
    } else {
        RemoveLocalFile(keptPath);
    }
}

SavedGame ReadBytes(std::vector<std::uint8_t> content) {
    TaggedReader reader;
    reader.LoadBytes(std::move(content));
    return ReadSavedGame(reader);
}

// What a file in the pref path holds, if that is whole.
std::optional<SavedGame> ReadWholeSave(const std::string& path) {
    SDL_PathInfo info = {};
    TaggedReader reader;
    if (!IsFile(path, info) || info.size == 0 || info.size > MaxFileBytes ||
        !reader.LoadFile(path)) {
        return std::nullopt;
    }
    SavedGame saved = ReadSavedGame(reader);
    return saved.IsWhole() ? std::optional(std::move(saved)) : std::nullopt;
}

// Makes the content of a file of the pref path the stored save, and has it on the disk.
bool StoreForGood(const std::string& path) {
    const bool stored = SaveToUserStorage(StorageName, path);
    if (stored) {
        ForceToDisk(GetPrefFilePath(StorageName));
    }
    return stored;
}

// A file that is too large to be read counts as one with a run that is not good: it stays where it
// is.
SavedGame UnreadableRun() {
    SavedGame saved;
    saved.RootIsObject = true;
    saved.Complete = true;
    saved.HasRunState = true;
    return saved;
}

// The stored save; or the staged one, which a session that was killed while it saved has left, when
// only that is whole; or the one that was kept, when a loss of power has left a file without its
// end and nothing else. The staged file is gone afterwards, unless it holds the only whole save and
// the storage does not take it. Whoever removes the stored file wants none, so the one that was
// kept goes too.
std::optional<SavedGame> ReadNewestSave(const std::string& stagedPath) {
    const std::string keptPath = GetPrefFilePath(KeptName);
    StoredFile file = ReadUserFile(StorageName);
    const bool isThere = file.Content || file.TooLarge;
    std::optional<SavedGame> stored;
    if (file.TooLarge) {
        stored = UnreadableRun();
    } else if (file.Content && !file.Content->empty()) {
        stored = ReadBytes(std::move(*file.Content));
    }
    if (!file.TooLarge && (!stored || !stored->IsWhole())) {
        if (std::optional<SavedGame> staged = ReadWholeSave(stagedPath)) {
            if (StoreForGood(stagedPath)) {
                RemoveLocalFile(stagedPath);
            }
            return staged;
        }
    }
    if (!isThere) {
        RemoveLocalFile(keptPath);
    } else if (!stored || (!stored->Complete && !stored->RunIsGood)) {
        if (std::optional<SavedGame> kept = ReadWholeSave(keptPath)) {
            StoreForGood(keptPath);
            stored = std::move(kept);
        }
    }
    RemoveLocalFile(stagedPath);
    return stored;
}

// Another program on the same folder may have been killed while it saved. What it has staged must
// not be written over while nothing else is whole.
void FinishInterruptedSave(const std::string& stagedPath) {
    SDL_PathInfo info = {};
    if (IsFile(stagedPath, info)) {
        ReadNewestSave(stagedPath);
    }
}

bool WriteSave(const SaveSchedule& saves, Writing writing) {
    try {
        const std::string path = GetPrefFilePath(StagedName);
        if (path.empty()) {
            return false;
        }
        const PrefPathLock lock;
        FinishInterruptedSave(path);
        const TemporaryFile staged(path);
        StageSave(saves, path);
        if (writing == Writing::Forced) {
            ForceToDisk(path);
        }
        const bool written = SaveToUserStorage(StorageName, path);
        if (written && writing == Writing::Forced) {
            ForceStored(saves, path);
        }
        return written;
    } catch (const std::exception&) {
        // The save that was there before stays, and the caller tries again.
        return false;
    }
}

} // namespace

void RequestSave(SaveSchedule& saves, float delaySeconds) {
    saves.SaveDirty = true;
    if (delaySeconds <= 0.0F) {
        saves.SaveDelaySeconds = 0.0F;
        saves.ForceNextSave = true;
    } else if (saves.SaveDelaySeconds > 0.0F) {
        saves.SaveDelaySeconds = std::min(saves.SaveDelaySeconds, delaySeconds);
    } else {
        saves.SaveDelaySeconds = delaySeconds;
    }
}

void SaveTick(SaveSchedule& saves, float elapsedSeconds) {
    if (!saves.SaveDirty) {
        return;
    }
    saves.SaveDelaySeconds =
        std::max(saves.SaveDelaySeconds - std::max(elapsedSeconds, 0.0F), 0.0F);
    if (saves.SaveDelaySeconds > 0.0F) {
        return;
    }
    const bool forced = saves.ForceNextSave || ClockMs() - saves.LastForcedTicks >= ForceEveryMs;
    if (!WriteSave(saves, forced ? Writing::Forced : Writing::Plain)) {
        SDL_Log("Failed to write save state: %s", StorageName);
        saves.SaveDelaySeconds = RetrySeconds;
        return;
    }
    saves.SaveDirty = false;
    saves.SaveDelaySeconds = 0.0F;
    saves.LastSaveUnforced = !forced;
    if (forced) {
        saves.ForceNextSave = false;
        saves.LastForcedTicks = ClockMs();
    }
}

void FinishSaving(SaveSchedule& saves) {
    SDL_PathInfo info = {};
    const std::string keptPath = GetPrefFilePath(KeptName);
    if (saves.SaveDirty) {
        RequestSave(saves, 0.0F);
        SaveTick(saves, 0.0F);
    } else if (saves.LastSaveUnforced || IsFile(keptPath, info)) {
        saves.LastSaveUnforced = !ForceToDisk(GetPrefFilePath(StorageName));
    }
    if (!saves.SaveDirty && !saves.LastSaveUnforced) {
        RemoveLocalFile(keptPath);
    }
}

bool WriteSaveState(const SaveSchedule& saves) { return WriteSave(saves, Writing::Plain); }

bool LoadSaveState(SlicesOf<SaveSchedule, RunStatus, Navigation> game) {
    SaveSchedule& saves = game;
    RunStatus& status = game;
    saves = {};
    status.PreviousSnapshotValid = false;
    try {
        const std::string stagedPath = GetPrefFilePath(StagedName);
        if (stagedPath.empty()) {
            return false;
        }
        const PrefPathLock lock;
        const std::optional<SavedGame> saved = ReadNewestSave(stagedPath);
        if (!saved || !saved->RootIsObject) {
            return false;
        }
        if (saved->HasRunState && saved->RunIsGood && InstallSaveDocument(game, saved->Run)) {
            saves.HasSavedRun = true;
            saves.LastSavedRevision = LiveSimulation().Revision;
        }
        return true;
    } catch (const std::bad_alloc&) {
        // That the memory does not suffice says nothing against the file, which must not be
        // replaced for it.
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace Wirefall
