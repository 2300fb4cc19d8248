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

constexpr Color kWhite{0xFF, 0xFF, 0xFF};
constexpr Color kBlack{0, 0, 0};
// Below this, letters of one bit cannot be read.
constexpr int kSmallestFont = 7;

Color Mix(Color from, Color to, int part, int whole) {
    const auto channel = [part, whole](int a, int b) {
        return static_cast<std::uint8_t>(a + (b - a) * part / std::max(whole, 1));
    };
    return {channel(from.red, to.red), channel(from.green, to.green), channel(from.blue, to.blue)};
}

Rect FaceOf(const Rect& rect) { return {rect.left, rect.top, rect.right - 1, rect.bottom - 1}; }

// Glyphs stay off the bevel.
Rect InnerOf(const Rect& rect) {
    const Rect face = FaceOf(rect);
    return {face.left + 1, face.top + 1, face.right - 1, face.bottom - 1};
}

const Shade& ShadeOf(const Skin& skin, std::uint16_t key) {
    if (IsFunction(key)) return skin.palette.function;
    const char16_t small = skin.characters[key][0];
    if (small >= u'0' && small <= u'9') return skin.palette.number;
    return small >= u'a' && small <= u'z' ? skin.palette.letter : skin.palette.symbol;
}

// Light from the top left: a lit edge, a shaded edge, and corners one pixel round.
void DrawFace(Picture& picture, const Rect& face, const Shade& shade, Color background) {
    const Color lit = Mix(shade.top, kWhite, 3, 4);
    const Color shaded = Mix(shade.bottom, kBlack, 1, 5);
    for (int y = face.top; y <= face.bottom; ++y) {
        const Color middle = Mix(shade.top, shade.bottom, y - face.top, face.Height() - 1);
        for (int x = face.left; x <= face.right; ++x) {
            Color& pixel = picture.At(x, y);
            pixel = middle;
            if (x == face.left || y == face.top) pixel = lit;
            if (x == face.right || y == face.bottom) pixel = shaded;
        }
    }
    for (int x : {face.left, face.right})
        for (int y : {face.top, face.bottom})
            picture.At(x, y) = Mix(shade.bottom, background, 3, 4);
}

void StampCentred(Mask& mask, const Mask& ink, const Rect& face) {
    Paste(mask, ink, face.left + (face.Width() - ink.GetSize().width) / 2,
          face.top + (face.Height() - ink.GetSize().height + 1) / 2, 0);
}

// Words and characters of one row stand on one baseline, unless an accent or a tail needs the room.
bool StampOnBaseline(Mask& mask, const Glyph& glyph, int capHeight, const Rect& rect) {
    const Rect inner = InnerOf(rect);
    const Size ink = glyph.ink.GetSize();
    if (ink.width > inner.Width() || ink.height > inner.Height()) return false;
    const Rect face = FaceOf(rect);
    const int baseline = face.top + (face.Height() - capHeight + 1) / 2 + capHeight;
    const int top = std::clamp(baseline - glyph.ascent, inner.top, inner.bottom - ink.height + 1);
    Paste(mask, glyph.ink, face.left + (face.Width() - ink.width + 1) / 2, top, 0);
    return true;
}

std::string Describe(char16_t character) {
    char code[16];
    std::snprintf(code, sizeof code, " (U+%04X)", static_cast<unsigned>(character));
    return "'" + ToUtf8(character) + "'" + code;
}

class MaskDrawing {
public:
    MaskDrawing(const Skin& skin, const Font& font, const Plane& plane, Size size)
        : m_Skin(skin), m_Font(font), m_Plane(plane), m_Mask(size, 1) {}

    void DrawKey(std::uint16_t key, const Rect& rect) {
        if (IsFunction(key))
            DrawFunction(key, rect);
        else
            DrawWord(key, {&m_Skin.characters[key][m_Plane.slot], 1}, m_Skin.font.characters, rect);
    }

    Mask Take() { return std::move(m_Mask); }

private:
    void DrawFunction(std::uint16_t key, const Rect& rect) {
        if (const auto icon = IconOf(key)) return DrawIconAt(key, *icon, rect);
        // The umlaut key shows characters, not a word.
        const bool isWord = key != function_key::kUmlaut;
        DrawWord(key, WordOf(key), isWord ? m_Skin.font.words : m_Skin.font.characters, rect);
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
        const Mask ink = DrawIcon(icon);
        const Rect inner = InnerOf(rect);
        if (ink.GetSize().width <= inner.Width() && ink.GetSize().height <= inner.Height())
            return StampCentred(m_Mask, ink, FaceOf(rect));
        // A short space bar is known by being blank.
        if (key != function_key::kSpace) FailToFit(key);
    }

    // A word too large for its key is drawn smaller.
    void DrawWord(std::uint16_t key, std::u16string_view word, int pixels, const Rect& rect) {
        for (char16_t character : word)
            if (!m_Font.Has(character))
                throw SourceError(LineOf(key), "the font has no glyph for " + Describe(character) +
                                                   " of key '" + NameKey(m_Skin.characters, key) +
                                                   "': use another character, or another font (--font)");
        for (; pixels >= kSmallestFont; --pixels)
            if (StampOnBaseline(m_Mask, Draw(word, pixels), m_Font.CapHeight(pixels), rect)) return;
        FailToFit(key);
    }

    [[noreturn]] void FailToFit(std::uint16_t key) const {
        throw SourceError(LineOf(key), "what key '" + NameKey(m_Skin.characters, key) +
                                           "' shows does not fit: give it a larger weight");
    }

    Glyph Draw(std::u16string_view word, int pixels) const {
        if (word.size() == 1)
            if (auto glyph = DrawRetouched(m_Font, word[0], pixels)) return std::move(*glyph);
        return m_Font.Draw(word, pixels);
    }

    unsigned LineOf(std::uint16_t key) const {
        const auto found = m_Skin.lines.find(key);
        return found == m_Skin.lines.end() ? 0 : found->second;
    }

    const Skin& m_Skin;
    const Font& m_Font;
    const Plane& m_Plane;
    Mask m_Mask;
};

}  // namespace

Picture DrawPicture(const Skin& skin, const Layout& layout) {
    Picture picture(layout.size, skin.palette.background);
    for (const Key& key : layout.keys)
        for (const Rect& rect : key.rects)
            DrawFace(picture, FaceOf(rect), ShadeOf(skin, key.key), skin.palette.background);
    return picture;
}

Mask DrawMask(const Skin& skin, const Layout& layout, const Font& font, const Plane& plane) {
    MaskDrawing drawing(skin, font, plane, layout.size);
    for (const Key& key : layout.keys)
        for (auto rect = key.rects.begin(); rect != key.rects.end(); ++rect)
            // A bent key shows its glyph once, a key in two places twice.
            if (std::none_of(key.rects.begin(), rect, [&](const Rect& r) { return r.Touches(*rect); }))
                drawing.DrawKey(key.key, *rect);
    return drawing.Take();
}

}  // namespace tlk
