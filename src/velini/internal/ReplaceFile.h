#pragma once

// Replaces a file as a whole or not at all.

#include <filesystem>
#include <string>
#include <string_view>

namespace velINI::Internal {

/// Writes the bytes to a new file beside the target, makes sure that they are stored, and moves it
/// over the target, which then keeps its permissions. When any of this fails, the target is as it
/// was, the new file is gone, and the result is the reason; it is empty when all went well.
std::string ReplaceFile(const std::filesystem::path& target, std::string_view bytes);

} // namespace velINI::Internal
