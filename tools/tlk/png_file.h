// SPDX-License-Identifier: MIT
#pragma once

#include "bytes.h"
#include "grid.h"

namespace tlk {

// The picture as the content of a PNG file, three bytes per pixel. Throws FileError.
[[nodiscard]] Bytes EncodePng(const Picture& picture);

// The way back, without regard to transparency. Throws FileError.
[[nodiscard]] Picture DecodePng(const Bytes& file);

}  // namespace tlk
