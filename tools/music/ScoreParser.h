#pragma once

// Reads a score from its text. docs/music.md describes the language.

#include "music/Score.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace Wirefall::Music {

/// What is wrong with a score, as "file:line: what".
class ScoreError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The score in `text`. `file` is only its name in messages. Throws ScoreError at the first thing
/// that is wrong.
Score ParseScore(std::string_view text, const std::string& file);

} // namespace Wirefall::Music
