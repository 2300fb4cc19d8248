// SPDX-License-Identifier: MIT
#include "preview.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <numeric>

#include "errors.h"
#include "name_list.h"

namespace tlk {
namespace {

constexpr Color kOutline{0xE0, 0x10, 0x60};
constexpr Color kLabel{0xFF, 0xFF, 0xFF};
// Pixels per em; the smallest legible size.
constexpr int kLabelSize = 9;

// `what` is its name in a source, `name` that in the file.
void Need(const SkinBitmap& bitmap, const std::string& what, const std::string& name) {
    if (!bitmap.isPresent) throw FileError("the skin has no " + what + " (" + name + ")");
    if (!bitmap.IsReadable())
        throw FileError("the " + what + " (" + name + ") cannot be shown: it is damaged");
}

void NeedPicture(const SkinModule& skin, const SkinBoard& board) {
    const std::string name(BoardName(board.kind));
    const Size upright = skin.Board(BoardKind::Portrait).picture.GetSize();
    if (board.kind == BoardKind::Landscape && !board.picture.isPresent && upright.width == upright.height * 4)
        throw FileError("the skin has no [landscape]: it is for a square screen, which has none");
    Need(board.picture, "[" + name + "] keyboard", std::string(PictureResource(board.kind)));
}

bool IsOn(const Picture& keyboard, const Picture& panel) {
    const Size size = Clip(keyboard.GetSize(), panel.GetSize());
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            if (keyboard.At(x, y) != panel.At(x, y)) return false;
    return true;
}

bool LooksLike(const SkinModule& skin, const View& view, const Picture& panel) {
    try {
        return IsOn(Paint(skin, view), panel);
    } catch (const FileError&) {
        return false;  // the skin has no such plane
    }
}

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

// The character of a character key, else the name or index, which are ASCII.
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

BoardKind ShownBoard(const SkinModule& skin, const View& view) {
    const BoardKind letters = view.isLandscape ? BoardKind::Landscape : BoardKind::Portrait;
    Keyboard& keyboard = skin.KeyboardOf(letters);
    keyboard.Latch(view.latches);
    return keyboard.Plane() == kDigitPlane ? BoardKind::Digits : letters;
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

Picture Paint(const SkinModule& skin, const View& view) {
    const SkinBoard& letters = skin.Board(view.isLandscape ? BoardKind::Landscape : BoardKind::Portrait);
    const SkinBoard& board = skin.Board(ShownBoard(skin, view));
    NeedPicture(skin, board);
    Keyboard& keyboard = skin.KeyboardOf(letters.kind);
    keyboard.Latch(view.latches);
    const std::size_t plane = keyboard.Plane();
    Need(board.masks[plane], "plane " + std::string(PlaneName(plane)) + ": no key brings it up",
         MaskResource(board.kind, plane));
    for (std::uint16_t key : view.pressed)
        keyboard.Press(key);
    // The panel shows as much of the digits' picture as the letters cover.
    const Size size = board.picture.GetSize();
    return keyboard.Paint(letters.picture.isPresent ? Clip(size, letters.picture.GetSize()) : size);
}

std::optional<View> FindView(const SkinModule& skin, const Picture& panel) {
    std::vector<Latches> states(kLatchStates);
    std::iota(states.begin(), states.end(), 0U);
    std::ranges::stable_sort(states, {}, [](Latches state) { return std::popcount(state); });
    for (Latches state : states)
        for (bool isLandscape : {false, true})
            if (const View view{state, isLandscape, {}}; LooksLike(skin, view, panel)) return view;
    return std::nullopt;
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
