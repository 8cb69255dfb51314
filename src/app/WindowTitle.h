#pragma once

#include "base/BuildInfo.h"

#include <string>

namespace Wirefall {

inline const std::string& WindowTitle() {
    static const std::string Title = std::string("Wirefall v") + Version;
    return Title;
}

} // namespace Wirefall
