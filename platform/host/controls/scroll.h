// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace host {

class ControlPainter;

// The geometry and the look of a vertical scroll bar: an arrow at each end, and a thumb whose length is its
// share.
class ScrollBar {
public:
    struct Range {
        int total = 0;
        int visible = 0;
        int first = 0;  // of the visible ones
    };
    enum class Part { UpArrow, AboveThumb, Thumb, BelowThumb, DownArrow };

    ScrollBar(const RECT& place, const Range& range) : m_place(place), m_range(range) {}

    bool IsNeeded() const { return m_range.total > m_range.visible; }
    const RECT& Place() const { return m_place; }
    RECT Thumb() const;
    Part PartAt(LONG y) const;
    // The first visible item after a tap on this part, or with the top of the thumb there; not limited to the
    // range.
    int FirstAfter(Part part) const;
    int FirstForThumb(LONG top) const;
    void Paint(ControlPainter& painter) const;

private:
    LONG ArrowHeight() const;
    LONG ThumbHeight() const;
    LONG Run() const;  // how far the thumb can move

    RECT m_place;
    Range m_range;
};

// The geometry of a list: items of equal height from the top, and a scroll bar if they need one.
class ItemRows {
public:
    struct Shape {
        RECT client{};
        LONG frame = 0;  // pixels around the items
        int itemHeight = 1;
    };

    ItemRows(const Shape& shape, int count, int first) : m_shape(shape), m_count(count), m_first(first) {}

    ScrollBar Bar() const;
    RECT Area() const;  // without the frame and the scroll bar
    // -1 where there is none.
    int ItemAt(POINT clientPoint) const;
    // The item under a dragged pen; if the pen is above or below the items, the one before or after the
    // present one, so that the list scrolls with each move.
    int ItemUnderDrag(POINT clientPoint, int present) const;
    // The nearest possible first item.
    int Limit(int first) const;
    // The first item with which this one is visible.
    int FirstToShow(int item) const;

private:
    int Visible() const;  // whole ones

    Shape m_shape;
    int m_count;
    int m_first;
};

}  // namespace host
