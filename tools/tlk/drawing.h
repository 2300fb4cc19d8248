// SPDX-License-Identifier: MIT
// Pictures carry background and key faces, masks carry the glyphs.
#pragma once

#include <span>

#include "lettering.h"
#include "signs.h"

namespace tlk {

// A key's face covers its rectangle less the last column and row: these show the background between the keys,
// and the engine's pressed look leaves them out as well.
[[nodiscard]] inline Rect FaceOf(const Rect& rect) {
    return {rect.left, rect.top, rect.right - 1, rect.bottom - 1};
}
// Where glyphs stay off the bevel.
[[nodiscard]] Rect InnerOf(const Skin& skin, const Rect& rect);

[[nodiscard]] Picture DrawPicture(const Skin& skin, const Layout& layout);
// 0 in the black faces of light glyphs, else 1 everywhere.
[[nodiscard]] Mask DrawFaces(const Skin& skin, const Layout& layout);

// Every key's glyph in each of the planes, centred inside its face. All characters of a board have one size,
// and all its words: the largest up to the skin's at which each of them fits. Throws SourceError for a
// character that the font lacks or that no size makes fit.
[[nodiscard]] std::vector<Mask> DrawMasks(const Skin& skin, const Layout& layout, Lettering& lettering,
                                          std::span<const Plane> planes);

}  // namespace tlk
