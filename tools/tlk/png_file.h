// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "bytes.h"
#include "grid.h"

namespace tlk {

// Encodes the picture as a PNG file without transparency. Throws FileError.
[[nodiscard]] Bytes EncodePng(const Picture& picture);

struct DecodedPng {
    Picture picture;
    // The first pixel that is not opaque.
    std::optional<Point> transparent;
};
// Throws FileError.
[[nodiscard]] DecodedPng DecodePng(const Bytes& file);

}  // namespace tlk
