// SPDX-License-Identifier: MIT
// A set of pixels as rectangles that do not overlap. Reuses its memory, so that painting does not allocate.
#pragma once

#include <windef.h>

#include <algorithm>
#include <vector>

namespace host {

inline bool IsEmpty(const RECT& r) { return r.left >= r.right || r.top >= r.bottom; }
// The intersection; an empty rectangle if there is none.
inline RECT Intersect(const RECT& a, const RECT& b) {
    const RECT common{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                      std::min(a.bottom, b.bottom)};
    return IsEmpty(common) ? RECT{} : common;
}
// The smallest rectangle around both; empty ones do not count.
RECT Bounds(const RECT& a, const RECT& b);
inline RECT Offset(const RECT& r, LONG dx, LONG dy) {
    return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}

class Region {
public:
    const std::vector<RECT>& Rectangles() const { return m_rectangles; }
    bool Empty() const { return m_rectangles.empty(); }
    RECT BoundingBox() const;
    void Clear() { m_rectangles.clear(); }
    void Set(const RECT& r);
    void Add(const RECT& r);
    void Subtract(const RECT& r);
    void Subtract(const Region& other);
    void IntersectWith(const RECT& r);
    void Move(LONG dx, LONG dy);
    void Swap(Region& other) { m_rectangles.swap(other.m_rectangles); }

private:
    std::vector<RECT> m_rectangles;
};

}  // namespace host
