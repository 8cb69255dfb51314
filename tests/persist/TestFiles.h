#pragma once

// Files and folders for the tests of what is kept on disk.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
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

/// Empty for a file that is not there.
Bytes ReadFileBytes(const std::filesystem::path& path);
void WriteFileBytes(const std::filesystem::path& path, const Bytes& bytes);
void WriteFileText(const std::filesystem::path& path, std::string_view text);

/// The names in a folder, sorted.
std::vector<std::string> NamesIn(const std::filesystem::path& folder);

/// The bytes that a string such as "0A 01" shows. Blanks and line ends do not count.
Bytes FromHex(std::string_view hex);

} // namespace Wirefall::Testing
