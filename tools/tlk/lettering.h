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
    explicit Lettering(const Font& font) : m_Font(font) {}

    const Font& GetFont() const { return m_Font; }

    // What is too wide for the room is made narrower, at most to this share of its width: beside others of
    // its size it looks as heavy as they do. What is too tall becomes a little lower. Null when that does not
    // do.
    const Glyph* Fit(std::u16string_view text, int pixels, Size room, double narrowest);

private:
    const Glyph& Draw(std::u16string_view text, const Em& em);

    const Font& m_Font;
    std::map<std::tuple<std::u16string, int, int>, Glyph> m_Drawn;
};

}  // namespace tlk
