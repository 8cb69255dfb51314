#pragma once

// Comparing pictures with what is kept of them under tests/golden: whole PNG files for some, a
// checksum in checksums.txt for all. With WIREFALL_UPDATE_GOLDEN=1 in the environment both are
// rewritten instead and every comparison fails (run the test program itself then, not many of it
// at a time); look at every picture that changes. Where a picture differs, the expected, the actual
// and the difference lie in golden-failures under the build directory.

#include "support/SoftwareCanvas.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Wirefall::Testing {

/// Whether the picture is the one kept as `name`.png.
testing::AssertionResult MatchesGolden(const std::string& name, const Picture& picture);

/// Whether the picture has the checksum kept for `name`, a text without blanks.
testing::AssertionResult MatchesChecksum(const std::string& name, const Picture& picture);

/// The names in checksums.txt, in its order.
std::vector<std::string> KeptChecksums();

/// The names of the PNG files.
std::vector<std::string> KeptGoldens();

} // namespace Wirefall::Testing
