// SPDX-License-Identifier: MIT
#include "png_file.h"

#include <png.h>

#include <algorithm>
#include <vector>

#include "script.h"

namespace {

std::vector<BYTE> CopyPixels(const host::ScreenView& picture, const RECT& rectangle, const RECT& visible) {
    const auto width = static_cast<std::size_t>(rectangle.right - rectangle.left);
    const auto height = static_cast<std::size_t>(rectangle.bottom - rectangle.top);
    std::vector<BYTE> bytes(width * height * 3);
    const LONG left = std::max({rectangle.left, visible.left, LONG{0}});
    const LONG top = std::max({rectangle.top, visible.top, LONG{0}});
    const LONG right = std::min({rectangle.right, visible.right, LONG{picture.width}});
    const LONG bottom = std::min({rectangle.bottom, visible.bottom, LONG{picture.height}});
    for (LONG y = top; y < bottom; ++y) {
        for (LONG x = left; x < right; ++x) {
            const DWORD pixel = picture.pixels[static_cast<std::ptrdiff_t>(y) * picture.width + x];
            const auto row = static_cast<std::size_t>(y - rectangle.top);
            const auto column = static_cast<std::size_t>(x - rectangle.left);
            BYTE* target = &bytes[(row * width + column) * 3];
            target[0] = static_cast<BYTE>(pixel >> 16);
            target[1] = static_cast<BYTE>(pixel >> 8);
            target[2] = static_cast<BYTE>(pixel);
        }
    }
    return bytes;
}

void Write(const std::filesystem::path& file, png_uint_32 format, int width, int height, const void* pixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.format = format;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    if (!png_image_write_to_file(&image, file.c_str(), 0, pixels, 0, nullptr))
        throw ScriptError("cannot write " + file.string() + ": " + image.message);
}

}  // namespace

void WritePng(const std::filesystem::path& file, const host::ScreenView& picture, const RECT& rectangle,
              const RECT& visible) {
    if (rectangle.left >= rectangle.right || rectangle.top >= rectangle.bottom)
        throw ScriptError("there is nothing to write to " + file.string() + ": the window has no area");
    Write(file, PNG_FORMAT_RGB, rectangle.right - rectangle.left, rectangle.bottom - rectangle.top,
          CopyPixels(picture, rectangle, visible).data());
}

// In memory the words are blue, green, red, alpha.
void WritePng(const std::filesystem::path& file, const host::Picture& picture) {
    Write(file, PNG_FORMAT_BGRA, picture.width, picture.height, picture.pixels.data());
}
