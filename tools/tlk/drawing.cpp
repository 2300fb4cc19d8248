// SPDX-License-Identifier: MIT
#include "drawing.h"

#include <unicode.h>

#include <algorithm>
#include <cstdio>

#include "errors.h"
#include "icons.h"
#include "ink.h"

namespace tlk {
namespace {

// Smaller letters cannot be read without grey.
constexpr int kSmallestFont = 7;
// A single character can be much narrower than its neighbours, a word hardly.
constexpr double kNarrowestCharacter = 0.6;
constexpr double kNarrowestWord = 0.85;

std::string Describe(char16_t character) {
    char code[16];
    std::snprintf(code, sizeof code, " (U+%04X)", static_cast<unsigned>(character));
    return "'" + unicode::ToUtf8(character) + "'" + code;
}

class BoardDrawing {
public:
    BoardDrawing(const Skin& skin, const Layout& layout, Lettering& lettering, std::span<const Plane> planes)
        : m_skin(skin),
          m_layout(layout),
          m_lettering(lettering),
          m_font(lettering.GetFont()),
          m_faces(DrawFaces(skin, layout)),
          m_ink(skin.palette.glyphs == GlyphTone::Light) {
        for (const Plane& plane : planes)
            ForEachPlace(
                [&](const Key& key, const Rect&) { RequireGlyphs(key.key, SignOf(skin, key, plane)); });
        m_size.characters = LargestSize(planes, false, skin.font.characters);
        m_size.words = LargestSize(planes, true, skin.font.words);
    }

    Mask Draw(const Plane& plane) const {
        Mask mask = m_faces;
        ForEachPlace([&](const Key& key, const Rect& rect) {
            const Sign sign = SignOf(m_skin, key, plane);
            if (sign.icon)
                DrawIconAt(mask, key.key, *sign.icon, rect);
            else if (!sign.text.empty())
                DrawText(mask, sign, rect);
        });
        return mask;
    }

private:
    // A bent key has one glyph, a key in two places two.
    template <class Callback>
    void ForEachPlace(const Callback& callback) const {
        TryEach(
            m_layout.keys,
            [&](const Key& key) {
                for (auto rect = key.rects.begin(); rect != key.rects.end(); ++rect)
                    if (std::none_of(
                            key.rects.begin(), rect, [&](const Rect& r) { return r.Touches(*rect); }))
                        callback(key, *rect);
            });
    }

    void RequireGlyphs(std::uint16_t key, const Sign& sign) const {
        if (sign.icon) return;
        for (char16_t character : sign.text)
            if (!m_font.Has(character))
                throw SourceError(PlaceOf(key), "the font has no glyph for " + Describe(character) +
                                                    " of key '" + KeyName(m_skin.characters, key) +
                                                    "': use another character, or another font (--font)");
    }

    // The largest size at which all words, or all characters, fit their keys.
    int LargestSize(std::span<const Plane> planes, bool isWord, int pixels) const {
        TryEach(planes, [&](const Plane& plane) {
            ForEachPlace([&](const Key& key, const Rect& rect) {
                const Sign sign = SignOf(m_skin, key, plane);
                if (sign.icon || sign.text.empty() || sign.isWord != isWord) return;
                int fitting = pixels;
                while (!FitText(sign, fitting, rect))
                    if (--fitting < kSmallestFont) FailToFit(key.key);
                pixels = fitting;
            });
        });
        return pixels;
    }

    int PixelsOf(const Sign& sign, int pixels) const {
        return sign.enlarged > 0 ? std::min(pixels + sign.enlarged, m_size.characters) : pixels;
    }

    const Glyph* FitText(const Sign& sign, int pixels, const Rect& rect) const {
        const Rect room = RoomOf(rect);
        return m_lettering.Fit(sign.text, PixelsOf(sign, pixels), {room.Width(), room.Height()},
                               sign.isWord ? kNarrowestWord : kNarrowestCharacter);
    }

    // A tall glyph may extend over the shaded bottom edge.
    Rect RoomOf(const Rect& rect) const {
        Rect room = InnerOf(m_skin, rect);
        room.bottom = FaceOf(rect).bottom;
        return room;
    }

    void DrawIconAt(Mask& mask, std::uint16_t key, Icon icon, const Rect& rect) const {
        for (int pixels = m_size.characters; pixels >= kSmallestFont; --pixels)
            if (StampCentred(mask, DrawIcon(icon, m_font.CapHeight(pixels)), rect)) return;
        // A space bar too small for its icon stays blank.
        if (key != function_key::kSpace) FailToFit(key);
    }

    bool StampCentred(Mask& mask, const Mask& ink, const Rect& rect) const {
        const Rect inner = InnerOf(m_skin, rect);
        const Size size = ink.GetSize();
        if (size.width > inner.Width() || size.height > inner.Height()) return false;
        const Rect face = FaceOf(rect);
        Paste(mask, ink, face.left + (face.Width() - size.width) / 2,
              face.top + (face.Height() - size.height + 1) / 2, m_ink);
        return true;
    }

    // Words and characters of one row have one baseline, unless an accent or a descender needs the room.
    void DrawText(Mask& mask, const Sign& sign, const Rect& rect) const {
        const int pixels = sign.isWord ? m_size.words : m_size.characters;
        const Glyph& glyph = *FitText(sign, pixels, rect);
        const int capHeight = m_font.CapHeight(PixelsOf(sign, pixels));
        const Size ink = glyph.ink.GetSize();
        const Rect face = FaceOf(rect);
        const Rect inner = InnerOf(m_skin, rect);
        const int baseline = face.top + (face.Height() - capHeight + 1) / 2 + capHeight;
        const int lowest = std::max(inner.top, inner.bottom - ink.height + 1);
        Paste(mask, glyph.ink, face.left + (face.Width() - ink.width + 1) / 2,
              std::clamp(baseline - glyph.ascent, inner.top, lowest), m_ink);
    }

    [[noreturn]] void FailToFit(std::uint16_t key) const {
        throw SourceError(PlaceOf(key), "what key '" + KeyName(m_skin.characters, key) +
                                            "' shows does not fit: give it a larger weight");
    }

    // The place in the source that gives the key its character, else that names the key.
    SourcePlace PlaceOf(std::uint16_t key) const {
        if (const auto found = m_skin.characterPlaces.find(key); found != m_skin.characterPlaces.end())
            return found->second;
        for (const auto& [known, place] : m_skin.places)
            if (known.second == key) return place;
        return {};
    }

    const Skin& m_skin;
    const Layout& m_layout;
    Lettering& m_lettering;
    const Font& m_font;
    const Mask m_faces;
    // The value of a glyph's pixels in the mask.
    std::uint8_t m_ink;
    FontSizes m_size;
};

}  // namespace

std::vector<Mask> DrawMasks(const Skin& skin, const Layout& layout, Lettering& lettering,
                            std::span<const Plane> planes) {
    const BoardDrawing drawing(skin, layout, lettering, planes);
    std::vector<Mask> masks;
    for (const Plane& plane : planes)
        masks.push_back(drawing.Draw(plane));
    return masks;
}

}  // namespace tlk
