#pragma once

// The bridge between the game's files and SDL's storages. All code of the game that reads or writes
// a file works on a local path; what shall last lives in the user storage, and the data that comes
// with the game in the title storage. A file travels between the two through a temporary file in
// the pref path, whose name starts with a dot and ends in ".tmp". A storage is opened anew for each
// operation, so nothing holds one for longer.
//
// Only refused INI files are logged. Where a call of SDL failed, SDL_GetError tells why. Main
// thread only.

#include <SDL3/SDL_storage.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velINI {
class velINIStream;
}

namespace Wirefall {

struct StorageCloser {
    void operator()(SDL_Storage* storage) const { SDL_CloseStorage(storage); }
};
using StorageHandle = std::unique_ptr<SDL_Storage, StorageCloser>;

/// Larger files than this are not read, so that no file can eat up the memory. The game's own are a
/// few dozen kilobytes.
inline constexpr std::uint64_t MaxFileBytes = std::uint64_t{64} << 20;

/// The full path of `fileName` in the folder that is the game's own on this machine, which is
/// created when missing. Empty for an empty name, and when there is no such folder.
std::string GetPrefFilePath(const std::string& fileName);

/// Null when there is none.
StorageHandle OpenUserStorage();

/// Blocks, for up to two seconds, until the storage can be used. False when it still cannot.
bool WaitForStorage(SDL_Storage* storage);

/// What reading a file out of a storage came to.
struct StoredFile {
    /// Nothing when the file cannot be read, is no file or is too large.
    std::optional<std::vector<std::uint8_t>> Content;
    /// There is a file, of more than MaxFileBytes.
    bool TooLarge = false;
};

StoredFile ReadStorageFile(SDL_Storage* storage, const std::string& storageName);

/// The same on the user storage.
StoredFile ReadUserFile(const std::string& storageName);

/// Makes the content of the local file the content of a file in the user storage. False when that
/// failed; the file in the storage is then as it was, or not there if it was not. An empty local
/// file is refused, so that nothing never replaces something.
///
/// The storage writes in place, so a process that dies during the call can leave the file cut
/// short.
bool SaveToUserStorage(const std::string& storageName, const std::string& localPath);

/// Copies a file that is neither empty nor too large out of the storage.
bool CopyStorageFileToLocal(SDL_Storage* storage, const std::string& storageName,
                            const std::string& localPath);

/// The same on the user storage.
bool CopyUserFileToLocal(const std::string& storageName, const std::string& localPath);

/// Removes a temporary file if it is there. A folder of that name stays.
void RemoveLocalFile(const std::string& localPath);

/// The folder with a slash behind it if it has none of either kind yet. It must not be empty.
std::string WithSeparator(std::string folder);

/// Whether a path that stands in a data file stays within the data folder: relative, no drive, no
/// colon anywhere, and no segment that is "." or "..". Both kinds of slash divide segments, and
/// empty segments are fine.
bool IsSafeRelativePath(const std::string& path);

/// How the reading of an INI file went.
enum class IniOutcome {
    Read,       ///< Up to its end, or up to the first line with an error in it.
    Unreadable, ///< Not there, or too short to be one; velINI has said so.
    Refused,    ///< It cannot be made sense of, which is logged.
};

/// Adds a local file to the document. Refuses what velINI raises an error for, and files of more
/// than MaxFileBytes; the log then calls the file by `name`. Unless it was read, the document is as
/// it was.
IniOutcome ReadIniFile(const std::string& localPath, const std::string& name,
                       velINI::velINIStream& document);

/// The same with what would stand in the file.
IniOutcome ReadIniContent(std::span<const std::uint8_t> content, const std::string& name,
                          velINI::velINIStream& document);

/// Fills the document from a data file of the installation: out of the title storage, or, when it
/// is not there or broken, from beside the executable. False when neither gave one, and for a path
/// that is not safe.
bool LoadIniFromInstall(const std::string& relativePath, velINI::velINIStream& document);

} // namespace Wirefall
