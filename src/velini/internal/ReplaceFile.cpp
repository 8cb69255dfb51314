#include "velini/internal/ReplaceFile.h"

#include "velini/internal/FileAccess.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace velINI::Internal {
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
