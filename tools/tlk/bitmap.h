// SPDX-License-Identifier: MIT
// Bitmap resources: a device-independent bitmap without its file header.
#pragma once

#include <optional>

#include "bytes.h"
#include "grid.h"

namespace tlk {

// One bit per pixel, palette black and white.
[[nodiscard]] Bytes EncodeMask(const Mask& mask);

// One byte per pixel and a palette for up to 256 colours, else 24 bits. The colours are exact.
[[nodiscard]] Bytes EncodePicture(const Picture& picture);

// The contents of the header, which may be wrong.
struct BitmapHeader {
    std::int64_t width = 0;
    // Negative if the top row comes first.
    std::int64_t rows = 0;
    unsigned depth = 0;
    bool isCompressed = false;
};
[[nodiscard]] std::optional<BitmapHeader> ReadBitmapHeader(std::span<const std::uint8_t> bytes);

}  // namespace tlk
