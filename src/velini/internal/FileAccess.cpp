#include "velini/internal/FileAccess.h"

#ifdef _WIN32
#include <climits>
#include <io.h>
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace velINI::Internal {

#ifdef _WIN32
namespace {

// Empty for a path that is not UTF-8, which no file has.
std::wstring Utf8PathToWide(const std::string& path) {
    if (path.size() > INT_MAX) {
        return {};
    }
    const int size = static_cast<int>(path.size());
    const int length =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path.data(), size, wide.data(), length);
    return wide;
}

} // namespace

FileHandle OpenForReading(const std::string& path) {
    return FileHandle(_wfopen(Utf8PathToWide(path).c_str(), L"rb"));
}

FileHandle OpenForWriting(const std::string& path) {
    return FileHandle(_wfopen(Utf8PathToWide(path).c_str(), L"wb"));
}

FileHandle CreateForWriting(const std::filesystem::path& path) {
    return FileHandle(_wfopen(path.c_str(), L"wbx"));
}

bool FlushToDevice(std::FILE* file) {
    return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
}
#else
FileHandle OpenForReading(const std::string& path) {
    return FileHandle(std::fopen(path.c_str(), "rb"));
}

FileHandle OpenForWriting(const std::string& path) {
    return FileHandle(std::fopen(path.c_str(), "wb"));
}

FileHandle CreateForWriting(const std::filesystem::path& path) {
    return FileHandle(std::fopen(path.c_str(), "wbx"));
}

bool FlushToDevice(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }
#endif

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

void FileCloser::operator()(std::FILE* file) const {
    // Like failed writes, which this is the last chance to see, this goes undetected.
    static_cast<void>(std::fclose(file));
}

} // namespace velINI::Internal
