#pragma once

// What the pref path needs beside plain reading and writing: a lock against a second program on the
// same folder, and writes that outlast a loss of power. Both are the system's own business; where
// it has nothing of the kind they do nothing.

#include <string>
#include <utility>

namespace Wirefall {

/// Holds the pref path for this process, for as long as it lives. It is advisory and crosses
/// processes only: whoever stages, stores or recovers a file takes it. Waits for another holder,
/// but not for ever: after two seconds it goes on without. Must not be taken twice at a time.
class PrefPathLock {
public:
    PrefPathLock();
    ~PrefPathLock();
    PrefPathLock(const PrefPathLock&) = delete;
    PrefPathLock& operator=(const PrefPathLock&) = delete;
    PrefPathLock(PrefPathLock&&) = delete;
    PrefPathLock& operator=(PrefPathLock&&) = delete;

private:
    int Folder = -1; ///< A descriptor, -1 for none.
};

/// A file that is in the way as soon as the work with it is done, however that ends: it is removed
/// with this object, if it is there.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string path) : Path(std::move(path)) {}
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;

private:
    std::string Path;
};

/// Waits until the content of the file, and its name in its folder, are on the disk. False when the
/// system does not say so.
bool ForceToDisk(const std::string& path);

/// Puts the file in the place of another one in the same folder, at once and for good: whenever the
/// power fails there is the one or the other. Its content must have been forced to the disk.
bool ReplaceLocalFile(const std::string& from, const std::string& to);

} // namespace Wirefall
