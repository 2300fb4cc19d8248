// SPDX-License-Identifier: MIT
#include "bitmap.h"

#include <map>

namespace tlk {
namespace {

constexpr std::uint32_t kHeaderSize = 40;

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

std::optional<BitmapHeader> ReadBitmapHeader(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kHeaderSize) return std::nullopt;
    return BitmapHeader{*Get32(bytes, 4), static_cast<std::int32_t>(*Get32(bytes, 8)), *Get16(bytes, 14),
                        *Get32(bytes, 16) != 0};
}

}  // namespace tlk
