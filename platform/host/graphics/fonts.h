// SPDX-License-Identifier: MIT
// Glyphs of a font, rendered once each.
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

// What text of one font needs, in pixels.
struct Glyphs {
    int ascent = 0;   // from the top of the cell to the baseline
    int descent = 0;  // from the baseline to the bottom
    int emSize = 0;
    bool bold = false;
    std::unordered_map<unsigned, Glyph> rendered;  // by glyph index

    int CellHeight() const { return ascent + descent; }
    // A control character has neither ink nor width; one that the font lacks shows as its box.
    const Glyph& Find(char32_t character);
};

// Null, and ERROR_FILE_NOT_FOUND, when the font's file cannot be used (which is reported once).
Glyphs* GlyphsOf(Font& font);

}  // namespace host
