// SPDX-License-Identifier: MIT
#include "graphics/region.h"

#include <algorithm>

namespace host {

RECT Bounds(const RECT& a, const RECT& b) {
    if (IsEmpty(a)) return b;
    if (IsEmpty(b)) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

RECT Region::BoundingBox() const {
    RECT box{};
    for (const RECT& r : m_rectangles)
        box = Bounds(box, r);
    return box;
}

void Region::Set(const RECT& r) {
    m_rectangles.clear();
    if (!IsEmpty(r)) m_rectangles.push_back(r);
}

// A rectangle inside one of the region's is not added: splitting that one would slow painting.
void Region::Add(const RECT& r) {
    if (IsEmpty(r)) return;
    const auto contains = [&r](const RECT& old) {
        return old.left <= r.left && old.top <= r.top && old.right >= r.right && old.bottom >= r.bottom;
    };
    if (std::any_of(m_rectangles.begin(), m_rectangles.end(), contains)) return;
    Subtract(r);
    m_rectangles.push_back(r);
}

// Appends the rest of each rectangle: above, below, left and right of the hole.
void Region::Subtract(const RECT& r) {
    if (IsEmpty(r)) return;
    std::size_t kept = 0;
    const std::size_t count = m_rectangles.size();
    for (std::size_t i = 0; i < count; ++i) {
        const RECT old = m_rectangles[i];
        const RECT hole = Intersect(old, r);
        if (IsEmpty(hole)) {
            m_rectangles[kept++] = old;
            continue;
        }
        const RECT pieces[] = {{old.left, old.top, old.right, hole.top},
                               {old.left, hole.bottom, old.right, old.bottom},
                               {old.left, hole.top, hole.left, hole.bottom},
                               {hole.right, hole.top, old.right, hole.bottom}};
        for (const RECT& piece : pieces)
            if (!IsEmpty(piece)) m_rectangles.push_back(piece);
    }
    m_rectangles.erase(m_rectangles.begin() + static_cast<std::ptrdiff_t>(kept),
                       m_rectangles.begin() + static_cast<std::ptrdiff_t>(count));
}

void Region::Subtract(const Region& other) {
    if (this == &other) return Clear();
    for (const RECT& r : other.m_rectangles)
        Subtract(r);
}

void Region::IntersectWith(const RECT& r) {
    std::size_t kept = 0;
    for (const RECT& old : m_rectangles) {
        const RECT common = Intersect(old, r);
        if (!IsEmpty(common)) m_rectangles[kept++] = common;
    }
    m_rectangles.resize(kept);
}

void Region::Move(LONG dx, LONG dy) {
    for (RECT& r : m_rectangles)
        r = Offset(r, dx, dy);
}

}  // namespace host
