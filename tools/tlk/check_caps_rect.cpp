// SPDX-License-Identifier: MIT
// Checks the CAPS rectangle against the keys. Inside it the engine draws by Shift alone. Keys type by Shift
// alone depending on their characters, and look pressed by Shift alone depending on their top left corner.
// The three must agree.
#include "check_parts.h"

namespace tlk {
namespace {

constexpr std::string_view kResource = "CAPS_RECT";

enum class Position { Outside, Inside, Across };

// Compares the inverted part of a pressed key, without its last column and row, with the part drawn by Shift
// alone.
Position Locate(const Rect& area, const Rect& rect) {
    if (rect.right <= area.left || rect.left >= area.right || rect.bottom <= area.top ||
        rect.top >= area.bottom)
        return Position::Outside;
    const bool isInside = area.Contains(rect);
    return isInside ? Position::Inside : Position::Across;
}

void CheckKey(const Rect& area, const Rect& rect, std::uint16_t key, bool followsShift, RemarkList& remarks) {
    const std::string where = "the area that caps lock leaves alone" + remarks.Called(kResource);
    const auto add = [&](std::string_view before, std::string_view after) {
        remarks.Add(BoardKind::Portrait, key, std::string(before) + where + std::string(after));
    };
    const Position position = Locate(area, rect);
    if (position == Position::Across)
        add("", " cuts through it: with caps lock it is drawn half by one plane, half by another");
    else if (followsShift && position == Position::Outside)
        add("types by Shift alone but lies outside of ",
            ": with caps lock it shows another character than it types");
    else if (!followsShift && position == Position::Inside)
        add("lies inside of ",
            " but is no key of the digit row: with caps lock it shows another character than it types");
    else if (area.Contains(rect.left, rect.top) != (position == Position::Inside))
        add("touches with its corner ",
            ": pressed with caps lock it shows the wrong plane; make the area end a pixel earlier");
}

}  // namespace

void CheckCapsRect(const CheckedSkin& checked, RemarkList& remarks) {
    const SkinBoard& board = checked.skin.Board(BoardKind::Portrait);
    Keyboard& keyboard = checked.skin.KeyboardOf(BoardKind::Portrait);
    const Rect area = keyboard.CapsRect();
    // A square screen has no CAPS rectangle.
    if (area == Rect{0, 0, 0, 0} || checked.screen.IsSquare()) return;
    const Size picture = board.picture.GetSize();
    const std::string where =
        "what caps lock leaves alone" + remarks.Called(kResource) + ", " + Text(area) + ",";
    if (area.right <= area.left || area.bottom <= area.top) {
        remarks.Add(BoardKind::Portrait, where + " has no area");
        return;
    }
    if (area.left < 0 || area.top < 0 || area.right > picture.width || area.bottom > picture.height)
        remarks.Add(BoardKind::Portrait, where + " reaches out of the picture of " + Text(picture));
    for (const auto& [key, rects] : board.layout) {
        if (IsFunction(key) || key >= checked.skin.characters.size()) continue;
        for (const Rect& rect : rects)
            if (rect.HasArea()) CheckKey(area, rect, key, keyboard.IsOfDigitRow(key), remarks);
    }
}

}  // namespace tlk
