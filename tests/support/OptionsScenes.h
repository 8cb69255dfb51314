#pragma once

// The scenes of the Options screen.

#include "support/Scenes.h"

#include <vector>

namespace Wirefall::Testing {

std::vector<Scene> OptionsScenes();

} // namespace Wirefall::Testing
