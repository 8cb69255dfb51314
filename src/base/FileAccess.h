#pragma once

// Files by their path in UTF-8, on every platform.

#include <cstdio>
#include <memory>
#include <string>

namespace Wirefall {

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

/// Null when closed.
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// Opens the file as std::fopen does, with a mode such as "rb". Null when that fails, and for a
/// path that is not UTF-8 where the system's own paths are UTF-16.
FileHandle OpenFile(const std::string& path, const char* mode);

} // namespace Wirefall
