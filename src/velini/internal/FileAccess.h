#pragma once

// Opens files by UTF-8 paths on every platform, and replaces them as a whole or not at all.

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace velINI::Internal {

struct FileCloser {
    void operator()(std::FILE* file) const;
};

using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

FileHandle OpenForReading(const std::string& path);

/// An existing file is emptied.
FileHandle OpenForWriting(const std::string& path);

/// Writes the bytes to a new file beside the target, makes sure that they are stored, and moves it
/// over the target, which then keeps its permissions. When any of this fails, the target is as it
/// was, the new file is gone, and the result is the reason; it is empty when all went well.
std::string ReplaceFile(const std::filesystem::path& target, std::string_view bytes);

/// The path as UTF-8, as the calls above take it.
std::string Utf8Of(const std::filesystem::path& path);

} // namespace velINI::Internal
