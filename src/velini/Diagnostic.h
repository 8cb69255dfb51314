#pragma once

// What reading has to say of a text.

#include <cstddef>
#include <cstdint>
#include <string>

namespace velINI {

enum class Severity : std::uint8_t {
    Oddity, ///< Read, but hardly as it was meant.
    Error,  ///< Not understood; nothing behind it was read.
};

struct Diagnostic {
    Severity Kind = Severity::Error;

    /// Where it stands in the file, as editors count: from 1, columns in characters. Both are 0
    /// for what concerns the file as a whole.
    std::size_t Line = 0;
    std::size_t Column = 0;

    /// One English sentence, without a line end.
    std::string Message;

    friend bool operator==(const Diagnostic&, const Diagnostic&) = default;
};

} // namespace velINI
