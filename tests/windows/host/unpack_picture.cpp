// SPDX-License-Identifier: MIT
// unpack_picture IN.png OUT.ppm: writes the pixels without compression, 8 bits per colour.
#include <png.h>

#include <cstdio>
#include <fstream>
#include <vector>

namespace {

// On failure prints a message on standard error and returns false.
bool Unpack(const char* from, const char* to) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, from)) {
        std::fprintf(stderr, "unpack_picture: %s: %s\n", from, image.message);
        return false;
    }
    image.format = PNG_FORMAT_RGB;
    std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) {
        std::fprintf(stderr, "unpack_picture: %s: %s\n", from, image.message);
        return false;
    }
    std::ofstream file(to, std::ios::binary);
    file << "P6\n" << image.width << ' ' << image.height << "\n255\n";
    file.write(reinterpret_cast<const char*>(pixels.data()), static_cast<std::streamsize>(pixels.size()));
    if (!file.flush()) std::fprintf(stderr, "unpack_picture: cannot write %s\n", to);
    return file.good();
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs("unpack_picture IN.png OUT.ppm\n", stderr);
        return 2;
    }
    return Unpack(arguments[1], arguments[2]) ? 0 : 1;
}
