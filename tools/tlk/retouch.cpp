// SPDX-License-Identifier: MIT
#include "retouch.h"

#include <algorithm>
#include <vector>

#include "ink.h"

namespace tlk {
namespace {

// Above this height of capitals the font needs no help.
constexpr int kTallestCapitals = 8;

struct HandDrawn {
    char16_t character;
    int ascent;
    InkRows rows;
};

const std::vector<HandDrawn>& HandDrawnGlyphs() {
    static const std::vector<HandDrawn> glyphs{
        {u'.', 2, {"##", "##"}},
        {u',', 2, {"##", "##", ".#", "#."}},
        {u':', 6, {"##", "##", "..", "..", "##", "##"}},
        {u';', 6, {"##", "##", "..", "..", "##", "##", ".#", "#."}},
        {u'\u00B7', 5, {"##", "##"}},
        {u'`', 8, {"##.", ".##", "..#"}},
        {u'\u00B4', 8, {".##", "##.", "#.."}},
        {u'^', 8, {"..#..", ".#.#.", "#...#"}},
        {u'<', 7, {"...#", "..#.", ".#..", "#...", ".#..", "..#.", "...#"}},
        {u'>', 7, {"#...", ".#..", "..#.", "...#", "..#.", ".#..", "#..."}},
        {u'\u201A', 2, {"##", "##", ".#", "#."}},
        {u'\u201E', 2, {"##.##", "##.##", ".#..#", "#..#."}},
        {u'\u2018', 8, {".#", "#.", "##", "##"}},
        {u'\u2019', 8, {"##", "##", ".#", "#."}},
        {u'\u201C', 8, {".#..#", "#..#.", "##.##", "##.##"}},
        {u'\u201D', 8, {"##.##", "##.##", ".#..#", "#..#."}},
    };
    return glyphs;
}

// A letter and an accent one row above it. Small i and j lend their dotless forms.
struct Accent {
    InkRows rows;
    std::u16string_view accented;
    std::u16string_view letters;
};

const std::vector<Accent>& Accents() {
    static const std::vector<Accent> accents{
        {{"..#", ".#."}, u"ÁÉÍÓÚÝĆĹŃŔŚŹáéíóúýćĺńŕśź", u"AEIOUYCLNRSZaeıouyclnrsz"},
        {{"#..", ".#."}, u"ÀÈÌÒÙàèìòù", u"AEIOUaeıou"},
        {{".#.", "#.#"}, u"ÂÊÎÔÛŴŶâêîôûŵŷ", u"AEIOUWYaeıouwy"},
        {{"#.#", ".#."}, u"ČĎĚŇŘŠŤŽčěňřšž", u"CDENRSTZcenrsz"},
        {{".##.#", "#..#."}, u"ÃÑÕãñõ", u"ANOano"},
        {{"#.#.", "#.#."}, u"ŐŰőű", u"OUou"},
    };
    return accents;
}

Glyph SetAccent(const Glyph& letter, const Mask& accent) {
    const Size base = letter.ink.GetSize();
    const int width = std::max(base.width, accent.GetSize().width);
    const int lift = accent.GetSize().height + 1;
    Glyph glyph{Mask({width, base.height + lift}, 0), letter.ascent + lift};
    Paste(glyph.ink, accent, (width - accent.GetSize().width + 1) / 2, 0, 1);
    Paste(glyph.ink, letter.ink, (width - base.width) / 2, lift, 1);
    return glyph;
}

}  // namespace

std::optional<Glyph> DrawRetouched(const Font& font, char16_t character, int pixels) {
    if (font.CapHeight(pixels) > kTallestCapitals) return std::nullopt;
    for (const HandDrawn& glyph : HandDrawnGlyphs())
        if (glyph.character == character) return Glyph{ToInk(glyph.rows), glyph.ascent};
    for (const Accent& accent : Accents()) {
        const std::size_t place = accent.accented.find(character);
        if (place == std::u16string_view::npos) continue;
        const char16_t letter = accent.letters[place];
        if (font.Has(letter)) return SetAccent(font.Draw({&letter, 1}, pixels), ToInk(accent.rows));
    }
    return std::nullopt;
}

}  // namespace tlk
