// SPDX-License-Identifier: MIT
#include "controls/scroll.h"

#include <algorithm>

#include "controls/painter.h"

namespace host {

LONG ScrollBar::ArrowHeight() const {
    return std::min(m_place.right - m_place.left, (m_place.bottom - m_place.top) / 3);
}

// Long enough for a pen, if there is room.
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

int ItemRows::Visible() const {
    const LONG height = m_shape.client.bottom - 2 * m_shape.frame;
    return std::max<int>(height / m_shape.itemHeight, 1);
}

ScrollBar ItemRows::Bar() const {
    const RECT& client = m_shape.client;
    const LONG width = std::min<LONG>(m_shape.itemHeight, client.right);
    return ScrollBar({client.right - width, 0, client.right, client.bottom},
                     {.total = m_count, .visible = Visible(), .first = m_first});
}

RECT ItemRows::Area() const {
    const RECT& client = m_shape.client;
    const LONG frame = m_shape.frame;
    const ScrollBar bar = Bar();
    const LONG right = bar.IsNeeded() ? bar.Place().left : client.right - frame;
    return {frame, frame, right, client.bottom - frame};
}

int ItemRows::ItemAt(POINT point) const {
    const RECT area = Area();
    if (point.x < area.left || point.x >= area.right || point.y < area.top || point.y >= area.bottom)
        return -1;
    const int item = m_first + (point.y - area.top) / m_shape.itemHeight;
    return item < m_count ? item : -1;
}

int ItemRows::ItemUnderDrag(POINT point, int present) const {
    const RECT area = Area();
    if (point.y < area.top) return std::max(present - 1, 0);
    if (point.y >= area.bottom) return present + 1;
    const int item = ItemAt(point);
    return item >= 0 ? item : present;
}

int ItemRows::Limit(int first) const { return std::clamp(first, 0, std::max(m_count - Visible(), 0)); }

int ItemRows::FirstToShow(int item) const {
    return Limit(item < 0 ? m_first : std::clamp(m_first, item - Visible() + 1, item));
}

}  // namespace host
