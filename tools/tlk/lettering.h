// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <tuple>

#include "font.h"
#include "grid.h"

namespace tlk {

// The glyphs of one font for keys, each drawn once for all planes and boards.
class Lettering {
public:
    explicit Lettering(const Font& font) : m_font(font) {}

    const Font& GetFont() const { return m_font; }

    // A text too wide for the room is narrowed, at most to this share of its width, so that it looks as heavy
    // as others of its size. A text too tall becomes a little lower. Null if that is not enough.
    const Glyph* Fit(std::u16string_view text, int pixels, Size room, double narrowest);

private:
    const Glyph& Draw(std::u16string_view text, const Em& em);

    const Font& m_font;
    std::map<std::tuple<std::u16string, int, int>, Glyph> m_drawn;
};

}  // namespace tlk
