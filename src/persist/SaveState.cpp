#include "persist/SaveState.h"

#include "persist/RunConversion.h"
#include "persist/SaveDocument.h"
#include "persist/TaggedStream.h"
#include "sim/Simulation.h"
#include "storage/Storage.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_log.h>

#include <algorithm>
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

constexpr float RetrySeconds = 1.0F;

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

// Nothing when there is no file with any content.
std::optional<SavedGame> ReadStoredSave() {
    std::optional<std::vector<std::uint8_t>> content = ReadUserFile(StorageName);
    if (!content || content->empty()) {
        return std::nullopt;
    }
    TaggedReader reader;
    reader.LoadBytes(std::move(*content));
    return ReadSavedGame(reader);
}

// What a session that was killed while it saved has left in the temporary file, if that is whole.
std::optional<SavedGame> ReadStagedSave(const std::string& path) {
    SDL_PathInfo info = {};
    if (!SDL_GetPathInfo(path.c_str(), &info) || info.type != SDL_PATHTYPE_FILE || info.size == 0 ||
        info.size > MaxStorageFileBytes) {
        return std::nullopt;
    }
    TaggedReader reader;
    if (!reader.LoadFile(path)) {
        return std::nullopt;
    }
    SavedGame saved = ReadSavedGame(reader);
    return saved.IsWhole() ? std::optional(std::move(saved)) : std::nullopt;
}

// The stored save, or the staged one when only that is whole. The staged file is gone afterwards,
// unless it holds the only whole save and the storage does not take it.
std::optional<SavedGame> ReadNewestSave(const std::string& stagedPath) {
    std::optional<SavedGame> stored = ReadStoredSave();
    if (!stored || !stored->IsWhole()) {
        if (std::optional<SavedGame> staged = ReadStagedSave(stagedPath)) {
            if (SaveToUserStorage(StorageName, stagedPath)) {
                RemoveLocalFile(stagedPath);
            }
            return staged;
        }
    }
    RemoveLocalFile(stagedPath);
    return stored;
}

} // namespace

void RequestSave(SaveSchedule& saves, float delaySeconds) {
    saves.SaveDirty = true;
    if (delaySeconds <= 0.0F) {
        saves.SaveDelaySeconds = 0.0F;
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
    if (WriteSaveState(saves)) {
        saves.SaveDirty = false;
        saves.SaveDelaySeconds = 0.0F;
    } else {
        SDL_Log("Failed to write save state: %s", StorageName);
        saves.SaveDelaySeconds = RetrySeconds;
    }
}

bool WriteSaveState(const SaveSchedule& saves) {
    std::string path;
    bool written = false;
    try {
        path = GetPrefFilePath(StagedName);
        if (path.empty()) {
            return false;
        }
        StageSave(saves, path);
        written = SaveToUserStorage(StorageName, path);
    } catch (const std::exception&) {
        // The save that was there before stays, and the caller tries again.
        written = false;
    }
    RemoveLocalFile(path);
    return written;
}

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
