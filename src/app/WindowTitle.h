#pragma once

namespace Wirefall {

inline constexpr const char* WindowTitle = "Wirefall v0.1.0";

} // namespace Wirefall
