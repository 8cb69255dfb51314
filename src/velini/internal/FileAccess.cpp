#include "velini/internal/FileAccess.h"

#include <cerrno>
#include <system_error>
#include <utility>

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

namespace {

namespace fs = std::filesystem;

#ifdef _WIN32
// Empty for a text that is not UTF-8, which no file is named by.
fs::path PathOf(const std::string& utf8) {
    if (utf8.size() > INT_MAX) {
        return {};
    }
    const int size = static_cast<int>(utf8.size());
    const int length =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), size, wide.data(), length);
    return wide;
}

FileHandle Open(const fs::path& path, std::string_view mode) {
    return FileHandle(_wfopen(path.c_str(), std::wstring(mode.begin(), mode.end()).c_str()));
}

bool Flush(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }
#else
fs::path PathOf(const std::string& utf8) { return utf8; }

FileHandle Open(const fs::path& path, const char* mode) {
    return FileHandle(std::fopen(path.c_str(), mode));
}

bool Flush(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }
#endif

// A new file beside the target, with a name that no other file has.
FileHandle OpenStaged(const fs::path& target, fs::path& staged) {
    constexpr int MostNames = 100;
    for (int number = 0; number < MostNames; ++number) {
        staged = target;
        staged += ".new" + std::to_string(number);
        FileHandle file = Open(staged, "wbx");
        if (file != nullptr || errno != EEXIST) {
            return file;
        }
    }
    return nullptr;
}

bool WriteAll(FileHandle file, std::string_view bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
           Flush(file.get()) && std::fclose(file.release()) == 0;
}

} // namespace

FileHandle OpenForReading(const std::string& path) { return Open(PathOf(path), "rb"); }

FileHandle OpenForWriting(const std::string& path) { return Open(PathOf(path), "wb"); }

std::string Utf8Of(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

void FileCloser::operator()(std::FILE* file) const {
    // Like failed writes, which this is the last chance to see, this goes undetected.
    static_cast<void>(std::fclose(file));
}

std::string ReplaceFile(const fs::path& target, std::string_view bytes) {
    std::error_code error;
    fs::path resolved = fs::canonical(target, error); // renaming must not replace a link
    resolved = error ? target : resolved;
    fs::path staged;
    FileHandle file = OpenStaged(resolved, staged);
    if (file == nullptr) {
        return std::generic_category().message(errno);
    }
    if (!WriteAll(std::move(file), bytes)) {
        error.assign(errno != 0 ? errno : EIO, std::generic_category());
    } else {
        const fs::file_status status = fs::status(resolved, error);
        if (fs::exists(status)) {
            fs::permissions(staged, status.permissions(), error);
        }
        fs::rename(staged, resolved, error);
    }
    if (error) {
        std::error_code ignored;
        fs::remove(staged, ignored);
    }
    return error ? error.message() : "";
}

} // namespace velINI::Internal
