#pragma once

// Made-up INI files for measurements. The same call always gives the same text.

#include <cstddef>
#include <string>

namespace velINI::Testing {

/// A file as programs have them, of at least `size` bytes: settings with short values, half of them
/// explained, language texts in quotes, some with letters beyond ASCII, comments and blank lines.
/// Every INI library takes it.
std::string MakeRealisticFile(std::size_t size);

/// One shape of text, `count` lines of it.
std::string MakeKeys(std::size_t count);
std::string MakeSections(std::size_t count);
std::string MakeComments(std::size_t count);
std::string MakeBlankLines(std::size_t count);
std::string MakeElements(std::size_t count);

} // namespace velINI::Testing
