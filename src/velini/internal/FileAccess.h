#pragma once

// Opens files by UTF-8 paths on every platform.

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace velINI::Internal {

struct FileCloser {
    void operator()(std::FILE* file) const;
};

using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

FileHandle OpenForReading(const std::string& path);

/// An existing file is emptied.
FileHandle OpenForWriting(const std::string& path);

/// Makes a new file. Null with EEXIST in errno when there is one of that name.
FileHandle CreateForWriting(const std::filesystem::path& path);

/// Hands everything that was written to the device; false when that fails.
bool FlushToDevice(std::FILE* file);

/// The path as UTF-8, as the calls above take it.
std::string Utf8Of(const std::filesystem::path& path);

} // namespace velINI::Internal
