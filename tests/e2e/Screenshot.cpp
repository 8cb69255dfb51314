#include "e2e/Screenshot.h"

#include <functional>
#include <numeric>
#include <stdexcept>

namespace Wirefall::Testing {

std::size_t CountDifferences(const Screenshot& a, const Screenshot& b) {
    if (a.Width != b.Width || a.Height != b.Height) {
        throw std::invalid_argument("Pictures of different sizes");
    }
    return std::transform_reduce(
        a.Pixels.begin(), a.Pixels.end(), b.Pixels.begin(), std::size_t{0}, std::plus<>{},
        [](const Rgb& p, const Rgb& q) { return p == q ? std::size_t{0} : std::size_t{1}; });
}

} // namespace Wirefall::Testing
