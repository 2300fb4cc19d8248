// SPDX-License-Identifier: MIT
#include "font.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <vector>

#include "errors.h"
#include "file_watch.h"

namespace tlk {
namespace {

// Appends the ink of the loaded glyph; the baseline is at y = 0, and y grows downwards.
void CollectInk(const FT_GlyphSlotRec_& slot, int penX, std::vector<Point>& ink) {
    const FT_Bitmap& bitmap = slot.bitmap;
    for (int y = 0; y < static_cast<int>(bitmap.rows); ++y) {
        const unsigned char* row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
        for (int x = 0; x < static_cast<int>(bitmap.width); ++x)
            if ((row[x / 8] >> (7 - x % 8)) & 1)
                ink.push_back({penX + slot.bitmap_left + x, y - slot.bitmap_top});
    }
}

Glyph Crop(const std::vector<Point>& ink) {
    if (ink.empty()) return {};
    const auto [left, right] = std::ranges::minmax(ink, {}, &Point::x);
    const auto [top, bottom] = std::ranges::minmax(ink, {}, &Point::y);
    Glyph glyph{Mask({right.x - left.x + 1, bottom.y - top.y + 1}, 0), -top.y};
    for (const Point& point : ink)
        glyph.ink.At(point.x - left.x, point.y - top.y) = 1;
    return glyph;
}

}  // namespace

struct Font::Face {
    FT_Library library = nullptr;
    FT_Face face = nullptr;

    ~Face() {
        if (face) FT_Done_Face(face);
        if (library) FT_Done_FreeType(library);
    }
};

Font::Font(const std::string& path) : m_path(path), m_face(std::make_unique<Face>()) {
    ReadsWatched::Note(path);
    if (FT_Init_FreeType(&m_face->library) != 0) throw FileError("FreeType does not start");
    if (FT_New_Face(m_face->library, path.c_str(), 0, &m_face->face) != 0)
        throw FileError(path + ": not a font that can be read: name another one");
}

Font::~Font() = default;
Font::Font(Font&&) noexcept = default;
Font& Font::operator=(Font&&) noexcept = default;

bool Font::Has(char16_t character) const { return FT_Get_Char_Index(m_face->face, character) != 0; }

Glyph Font::Draw(std::u16string_view word, const Em& em) const {
    const FT_Face face = m_face->face;
    if (FT_Set_Pixel_Sizes(face, static_cast<FT_UInt>(em.width), static_cast<FT_UInt>(em.height)) != 0)
        throw FileError(m_path + ": has no glyphs of " + std::to_string(em.height) + " pixels");
    // A bold font's own hints make some letters lighter than others; automatic hints turn the two dots above
    // small letters, which words have, into a bar.
    const bool isBoldLetter = (face->style_flags & FT_STYLE_FLAG_BOLD) && word.size() == 1;
    const FT_Int32 hints = isBoldLetter ? FT_LOAD_FORCE_AUTOHINT : FT_LOAD_DEFAULT;
    std::vector<Point> ink;
    int penX = 0;
    for (char16_t character : word) {
        if (FT_Load_Char(face, character, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO | hints) != 0)
            throw FileError(m_path + ": damaged glyph");
        CollectInk(*face->glyph, penX, ink);
        penX += static_cast<int>(face->glyph->advance.x / 64);
    }
    return Crop(ink);
}

int Font::CapHeight(int pixels) const { return Draw(u"H", {pixels}).ascent; }

}  // namespace tlk
