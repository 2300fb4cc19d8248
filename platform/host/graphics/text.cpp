// SPDX-License-Identifier: MIT
#include <unicode.h>

#include <cstdlib>
#include <string_view>

#include "device/faults.h"
#include "graphics/blit.h"
#include "graphics/fonts.h"

namespace host {
namespace {

constexpr BYTE kHalf = 128;

// Calls visit(glyph, pen offset) for each character and returns the width.
template <typename Visitor>
std::int64_t WalkText(Glyphs& glyphs, std::u16string_view text, Visitor visit) {
    std::int64_t pen = 0;
    while (!text.empty()) {
        const Glyph& glyph = glyphs.Find(unicode::TakeCharacter(text));
        visit(glyph, pen);
        pen += glyph.advance;
    }
    return pen;
}

std::int64_t WidthOf(Glyphs& glyphs, std::u16string_view text) {
    return WalkText(
        glyphs, text, [](const Glyph&, std::int64_t) {});
}

DWORD Mix(DWORD under, DWORD over, DWORD coverage) {
    DWORD mixed = 0;
    for (const int shift : {0, 8, 16}) {
        const DWORD sum = ((under >> shift) & 0xFF) * (255 - coverage) + ((over >> shift) & 0xFF) * coverage;
        mixed |= ((sum + 127) / 255) << shift;
    }
    return mixed;
}

// Draws a part of a glyph; the glyph's box and the part are in surface pixels.
void DrawGlyphPart(const Surface& surface, const Glyph& glyph, const RECT& box, const RECT& part,
                   DWORD color) {
    for (int y = part.top; y < part.bottom; ++y) {
        const BYTE* coverage = glyph.coverage.data() + std::ptrdiff_t{y - box.top} * glyph.width - box.left;
        for (int x = part.left; x < part.right; ++x) {
            if (coverage[x] == 0) continue;
            DWORD word = color;
            if (surface.HasBits()) {
                if (coverage[x] < kHalf) continue;
            } else {
                ReadWords(surface, x, y, 1, kBitsAsWords, &word);
                word = Mix(word, color, coverage[x]);
            }
            WriteWords(surface, x, y, 1, &word);
        }
    }
}

struct Line {
    std::u16string_view text;
    std::int64_t left = 0;  // of the text cell, in surface pixels
    std::int64_t top = 0;
};

// Draws one line inside the clip (surface pixels): the cell's background if it is opaque, then the glyphs.
void DrawLine(const Context& context, Glyphs& glyphs, const Line& line, const RECT& clip) {
    if (context.attributes.backMode == OPAQUE) {
        const RECT cell = MakeArea(line.left, line.top, WidthOf(glyphs, line.text), glyphs.CellHeight());
        FillArea(context, Intersect(cell, clip), context.attributes.backColor);
    }
    const Surface& surface = context.bitmap->surface;
    const DWORD color = WordFor(surface, context.attributes.textColor);
    WalkText(glyphs, line.text, [&](const Glyph& glyph, std::int64_t pen) {
        const RECT box = MakeArea(line.left + pen + glyph.left, line.top + glyphs.ascent - glyph.top,
                                  glyph.width, glyph.height);
        ForEachVisible(context, Intersect(box, clip),
                       [&](const RECT& part) { DrawGlyphPart(surface, glyph, box, part, color); });
    });
}

// Takes the text up to the next line break, and the break.
std::u16string_view TakeLine(std::u16string_view& text, UINT format) {
    const std::size_t end = (format & DT_SINGLELINE) ? text.npos : text.find(u'\n');
    std::u16string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (!(format & DT_SINGLELINE) && line.ends_with(u'\r')) line.remove_suffix(1);
    return line;
}

template <typename Visitor>
void ForEachLine(std::u16string_view text, UINT format, Visitor visit) {
    do {
        visit(TakeLine(text, format));
    } while (!text.empty());
}

int HeightOfLines(const Glyphs& glyphs, std::u16string_view text, UINT format) {
    int height = 0;
    ForEachLine(text, format, [&](std::u16string_view) { height += glyphs.CellHeight(); });
    return height;
}

void DrawLines(const Context& context, Glyphs& glyphs, std::u16string_view text, const RECT& rectangle,
               std::int64_t shift, UINT format) {
    const RECT area = PlaceRectangle(context, rectangle);
    const RECT clip = (format & DT_NOCLIP) ? context.bitmap->surface.Bounds() : area;
    std::int64_t lineTop = area.top + shift;
    ForEachLine(text, format, [&](std::u16string_view line) {
        const std::int64_t room = std::int64_t{area.right} - area.left - WidthOf(glyphs, line);
        const std::int64_t indent = (format & DT_CENTER) ? room / 2 : (format & DT_RIGHT) ? room : 0;
        DrawLine(context, glyphs, {.text = line, .left = area.left + indent, .top = lineTop}, clip);
        lineTop += glyphs.CellHeight();
    });
}

// The caller's text; a length of -1 means that it ends with a null. False if there is none.
bool ReadText(LPCWSTR text, int length, std::u16string_view& view) {
    if ((!text && length != 0) || length < -1) return Fail(ERROR_INVALID_PARAMETER, false);
    if (length == -1)
        view = text;
    else if (length > 0)
        view = {text, static_cast<std::size_t>(length)};
    return true;
}

}  // namespace
}  // namespace host

using namespace host;

BOOL WINAPI ExtTextOutW(HDC dc, int x, int y, UINT options, const RECT* rectangle, LPCWSTR text, UINT length,
                        const INT* spacing) {
    const Context* context = FindObject<Context>(dc);
    if (!context) return FALSE;
    if ((!text && length != 0) || (options & ~UINT{ETO_CLIPPED}) || spacing)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    Glyphs* glyphs = GlyphsOf(*context->font);
    if (!glyphs) return FALSE;
    const bool clips = rectangle && (options & ETO_CLIPPED);
    const RECT clip = clips ? PlaceRectangle(*context, *rectangle) : context->bitmap->surface.Bounds();
    const std::u16string_view view(text, length);
    const std::int64_t width = WidthOf(*glyphs, view);
    const UINT align = context->attributes.align;
    DrawLine(*context, *glyphs,
             {.text = view,
              .left = std::int64_t{x} + context->origin.x - (align & TA_CENTER ? width / 2 : 0),
              .top = std::int64_t{y} + context->origin.y - (align & TA_BASELINE ? glyphs->ascent : 0)},
             clip);
    return TRUE;
}

BOOL WINAPI GetTextExtentPoint32W(HDC dc, LPCWSTR text, int length, SIZE* size) {
    const Context* context = FindObject<Context>(dc);
    if (!context) return FALSE;
    std::u16string_view view;
    if (!size || length < 0) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    Glyphs* glyphs = ReadText(text, length, view) ? GlyphsOf(*context->font) : nullptr;
    if (!glyphs) return FALSE;
    *size = {static_cast<LONG>(WidthOf(*glyphs, view)), glyphs->CellHeight()};
    return TRUE;
}

// Ampersands are drawn, as with DT_NOPREFIX: the controls of this layer have no shortcuts to underline.
// Ignores the context's text alignment.
int WINAPI DrawTextW(HDC dc, LPCWSTR text, int length, RECT* rectangle, UINT format) {
    if (CallFails(Call::DrawText, ERROR_NOT_ENOUGH_MEMORY)) return 0;
    const Context* context = FindObject<Context>(dc);
    if (!context) return 0;
    std::u16string_view view;
    if (!rectangle) return Fail(ERROR_INVALID_PARAMETER, 0);
    Glyphs* glyphs = ReadText(text, length, view) ? GlyphsOf(*context->font) : nullptr;
    if (!glyphs) return 0;
    const int height = HeightOfLines(*glyphs, view, format);
    const bool centred = (format & DT_VCENTER) && (format & DT_SINGLELINE);
    const std::int64_t room = std::int64_t{rectangle->bottom} - rectangle->top - height;
    const std::int64_t shift = centred ? room / 2 : 0;
    DrawLines(*context, *glyphs, view, *rectangle, shift, format);
    return static_cast<int>(height + shift);
}
