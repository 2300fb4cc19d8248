// SPDX-License-Identifier: MIT
#include "png_file.h"

#include <png.h>

#include <string>

#include "errors.h"

namespace tlk {

Bytes EncodePng(const Picture& picture) {
    Bytes pixels;
    pixels.reserve(picture.Pixels().size() * 3);
    for (const Color& color : picture.Pixels())
        pixels.insert(pixels.end(), {color.red, color.green, color.blue});
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.GetSize().width);
    image.height = static_cast<png_uint_32>(picture.GetSize().height);
    image.format = PNG_FORMAT_RGB;
    // An upper bound; the call says how much of it was used.
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    Bytes file(size);
    if (png_image_write_to_memory(&image, file.data(), &size, 0, pixels.data(), 0, nullptr) == 0)
        throw FileError(std::string("the picture cannot be written as PNG (") + image.message + ")");
    file.resize(size);
    return file;
}

}  // namespace tlk
