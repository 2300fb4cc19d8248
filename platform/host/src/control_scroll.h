// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace host {

class ControlPainter;

// The geometry and the look of an upright scroll bar: an arrow at each end, a thumb as long as its share.
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
    // The first visible one after a tap on this part, or with the thumb's top there; not limited to the
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

}  // namespace host
