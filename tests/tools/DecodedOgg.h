#pragma once

// What a player hears of an Ogg Vorbis file.

#include "music/Sound.h"

#include <string>

namespace Wirefall::Testing {

/// The whole file at its own rate, which is expected to be Music::SampleRate in stereo; empty when
/// it is not, or cannot be decoded.
Music::Sound DecodeOgg(const std::string& path);

} // namespace Wirefall::Testing
