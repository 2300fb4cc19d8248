// SPDX-License-Identifier: MIT
// Lengths are given for a screen whose narrow side has 240 pixels and scaled for others.
#pragma once

#include <windows.h>

#include <algorithm>

inline int Scaled(SIZE screen, int size) {
    return std::max(size * static_cast<int>(std::min(screen.cx, screen.cy)) / 240, 1);
}
// The enlargement of pictures, a whole number.
inline int PictureScale(SIZE screen) { return Scaled(screen, 1); }

inline bool IsSameSize(SIZE a, SIZE b) { return a.cx == b.cx && a.cy == b.cy; }
