#pragma once

// The text operations that the reader and the writer are made of.

#include <string>
#include <string_view>
#include <vector>

namespace velINI {

/// The substrings of `text` between runs of delimiter characters. Delimiters at either end give no
/// empty tokens. When there is no token at all, the list holds `text` whole.
std::vector<std::string> SplitTokens(std::string_view text, std::string_view delimiters);

/// The UTF-8 form of a code point (RFC 3629), one to four bytes; empty above 10FFFF hexadecimal. A
/// surrogate is encoded like any other value, in three bytes.
std::string EncodeUtf8(char32_t codePoint);

/// UTF-8 text in the form that goes into a file, which is plain ASCII. Control characters, the
/// double quote and the backslash get the escapes of C or four hexadecimal digits, as in `\n` and
/// `\x0007`; everything beyond ASCII becomes its UTF-16 units, as in `\x00e4` and `\xd83d\xde00`.
/// The reader decodes only the hexadecimal ones everywhere, and `\"` and `\\` in quotes.
///
/// Raises std::runtime_error "Invalid UTF-8 sequence!" for a byte that begins no sequence and for
/// one that does not go on with the sequence begun. Overlong forms and surrogates are not refused.
std::string EscapeText(std::string_view text);

/// Appends that form to `out`. When it raises, the beginning stands there already.
void AppendEscaped(std::string& out, std::string_view text);

} // namespace velINI
