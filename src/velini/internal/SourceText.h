#pragma once

// The first step of reading: a file becomes one UTF-8 text, whatever encoding it has.

#include "velini/Diagnostic.h"

#include <optional>
#include <string>
#include <vector>

namespace velINI::Internal {

/// The text of the file without its byte order mark, in one or more parts that can be read one
/// after the other: where one ends, a line ends. A long text has many, so that each can be let go
/// when it has been read. An encoding is known by its mark, and without one by the places of the
/// zero bytes among the first four, so that a file must begin with an ASCII character. Each
/// encoding but plain bytes is told on the standard output.
///
/// Nothing, with a message on the standard output and in `diagnostics`, when the file cannot be
/// read or is shorter than 6 bytes. Raises std::range_error for broken UTF-16 and UTF-32. 8-bit
/// text is not checked.
std::optional<std::vector<std::string>> LoadSourceText(const std::string& path,
                                                       std::vector<Diagnostic>& diagnostics);

} // namespace velINI::Internal
