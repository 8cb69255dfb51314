#include "base/FileAccess.h"

#ifdef _WIN32
#include <climits>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace Wirefall {

#ifdef _WIN32
namespace {

// Empty for a text that is not UTF-8, which is the name of no file.
std::wstring Utf8ToWide(const std::string& text) {
    if (text.size() > INT_MAX) {
        return {};
    }
    const int size = static_cast<int>(text.size());
    const int length =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, wide.data(), length);
    return wide;
}

} // namespace

FileHandle OpenFile(const std::string& path, const char* mode) {
    return FileHandle(_wfopen(Utf8ToWide(path).c_str(), Utf8ToWide(mode).c_str()));
}
#else
FileHandle OpenFile(const std::string& path, const char* mode) {
    return FileHandle(std::fopen(path.c_str(), mode));
}
#endif

} // namespace Wirefall
