#include "storage/Storage.h"

#include "base/Clock.h"
#include "base/SdlMemory.h"
#include "storage/LocalFiles.h"
#include "velini/VelINIStream.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_timer.h>

#include <exception>
#include <span>
#include <string_view>
#include <utility>

namespace Wirefall {

namespace {

constexpr const char* Organisation = "Velkor";
constexpr const char* Application = "Wirefall";

constexpr const char* TitleReadName = ".TitleStorageRead.tmp";

constexpr std::uint64_t StorageTimeoutMs = 1999;

// velINI takes no shorter file for one.
constexpr std::size_t ShortestIniFile = 6;

constexpr std::string_view Separators = "/\\";

using Bytes = std::vector<std::uint8_t>;

// SDL's own storage does not look at what happens when it closes the file, so a disk that has no
// room for the last bytes shows only in the size.
bool WriteStorageFile(SDL_Storage* storage, const std::string& storageName,
                      std::span<const std::uint8_t> content) {
    if (!SDL_WriteStorageFile(storage, storageName.c_str(), content.data(), content.size())) {
        return false;
    }
    SDL_PathInfo info = {};
    if (!SDL_GetStoragePathInfo(storage, storageName.c_str(), &info)) {
        return false;
    }
    return info.size == content.size() || SDL_SetError("The stored file is not complete");
}

// The storage empties a file before it writes. When the new content does not fit the old one still
// does: its room has just become free.
bool ReplaceStorageFile(SDL_Storage* storage, const std::string& storageName,
                        std::span<const std::uint8_t> content) {
    SDL_PathInfo info = {};
    const bool existed = SDL_GetStoragePathInfo(storage, storageName.c_str(), &info);
    const std::optional<Bytes> previous = ReadStorageFile(storage, storageName).Content;
    if (WriteStorageFile(storage, storageName, content)) {
        return true;
    }
    const std::string reason = SDL_GetError();
    if (previous) {
        WriteStorageFile(storage, storageName, *previous);
    } else if (!existed) {
        SDL_RemoveStoragePath(storage, storageName.c_str());
    }
    return SDL_SetError("%s", reason.c_str());
}

IniOutcome ReadTitleIni(const std::string& storageName, velINI::velINIStream& document) {
    const std::string stagedPath = GetPrefFilePath(TitleReadName);
    if (stagedPath.empty()) {
        return IniOutcome::Unreadable;
    }
    const PrefPathLock lock; // The temporary file is another program's as well.
    const TemporaryFile staged(stagedPath);
    const StorageHandle storage(SDL_OpenTitleStorage(nullptr, 0));
    if (!storage || !CopyStorageFileToLocal(storage.get(), storageName, stagedPath)) {
        return IniOutcome::Unreadable;
    }
    return ReadIniFile(stagedPath, storageName, document);
}

} // namespace

std::string GetPrefFilePath(const std::string& fileName) {
    if (fileName.empty()) {
        return {};
    }
    const SdlArray<char> folder(SDL_GetPrefPath(Organisation, Application));
    if (!folder || folder[0] == '\0') {
        return {};
    }
    return WithSeparator(folder.get()) + fileName;
}

StorageHandle OpenUserStorage() {
    return StorageHandle(SDL_OpenUserStorage(Organisation, Application, 0));
}

bool WaitForStorage(SDL_Storage* storage) {
    const std::uint64_t start = ClockMs();
    while (!SDL_StorageReady(storage)) {
        if (ClockMs() - start > StorageTimeoutMs) {
            return SDL_SetError("Timed out waiting for SDL user storage");
        }
        SDL_Delay(1);
    }
    return true;
}

StoredFile ReadStorageFile(SDL_Storage* storage, const std::string& storageName) {
    SDL_PathInfo info = {};
    if (!WaitForStorage(storage) || !SDL_GetStoragePathInfo(storage, storageName.c_str(), &info) ||
        info.type != SDL_PATHTYPE_FILE) {
        return {};
    }
    if (info.size > MaxFileBytes) {
        return {.Content = std::nullopt, .TooLarge = true};
    }
    Bytes content(info.size);
    if (!content.empty() &&
        !SDL_ReadStorageFile(storage, storageName.c_str(), content.data(), content.size())) {
        return {};
    }
    return {.Content = std::move(content)};
}

StoredFile ReadUserFile(const std::string& storageName) {
    const StorageHandle storage = OpenUserStorage();
    return storage ? ReadStorageFile(storage.get(), storageName) : StoredFile{};
}

bool SaveToUserStorage(const std::string& storageName, const std::string& localPath) {
    if (storageName.empty()) {
        return false;
    }
    std::size_t size = 0;
    const SdlArray<std::uint8_t> content(
        static_cast<std::uint8_t*>(SDL_LoadFile(localPath.c_str(), &size)));
    if (!content || size == 0) {
        return false;
    }
    const StorageHandle storage = OpenUserStorage();
    return storage && WaitForStorage(storage.get()) &&
           ReplaceStorageFile(storage.get(), storageName, {content.get(), size});
}

bool CopyStorageFileToLocal(SDL_Storage* storage, const std::string& storageName,
                            const std::string& localPath) {
    if (storageName.empty()) {
        return false;
    }
    const std::optional<Bytes> content = ReadStorageFile(storage, storageName).Content;
    return content && !content->empty() &&
           SDL_SaveFile(localPath.c_str(), content->data(), content->size());
}

bool CopyUserFileToLocal(const std::string& storageName, const std::string& localPath) {
    if (storageName.empty()) {
        return false;
    }
    const StorageHandle storage = OpenUserStorage();
    return storage && CopyStorageFileToLocal(storage.get(), storageName, localPath);
}

void RemoveLocalFile(const std::string& localPath) {
    SDL_PathInfo info = {};
    if (SDL_GetPathInfo(localPath.c_str(), &info) && info.type != SDL_PATHTYPE_DIRECTORY) {
        SDL_RemovePath(localPath.c_str());
    }
}

std::string WithSeparator(std::string folder) {
    if (Separators.find(folder.back()) == std::string_view::npos) {
        folder += '/';
    }
    return folder;
}

bool IsSafeRelativePath(const std::string& path) {
    if (path.empty() || Separators.find(path.front()) != std::string_view::npos ||
        path.find(':') != std::string::npos) {
        return false;
    }
    std::string_view rest = path;
    while (!rest.empty()) {
        const std::size_t end = rest.find_first_of(Separators);
        const std::string_view segment = rest.substr(0, end);
        if (segment == "." || segment == "..") {
            return false;
        }
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return true;
}

IniOutcome ReadIniFile(const std::string& localPath, const std::string& name,
                       velINI::velINIStream& document) {
    SDL_PathInfo info = {};
    if (SDL_GetPathInfo(localPath.c_str(), &info) && info.size > MaxFileBytes) {
        SDL_Log("Failed to read %s: larger than any settings file", name.c_str());
        return IniOutcome::Refused;
    }
    try {
        velINI::velINIStream filled = document;
        if (!filled.ReadFile(localPath)) {
            return IniOutcome::Unreadable;
        }
        document = std::move(filled);
        return IniOutcome::Read;
    } catch (const std::exception& error) {
        SDL_Log("Failed to read %s: %s", name.c_str(), error.what());
        return IniOutcome::Refused;
    }
}

IniOutcome ReadIniContent(std::span<const std::uint8_t> content, const std::string& name,
                          velINI::velINIStream& document) {
    if (content.size() < ShortestIniFile) {
        return IniOutcome::Unreadable;
    }
    velINI::velINIStream filled = document;
    if (!filled.ReadText({reinterpret_cast<const char*>(content.data()), content.size()})) {
        SDL_Log("Failed to read %s: %s", name.c_str(), filled.Diagnostics().back().Message.c_str());
        return IniOutcome::Refused;
    }
    document = std::move(filled);
    return IniOutcome::Read;
}

bool LoadIniFromInstall(const std::string& relativePath, velINI::velINIStream& document) {
    if (!IsSafeRelativePath(relativePath)) {
        return false;
    }
    const IniOutcome outcome = ReadTitleIni(relativePath, document);
    if (outcome != IniOutcome::Unreadable) {
        return outcome == IniOutcome::Read;
    }
    const char* const folder = SDL_GetBasePath();
    if (folder == nullptr || *folder == '\0') {
        return false;
    }
    return ReadIniFile(WithSeparator(folder) + relativePath, relativePath, document) ==
           IniOutcome::Read;
}

} // namespace Wirefall
