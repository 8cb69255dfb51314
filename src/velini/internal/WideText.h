#pragma once

// The conversions between UTF-8 and the wide encodings of files. They raise std::range_error for
// text that is malformed in the encoding it is said to be in.

#include <string>
#include <string_view>

namespace velINI::Internal {

std::string Utf8FromUtf16(std::u16string_view text);
std::string Utf8FromUtf32(std::u32string_view text);
std::u16string Utf16FromUtf8(std::string_view text);
std::u32string Utf32FromUtf8(std::string_view text);

} // namespace velINI::Internal
