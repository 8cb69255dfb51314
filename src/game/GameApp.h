#pragma once

// The top-level record of the program: one instance, owned by main. It is put together from the
// slices that the layers own, each declared beside the functions that work on it, and those take
// their slice. Only the screens, the Options and the app take the whole.

#include "audio/SoundQueue.h"
#include "base/AppScreen.h"
#include "game/OptionsState.h"
#include "persist/GameOptions.h"
#include "persist/SaveState.h"
#include "sim/LevelRules.h"
#include "sim/MersenneTwister.h"

#include <cstdint>

namespace Wirefall {

/// The life of the program from the fade at its start to the fade at its end.
struct Lifetime {
    bool Running = true; ///< The frame loop goes on while this is true.
    bool FadeInActive = false;
    std::uint64_t FadeInStartTicks = 0; ///< Clock milliseconds.
    /// The quit fade is running.
    bool QuitRequested = false;
    std::uint64_t FadeOutStartTicks = 0; ///< Clock milliseconds.

    bool operator==(const Lifetime&) const = default;
};

struct GameApp : Navigation,
                 GameOptions,
                 OptionsState,
                 SaveSchedule,
                 QueuedSounds,
                 RunStatus,
                 Lifetime {
    /// Apart from the simulation's engine; no rule of the game draws from it.
    MersenneTwister SpareEngine;

    bool operator==(const GameApp&) const = default;
};

} // namespace Wirefall
