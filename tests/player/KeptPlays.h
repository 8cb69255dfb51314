#pragma once

// The plays of tests/corpus/plays, each with its trace.

#include "player/Play.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace Wirefall::Testing {

struct KeptPlay {
    std::string Name;
    std::filesystem::path File;

    std::vector<PlayCommand> Commands() const;
    std::string Trace() const;
};

/// In the order of their names.
std::vector<KeptPlay> KeptPlays();

/// The name of a parameterised test.
std::string TestName(const KeptPlay& play);

void PrintTo(const KeptPlay& play, std::ostream* stream);

} // namespace Wirefall::Testing
