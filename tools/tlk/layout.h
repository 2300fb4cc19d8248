// SPDX-License-Identifier: MIT
// From rows of weights to the rectangles of keys.
#pragma once

#include <optional>
#include <vector>

#include "skin.h"

namespace tlk {

struct Key {
    std::uint16_t key = 0;
    std::vector<Rect> rects;
    // Of its own on this board.
    std::optional<Label> label;
    std::optional<Shade> face;
};

struct Layout {
    Size size;
    std::vector<Key> keys;
};

// Background left of the keys and above them, in pixels, as wide as it is right of each and below.
inline constexpr int kMargin = 1;

// The keys tile the picture but for the margin: a key's right edge is its neighbour's left edge less one. A
// key named in two rows at the same place becomes one tall key. What the board changes of single keys comes
// after that. Throws SourceError.
[[nodiscard]] Layout LayOut(const Skin& skin, const Board& board);

// The digit row, whose keys caps lock leaves alone, as the skin's CAPS rectangle: right and bottom edge are
// the last pixel column and row of its keys, which hold no glyph, so that the row below never begins inside.
// Nothing when there are no such keys. Throws SourceError when other characters stand among them.
[[nodiscard]] std::optional<Rect> FindCapsRect(const Skin& skin, const Layout& layout);

}  // namespace tlk
