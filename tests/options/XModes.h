#pragma once

// Display modes with refresh rates: of its own an XServer has one mode, without a rate.

#include <cstdint>
#include <memory>
#include <vector>

namespace Wirefall {

struct XMode {
    std::int32_t Width;
    std::int32_t Height;
    std::int32_t Hz;
};

/// Modes that the first screen of the running XServer has besides its own, none of them larger than
/// the screen. Keeps the server running as one of its clients, so it must end before the XServer
/// does.
class XModes {
public:
    /// Throws std::runtime_error when the server cannot be reached.
    explicit XModes(const std::vector<XMode>& modes);

private:
    std::shared_ptr<void> Connection; ///< Without its type, whose header defines None and Bool.
};

} // namespace Wirefall
