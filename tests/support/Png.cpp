#include "support/Png.h"

#include <png.h>

#include <stdexcept>

namespace Wirefall::Testing {

namespace {

// libpng's simplified interface: 8-bit RGB, whatever the file holds.
png_image RgbImage() {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    return image;
}

} // namespace

std::optional<Picture> ReadPng(const std::filesystem::path& path) {
    png_image image = RgbImage();
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        return std::nullopt;
    }
    image.format = PNG_FORMAT_RGB;
    Picture picture{.Width = static_cast<std::int32_t>(image.width),
                    .Height = static_cast<std::int32_t>(image.height),
                    .Pixels = {}};
    picture.Pixels.resize(std::size_t{image.width} * image.height);
    const int read = png_image_finish_read(&image, nullptr, picture.Pixels.data(), 0, nullptr);
    png_image_free(&image);
    if (read == 0) {
        return std::nullopt;
    }
    return picture;
}

void WritePng(const std::filesystem::path& path, const Picture& picture) {
    std::filesystem::create_directories(path.parent_path());
    png_image image = RgbImage();
    image.width = static_cast<png_uint_32>(picture.Width);
    image.height = static_cast<png_uint_32>(picture.Height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.Pixels.data(), 0, nullptr) == 0) {
        throw std::runtime_error("cannot write " + path.string() + ": " + image.message);
    }
}

} // namespace Wirefall::Testing
