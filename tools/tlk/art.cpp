// SPDX-License-Identifier: MIT
#include "art.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "errors.h"
#include "file.h"
#include "name_list.h"
#include "png_file.h"
#include "skin_module.h"

namespace tlk {
namespace {

struct ArtName {
    std::string name;
    std::string resource;
};

// "lang1_small_ls" for "LANG1_SMALL_MASK_LS".
std::string NameOfMask(std::string resource) {
    constexpr std::string_view kMask = "_MASK";
    resource.erase(resource.find(kMask), kMask.size());
    std::ranges::transform(resource, resource.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return resource;
}

std::vector<ArtName> AllArt() {
    std::vector<ArtName> all;
    for (BoardKind kind : kBoards)
        all.push_back({std::string(BoardName(kind)), std::string(PictureResource(kind))});
    for (BoardKind kind : kBoards)
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
            if (HasPlane(kind, plane))
                all.push_back({NameOfMask(MaskResource(kind, plane)), MaskResource(kind, plane)});
    return all;
}

std::string Text(Point point) { return std::to_string(point.x) + ", " + std::to_string(point.y); }

Bytes ReadArtFile(const ArtFile& file) {
    try {
        return ReadFile(file.path);
    } catch (const FileError& error) {
        throw SourceError(file.place, error.what());
    }
}

}  // namespace

std::string FindArtResource(std::string_view name) {
    for (const ArtName& art : AllArt())
        if (art.name == name) return art.resource;
    return {};
}

std::vector<std::string> AllArtNames() {
    std::vector<std::string> names;
    for (const ArtName& art : AllArt())
        names.push_back(art.name);
    return names;
}

std::string ArtNames() {
    std::string list;
    for (const ArtName& art : AllArt())
        AppendName(list, art.name);
    return list;
}

Picture ReadArtPicture(const ArtFile& file, Size size) {
    const auto fail = [&file](const std::string& text) { throw SourceError(file.place, file.path + text); };
    const Bytes bytes = ReadArtFile(file);
    DecodedPng png;
    try {
        png = DecodePng(bytes);
    } catch (const FileError&) {
        fail(" is not a picture that can be read: save it as PNG");
    }
    const Size found = png.picture.GetSize();
    if (found != size) fail(" has " + Text(found) + " pixels: it must have " + Text(size) + " here");
    if (png.transparent)
        fail(" is transparent at " + Text(*png.transparent) +
             ": the device has no transparency, save it without");
    return std::move(png.picture);
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
                                                  Text(Point{x, y}) + ": a mask has no other colours");
            mask.At(x, y) = color == kWhite;
        }
    return mask;
}

}  // namespace tlk
