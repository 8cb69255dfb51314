#pragma once

// The encodings of an INI file, and the writing of text in them.

#include <cstdint>
#include <cstdio>
#include <string_view>

namespace velINI {

/// None is plain bytes without a byte order mark; all others have one when the library writes them.
enum class TextEncoding : std::uint8_t {
    None = 0,
    Utf8 = 1,
    Utf16LittleEndian = 2,
    Utf16BigEndian = 3,
    Utf32LittleEndian = 4,
    Utf32BigEndian = 5,
};

/// Writes UTF-8 text to the file, which stays the caller's, in the encoding and without a mark.
/// None and Utf8 write the bytes as they are; a number above Utf32BigEndian writes nothing.
/// Failed writes are not detected. The UTF-16 and UTF-32 encodings raise std::range_error for text
/// that is not UTF-8.
void WriteEncoded(std::string_view text, std::FILE* file, TextEncoding encoding);

} // namespace velINI
