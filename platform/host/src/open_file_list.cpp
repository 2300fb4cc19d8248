// SPDX-License-Identifier: MIT
#include "open_file_list.h"

#include <algorithm>

#include "control_paint.h"

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

int FileList::VisibleItems() const { return std::max<int>(Client().bottom / ItemHeight(), 1); }

ScrollBar FileList::Bar() const {
    const RECT client = Client();
    const LONG width = std::min<LONG>(ItemHeight(), client.right);
    return ScrollBar({client.right - width, 0, client.right, client.bottom},
                     {.total = Count(), .visible = VisibleItems(), .first = m_first});
}

RECT FileList::ItemsArea() const {
    RECT area = Client();
    const ScrollBar bar = Bar();
    if (bar.IsNeeded()) area.right = bar.Place().left;
    return area;
}

int FileList::ItemAt(POINT point) const {
    const RECT area = ItemsArea();
    if (point.x < area.left || point.x >= area.right || point.y < 0 || point.y >= area.bottom) return -1;
    const int item = m_first + point.y / ItemHeight();
    return item < Count() ? item : -1;
}

bool FileList::Select(int item) {
    const int selected = std::clamp(item, -1, Count() - 1);
    if (selected >= 0) ScrollTo(std::clamp(m_first, selected - VisibleItems() + 1, selected));
    if (selected == m_selected) return true;
    m_selected = selected;
    Redraw();
    return Notify(kSelectionChanged);
}

void FileList::ScrollTo(int firstItem) {
    const int first = std::clamp(firstItem, 0, std::max(Count() - VisibleItems(), 0));
    if (first == m_first) return;
    m_first = first;
    Redraw();
}

void FileList::OnPenDown(POINT point) {
    SetFocus(Handle());
    if (!IsAlive()) return;
    const ScrollBar bar = Bar();
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
    if (tracking == Tracking::Items) Select(ItemAt(point));
}

// A pen that leaves the items upward or downward scrolls by one item with each move.
void FileList::OnPenMove(POINT point) {
    if (m_tracking == Tracking::Thumb) return ScrollTo(Bar().FirstForThumb(point.y - m_grip));
    if (m_tracking != Tracking::Items || m_selected < 0) return;
    if (ItemAt(point) >= 0) {
        Select(ItemAt(point));
    } else if (point.y < 0) {
        Select(std::max(m_selected - 1, 0));
    } else if (point.y >= Client().bottom) {
        Select(m_selected + 1);
    }
}

void FileList::OnPenUp(POINT point) {
    const bool tapped = m_tracking == Tracking::Items && m_selected >= 0 && ItemAt(point) == m_selected;
    if (m_tracking != Tracking::None) ReleaseCapture();
    if (!IsAlive() || !tapped || !Selected() || Selected()->kind == FileItem::Kind::File) return;
    Notify(kTaken);
}

// The first tap of a double tap on a folder has opened it, and what lies there now was not meant.
void FileList::OnDoubleTap(POINT point) {
    const FileItem* item = Selected();
    if (item && item->kind == FileItem::Kind::File && ItemAt(point) == m_selected) Notify(kTaken);
}

void FileList::OnKey(UINT virtualKey) {
    if (virtualKey == VK_DOWN) Select(m_selected + 1);
    if (virtualKey == VK_UP) Select(std::max(m_selected - 1, 0));
}

void FileList::Paint(ControlPainter& painter) {
    painter.Fill(painter.Client(), COLOR_WINDOW);
    RECT line = ItemsArea();
    const LONG bottom = line.bottom;
    for (int item = m_first; item < Count() && line.top < bottom; ++item) {
        line.bottom = line.top + ItemHeight();
        PaintItem(painter, m_items[static_cast<std::size_t>(item)], line, item == m_selected);
        line.top = line.bottom;
    }
    painter.Frame(painter.Client(), COLOR_WINDOWFRAME);
    const ScrollBar bar = Bar();
    if (bar.IsNeeded()) bar.Paint(painter);
    if (HasFocus()) painter.DottedFrame(Shrink(ItemsArea(), 2 * painter.Metrics().Unit()), COLOR_GRAYTEXT);
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
