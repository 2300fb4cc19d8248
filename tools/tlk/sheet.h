// SPDX-License-Identifier: MIT
#pragma once

#include "font.h"
#include "grid.h"
#include "skin_module.h"

namespace tlk {

// All looks of a skin, with captions: the planes of each keyboard with their latched keys, caps lock, every
// key pressed, and the hit areas. Throws FileError if nothing can be shown.
[[nodiscard]] Picture DrawSheet(const SkinModule& skin, int zoom, const Font& font);

}  // namespace tlk
