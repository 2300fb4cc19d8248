// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "font.h"

namespace tlk {

// At the sizes of small screens a font's hints leave one pixel of a full stop, and the same smudge of every
// accent. What then cannot be told apart is drawn by hand; nothing for all other characters and sizes.
[[nodiscard]] std::optional<Glyph> DrawRetouched(const Font& font, char16_t character, const Em& em);

}  // namespace tlk
