// SPDX-License-Identifier: MIT
#include "controls/file_list.h"

#include <algorithm>
#include <utility>

#include "controls/painter.h"

namespace host {
namespace {

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
            SetFocus(Handle());
            if (!IsAlive()) return 0;
            break;
        case WM_LBUTTONDBLCLK:
            return OnDoubleTap(PenPoint(lParam)), 0;
        case WM_KEYDOWN:
            return OnKey(static_cast<UINT>(wParam)), 0;
    }
    return ScrolledList::OnMessage(message, wParam, lParam);
}

KeyUse FileList::UseOf(UINT virtualKey) const {
    return virtualKey == VK_UP || virtualKey == VK_DOWN ? KeyUse::Own : KeyUse::Dialog;
}

void FileList::SetItems(std::vector<FileItem> items) {
    m_items = std::move(items);
    Reset();
}

const FileItem* FileList::Selected() const {
    return Marked() < 0 ? nullptr : &m_items[static_cast<std::size_t>(Marked())];
}

int FileList::ItemHeight() const { return ScrolledList::ItemHeight(FontMetrics(Font()), kLook); }

void FileList::Touch(int item) {
    const int before = Marked();
    Mark(item);
    if (Marked() != before) Notify(kSelectionChanged);
}

void FileList::Take(int item) {
    if (item == Marked() && Selected()->kind != FileItem::Kind::File) Notify(kTaken);
}

// The first tap of a double tap on a folder has opened it; the item there now is not the one that was tapped.
void FileList::OnDoubleTap(POINT point) {
    const FileItem* item = Selected();
    if (item && item->kind == FileItem::Kind::File && ItemAt(point) == Marked()) Notify(kTaken);
}

void FileList::OnKey(UINT virtualKey) {
    if (virtualKey == VK_DOWN) Touch(Marked() + 1);
    if (virtualKey == VK_UP) Touch(std::max(Marked() - 1, 0));
}

void FileList::Paint(ControlPainter& painter) {
    ScrolledList::Paint(painter);
    const int distance = 2 * painter.Metrics().Unit();
    if (HasFocus()) painter.DottedFrame(Shrink(Rows().Area(), distance), COLOR_GRAYTEXT);
}

void FileList::PaintItem(ControlPainter& painter, int item, const RECT& line) const {
    const int unit = painter.Metrics().Unit();
    const LONG side = line.bottom - line.top - 2 * unit;
    const RECT icon{line.left + 3 * unit, line.top + unit, line.left + 3 * unit + side,
                    line.top + unit + side};
    const FileItem& shown = m_items[static_cast<std::size_t>(item)];
    PaintIcon(painter, icon, shown.kind);
    const RECT text{icon.right + 3 * unit, line.top + kLook.padding * unit, line.right, line.bottom};
    painter.Line(shown.name, text, DT_LEFT, item == Marked() ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
}

}  // namespace host
