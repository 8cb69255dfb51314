#pragma once

// Plays a score into memory as a loop: what still sounds at the end goes on at the beginning.

#include "music/Score.h"
#include "music/Sound.h"

#include <vector>

namespace Wirefall::Music {

struct Rendering {
    Sound Mix;
    double Gain = 1;           ///< What brought the mix to the loudness that the score asks for.
    std::vector<double> Parts; ///< The loudness of each instrument in the mix, dry, in LUFS.
};

/// How many frames a loop of the score has.
std::size_t LoopFrames(const Score& score);

/// The whole piece. The same score gives the same samples on every run of the same build.
Rendering Render(const Score& score);

} // namespace Wirefall::Music
