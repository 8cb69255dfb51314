#pragma once

#include "base/BuildInfo.h"

#include <string>

namespace Wirefall {

inline const std::string& WindowTitle() {
    static const std::string title = std::string("Wirefall v") + Version;
    return title;
}

} // namespace Wirefall
