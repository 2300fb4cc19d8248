// SPDX-License-Identifier: MIT
#include "control_scroll.h"

#include <algorithm>

#include "control_paint.h"

namespace host {

LONG ScrollBar::ArrowHeight() const {
    return std::min(m_place.right - m_place.left, (m_place.bottom - m_place.top) / 3);
}

// Never too short for a pen, as far as there is room.
LONG ScrollBar::ThumbHeight() const {
    const LONG room = m_place.bottom - m_place.top - 2 * ArrowHeight();
    const LONG share = room * m_range.visible / std::max(m_range.total, 1);
    return std::clamp(share, std::min(ArrowHeight() / 2, room), room);
}

LONG ScrollBar::Run() const { return m_place.bottom - m_place.top - 2 * ArrowHeight() - ThumbHeight(); }

RECT ScrollBar::Thumb() const {
    const LONG steps = std::max(m_range.total - m_range.visible, 1);
    const LONG top = m_place.top + ArrowHeight() + Run() * m_range.first / steps;
    return {m_place.left, top, m_place.right, top + ThumbHeight()};
}

ScrollBar::Part ScrollBar::PartAt(LONG y) const {
    if (y < m_place.top + ArrowHeight()) return Part::UpArrow;
    if (y >= m_place.bottom - ArrowHeight()) return Part::DownArrow;
    const RECT thumb = Thumb();
    if (y < thumb.top) return Part::AboveThumb;
    return y < thumb.bottom ? Part::Thumb : Part::BelowThumb;
}

int ScrollBar::FirstAfter(Part part) const {
    const int page = std::max(m_range.visible - 1, 1);
    switch (part) {
        case Part::UpArrow:
            return m_range.first - 1;
        case Part::DownArrow:
            return m_range.first + 1;
        case Part::AboveThumb:
            return m_range.first - page;
        case Part::BelowThumb:
            return m_range.first + page;
        case Part::Thumb:
            break;
    }
    return m_range.first;
}

int ScrollBar::FirstForThumb(LONG top) const {
    const LONG run = std::max<LONG>(Run(), 1);
    const LONG offset = std::clamp<LONG>(top - m_place.top - ArrowHeight(), 0, run);
    return static_cast<int>((offset * (m_range.total - m_range.visible) + run / 2) / run);
}

void ScrollBar::Paint(ControlPainter& painter) const {
    const LONG height = ArrowHeight();
    const RECT up{m_place.left, m_place.top, m_place.right, m_place.top + height};
    const RECT down{m_place.left, m_place.bottom - height, m_place.right, m_place.bottom};
    painter.Fill(m_place, COLOR_WINDOW);
    painter.Fill(up, COLOR_BTNFACE);
    painter.Fill(down, COLOR_BTNFACE);
    painter.Fill(Thumb(), COLOR_BTNFACE);
    painter.Frame(m_place, COLOR_WINDOWFRAME);
    painter.Frame(up, COLOR_WINDOWFRAME);
    painter.Frame(down, COLOR_WINDOWFRAME);
    painter.Frame(Thumb(), COLOR_WINDOWFRAME);
    painter.Arrow(up, ControlPainter::Direction::Up, COLOR_WINDOWTEXT);
    painter.Arrow(down, ControlPainter::Direction::Down, COLOR_WINDOWTEXT);
}

}  // namespace host
