#include "e2e/Screenshot.h"

#include <png.h>

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
        [](Pixel p, Pixel q) { return p == q ? std::size_t{0} : std::size_t{1}; });
}

void SavePng(const std::filesystem::path& path, const Screenshot& picture) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.Pixels.size() * 3);
    for (const Pixel pixel : picture.Pixels) {
        bytes.push_back(static_cast<std::uint8_t>(pixel >> 16U));
        bytes.push_back(static_cast<std::uint8_t>(pixel >> 8U));
        bytes.push_back(static_cast<std::uint8_t>(pixel));
    }
    std::filesystem::create_directories(path.parent_path());
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.Width);
    image.height = static_cast<png_uint_32>(picture.Height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, path.c_str(), 0, bytes.data(), 0, nullptr) == 0) {
        throw std::runtime_error("Cannot write " + path.string());
    }
}

} // namespace Wirefall::Testing
