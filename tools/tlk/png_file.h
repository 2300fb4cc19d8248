// SPDX-License-Identifier: MIT
#pragma once

#include "bytes.h"
#include "grid.h"

namespace tlk {

// Encodes the picture as a PNG file without transparency. Throws FileError.
[[nodiscard]] Bytes EncodePng(const Picture& picture);

// Decodes a PNG file, ignoring transparency. Throws FileError.
[[nodiscard]] Picture DecodePng(const Bytes& file);

}  // namespace tlk
