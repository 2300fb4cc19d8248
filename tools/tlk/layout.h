// SPDX-License-Identifier: MIT
// Places keys: from rows of weights to rectangles.
#pragma once

#include <optional>
#include <vector>

#include "skin.h"

namespace tlk {

struct Key {
    std::uint16_t key = 0;
    std::vector<Rect> rects;
    // Its own on this board.
    std::optional<Label> label;
    std::optional<Shade> face;
};

struct Layout {
    Size size;
    std::vector<Key> keys;
};

// The margin to the left of and above the keys, in pixels; as wide as the gap between keys.
inline constexpr int kMargin = 1;

// The keys tile the picture inside the margin: a key's right edge is its neighbour's left edge less one. A
// key named in two rows at the same place becomes one tall key. The board's changes of single keys are
// applied last. Throws SourceError.
[[nodiscard]] Layout LayOut(const Skin& skin, const Board& board);

// The CAPS rectangle: the digit row, which caps lock leaves alone. Its right and bottom edge are the last
// pixel column and row of the keys, which have no ink, so that the row below does not begin inside. Nothing
// if there are no such keys. Throws SourceError if there are other characters among them.
[[nodiscard]] std::optional<Rect> FindCapsRect(const Skin& skin, const Layout& layout);

}  // namespace tlk
