#pragma once

// The first page of the Options: the ways to the others, and back to where the player came from.

#include "options/PageTable.h"

namespace Wirefall {

extern const PageTable RootPage;

} // namespace Wirefall
