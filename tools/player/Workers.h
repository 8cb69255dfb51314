#pragma once

// Many runs at once. There is one live run in a process, so each worker is a process of its own.

#include "player/Match.h"

#include <vector>

namespace Wirefall {

/// Plays every match, `jobs` at a time and at least one, and returns the reports in the order of
/// the settings; how many work on them makes no difference to what comes out. Throws
/// std::runtime_error when a worker cannot be started or does not come back with its reports.
std::vector<RunReport> PlayMatches(const std::vector<MatchSettings>& matches, std::size_t jobs);

} // namespace Wirefall
