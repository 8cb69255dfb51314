#include "storage/LocalFiles.h"

#include "base/Clock.h"
#include "storage/Storage.h"

#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_timer.h>

#include <cstdint>

#if defined(__unix__) || defined(__APPLE__)
#define WIREFALL_HAS_POSIX_FILES
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace Wirefall {

namespace {

#ifdef WIREFALL_HAS_POSIX_FILES

constexpr std::uint64_t LockTimeoutMs = 2000;

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// A file or a folder.
bool SyncPath(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool synced = fsync(descriptor) == 0;
    close(descriptor);
    return synced;
}

#endif

} // namespace

TemporaryFile::~TemporaryFile() { RemoveLocalFile(Path); }

#ifdef WIREFALL_HAS_POSIX_FILES

// The folder itself is locked, so that no file for that lies about. The delays are counted too, so
// that a clock that stands still cannot hold up the start.
PrefPathLock::PrefPathLock() {
    const std::string folder = FolderOf(GetPrefFilePath("lock"));
    Folder = folder.empty() ? -1 : open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::uint64_t start = ClockMs();
    for (std::uint64_t delays = 0; Folder >= 0 && flock(Folder, LOCK_EX | LOCK_NB) != 0 &&
                                   delays < LockTimeoutMs && ClockMs() - start < LockTimeoutMs;
         ++delays) {
        SDL_Delay(1);
    }
}

PrefPathLock::~PrefPathLock() {
    if (Folder >= 0) {
        close(Folder);
    }
}

bool ForceToDisk(const std::string& path) { return SyncPath(path) && SyncPath(FolderOf(path)); }

bool ReplaceLocalFile(const std::string& from, const std::string& to) {
    return SDL_RenamePath(from.c_str(), to.c_str()) && SyncPath(FolderOf(to));
}

#else

PrefPathLock::PrefPathLock() = default;
PrefPathLock::~PrefPathLock() = default;

bool ForceToDisk(const std::string& /*path*/) { return false; }

bool ReplaceLocalFile(const std::string& from, const std::string& to) {
    return SDL_RenamePath(from.c_str(), to.c_str());
}

#endif

} // namespace Wirefall
