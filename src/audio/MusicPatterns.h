#pragma once

// The music as a graph: patterns, each an audio file and the name of the pattern that follows it,
// and the patterns' roles in the game. Both come from Music/MusicPatterns.ini beside the executable
// (docs/music.md describes the file for people), and what is wrong in it is repaired or left out
// with a line in the log.

#include "audio/MusicRuntime.h"

#include <string>
#include <string_view>

namespace velINI {
class velINIStream;
}

namespace Wirefall {

/// Loads the patterns of the file, or the built-in ones when there is no file or none of its
/// patterns can be played. There may be none at all in the end, which is logged like the rest.
void LoadMusic(MusicRuntime& music);

/// Replaces the patterns by those of the document and forgets what was playing. Roles and fades
/// that the document does not name stay. False when not one pattern could be loaded; the roles are
/// as they were read then.
bool LoadMusicPatterns(const velINI::velINIStream& document, MusicRuntime& music);

/// Fills an empty document with the patterns for a game without a file of them.
void BuildDefaultMusicDocument(velINI::velINIStream& document);

/// Null when there is none of that name.
const MusicPattern* FindMusicPattern(const MusicPatternList& list, std::string_view name);

/// Lets a role that names no pattern of the list have `fallback` instead, with a line in the log.
void RepairPatternReference(const MusicRuntime& music, std::string& nameField,
                            const char* roleLabel, const std::string& fallback);

} // namespace Wirefall
