// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "font.h"

namespace tlk {

// At the sizes for small screens a font's hints reduce a full stop to one pixel and all accents to the same
// smudge. Draws the characters that cannot be told apart by hand; nothing for all others.
[[nodiscard]] std::optional<Glyph> DrawRetouched(const Font& font, char16_t character, const Em& em);

}  // namespace tlk
