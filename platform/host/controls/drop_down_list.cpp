// SPDX-License-Identifier: MIT
#include "controls/drop_down_list.h"

#include <algorithm>

#include "controls/combo_box.h"
#include "controls/painter.h"

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

ItemRows DropDownList::Rows() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    return ItemRows({.client = client, .frame = m_frame, .itemHeight = m_itemHeight}, ItemCount(), m_first);
}

int DropDownList::ItemAt(POINT point) const { return Rows().ItemAt(point); }

void DropDownList::Highlight(int item) {
    m_highlight = std::min(item, ItemCount() - 1);
    ScrollTo(Rows().FirstToShow(m_highlight));
}

void DropDownList::ScrollTo(int firstItem) {
    m_first = Rows().Limit(firstItem);
    InvalidateRect(Handle(), nullptr, FALSE);
}

void DropDownList::OnPenDown(POINT point) {
    const ScrollBar bar = Rows().Bar();
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

void DropDownList::OnPenMove(POINT point) {
    const ItemRows rows = Rows();
    if (m_tracking == Tracking::Thumb) return ScrollTo(rows.Bar().FirstForThumb(point.y - m_grip));
    if (m_tracking == Tracking::Items) Highlight(rows.ItemUnderDrag(point, m_highlight));
}

// A pen lifted outside the items selects nothing, and the list stays open.
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
    const RECT area = Rows().Area();
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
    const ScrollBar bar = Rows().Bar();
    if (bar.IsNeeded()) bar.Paint(painter);
}

}  // namespace host
