#pragma once

// The second step of reading: line ends are made alike and \x escapes are decoded, which divides
// the text of a file into the lines that the third step understands one by one.

#include <string>
#include <string_view>
#include <vector>

namespace velINI::Internal {

/// Decodes the text in place and returns its lines, which are parts of `text` and good for as long
/// as it stays untouched. Each ends in a newline. A newline can also stand within a line, when it
/// came from an escape or had a backslash in front of it.
///
/// - A line feed ends a line. So does a carriage return, which takes the byte behind it with it,
///   whatever that is; as the last byte of the text it counts for nothing.
/// - `\x` and four hexadecimal digits are a UTF-16 unit, and two units can be a surrogate pair.
///   Without four digits only the backslash goes, and the rest stays as it stands.
/// - Any other backslash and the byte behind it pass together, so that this byte neither ends a
///   line nor begins an escape. As the last byte of the text a backslash counts for nothing.
///
/// Raises std::runtime_error for an escape that cannot be decoded: "Read beyond end of file, and
/// found invalid unicode escape sequence!" when the text ends before its fourth digit; "Invalid
/// code point for UTF-16 low surrogate pair!" when `\x` follows directly behind a unit, any unit,
/// and has no four digits; "Invalid code point range for UTF-16 low surrogate pair!" when the unit
/// that follows directly behind a high surrogate is not a low one.
std::vector<std::string_view> DecodeLines(std::string& text);

} // namespace velINI::Internal
