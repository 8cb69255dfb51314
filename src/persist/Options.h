#pragma once

// The player's settings as a file, Config.ini in the user storage. The file is written whole from
// the options each time; reading takes each value for itself, and one that is missing, empty or
// out of range leaves the option as it was. docs/formats.md describes the file for people.

#include "persist/GameOptions.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace velINI {
class velINIStream;
}

namespace Wirefall {

/// Reads the file into the options. False when there was none, which makes this a first start. A
/// file that is there but cannot be made sense of changes nothing and is no reason to write a new
/// one: that is logged, and the result is true. A write of the last session that was cut off in the
/// middle is finished first.
bool LoadOptions(GameOptions& options);

/// Writes the options. False when that failed; the old file stays then.
bool SaveOptions(const GameOptions& options);

/// Writes the options if OptionsDirty is set, and clears it. A failure is logged and leaves it set.
void SaveOptionsIfDirty(GameOptions& options);

// The values of a document. An empty value counts as missing.

std::string ConfigString(const velINI::velINIStream& document, std::string_view section,
                         std::string_view key, const std::string& defaultValue);

/// The default unless ParseStrictInt takes the value.
std::int32_t ConfigInt(const velINI::velINIStream& document, std::string_view section,
                       std::string_view key, std::int32_t defaultValue);

/// By ParseBool.
bool ConfigBool(const velINI::velINIStream& document, std::string_view section,
                std::string_view key, bool defaultValue);

} // namespace Wirefall
