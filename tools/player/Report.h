#pragma once

// What comes of many runs: a table for people, and comma-separated values for who draws curves of
// them. Numbers are written the same everywhere, so the same runs give the same bytes.

#include "player/Match.h"

#include <string>
#include <string_view>
#include <vector>

namespace Wirefall {

/// A line for each run, after one with the names of the columns.
std::string RunsCsv(const PlayStyle& style, const std::vector<RunReport>& reports);

/// A line for each level of each run.
std::string LevelsCsv(const PlayStyle& style, const std::vector<RunReport>& reports);

/// A line for each second of each level of each run.
std::string InfectionCsv(const PlayStyle& style, const std::vector<RunReport>& reports);

/// The runs in columns, and below them how far they got and what their strikes were.
std::string RunsTable(const std::vector<RunReport>& reports);

} // namespace Wirefall
