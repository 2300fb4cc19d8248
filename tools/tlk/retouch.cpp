// SPDX-License-Identifier: MIT
#include "retouch.h"

#include <algorithm>
#include <vector>

#include "ink.h"

namespace tlk {
namespace {

// For higher capitals the font needs no help.
constexpr int kTallestRetouched = 10;
// The height of capitals for which the marks are drawn.
constexpr int kDrawnFor = 8;

// Letters in a ring: at one height of capitals the font's lines merge, at a pixel less they do not.
constexpr std::u16string_view kRings = u"\u00A9\u00AE";
constexpr int kFilledRings = 9;

// Marks aligned with the top of capitals move up with it; some fit capitals of their own height only.
enum class Align { Baseline, Capitals, Exact };

struct HandDrawn {
    char16_t character;
    Align align;
    int ascent;
    InkRows rows;
};

const std::vector<HandDrawn>& HandDrawnMarks() {
    using enum Align;
    static const std::vector<HandDrawn> kMarks{
        {u'0', Exact, 8, {".###.", "#...#", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."}},
        {u'\u1E9E',
         Exact,
         8,
         {".####.", "#....#", "#...#.", "#..#..", "#...#.", "#....#", "#....#", "#.###."}},
        {u'\u1E9E', Exact, 7, {".####.", "#....#", "#...#.", "#..#..", "#...#.", "#....#", "#.###."}},
        {u'\u00AE', Exact, 7, {".#####.", "#.##..#", "#.#.#.#", "#.##..#", "#.#.#.#", "#.....#", ".#####."}},
        {u'.', Baseline, 2, {"##", "##"}},
        {u',', Baseline, 2, {"##", "##", ".#", "#."}},
        {u':', Baseline, 6, {"##", "##", "..", "..", "##", "##"}},
        {u';', Baseline, 6, {"##", "##", "..", "..", "##", "##", ".#", "#."}},
        {u'\u00B7', Baseline, 5, {"##", "##"}},
        {u'\'', Capitals, 8, {"##", "##", "##"}},
        {u'"', Capitals, 8, {"##.##", "##.##", "##.##"}},
        {u'`', Capitals, 8, {"##.", ".##", "..#"}},
        {u'\u00B4', Capitals, 8, {".##", "##.", "#.."}},
        {u'\u0384', Capitals, 8, {".##", ".#.", "#.."}},
        {u'\u00A8', Capitals, 8, {"##.##", "##.##"}},
        {u'\u0385', Capitals, 8, {"...##..", "...#...", "##.#.##", "##...##"}},
        {u'^', Capitals, 8, {"..#..", ".#.#.", "#...#"}},
        {u'<', Baseline, 7, {"...#", "..#.", ".#..", "#...", ".#..", "..#.", "...#"}},
        {u'>', Baseline, 7, {"#...", ".#..", "..#.", "...#", "..#.", ".#..", "#..."}},
        {u'\u2264', Baseline, 7, {"...#", ".##.", "#...", ".##.", "...#", "....", "####"}},
        {u'\u2265', Baseline, 7, {"#...", ".##.", "...#", ".##.", "#...", "....", "####"}},
        {u'\u00AB', Baseline, 5, {"..#..#", ".#..#.", "#..#..", ".#..#.", "..#..#"}},
        {u'\u00BB', Baseline, 5, {"#..#..", ".#..#.", "..#..#", ".#..#.", "#..#.."}},
        {u'\u00B9', Capitals, 8, {".#", "##", ".#", ".#", ".#"}},
        {u'\u00B2', Capitals, 8, {"##.", "..#", ".#.", "#..", "###"}},
        {u'\u00B3', Capitals, 8, {"##.", "..#", ".#.", "..#", "##."}},
        {u'\u201A', Baseline, 2, {"##", "##", ".#", "#."}},
        {u'\u201E', Baseline, 2, {"##.##", "##.##", ".#..#", "#..#."}},
        {u'\u2018', Capitals, 8, {".#", "#.", "##", "##"}},
        {u'\u2019', Capitals, 8, {"##", "##", ".#", "#."}},
        {u'\u201C', Capitals, 8, {".#..#", "#..#.", "##.##", "##.##"}},
        {u'\u201D', Capitals, 8, {"##.##", "##.##", ".#..#", "#..#."}},
    };
    return kMarks;
}

// A letter and an accent, usually one row above it. Small i is used without its dot.
struct Accent {
    InkRows rows;
    std::u16string_view accented;
    std::u16string_view letters;
    int gap = 1;
    bool inBoldOnly = false;
};

const std::vector<Accent>& Accents() {
    static const std::vector<Accent> kAccents{
        {{"..#", ".#."}, u"ÁÉÍÓÚÝĆĹŃŔŚŹЌЃáéíóúýćĺńŕśźќѓάέήίόύώ", u"AEIOUYCLNRSZКГaeıouyclnrszкгαεηιουω"},
        {{"#..", ".#."}, u"ÀÈÌÒÙàèìòù", u"AEIOUaeıou"},
        {{".#.", "#.#"}, u"ÂÊÎÔÛŴŶâêîôûŵŷ", u"AEIOUWYaeıouwy"},
        {{"#.#", ".#."}, u"ČĎĚŇŘŠŤŽčěňřšž", u"CDENRSTZcenrsz"},
        {{".##.#", "#..#."}, u"ÃÑÕãñõ", u"ANOano"},
        {{"#.#.", "#.#."}, u"ŐŰőű", u"OUou"},
        {{".#.", "#.#", ".#."}, u"ÅŮ", u"AU", 0},
        {{".#.", "#.#", ".#."}, u"åů", u"au"},
        {{"#..#", ".##."}, u"ЙЎĂĞйўăğ", u"ИУAGиуag"},
        {{"..#..", "..#..", "#...#"}, u"ΐΰ", u"ιυ"},
        {{"##.##", "##.##"}, u"ÄËÏÖÜŸЁЇäëïöüÿёї", u"AEIOUYЕІaeıouyеı", 1, true},
    };
    return kAccents;
}

Glyph SetAccent(const Glyph& letter, const Mask& accent, int gap) {
    const Size base = letter.ink.GetSize();
    const int width = std::max(base.width, accent.GetSize().width);
    const int lift = accent.GetSize().height + gap;
    Glyph glyph{Mask({width, base.height + lift}, 0), letter.ascent + lift};
    Paste(glyph.ink, accent, (width - accent.GetSize().width + 1) / 2, 0, 1);
    Paste(glyph.ink, letter.ink, (width - base.width) / 2, lift, 1);
    return glyph;
}

// In the font, the accent of this capital touches its slope.
constexpr char16_t kAlphaWithTonos = u'\u0386';

Glyph SetAccentBeside(const Glyph& letter, const Mask& accent) {
    const Size base = letter.ink.GetSize();
    Glyph glyph{Mask({base.width + 1, base.height}, 0), letter.ascent};
    Paste(glyph.ink, letter.ink, 1, 0, 1);
    Paste(glyph.ink, accent, 0, 0, 1);
    return glyph;
}

// Above small bold letters of any size these become bars; by themselves they are clear.
struct Bar {
    char16_t mark;
    std::u16string_view accented;
    std::u16string_view letters;
};

constexpr Bar kBars[] = {{u'\u02DC', u"ãñõ", u"ano"}, {u'\u02D8', u"йўăğ", u"иуag"}};

std::optional<Glyph> DrawUnderMark(const Font& font, char16_t character, const Em& em) {
    for (const Bar& bar : kBars) {
        const std::size_t place = bar.accented.find(character);
        if (place == std::u16string_view::npos) continue;
        const char16_t letter = bar.letters[place];
        if (font.Has(letter) && font.Has(bar.mark))
            return SetAccent(font.Draw({&letter, 1}, em), font.Draw({&bar.mark, 1}, em).ink,
                             font.CapHeight(em.height) / kDrawnFor);
    }
    return std::nullopt;
}

}  // namespace

std::optional<Glyph> DrawRetouched(const Font& font, char16_t character, const Em& em) {
    const int capHeight = font.CapHeight(em.height);
    const bool isBold = font.Draw(u"l", em).ink.GetSize().width > 1;
    if (capHeight > kTallestRetouched) return isBold ? DrawUnderMark(font, character, em) : std::nullopt;
    // The marks of bold fonts are clear enough.
    if (!isBold) {
        for (const HandDrawn& mark : HandDrawnMarks())
            if (mark.character == character && (mark.align != Align::Exact || capHeight == mark.ascent))
                return Glyph{ToInk(mark.rows),
                             mark.ascent + (mark.align == Align::Capitals ? capHeight - kDrawnFor : 0)};
        if (capHeight == kFilledRings && kRings.find(character) != std::u16string_view::npos)
            return font.Draw({&character, 1}, {em.height - 1});
    }
    if (character == kAlphaWithTonos && font.Has(u'\u0391'))
        return SetAccentBeside(font.Draw(u"\u0391", em), ToInk({".#", "#."}));
    for (const Accent& accent : Accents()) {
        const std::size_t place = accent.accented.find(character);
        if (place == std::u16string_view::npos || (accent.inBoldOnly && !isBold)) continue;
        const char16_t letter = accent.letters[place];
        if (font.Has(letter)) return SetAccent(font.Draw({&letter, 1}, em), ToInk(accent.rows), accent.gap);
    }
    return std::nullopt;
}

}  // namespace tlk
