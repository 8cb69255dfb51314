#pragma once

// Writes a sound as a file.

#include "music/Sound.h"

#include <string>

namespace Wirefall::Music {

/// Writes an Ogg Vorbis file at about 130 kbit/s with the piece's title in it. The bytes depend
/// only on the arguments and the version of libvorbis. Throws std::runtime_error when it cannot.
void WriteOgg(const std::string& path, const Sound& sound, const std::string& title);

/// Writes a WAV file of 32-bit floats. Throws std::runtime_error when it cannot.
void WriteWav(const std::string& path, const Sound& sound);

} // namespace Wirefall::Music
