// SPDX-License-Identifier: MIT
#include "control_list.h"

#include <algorithm>

#include "control_combo.h"
#include "control_paint.h"

namespace host {

namespace {

constexpr int kItemPadding = 2;  // above and below the text, in units: enough for a pen

}  // namespace

int DropDownList::ItemHeight(const FontMetrics& metrics) {
    return metrics.LineHeight() + 2 * kItemPadding * metrics.Unit();
}

LRESULT DropDownList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE: {
            const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
            if (!creation->lpCreateParams) return -1;
            m_setup = *static_cast<const Setup*>(creation->lpCreateParams);
            const FontMetrics metrics(m_setup.font);
            m_itemHeight = ItemHeight(metrics);
            m_frame = metrics.Unit();
            Highlight(m_setup.highlight);
            return 0;
        }
        case WM_PAINT:
            return Paint(), 0;
        case WM_ERASEBKGND:
            return 1;
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
    return DefWindowProcW(Handle(), message, wParam, lParam);
}

int DropDownList::ItemCount() const {
    const auto combo = FindSystemWindow<ComboBox>(m_setup.combo);
    return combo ? static_cast<int>(combo->Items().size()) : 0;
}

int DropDownList::VisibleItems() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    return std::max<int>((client.bottom - 2 * m_frame) / m_itemHeight, 1);
}

ScrollBar DropDownList::Bar() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    const LONG width = std::min<LONG>(m_itemHeight, client.right);
    return ScrollBar({client.right - width, 0, client.right, client.bottom},
                     {.total = ItemCount(), .visible = VisibleItems(), .first = m_first});
}

RECT DropDownList::ItemsArea() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    RECT area = Shrink(client, m_frame);
    const ScrollBar bar = Bar();
    if (bar.IsNeeded()) area.right = bar.Place().left;
    return area;
}

int DropDownList::ItemAt(POINT point) const {
    const RECT area = ItemsArea();
    if (point.x < area.left || point.x >= area.right || point.y < area.top || point.y >= area.bottom)
        return -1;
    const int item = m_first + (point.y - area.top) / m_itemHeight;
    return item < ItemCount() ? item : -1;
}

void DropDownList::Highlight(int item) {
    m_highlight = std::min(item, ItemCount() - 1);
    const int visible = VisibleItems();
    if (m_highlight >= 0) ScrollTo(std::clamp(m_first, m_highlight - visible + 1, m_highlight));
    ScrollTo(m_first);
}

void DropDownList::ScrollTo(int firstItem) {
    m_first = std::clamp(firstItem, 0, std::max(ItemCount() - VisibleItems(), 0));
    InvalidateRect(Handle(), nullptr, FALSE);
}

void DropDownList::OnPenDown(POINT point) {
    const ScrollBar bar = Bar();
    const bool inBar = bar.IsNeeded() && point.x >= bar.Place().left;
    m_tracking = inBar ? Tracking::None : Tracking::Items;
    if (inBar) {
        const ScrollBar::Part part = bar.PartAt(point.y);
        ScrollTo(bar.FirstAfter(part));
        if (part != ScrollBar::Part::Thumb) return;
        m_tracking = Tracking::Thumb;
        m_grip = point.y - bar.Thumb().top;
    }
    const Tracking tracking = m_tracking;
    SetCapture(Handle());
    if (!IsAlive()) return;
    m_tracking = tracking;
    if (m_tracking == Tracking::Items && ItemAt(point) >= 0) Highlight(ItemAt(point));
}

// A pen that leaves the items upward or downward scrolls by one item with each move.
void DropDownList::OnPenMove(POINT point) {
    if (m_tracking == Tracking::Thumb) return ScrollTo(Bar().FirstForThumb(point.y - m_grip));
    if (m_tracking != Tracking::Items) return;
    const RECT area = ItemsArea();
    if (ItemAt(point) >= 0) {
        Highlight(ItemAt(point));
    } else if (point.y < area.top) {
        Highlight(std::max(m_highlight - 1, 0));
    } else if (point.y >= area.bottom) {
        Highlight(m_highlight + 1);
    }
}

// Lifted outside the items the pen takes nothing and the list stays open.
void DropDownList::OnPenUp(POINT point) {
    const bool takes = m_tracking == Tracking::Items;
    const int item = ItemAt(point);
    if (m_tracking != Tracking::None) ReleaseCapture();
    const auto combo = FindSystemWindow<ComboBox>(m_setup.combo);
    if (takes && item >= 0 && combo && IsAlive()) combo->Take(item);
}

void DropDownList::Paint() {
    ControlPainter painter(Handle(), m_setup.font);
    const auto combo = FindSystemWindow<ComboBox>(m_setup.combo);
    if (!painter || !combo) return;
    painter.Fill(painter.Client(), COLOR_WINDOW);
    const RECT area = ItemsArea();
    const int count = ItemCount();
    LONG top = area.top;
    for (int item = m_first; item < count && top < area.bottom; ++item) {
        const bool marked = item == m_highlight;
        const RECT line{area.left, top, area.right, std::min<LONG>(top + m_itemHeight, area.bottom)};
        if (marked) painter.Fill(line, COLOR_HIGHLIGHT);
        const int padding = kItemPadding * painter.Metrics().Unit();
        painter.Line(combo->Items()[static_cast<std::size_t>(item)],
                     {line.left + 2 * padding - m_frame, line.top + padding, line.right, line.bottom},
                     DT_LEFT, marked ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
        top += m_itemHeight;
    }
    painter.Frame(painter.Client(), COLOR_WINDOWFRAME);
    const ScrollBar bar = Bar();
    if (bar.IsNeeded()) bar.Paint(painter);
}

}  // namespace host
