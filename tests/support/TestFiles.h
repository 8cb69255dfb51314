#pragma once

// Files and folders for the tests of what is kept on disk.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <vector>

namespace Wirefall::Testing {

using Bytes = std::vector<std::uint8_t>;

/// A new folder below the system's temporary one, deleted with everything in it at the end of the
/// scope.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& Path() const { return Folder; }
    std::string File(std::string_view name) const { return (Folder / name).string(); }

private:
    std::filesystem::path Folder;
};

Bytes BytesOf(std::string_view text);
std::string TextOf(const Bytes& bytes);

/// Both are empty for a file that is not there.
Bytes ReadFileBytes(const std::filesystem::path& path);
std::string ReadFileText(const std::filesystem::path& path);
void WriteFileBytes(const std::filesystem::path& path, const Bytes& bytes);
void WriteFileText(const std::filesystem::path& path, std::string_view text);

/// The names in a folder, sorted.
std::vector<std::string> NamesIn(const std::filesystem::path& folder);

/// The bytes that a string such as "0A 01" shows. Blanks and line ends do not count.
Bytes FromHex(std::string_view hex);

/// For as long as this lives, no file can grow beyond `limit` bytes, as on a disk that is full
/// then.
class FullDisk {
public:
    explicit FullDisk(std::size_t limit);
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk();

private:
    rlimit Before{};
};

/// Runs `check` in a process of its own. What it returns becomes the result; false when it dies.
bool HoldsInChild(const std::function<bool()>& check);

/// The same without root's right to everything.
bool HoldsUnprivileged(const std::function<bool()>& check);

} // namespace Wirefall::Testing
