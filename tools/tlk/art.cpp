// SPDX-License-Identifier: MIT
#include "art.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cctype>

#include "errors.h"
#include "file.h"
#include "name_list.h"

namespace tlk {
namespace {

struct PictureName {
    std::string_view name;
    std::string_view resource;
};

constexpr std::array<PictureName, 3> kPictures{{{"portrait", "char_keyboard_bitmap"},
                                                {"landscape", "LANSCAPE_KEYBOARD_BITMAP"},
                                                {"digits", "digit_keyboard_bitmap"}}};

constexpr std::array<std::string_view, 9> kMasks{"digit",       "lang1_small", "lang1_large",
                                                 "uml1_small",  "uml1_large",  "lang2_small",
                                                 "lang2_large", "uml2_small",  "uml2_large"};

// libpng's record of a picture, with its destructor.
struct PngImage : png_image {
    PngImage() : png_image{} { version = PNG_IMAGE_VERSION; }
    ~PngImage() { png_image_free(this); }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;
};

Bytes ReadArtFile(const ArtFile& file) {
    try {
        return ReadFile(file.path);
    } catch (const FileError& error) {
        throw SourceError(file.place, error.what());
    }
}

}  // namespace

std::string FindArtResource(std::string_view name) {
    for (const PictureName& picture : kPictures)
        if (picture.name == name) return std::string(picture.resource);
    constexpr std::string_view kLandscape = "_ls";
    const bool isLandscape = name.ends_with(kLandscape);
    const std::string_view plane = name.substr(0, name.size() - (isLandscape ? kLandscape.size() : 0));
    if (std::ranges::find(kMasks, plane) == kMasks.end() || (isLandscape && plane == kMasks[0])) return {};
    std::string resource(plane);
    std::ranges::transform(resource, resource.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    return resource + "_MASK" + (isLandscape ? "_LS" : "");
}

std::vector<std::string> AllArtNames() {
    std::vector<std::string> names;
    for (const PictureName& picture : kPictures)
        names.emplace_back(picture.name);
    for (std::string_view mask : kMasks)
        names.emplace_back(mask);
    for (std::string_view mask : kMasks)
        if (mask != kMasks[0]) names.push_back(std::string(mask) + "_ls");
    return names;
}

std::string ArtNames() {
    std::string list;
    for (const std::string& name : AllArtNames())
        AppendName(list, name);
    return list;
}

Picture ReadArtPicture(const ArtFile& file, Size size) {
    const Bytes bytes = ReadArtFile(file);
    PngImage image;
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()))
        throw SourceError(file.place, file.path + " is not a readable picture: save it as PNG");
    const Size found{static_cast<int>(image.width), static_cast<int>(image.height)};
    if (found != size)
        throw SourceError(
            file.place, file.path + " has " + Text(found) + " pixels: it must have " + Text(size) + " here");
    image.format = PNG_FORMAT_RGBA;
    Bytes pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr))
        throw SourceError(file.place, file.path + " is damaged: save it again");
    Picture picture(size, Color{});
    const std::uint8_t* pixel = pixels.data();
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x, pixel += 4) {
            if (pixel[3] != 0xFF)
                throw SourceError(file.place, file.path + " is transparent at " + std::to_string(x) + ", " +
                                                  std::to_string(y) +
                                                  ": the device has no transparency, save it without");
            picture.At(x, y) = {pixel[0], pixel[1], pixel[2]};
        }
    return picture;
}

Mask ReadArtMask(const ArtFile& file, Size size) {
    constexpr Color kWhite{0xFF, 0xFF, 0xFF};
    const Picture picture = ReadArtPicture(file, size);
    Mask mask(size, 1);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            const Color color = picture.At(x, y);
            if (color != Color{} && color != kWhite)
                throw SourceError(file.place, file.path + " is neither black nor white at " +
                                                  std::to_string(x) + ", " + std::to_string(y) +
                                                  ": a mask has no other colours");
            mask.At(x, y) = color == kWhite;
        }
    return mask;
}

}  // namespace tlk
