// SPDX-License-Identifier: MIT
#pragma once

#include "font.h"
#include "grid.h"
#include "skin_module.h"

namespace tlk {

// Everything that a skin can look like, with captions: the planes of each keyboard with the keys that are
// latched there, caps lock, every key pressed, and where taps hit. Throws FileError when nothing can be
// shown.
[[nodiscard]] Picture DrawSheet(const SkinModule& skin, int zoom, const Font& font);

}  // namespace tlk
