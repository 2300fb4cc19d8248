// SPDX-License-Identifier: MIT
#include "png_file.h"

#include <png.h>

#include "errors.h"

namespace tlk {

void WritePng(const Picture& picture, const std::string& path) {
    std::vector<png_byte> pixels;
    pixels.reserve(picture.Pixels().size() * 3);
    for (const Color& color : picture.Pixels())
        pixels.insert(pixels.end(), {color.red, color.green, color.blue});
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.GetSize().width);
    image.height = static_cast<png_uint_32>(picture.GetSize().height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr) == 0)
        throw FileError(path + ": cannot be written (" + image.message + ")");
}

}  // namespace tlk
