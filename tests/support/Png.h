#pragma once

// Pictures as PNG files.

#include "support/SoftwareCanvas.h"

#include <filesystem>
#include <optional>

namespace Wirefall::Testing {

/// Nothing if the file is not there or is no PNG.
std::optional<Picture> ReadPng(const std::filesystem::path& path);

/// Makes the folder too. Throws std::runtime_error when the file cannot be written.
void WritePng(const std::filesystem::path& path, const Picture& picture);

} // namespace Wirefall::Testing
