// SPDX-License-Identifier: MIT
#include "preview.h"

#include <algorithm>
#include <charconv>

#include "errors.h"
#include "name_list.h"

namespace tlk {
namespace {

constexpr Color kOutline{0xE0, 0x10, 0x60};
constexpr Color kLabel{0xFF, 0xFF, 0xFF};
// Pixels per em: the smallest that can be read.
constexpr int kLabelSize = 9;

// `what` is the thing in the words of a source, `name` what the file calls it.
const Picture& Need(const SkinBitmap& bitmap, const std::string& what, const std::string& name) {
    if (!bitmap.isPresent) throw FileError("the skin has no " + what + " (" + name + ")");
    if (!bitmap.IsReadable())
        throw FileError("the " + what + " (" + name + ") cannot be shown: it is damaged");
    return bitmap.pixels;
}

const Picture& NeedPicture(const SkinModule& skin, const SkinBoard& board) {
    const std::string name(BoardName(board.kind));
    const Size upright = skin.portrait.picture.GetSize();
    if (board.kind == BoardKind::Landscape && !board.picture.isPresent && upright.width == upright.height * 4)
        throw FileError("the skin has no [landscape]: it is for a square screen, which has none");
    return Need(board.picture, "[" + name + "] keyboard", std::string(PictureResource(board.kind)));
}

// From the left and top edge up to the right and bottom edge, which stay out.
struct Area {
    int left, top, right, bottom;

    bool Holds(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
    // Of pressed keys the corner alone counts, and here all edges belong to the area.
    bool HoldsCorner(const Rect& rect) const {
        return left < right && top < bottom && rect.left >= left && rect.left <= right && rect.top >= top &&
               rect.top <= bottom;
    }
};

// The pictures of one view.
class Composition {
public:
    Composition(const SkinModule& skin, const View& view) : m_Board(skin.Board(view.Board())) {
        m_pPicture = &NeedPicture(skin, m_Board);
        m_pMask = &MaskOf(view.plane);
        if (!view.hasCapsLock || m_Board.kind != BoardKind::Portrait || !skin.capsRect) return;
        const Rect& rect = *skin.capsRect;
        m_Caps = {rect.left, rect.top, rect.right, rect.bottom};
        m_pCapsMask = &MaskOf(view.plane ^ 1);
    }

    Picture Draw(const std::vector<std::uint16_t>& pressed) const {
        Picture drawn(m_pPicture->GetSize(), Color{});
        for (int y = 0; y < drawn.GetSize().height; ++y)
            for (int x = 0; x < drawn.GetSize().width; ++x)
                if (Shows(m_pCapsMask && m_Caps.Holds(x, y) ? *m_pCapsMask : *m_pMask, x, y))
                    drawn.At(x, y) = m_pPicture->At(x, y);
        for (std::uint16_t key : pressed)
            for (const Rect& rect : m_Board.layout.at(key))
                Press(drawn, rect);
        return drawn;
    }

private:
    const Picture& MaskOf(std::size_t plane) const {
        return Need(m_Board.masks[plane], "plane " + std::string(PlaneName(plane)) + ": no key brings it up",
                    MaskResource(m_Board.kind, plane));
    }

    static bool Shows(const Picture& mask, int x, int y) {
        return mask.Contains(x, y) && mask.At(x, y) != Color{};
    }

    // The picture inverted where the mask shows it, white elsewhere. Right and bottom edge stay out.
    void Press(Picture& drawn, const Rect& rect) const {
        const Picture& mask = m_pCapsMask && m_Caps.HoldsCorner(rect) ? *m_pCapsMask : *m_pMask;
        const Size size = drawn.GetSize();
        for (int y = rect.top; y < std::min(rect.bottom, size.height); ++y)
            for (int x = rect.left; x < std::min(rect.right, size.width); ++x) {
                const Color color = Shows(mask, x, y) ? m_pPicture->At(x, y) : Color{};
                drawn.At(x, y) = {static_cast<std::uint8_t>(~color.red),
                                  static_cast<std::uint8_t>(~color.green),
                                  static_cast<std::uint8_t>(~color.blue)};
            }
    }

    const SkinBoard& m_Board;
    const Picture* m_pPicture = nullptr;
    const Picture* m_pMask = nullptr;
    const Picture* m_pCapsMask = nullptr;
    Area m_Caps{};
};

void Outline(Picture& picture, const Rect& rect) {
    const auto put = [&picture](int x, int y) {
        if (picture.Contains(x, y)) picture.At(x, y) = kOutline;
    };
    for (int x = rect.left; x <= std::min(rect.right, picture.GetSize().width - 1); ++x) {
        put(x, rect.top);
        put(x, rect.bottom);
    }
    for (int y = rect.top; y <= std::min(rect.bottom, picture.GetSize().height - 1); ++y) {
        put(rect.left, y);
        put(rect.right, y);
    }
}

// The character of a character key; names of functions and indices are ASCII.
std::u16string LabelOf(const SkinModule& skin, std::uint16_t key, const Font& font) {
    const char16_t character =
        !IsFunction(key) && key < skin.characters.size() ? skin.characters[key][0] : u'\0';
    if (character > u' ' && font.Has(character)) return {character};
    const std::string name = character > u' ' ? std::to_string(key) : skin.NameOf(key);
    return {name.begin(), name.end()};
}

void Write(Picture& picture, const Rect& rect, std::u16string_view word, const Font& font) {
    const Mask ink = font.Draw(word, {kLabelSize}).ink;
    for (int y = 0; y < ink.GetSize().height + 2; ++y)
        for (int x = 0; x < ink.GetSize().width + 2; ++x) {
            const int pixelX = rect.left + x;
            const int pixelY = rect.top + y;
            if (pixelX > rect.right || pixelY > rect.bottom || !picture.Contains(pixelX, pixelY)) continue;
            const bool isInk = ink.Contains(x - 1, y - 1) && ink.At(x - 1, y - 1);
            picture.At(pixelX, pixelY) = isInk ? kLabel : kOutline;
        }
}

}  // namespace

BoardKind View::Board() const {
    if (plane == kDigitPlane) return BoardKind::Digits;
    return isLandscape ? BoardKind::Landscape : BoardKind::Portrait;
}

std::uint16_t FindKey(const SkinModule& skin, BoardKind board, std::string_view name) {
    const KeyLayout& layout = skin.Board(board).layout;
    std::string names;
    for (const auto& [key, rects] : layout) {
        if (skin.NameOf(key) == name) return key;
        AppendName(names, skin.NameOf(key), " ");
    }
    std::uint16_t index = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), index);
    if (error == std::errc{} && end == name.data() + name.size() && layout.contains(index)) return index;
    throw FileError("no key '" + std::string(name) + "' on the " + std::string(BoardName(board)) +
                    " keyboard: its keys are " + names);
}

// The digit keyboard has one picture for both orientations, of which the panel shows as much as the picture
// of letters covers.
Picture Compose(const SkinModule& skin, const View& view) {
    const Picture drawn = Composition(skin, view).Draw(view.pressed);
    const Size letters =
        skin.Board(view.isLandscape ? BoardKind::Landscape : BoardKind::Portrait).picture.GetSize();
    if (view.Board() != BoardKind::Digits || letters == Size{}) return drawn;
    Picture shown(
        {std::min(drawn.GetSize().width, letters.width), std::min(drawn.GetSize().height, letters.height)},
        Color{});
    for (int y = 0; y < shown.GetSize().height; ++y)
        for (int x = 0; x < shown.GetSize().width; ++x)
            shown.At(x, y) = drawn.At(x, y);
    return shown;
}

Picture Enlarge(const Picture& picture, int zoom) {
    Picture large({picture.GetSize().width * zoom, picture.GetSize().height * zoom}, Color{});
    for (int y = 0; y < large.GetSize().height; ++y)
        for (int x = 0; x < large.GetSize().width; ++x)
            large.At(x, y) = picture.At(x / zoom, y / zoom);
    return large;
}

void DrawHitAreas(Picture& enlarged, int zoom, const SkinModule& skin, BoardKind board, const Font& font) {
    for (const auto& [key, rects] : skin.Board(board).layout)
        for (const Rect& rect : rects) {
            const Rect area{rect.left * zoom, rect.top * zoom, (rect.right + 1) * zoom - 1,
                            (rect.bottom + 1) * zoom - 1};
            if (rect.HasArea()) Write(enlarged, area, LabelOf(skin, key, font), font);
            Outline(enlarged, area);
        }
}

}  // namespace tlk
