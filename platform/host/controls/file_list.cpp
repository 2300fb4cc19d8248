// SPDX-License-Identifier: MIT
#include "controls/file_list.h"

#include <algorithm>
#include <utility>

#include "controls/painter.h"

namespace host {
namespace {

constexpr int kItemPadding = 3;  // above and below the text, in units: enough for a pen
constexpr COLORREF kFolderColor = RGB(0xF2, 0xC1, 0x4E);

// A folder with its tab, or a page, in the middle of a square.
void PaintIcon(ControlPainter& painter, const RECT& square, FileItem::Kind kind) {
    const LONG side = square.bottom - square.top;
    if (kind == FileItem::Kind::File) {
        const RECT page{square.left + side / 4, square.top + side / 8, square.right - side / 4,
                        square.bottom - side / 8};
        painter.Fill(page, COLOR_WINDOW);
        painter.Frame(page, COLOR_WINDOWFRAME);
        return;
    }
    const PlatformScope scope;
    const HBRUSH brush = CreateSolidBrush(kFolderColor);
    const RECT body{square.left + side / 8, square.top + side * 3 / 8, square.right - side / 8,
                    square.bottom - side / 8};
    const RECT tab{body.left, square.top + side / 5, body.left + side * 3 / 8, body.top + 1};
    for (const RECT& part : {tab, body}) {
        painter.Fill(part, brush);
        painter.Frame(part, COLOR_WINDOWFRAME);
    }
    if (brush) DeleteObject(brush);
}

}  // namespace

LRESULT FileList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            return OnPenDown(PenPoint(lParam)), 0;
        case WM_LBUTTONDBLCLK:
            return OnDoubleTap(PenPoint(lParam)), 0;
        case WM_MOUSEMOVE:
            return OnPenMove(PenPoint(lParam)), 0;
        case WM_LBUTTONUP:
            return OnPenUp(PenPoint(lParam)), 0;
        case WM_CAPTURECHANGED:
            m_tracking = Tracking::None;
            return 0;
        case WM_KEYDOWN:
            return OnKey(static_cast<UINT>(wParam)), 0;
    }
    return Control::OnMessage(message, wParam, lParam);
}

KeyUse FileList::UseOf(UINT virtualKey) const {
    return virtualKey == VK_UP || virtualKey == VK_DOWN ? KeyUse::Own : KeyUse::Dialog;
}

void FileList::SetItems(std::vector<FileItem> items) {
    m_items = std::move(items);
    m_selected = -1;
    m_first = 0;
    if (m_tracking != Tracking::None) ReleaseCapture();
    Redraw();
}

const FileItem* FileList::Selected() const {
    return m_selected < 0 ? nullptr : &m_items[static_cast<std::size_t>(m_selected)];
}

int FileList::ItemHeight() const {
    const FontMetrics metrics(Font());
    return metrics.LineHeight() + 2 * kItemPadding * metrics.Unit();
}

ItemRows FileList::Rows() const {
    return ItemRows({.client = Client(), .itemHeight = ItemHeight()}, Count(), m_first);
}

bool FileList::Select(int item) {
    const int selected = std::clamp(item, -1, Count() - 1);
    ScrollTo(Rows().FirstToShow(selected));
    if (selected == m_selected) return true;
    m_selected = selected;
    Redraw();
    return Notify(kSelectionChanged);
}

void FileList::ScrollTo(int firstItem) {
    const int first = Rows().Limit(firstItem);
    if (first == m_first) return;
    m_first = first;
    Redraw();
}

void FileList::OnPenDown(POINT point) {
    SetFocus(Handle());
    if (!IsAlive()) return;
    const ItemRows rows = Rows();
    const ScrollBar bar = rows.Bar();
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
    if (tracking == Tracking::Items) Select(rows.ItemAt(point));
}

void FileList::OnPenMove(POINT point) {
    const ItemRows rows = Rows();
    if (m_tracking == Tracking::Thumb) return ScrollTo(rows.Bar().FirstForThumb(point.y - m_grip));
    if (m_tracking == Tracking::Items && m_selected >= 0) Select(rows.ItemUnderDrag(point, m_selected));
}

void FileList::OnPenUp(POINT point) {
    const bool tapped =
        m_tracking == Tracking::Items && m_selected >= 0 && Rows().ItemAt(point) == m_selected;
    if (m_tracking != Tracking::None) ReleaseCapture();
    if (!IsAlive() || !tapped || !Selected() || Selected()->kind == FileItem::Kind::File) return;
    Notify(kTaken);
}

// The first tap of a double tap on a folder has opened it; the item there now is not the one that was tapped.
void FileList::OnDoubleTap(POINT point) {
    const FileItem* item = Selected();
    if (item && item->kind == FileItem::Kind::File && Rows().ItemAt(point) == m_selected) Notify(kTaken);
}

void FileList::OnKey(UINT virtualKey) {
    if (virtualKey == VK_DOWN) Select(m_selected + 1);
    if (virtualKey == VK_UP) Select(std::max(m_selected - 1, 0));
}

void FileList::Paint(ControlPainter& painter) {
    painter.Fill(painter.Client(), COLOR_WINDOW);
    const ItemRows rows = Rows();
    RECT line = rows.Area();
    const LONG bottom = line.bottom;
    for (int item = m_first; item < Count() && line.top < bottom; ++item) {
        line.bottom = line.top + ItemHeight();
        PaintItem(painter, m_items[static_cast<std::size_t>(item)], line, item == m_selected);
        line.top = line.bottom;
    }
    painter.Frame(painter.Client(), COLOR_WINDOWFRAME);
    const ScrollBar bar = rows.Bar();
    if (bar.IsNeeded()) bar.Paint(painter);
    if (HasFocus()) painter.DottedFrame(Shrink(rows.Area(), 2 * painter.Metrics().Unit()), COLOR_GRAYTEXT);
}

void FileList::PaintItem(ControlPainter& painter, const FileItem& item, const RECT& line,
                         bool selected) const {
    const int unit = painter.Metrics().Unit();
    if (selected) painter.Fill(line, COLOR_HIGHLIGHT);
    const LONG side = line.bottom - line.top - 2 * unit;
    const RECT icon{line.left + 3 * unit, line.top + unit, line.left + 3 * unit + side,
                    line.top + unit + side};
    PaintIcon(painter, icon, item.kind);
    const RECT text{icon.right + 3 * unit, line.top + kItemPadding * unit, line.right, line.bottom};
    painter.Line(item.name, text, DT_LEFT, selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
}

}  // namespace host
