// SPDX-License-Identifier: MIT
#include "graphics/fonts.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_MODULE_H

#include <algorithm>
#include <string>

#include "device/faults.h"
#include "graphics/graphics.h"

namespace host {
namespace {

constexpr LONG kSystemFontHeight = 11;  // per em, on the smallest screen
constexpr int kMaxEmSize = 400;         // keeps a glyph below a megabyte
constexpr LONG kBoldFrom = 600;
constexpr FT_UInt kHintingVersion = 40;  // fits strokes to rows only, which keeps small text even
constexpr int kFractionBits = 6;         // FreeType counts in 1/64 pixels

// The two faces of all fonts, opened at first use and kept.
class Faces {
public:
    Faces() {
        if (FT_Init_FreeType(&m_library) != 0) return;
        // Set explicitly, as the environment could change it: text must look the same everywhere.
        FT_UInt version = kHintingVersion;
        FT_Property_Set(m_library, "truetype", "interpreter-version", &version);
        m_regular = Open(TOLKA_FONT);
        m_bold = Open(TOLKA_BOLD_FONT);
    }
    ~Faces() {
        if (m_library) FT_Done_FreeType(m_library);  // and its faces
    }
    Faces(const Faces&) = delete;
    Faces& operator=(const Faces&) = delete;

    // Null if the file could not be opened.
    FT_Face Get(bool bold) const { return bold ? m_bold : m_regular; }

private:
    FT_Face Open(const char* path) {
        FT_Face face = nullptr;
        if (FT_New_Face(m_library, path, 0, &face) == 0) return face;
        Report(std::string("No text can be drawn: the font ") + path +
               " cannot be read. Install it, or configure the build with another.");
        return nullptr;
    }

    FT_Library m_library = nullptr;
    FT_Face m_regular = nullptr;
    FT_Face m_bold = nullptr;
};

FT_Face GetFace(bool bold) {
    static const Faces kFaces;
    return kFaces.Get(bold);
}

int RoundUp(FT_Pos position) {
    return static_cast<int>((position + (1 << kFractionBits) - 1) >> kFractionBits);
}

void SetEmSize(FT_Face face, int emSize) { FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(emSize)); }

void Measure(FT_Face face, int emSize, Glyphs& glyphs) {
    SetEmSize(face, emSize);
    glyphs.emSize = emSize;
    glyphs.ascent = RoundUp(face->size->metrics.ascender);
    glyphs.descent = RoundUp(-face->size->metrics.descender);
}

// A positive height is that of the cell: finds the largest em size whose cell fits.
void Fit(FT_Face face, LONG height, Glyphs& glyphs) {
    if (height == 0) height = -ScaleToScreen(kSystemFontHeight);
    const int wanted = static_cast<int>(std::clamp<LONG>(height, -kMaxEmSize, kMaxEmSize));
    if (wanted < 0) {
        Measure(face, -wanted, glyphs);
        return;
    }
    for (int emSize = wanted; emSize >= 1; --emSize) {
        Measure(face, emSize, glyphs);
        if (glyphs.CellHeight() <= wanted) return;
    }
}

Glyph Render(FT_Face face, unsigned index) {
    Glyph glyph;
    if (FT_Load_Glyph(face, index, FT_LOAD_RENDER | FT_LOAD_TARGET_NORMAL) != 0) return glyph;
    const FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    glyph.left = slot->bitmap_left;
    glyph.top = slot->bitmap_top;
    glyph.width = static_cast<int>(bitmap.width);
    glyph.height = static_cast<int>(bitmap.rows);
    glyph.advance = static_cast<int>((slot->advance.x + (1 << (kFractionBits - 1))) >> kFractionBits);
    for (unsigned row = 0; row < bitmap.rows; ++row) {
        const BYTE* coverage = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        glyph.coverage.insert(glyph.coverage.end(), coverage, coverage + bitmap.width);
    }
    return glyph;
}

}  // namespace

// Here, where Glyphs is complete.
Font::Font(const LOGFONTW& font) : GdiObject(kType), logical(font) {}
Font::~Font() = default;

LOGFONTW SystemLogFont() {
    LOGFONTW font{};
    font.lfHeight = -ScaleToScreen(kSystemFontHeight);
    font.lfWeight = FW_NORMAL;
    std::u16string_view(u"System").copy(font.lfFaceName, LF_FACESIZE - 1);
    return font;
}

const Glyph& Glyphs::Find(char32_t character) {
    static const Glyph kNothing;
    if (character < U' ') return kNothing;
    FT_Face face = GetFace(bold);
    const unsigned index = FT_Get_Char_Index(face, character);
    const auto found = rendered.find(index);
    if (found != rendered.end()) return found->second;
    SetEmSize(face, emSize);
    return rendered.emplace(index, Render(face, index)).first->second;
}

Glyphs* GlyphsOf(Font& font) {
    if (font.glyphs) return font.glyphs.get();
    const bool bold = font.logical.lfWeight >= kBoldFrom;
    FT_Face face = GetFace(bold);
    if (!face) return Fail(ERROR_FILE_NOT_FOUND, nullptr);
    font.glyphs = std::make_unique<Glyphs>();
    font.glyphs->bold = bold;
    Fit(face, font.logical.lfHeight, *font.glyphs);
    return font.glyphs.get();
}

}  // namespace host

using namespace host;

HFONT WINAPI CreateFontIndirectW(const LOGFONTW* font) {
    if (CallFails(Call::CreateFont, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    if (!font) return Fail(ERROR_INVALID_PARAMETER, nullptr);
    return HandleOf<HFONT>(AddObject(std::make_unique<Font>(*font)));
}
