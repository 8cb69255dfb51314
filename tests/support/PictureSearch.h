#pragma once

// Where something is in a picture.

#include "support/SoftwareCanvas.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <ostream>

namespace Wirefall::Testing {

/// Pixels, the last ones included.
struct PixelBox {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;

    bool operator==(const PixelBox&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const PixelBox& box) {
    return out << '{' << box.Left << ", " << box.Top << ", " << box.Right << ", " << box.Bottom
               << '}';
}

/// The smallest box around the pixels of that colour within `area`; nothing when there are none.
inline std::optional<PixelBox> BoxOfColor(const Picture& picture, const Rgb& color,
                                          const PixelBox& area) {
    std::optional<PixelBox> box;
    for (std::int32_t y = std::max(area.Top, 0); y <= std::min(area.Bottom, picture.Height - 1);
         ++y) {
        for (std::int32_t x = std::max(area.Left, 0); x <= std::min(area.Right, picture.Width - 1);
             ++x) {
            if (picture.At(x, y) == color) {
                box = box ? PixelBox{std::min(box->Left, x), box->Top, std::max(box->Right, x), y}
                          : PixelBox{x, y, x, y};
            }
        }
    }
    return box;
}

/// The same between two rows.
inline std::optional<PixelBox> BoxOfColor(const Picture& picture, const Rgb& color,
                                          std::int32_t top, std::int32_t bottom) {
    return BoxOfColor(picture, color, {0, top, picture.Width - 1, bottom});
}

/// The same in the whole picture.
inline std::optional<PixelBox> BoxOfColor(const Picture& picture, const Rgb& color) {
    return BoxOfColor(picture, color, 0, picture.Height - 1);
}

} // namespace Wirefall::Testing
