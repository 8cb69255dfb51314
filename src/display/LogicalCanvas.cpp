#include "display/LogicalCanvas.h"

namespace Wirefall {

std::int32_t LogicalWidth = 1280;

} // namespace Wirefall
