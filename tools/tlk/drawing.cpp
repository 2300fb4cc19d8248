// SPDX-License-Identifier: MIT
#include "drawing.h"

#include <algorithm>
#include <cstdio>

#include "errors.h"
#include "icons.h"
#include "ink.h"
#include "retouch.h"

namespace tlk {
namespace {

// Below this, letters of one bit cannot be read.
constexpr int kSmallestFont = 7;

std::string Describe(char16_t character) {
    char code[16];
    std::snprintf(code, sizeof code, " (U+%04X)", static_cast<unsigned>(character));
    return "'" + ToUtf8(character) + "'" + code;
}

class MaskDrawing {
public:
    MaskDrawing(const Skin& skin, const Font& font, const Plane& plane, const Layout& layout)
        : m_Skin(skin),
          m_Font(font),
          m_Plane(plane),
          m_Mask(DrawFaces(skin, layout)),
          m_Ink(skin.palette.glyphs == GlyphTone::Light) {}

    void DrawKey(const Key& key, const Rect& rect) {
        const Label* label = LabelOf(key);
        if (label && label->icon)
            DrawIconAt(key.key, *label->icon, rect);
        else if (label)
            DrawWord(key.key, label->word, m_Skin.font.words, rect);
        else if (IsFunction(key.key))
            DrawFunction(key.key, rect);
        else if (const char16_t& character = m_Skin.characters[key.key][m_Plane.slot])
            DrawWord(key.key, {&character, 1}, m_Skin.font.characters, rect);
    }

    Mask Take() { return std::move(m_Mask); }

private:
    const Label* LabelOf(const Key& key) const {
        if (key.label) return &*key.label;
        const auto found = m_Skin.labels.find(key.key);
        return found == m_Skin.labels.end() ? nullptr : &found->second;
    }

    void DrawFunction(std::uint16_t key, const Rect& rect) {
        if (const auto icon = IconOf(key)) return DrawIconAt(key, *icon, rect);
        // Small letters with accents need more pixels than a word in capitals, and look no larger for it.
        constexpr int kMoreForAccents = 2;
        const int pixels = m_Skin.font.words;
        DrawWord(key, WordOf(key),
                 key == function_key::kUmlaut ? std::min(pixels + kMoreForAccents, m_Skin.font.characters)
                                              : pixels,
                 rect);
    }

    std::optional<Icon> IconOf(std::uint16_t key) const {
        const bool deletes = m_Plane.IsLarge() && m_Plane.backspaceFollowsShift;
        switch (key) {
            case function_key::kShift:
                return m_Plane.IsLarge() ? Icon::ShiftFilled : Icon::Shift;
            case function_key::kBackspace:
                return deletes ? Icon::Delete : Icon::Backspace;
            case function_key::kEnter:
                return Icon::Enter;
            case function_key::kSpace:
                return Icon::Space;
            case function_key::kTab:
                return Icon::Tab;
            case function_key::kLeft:
                return Icon::Left;
            case function_key::kUp:
                return Icon::Up;
            case function_key::kRight:
                return Icon::Right;
            case function_key::kDown:
                return Icon::Down;
            default:
                return std::nullopt;
        }
    }

    std::u16string WordOf(std::uint16_t key) const {
        switch (key) {
            case function_key::kControl:
                return u"Ctl";
            case function_key::kCaps:
                return u"Cap";
            case function_key::kLanguage:
                return m_Skin.languageNames[m_Plane.Language()];
            case function_key::kDigits:
                return m_Plane.digits ? u"abc" : u"123";
            case function_key::kUmlaut:
                return u"áü";
            case function_key::kEscape:
                return u"Esc";
            default:
                return {};
        }
    }

    void DrawIconAt(std::uint16_t key, Icon icon, const Rect& rect) {
        for (int pixels = m_Skin.font.characters; pixels >= kSmallestFont; --pixels)
            if (StampCentred(DrawIcon(icon, m_Font.CapHeight(pixels)), rect)) return;
        // A short space bar is known by being blank.
        if (key != function_key::kSpace) FailToFit(key);
    }

    bool StampCentred(const Mask& ink, const Rect& rect) {
        const Rect inner = InnerOf(m_Skin, rect);
        const Size size = ink.GetSize();
        if (size.width > inner.Width() || size.height > inner.Height()) return false;
        const Rect face = FaceOf(rect);
        Paste(m_Mask, ink, face.left + (face.Width() - size.width) / 2,
              face.top + (face.Height() - size.height + 1) / 2, m_Ink);
        return true;
    }

    // Words and characters of one row stand on one baseline, unless an accent or a tail needs the room.
    bool StampOnBaseline(const Glyph& glyph, int capHeight, const Rect& rect) {
        const Rect inner = InnerOf(m_Skin, rect);
        const Size ink = glyph.ink.GetSize();
        if (ink.width > inner.Width() || ink.height > inner.Height()) return false;
        const Rect face = FaceOf(rect);
        const int baseline = face.top + (face.Height() - capHeight + 1) / 2 + capHeight;
        const int top = std::clamp(baseline - glyph.ascent, inner.top, inner.bottom - ink.height + 1);
        Paste(m_Mask, glyph.ink, face.left + (face.Width() - ink.width + 1) / 2, top, m_Ink);
        return true;
    }

    // A word too large for its key is drawn smaller.
    void DrawWord(std::uint16_t key, std::u16string_view word, int pixels, const Rect& rect) {
        for (char16_t character : word)
            if (!m_Font.Has(character))
                throw SourceError(PlaceOf(key), "the font has no glyph for " + Describe(character) +
                                                    " of key '" + NameKey(m_Skin.characters, key) +
                                                    "': use another character, or another font (--font)");
        for (; pixels >= kSmallestFont; --pixels)
            if (StampOnBaseline(Draw(word, pixels), m_Font.CapHeight(pixels), rect)) return;
        FailToFit(key);
    }

    [[noreturn]] void FailToFit(std::uint16_t key) const {
        throw SourceError(PlaceOf(key), "what key '" + NameKey(m_Skin.characters, key) +
                                            "' shows does not fit: give it a larger weight");
    }

    Glyph Draw(std::u16string_view word, int pixels) const {
        if (word.size() == 1)
            if (auto glyph = DrawRetouched(m_Font, word[0], pixels)) return std::move(*glyph);
        return m_Font.Draw(word, pixels);
    }

    // Where the source gives the key its character, else where it names the key.
    SourcePlace PlaceOf(std::uint16_t key) const {
        if (const auto found = m_Skin.characterPlaces.find(key); found != m_Skin.characterPlaces.end())
            return found->second;
        for (const auto& [known, place] : m_Skin.places)
            if (known.second == key) return place;
        return {};
    }

    const Skin& m_Skin;
    const Font& m_Font;
    const Plane& m_Plane;
    Mask m_Mask;
    // What a glyph's pixels are in the mask.
    std::uint8_t m_Ink;
};

}  // namespace

Mask DrawMask(const Skin& skin, const Layout& layout, const Font& font, const Plane& plane) {
    MaskDrawing drawing(skin, font, plane, layout);
    TryEach(layout.keys, [&](const Key& key) {
        for (auto rect = key.rects.begin(); rect != key.rects.end(); ++rect)
            // A bent key shows its glyph once, a key in two places twice.
            if (std::none_of(key.rects.begin(), rect, [&](const Rect& r) { return r.Touches(*rect); }))
                drawing.DrawKey(key, *rect);
    });
    return drawing.Take();
}

}  // namespace tlk
