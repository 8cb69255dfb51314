#pragma once

// Comparing whole GameApp records, for tests that say all that a step changes.

#include "game/GameApp.h"

#include <gtest/gtest.h>

#include <vector>

namespace Wirefall::Testing {

using Sounds = std::vector<SoundEvent>;

Sounds QueuedSounds(const GameApp& app);

/// Puts those sounds in the queue in place of what is there.
void SetQueuedSounds(GameApp& app, const Sounds& sounds);

/// Whether all fields are the same; if not, it names those that are not. What lies in the queue
/// behind its end does not count, nor does the engine that no rule draws from.
testing::AssertionResult SameApp(const GameApp& expected, const GameApp& actual);

} // namespace Wirefall::Testing
