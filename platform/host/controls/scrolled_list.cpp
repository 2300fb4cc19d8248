// SPDX-License-Identifier: MIT
#include "controls/scrolled_list.h"

#include <algorithm>

#include "controls/painter.h"

namespace host {

int ScrolledList::ItemHeight(const FontMetrics& metrics, Look look) {
    return metrics.LineHeight() + 2 * look.padding * metrics.Unit();
}

LRESULT ScrolledList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return OnPenDown(PenPoint(lParam)), 0;
        case WM_MOUSEMOVE:
            return OnPenMove(PenPoint(lParam)), 0;
        case WM_LBUTTONUP:
            return OnPenUp(PenPoint(lParam)), 0;
        case WM_CAPTURECHANGED:
            m_tracking = Tracking::None;
            return 0;
    }
    return Control::OnMessage(message, wParam, lParam);
}

ItemRows ScrolledList::Rows() const {
    const FontMetrics metrics(Font());
    const Look look = GetLook();
    return ItemRows(
        {.client = Client(), .frame = look.frame * metrics.Unit(), .itemHeight = ItemHeight(metrics, look)},
        Count(), m_first);
}

void ScrolledList::Mark(int item) {
    m_marked = std::clamp(item, -1, Count() - 1);
    ScrollTo(Rows().FirstToShow(m_marked));
}

void ScrolledList::Reset() {
    m_marked = -1;
    m_first = 0;
    if (m_tracking != Tracking::None) ReleaseCapture();
    Redraw();
}

void ScrolledList::ScrollTo(int firstItem) {
    m_first = Rows().Limit(firstItem);
    Redraw();
}

// On the scroll bar only the thumb captures the pen.
void ScrolledList::OnPenDown(POINT point) {
    const ScrollBar bar = Rows().Bar();
    Tracking tracking = Tracking::Items;
    if (bar.IsNeeded() && point.x >= bar.Place().left) {
        const ScrollBar::Part part = bar.PartAt(point.y);
        ScrollTo(bar.FirstAfter(part));
        if (part != ScrollBar::Part::Thumb) return;
        tracking = Tracking::Thumb;
        m_grip = point.y - bar.Thumb().top;
    }
    SetCapture(Handle());
    if (!IsAlive()) return;
    m_tracking = tracking;
    if (tracking == Tracking::Items) Touch(ItemAt(point));
}

void ScrolledList::OnPenMove(POINT point) {
    const ItemRows rows = Rows();
    if (m_tracking == Tracking::Thumb) return ScrollTo(rows.Bar().FirstForThumb(point.y - m_grip));
    if (m_tracking == Tracking::Items && FollowsPen()) Touch(rows.ItemUnderDrag(point, m_marked));
}

void ScrolledList::OnPenUp(POINT point) {
    const int item = m_tracking == Tracking::Items ? ItemAt(point) : -1;
    if (m_tracking != Tracking::None) ReleaseCapture();
    if (item >= 0 && IsAlive()) Take(item);
}

void ScrolledList::Paint(ControlPainter& painter) {
    painter.Fill(painter.Client(), COLOR_WINDOW);
    const ItemRows rows = Rows();
    RECT line = rows.Area();
    const LONG bottom = line.bottom;
    const int height = ItemHeight(painter.Metrics(), GetLook());
    for (int item = m_first; item < Count() && line.top < bottom; ++item) {
        line.bottom = line.top + height;
        if (item == m_marked) painter.Fill(line, COLOR_HIGHLIGHT);
        PaintItem(painter, item, line);
        line.top = line.bottom;
    }
    painter.Frame(painter.Client(), COLOR_WINDOWFRAME);
    const ScrollBar bar = rows.Bar();
    if (bar.IsNeeded()) bar.Paint(painter);
}

}  // namespace host
