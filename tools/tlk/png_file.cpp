// SPDX-License-Identifier: MIT
#include "png_file.h"

#include <png.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "errors.h"

namespace tlk {

namespace {

constexpr std::size_t kMostColors = 256;

void Append(Bytes& bytes, const Color& color) {
    bytes.insert(bytes.end(), {color.red, color.green, color.blue});
}

struct Encoded {
    Bytes pixels;
    // For one byte per pixel; empty if the pixels are colours.
    Bytes colors;
};

Encoded EncodeColors(const Picture& picture) {
    Encoded encoded;
    for (const Color& color : picture.Pixels())
        Append(encoded.pixels, color);
    return encoded;
}

// Drawn pictures have few colours, and a colour table makes the file a third as large.
Encoded EncodePixels(const Picture& picture) {
    Encoded encoded;
    std::map<std::array<std::uint8_t, 3>, std::size_t> known;
    for (const Color& color : picture.Pixels()) {
        const auto [found, isNew] = known.try_emplace({color.red, color.green, color.blue}, known.size());
        if (known.size() > kMostColors) return EncodeColors(picture);
        if (isNew) Append(encoded.colors, color);
        encoded.pixels.push_back(static_cast<std::uint8_t>(found->second));
    }
    return encoded;
}

}  // namespace

Bytes EncodePng(const Picture& picture) {
    const Encoded encoded = EncodePixels(picture);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.GetSize().width);
    image.height = static_cast<png_uint_32>(picture.GetSize().height);
    image.format = encoded.colors.empty() ? PNG_FORMAT_RGB : PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(encoded.colors.size() / 3);
    // An upper bound; the call returns the size used.
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    Bytes file(size);
    if (png_image_write_to_memory(&image, file.data(), &size, 0, encoded.pixels.data(), 0,
                                  encoded.colors.data()) == 0)
        throw FileError(std::string("the picture cannot be written as PNG (") + image.message + ")");
    file.resize(size);
    return file;
}

DecodedPng DecodePng(const Bytes& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
        throw FileError(std::string("not a PNG picture (") + image.message + ")");
    image.format = PNG_FORMAT_RGBA;
    Bytes pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr))
        throw FileError(std::string("a damaged PNG picture (") + image.message + ")");
    DecodedPng decoded{Picture({static_cast<int>(image.width), static_cast<int>(image.height)}, Color{}),
                       std::nullopt};
    const std::uint8_t* pixel = pixels.data();
    for (int y = 0; y < decoded.picture.GetSize().height; ++y)
        for (int x = 0; x < decoded.picture.GetSize().width; ++x, pixel += 4) {
            decoded.picture.At(x, y) = {pixel[0], pixel[1], pixel[2]};
            if (pixel[3] != 0xFF && !decoded.transparent) decoded.transparent = Point{x, y};
        }
    return decoded;
}

}  // namespace tlk
