#pragma once

// What this build is called, for the title of the window, the session log and the main menu.

namespace Wirefall {

inline constexpr const char* Version = "0.1.0";
inline constexpr const char* BuildKind = "Release";

} // namespace Wirefall
