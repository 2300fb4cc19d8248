// SPDX-License-Identifier: MIT
#include "png_file.h"

#include <png.h>

#include "errors.h"

namespace tlk {

void WritePng(const Picture& picture, int zoom, const std::string& path) {
    const Size size{picture.GetSize().width * zoom, picture.GetSize().height * zoom};
    std::vector<png_byte> pixels;
    pixels.reserve(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 3);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const Color& color = picture.At(x / zoom, y / zoom);
            pixels.insert(pixels.end(), {color.red, color.green, color.blue});
        }
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(size.width);
    image.height = static_cast<png_uint_32>(size.height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr) == 0)
        throw FileError(path + ": cannot be written (" + image.message + ")");
}

}  // namespace tlk
