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

// Reads uncompressed bitmaps of 1, 4, 8, 24 and 32 bits; nothing for any other bytes.
[[nodiscard]] std::optional<Picture> DecodeBitmap(std::span<const std::uint8_t> bytes);

}  // namespace tlk
