// SPDX-License-Identifier: MIT
// Draws pictures, with background and key faces, and masks, with the glyphs.
#pragma once

#include <span>

#include "lettering.h"
#include "signs.h"

namespace tlk {

// A key's face covers its rectangle without the last column and row: these show the background between the
// keys, and the engine does not invert them either.
[[nodiscard]] inline Rect FaceOf(const Rect& rect) {
    return {rect.left, rect.top, rect.right - 1, rect.bottom - 1};
}
// The part of a rectangle inside the bevel, for glyphs.
[[nodiscard]] Rect InnerOf(const Skin& skin, const Rect& rect);

[[nodiscard]] Picture DrawPicture(const Skin& skin, const Layout& layout);
// 0 in black faces with light glyphs, else 1.
[[nodiscard]] Mask DrawFaces(const Skin& skin, const Layout& layout);

// Every key's glyph in each of the planes, centred inside its face. All characters of a board have the same
// size, and so have all words: the largest, up to the skin's, at which all fit. Throws SourceError for a
// character that the font lacks or that fits at no size.
[[nodiscard]] std::vector<Mask> DrawMasks(const Skin& skin, const Layout& layout, Lettering& lettering,
                                          std::span<const Plane> planes);

}  // namespace tlk
