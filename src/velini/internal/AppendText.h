#pragma once

// EscapeText for a caller that builds longer texts out of it.

#include <string>
#include <string_view>

namespace velINI::Internal {

/// Appends EscapeText(text) to `out`. When it raises, the beginning stands there already.
void AppendEscaped(std::string& out, std::string_view text);

} // namespace velINI::Internal
