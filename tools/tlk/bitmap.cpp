// SPDX-License-Identifier: MIT
#include "bitmap.h"

#include <map>

namespace tlk {
namespace {

constexpr std::uint32_t kHeaderSize = 40;
constexpr int kLargestSide = 4096;

std::size_t StrideOf(int width, unsigned depth) {
    return (static_cast<std::size_t>(width) * depth + 31) / 32 * 4;
}

// BITMAPINFOHEADER and the palette.
Bytes StartBitmap(Size size, unsigned depth, const std::vector<Color>& palette) {
    Bytes bytes;
    Put32(bytes, kHeaderSize);
    Put32(bytes, static_cast<std::uint32_t>(size.width));
    Put32(bytes, static_cast<std::uint32_t>(size.height));
    Put16(bytes, 1);
    Put16(bytes, depth);
    Put32(bytes, 0);
    Put32(bytes,
          static_cast<std::uint32_t>(StrideOf(size.width, depth)) * static_cast<std::uint32_t>(size.height));
    Put32(bytes, 0);
    Put32(bytes, 0);
    Put32(bytes, static_cast<std::uint32_t>(palette.size()));
    Put32(bytes, 0);
    for (const Color& color : palette) {
        for (unsigned channel : {color.blue, color.green, color.red})
            Put8(bytes, channel);
        Put8(bytes, 0);
    }
    return bytes;
}

Bytes EncodeIndexed(const Picture& picture, const std::map<Color, unsigned>& indices) {
    std::vector<Color> palette;
    for (const auto& [color, index] : indices)
        palette.push_back(color);
    Bytes bytes = StartBitmap(picture.GetSize(), 8, palette);
    const std::size_t start = bytes.size();
    for (int y = picture.GetSize().height - 1; y >= 0; --y) {
        for (int x = 0; x < picture.GetSize().width; ++x)
            Put8(bytes, indices.at(picture.At(x, y)));
        while ((bytes.size() - start) % 4 != 0)
            Put8(bytes, 0);
    }
    return bytes;
}

Bytes EncodeTrueColor(const Picture& picture) {
    Bytes bytes = StartBitmap(picture.GetSize(), 24, {});
    const std::size_t start = bytes.size();
    for (int y = picture.GetSize().height - 1; y >= 0; --y) {
        for (int x = 0; x < picture.GetSize().width; ++x) {
            const Color& color = picture.At(x, y);
            for (unsigned channel : {color.blue, color.green, color.red})
                Put8(bytes, channel);
        }
        while ((bytes.size() - start) % 4 != 0)
            Put8(bytes, 0);
    }
    return bytes;
}

struct Header {
    Size size;
    unsigned depth = 0;
    bool topDown = false;
    std::size_t colorCount = 0;
    std::size_t paletteOffset = 0;
};

std::optional<Header> ReadHeader(std::span<const std::uint8_t> bytes) {
    const auto headerSize = Get32(bytes, 0);
    if (!headerSize || *headerSize < kHeaderSize || *headerSize > bytes.size()) return std::nullopt;
    const auto width = static_cast<std::int32_t>(*Get32(bytes, 4));
    const std::int64_t height = static_cast<std::int32_t>(*Get32(bytes, 8));
    Header header;
    header.depth = *Get16(bytes, 14);
    const bool knownDepth = header.depth == 1 || header.depth == 4 || header.depth == 8 ||
                            header.depth == 24 || header.depth == 32;
    if (!knownDepth || *Get32(bytes, 16) != 0) return std::nullopt;
    if (width < 1 || width > kLargestSide || height == 0 || height > kLargestSide || height < -kLargestSide)
        return std::nullopt;
    header.size = {width, static_cast<int>(height < 0 ? -height : height)};
    header.topDown = height < 0;
    const std::size_t most = header.depth <= 8 ? std::size_t{1} << header.depth : 0;
    const std::size_t used = *Get32(bytes, 32);
    header.colorCount = used == 0 ? most : used;
    if (header.depth <= 8 && header.colorCount > most) return std::nullopt;
    header.paletteOffset = *headerSize;
    return header;
}

Color ReadColor(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return {bytes[offset + 2], bytes[offset + 1], bytes[offset]};
}

Color ReadPixel(const Header& header, std::span<const std::uint8_t> bytes, std::size_t row, int x) {
    const auto column = static_cast<std::size_t>(x);
    if (header.depth >= 24) return ReadColor(bytes, row + column * header.depth / 8);
    const std::size_t bit = column * header.depth;
    const unsigned shift = static_cast<unsigned>(8 - header.depth - bit % 8);
    const std::size_t index = (unsigned{bytes[row + bit / 8]} >> shift) & ((1U << header.depth) - 1);
    return index < header.colorCount ? ReadColor(bytes, header.paletteOffset + index * 4) : Color{};
}

}  // namespace

Bytes EncodeMask(const Mask& mask) {
    const Size size = mask.GetSize();
    Bytes bytes = StartBitmap(size, 1, {{0, 0, 0}, {0xFF, 0xFF, 0xFF}});
    const std::size_t stride = StrideOf(size.width, 1);
    std::size_t row = bytes.size();
    bytes.resize(bytes.size() + stride * static_cast<std::size_t>(size.height));
    for (int y = size.height - 1; y >= 0; --y, row += stride)
        for (int x = 0; x < size.width; ++x)
            if (mask.At(x, y))
                bytes[row + static_cast<std::size_t>(x / 8)] |= static_cast<std::uint8_t>(0x80 >> x % 8);
    return bytes;
}

Bytes EncodePicture(const Picture& picture) {
    std::map<Color, unsigned> indices;
    for (const Color& color : picture.Pixels())
        indices.emplace(color, 0);
    if (indices.size() > 256) return EncodeTrueColor(picture);
    unsigned next = 0;
    for (auto& [color, index] : indices)
        index = next++;
    return EncodeIndexed(picture, indices);
}

std::optional<Picture> DecodeBitmap(std::span<const std::uint8_t> bytes) {
    const std::optional<Header> header = ReadHeader(bytes);
    if (!header) return std::nullopt;
    const std::size_t stride = StrideOf(header->size.width, header->depth);
    const std::size_t height = static_cast<std::size_t>(header->size.height);
    const std::size_t pixels = header->paletteOffset + header->colorCount * 4;
    if (pixels > bytes.size() || bytes.size() - pixels < stride * height) return std::nullopt;
    Picture picture(header->size, Color{});
    for (int y = 0; y < header->size.height; ++y) {
        const auto line = static_cast<std::size_t>(header->topDown ? y : header->size.height - 1 - y);
        for (int x = 0; x < header->size.width; ++x)
            picture.At(x, y) = ReadPixel(*header, bytes, pixels + line * stride, x);
    }
    return picture;
}

}  // namespace tlk
