// SPDX-License-Identifier: MIT
// Pictures carry background and key faces, masks carry the glyphs.
#pragma once

#include "font.h"
#include "layout.h"

namespace tlk {

// Which mask is drawn. The slot names two languages, small and large, and their umlaut planes in the order of
// the character table; digit keys are the same in all of them.
struct Plane {
    std::size_t slot = 0;
    // The digit keyboard's way back is not its way in.
    bool digits = false;
    // The engine draws and treats Backspace by Shift alone here, so that the large planes can say Delete.
    bool backspaceFollowsShift = false;

    bool IsLarge() const { return slot % 2 == 1; }
    bool IsUmlaut() const { return slot % 4 >= 2; }
    std::size_t Language() const { return slot / 4; }
};

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

// Every key's glyph, centred inside its face. Throws SourceError for a character that the font lacks or that
// no size makes fit.
[[nodiscard]] Mask DrawMask(const Skin& skin, const Layout& layout, const Font& font, const Plane& plane);

}  // namespace tlk
