// SPDX-License-Identifier: MIT
// Ink drawn by hand, a row of text for each row of pixels: '#' is ink.
#pragma once

#include <string_view>
#include <vector>

#include "grid.h"

namespace tlk {

using InkRows = std::vector<std::string_view>;

// 1 is ink. All rows have the same length.
[[nodiscard]] inline Mask ToInk(const InkRows& rows) {
    Mask ink({static_cast<int>(rows[0].size()), static_cast<int>(rows.size())}, 0);
    for (int y = 0; y < ink.GetSize().height; ++y)
        for (int x = 0; x < ink.GetSize().width; ++x)
            ink.At(x, y) = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '#';
    return ink;
}

// Sets the pixels of the ink that are inside the target to `value`.
inline void Paste(Mask& target, const Mask& ink, int left, int top, std::uint8_t value) {
    for (int y = 0; y < ink.GetSize().height; ++y)
        for (int x = 0; x < ink.GetSize().width; ++x)
            if (ink.At(x, y) && target.Contains(left + x, top + y)) target.At(left + x, top + y) = value;
}

}  // namespace tlk
