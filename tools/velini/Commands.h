#pragma once

// The commands of the program velini.

#include <iosfwd>
#include <span>
#include <string>

namespace velINI::Tool {

/// What the program tells the shell.
enum class ExitStatus : int {
    Good = 0,
    Negative = 1, ///< Something was found wrong, or there is no such value.
    Failed = 2,   ///< A file cannot be read or written, or the command is not one.
};

/// Carries out one command: its name and its arguments, as the usage text tells them.
ExitStatus Run(std::span<const std::string> arguments, std::ostream& out, std::ostream& errors);

} // namespace velINI::Tool
