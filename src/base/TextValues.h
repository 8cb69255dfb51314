#pragma once

// Numbers and flags out of texts that a person may have written into a file.

#include <cstdint>
#include <string>
#include <string_view>

namespace Wirefall {

/// A decimal number of 32 bits: a minus or none, then digits, and nothing before or behind. False
/// for anything else, with `out` as it was.
bool ParseStrictInt(std::string_view text, std::int32_t& out);

/// True for 1, true, yes and on, false for 0, false, no and off, in upper or lower case; the
/// default for any other text.
bool ParseBool(std::string_view text, bool defaultValue);

/// The text that the programs of this game write for a flag: "1" or "0".
std::string_view BoolText(bool flag);

/// Each byte in lower case, by the C locale of the process.
std::string ToLowerCopy(std::string_view text);

} // namespace Wirefall
