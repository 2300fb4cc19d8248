// SPDX-License-Identifier: MIT
// The combo box's field, its items and its messages.
#include "controls/combo_box.h"

#include <algorithm>
#include <utility>

#include "controls/drop_down_list.h"
#include "controls/painter.h"

namespace host {

namespace {

constexpr int kFieldPadding = 3;  // above and below the text, in units, with the frame

}  // namespace

LRESULT ComboBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const std::optional<LRESULT> answer = OnItemMessage(message, wParam, lParam)) return *answer;
    switch (message) {
        case WM_SETTEXT:  // the text is that of the selected item
            return CB_ERR;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return OnPenDown(), 0;
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
            return OnPenMove(PenPoint(lParam), message), 0;
        case WM_KEYDOWN:
            return OnKey(static_cast<UINT>(wParam)), 0;
        case WM_CHAR:
            return OnCharacter(static_cast<WCHAR>(wParam)), 0;
    }
    OnStateMessage(message, wParam, lParam);
    return IsAlive() ? Control::OnMessage(message, wParam, lParam) : 0;
}

std::optional<LRESULT> ComboBox::OnItemMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
        case CB_ADDSTRING:
            return AddItem(reinterpret_cast<LPCWSTR>(lParam));
        case CB_DELETESTRING:
            return DeleteItem(index);
        case CB_GETCOUNT:
            return static_cast<LRESULT>(m_items.size());
        case CB_GETCURSEL:
            return m_selected;
        case CB_GETLBTEXT:
            return CopyItem(index, reinterpret_cast<LPWSTR>(lParam));
        case CB_GETLBTEXTLEN:
            return HasItem(index) ? static_cast<LRESULT>(m_items[static_cast<std::size_t>(index)].size())
                                  : CB_ERR;
        case CB_SETCURSEL:
            return SelectItem(index);
        case CB_SHOWDROPDOWN:
            if (wParam) Open();
            if (!wParam) Close(Outcome::Cancelled);
            return TRUE;
        case CB_GETDROPPEDCONTROLRECT:
            return GetDroppedRect(reinterpret_cast<RECT*>(lParam));
        case CB_GETDROPPEDSTATE:
            return IsOpen();
    }
    return std::nullopt;
}

// Messages that close an open list or end tracking of the pen.
void ComboBox::OnStateMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_CAPTURECHANGED:
            m_tracking = false;
            break;
        case WM_KILLFOCUS:
        case WM_MOVE:
            Close(Outcome::Cancelled);
            break;
        case WM_ENABLE:
        case WM_SHOWWINDOW:
            if (!wParam) Close(Outcome::Cancelled);
            break;
        case WM_DESTROY:
            DestroyList();
            break;
    }
}

void ComboBox::AdjustBounds(RECT& bounds) {
    m_droppedHeight = bounds.bottom - bounds.top;
    bounds.bottom = bounds.top + FieldHeight();
}

void ComboBox::OnFontChanged() {
    const Window* window = FindWindow(Handle());
    if (!window) return;
    const RECT& bounds = window->bounds;
    MoveWindow(Handle(), bounds.left, bounds.top, bounds.right - bounds.left, m_droppedHeight, TRUE);
}

int ComboBox::FieldHeight() const {
    const FontMetrics metrics(Font());
    return metrics.LineHeight() + 2 * kFieldPadding * metrics.Unit();
}

bool ComboBox::HasItem(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < m_items.size();
}

// Sorting ignores case; equal items stay in the order of their addition. The selected item stays selected.
LRESULT ComboBox::AddItem(LPCWSTR text) {
    if (!text) return CB_ERR;
    const auto precedes = [](const std::u16string& first, const std::u16string& second) {
        return lstrcmpiW(first.c_str(), second.c_str()) < 0;
    };
    std::u16string item = text;
    const auto place = HasStyleBits(CBS_SORT)
                           ? std::upper_bound(m_items.begin(), m_items.end(), item, precedes)
                           : m_items.end();
    const int index = static_cast<int>(place - m_items.begin());
    m_items.insert(place, std::move(item));
    if (m_selected >= index) ++m_selected;
    RefreshList();
    return index;
}

LRESULT ComboBox::DeleteItem(int index) {
    if (!HasItem(index)) return CB_ERR;
    m_items.erase(m_items.begin() + index);
    if (m_selected == index) {
        m_selected = -1;
        ShowSelection();
    } else if (m_selected > index) {
        --m_selected;
    }
    RefreshList();
    return static_cast<LRESULT>(m_items.size());
}

LRESULT ComboBox::SelectItem(int index) {
    m_selected = HasItem(index) ? index : -1;
    ShowSelection();
    RefreshList();
    return m_selected;
}

LRESULT ComboBox::CopyItem(int index, LPWSTR text) const {
    if (!HasItem(index) || !text) return CB_ERR;
    const std::u16string& item = m_items[static_cast<std::size_t>(index)];
    item.copy(text, item.size());
    text[item.size()] = u'\0';
    return static_cast<LRESULT>(item.size());
}

LRESULT ComboBox::GetDroppedRect(RECT* rectangle) const {
    if (!rectangle) return FALSE;
    GetWindowRect(Handle(), rectangle);
    rectangle->bottom = std::max(rectangle->bottom, rectangle->top + m_droppedHeight);
    return TRUE;
}

void ComboBox::ShowSelection() {
    Window* window = FindWindow(Handle());
    if (!window) return;
    window->text = HasItem(m_selected) ? m_items[static_cast<std::size_t>(m_selected)] : std::u16string();
    Redraw();
}

void ComboBox::Paint(ControlPainter& painter) {
    const RECT& area = painter.Client();
    const int unit = painter.Metrics().Unit();
    const int ink = IsEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT;
    const RECT arrow{std::max<LONG>(area.right - area.bottom, area.left), area.top, area.right, area.bottom};
    const RECT field{area.left, area.top, std::min<LONG>(arrow.left + unit, area.right), area.bottom};
    painter.Fill(area, COLOR_WINDOW);
    const RECT text = Shrink(field, 2 * unit);
    const bool marked = HasFocus() && !IsOpen();
    if (marked) painter.Fill(text, COLOR_HIGHLIGHT);
    painter.Line(Text(), {text.left + 2 * unit, text.top, text.right, text.bottom}, DT_LEFT | DT_VCENTER,
                 marked ? COLOR_HIGHLIGHTTEXT : ink);
    painter.Fill(arrow, IsOpen() ? COLOR_WINDOWTEXT : COLOR_BTNFACE);
    painter.Arrow(arrow, ControlPainter::Direction::Down, IsOpen() ? COLOR_WINDOW : ink);
    painter.Frame(field, ink);
    painter.Frame(arrow, ink);
}

bool ChooseItem(HWND comboBox, int index) {
    const auto combo = FindSystemWindow<ComboBox>(comboBox);
    if (!combo || !IsWindowEnabled(comboBox)) return false;
    if (index < 0 || static_cast<std::size_t>(index) >= combo->Items().size()) return false;
    SetFocus(comboBox);
    if (combo->IsAlive()) combo->Open();
    if (combo->IsAlive()) combo->Take(index);
    return true;
}

}  // namespace host
