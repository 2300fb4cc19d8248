// SPDX-License-Identifier: MIT
// Glyphs of a font, each rendered once.
#pragma once

#include <unordered_map>

#include "graphics/objects.h"

namespace host {

// The logical font of the stock system font, for the present screen.
LOGFONTW SystemLogFont();

struct Glyph {
    int left = 0;  // from the pen to the first column
    int top = 0;   // from the baseline up to the first row
    int width = 0;
    int height = 0;
    int advance = 0;
    std::vector<BYTE> coverage;  // width x height; 255 is all ink
};

// The glyphs and measures of one font, in pixels.
struct Glyphs {
    int ascent = 0;   // from the top of the cell to the baseline
    int descent = 0;  // from the baseline to the bottom
    int emSize = 0;
    bool bold = false;
    std::unordered_map<unsigned, Glyph> rendered;  // by glyph index

    int CellHeight() const { return ascent + descent; }
    // A control character is empty and has no width; a character that the font lacks is a box.
    const Glyph& Find(char32_t character);
};

// Null and ERROR_FILE_NOT_FOUND if the font's file cannot be used, which is reported once.
Glyphs* GlyphsOf(Font& font);

}  // namespace host
