#pragma once

// Opens files by UTF-8 paths on every platform.

#include <cstdio>
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

} // namespace velINI::Internal
