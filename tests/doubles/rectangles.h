// SPDX-License-Identifier: MIT
// Lets expectations compare and print rectangles.
#pragma once

#include <windows.h>

#include <ostream>

inline bool operator==(const RECT& a, const RECT& b) { return EqualRect(&a, &b) != FALSE; }
inline void PrintTo(const RECT& r, std::ostream* stream) {
    *stream << r.left << "," << r.top << " - " << r.right << "," << r.bottom;
}
