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

FileHandle CreateForWriting(const std::filesystem::path& path) {
    return FileHandle(_wfopen(path.c_str(), L"wbx"));
}

bool FlushToDevice(std::FILE* file) {
    return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
}

} // namespace

FileHandle OpenForReading(const std::string& path) {
    return FileHandle(_wfopen(Utf8PathToWide(path).c_str(), L"rb"));
}

FileHandle OpenForWriting(const std::string& path) {
    return FileHandle(_wfopen(Utf8PathToWide(path).c_str(), L"wb"));
}

#else
namespace {

FileHandle CreateForWriting(const std::filesystem::path& path) {
    return FileHandle(std::fopen(path.c_str(), "wbx"));
}

bool FlushToDevice(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }

} // namespace

FileHandle OpenForReading(const std::string& path) {
    return FileHandle(std::fopen(path.c_str(), "rb"));
}

FileHandle OpenForWriting(const std::string& path) {
    return FileHandle(std::fopen(path.c_str(), "wb"));
}

#endif

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

void FileCloser::operator()(std::FILE* file) const {
    // Like failed writes, which this is the last chance to see, this goes undetected.
    static_cast<void>(std::fclose(file));
}

// --- Replacing

namespace {

namespace fs = std::filesystem;

std::string LastError() { return std::generic_category().message(errno); }

// The file that the path means in the end; renaming must not replace a link to it.
fs::path Resolved(const fs::path& target) {
    std::error_code error;
    fs::path resolved = fs::canonical(target, error);
    return error ? target : resolved;
}

// A new file beside the target, with a name that no other file has.
FileHandle OpenStaged(const fs::path& target, fs::path& staged) {
    constexpr int MostNames = 100;
    for (int number = 0; number < MostNames; ++number) {
        staged = target;
        staged += ".new" + std::to_string(number);
        FileHandle file = CreateForWriting(staged);
        if (file != nullptr || errno != EEXIST) {
            return file;
        }
    }
    return nullptr;
}

bool WriteAll(FileHandle file, std::string_view bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
           FlushToDevice(file.get()) && std::fclose(file.release()) == 0;
}

} // namespace

std::string ReplaceFile(const fs::path& target, std::string_view bytes) {
    const fs::path resolved = Resolved(target);
    fs::path staged;
    FileHandle file = OpenStaged(resolved, staged);
    if (file == nullptr) {
        return LastError();
    }
    std::string reason;
    if (!WriteAll(std::move(file), bytes)) {
        reason = LastError();
    } else {
        std::error_code error;
        const fs::file_status status = fs::status(resolved, error);
        if (fs::exists(status)) {
            fs::permissions(staged, status.permissions(), error);
        }
        fs::rename(staged, resolved, error);
        reason = error ? error.message() : "";
    }
    if (!reason.empty()) {
        std::error_code ignored;
        fs::remove(staged, ignored);
    }
    return reason;
}

} // namespace velINI::Internal
