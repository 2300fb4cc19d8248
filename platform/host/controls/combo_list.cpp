// SPDX-License-Identifier: MIT
// The combo box's list: opening, closing, pen and keys.
#include <algorithm>

#include "controls/combo_box.h"
#include "controls/drop_down_list.h"
#include "controls/painter.h"

namespace host {

// The list is below the field, or above it if there is more room; as high as the control was created or its
// items need, within the screen area that the panel leaves free.
RECT ComboBox::ListPlace() const {
    RECT field{};
    GetWindowRect(Handle(), &field);
    const RECT screen = FreeScreenArea();
    const FontMetrics metrics(Font());
    const int frame = metrics.Unit();
    const int itemHeight = DropDownList::ItemHeight(metrics);
    const int items = std::max<int>(static_cast<int>(m_items.size()), 1);
    int height = m_droppedHeight - (field.bottom - field.top);
    if (!HasStyleBits(CBS_NOINTEGRALHEIGHT)) height -= (height - 2 * frame) % itemHeight;
    height = std::clamp(height, itemHeight + 2 * frame, items * itemHeight + 2 * frame);
    const LONG below = screen.bottom - field.bottom;
    const LONG above = field.top - screen.top;
    if (height <= below || below >= above) {
        // The frames of field and list overlap by a line.
        const LONG top = field.bottom - frame;
        return {field.left, top, field.right, top + std::min<LONG>(height, std::max(below, 1) + frame)};
    }
    const LONG bottom = field.top + frame;
    return {field.left, bottom - std::min<LONG>(height, above), field.right, bottom};
}

// Notifies the parent first, which may still fill the list. The list stays closed if its window cannot be
// created.
void ComboBox::Open() {
    if (IsOpen() || !IsEnabled() || !IsWindowVisible(Handle()) || !Notify(CBN_DROPDOWN)) return;
    if (IsOpen()) return;
    const RECT place = ListPlace();
    {
        const PlatformScope scope;
        m_list = CreateWindowExW(0, u"ComboLBox", nullptr, WS_POPUP, place.left, place.top,
                                 place.right - place.left, place.bottom - place.top, Handle(), nullptr,
                                 nullptr, nullptr);
    }
    if (!m_list) {
        Notify(CBN_CLOSEUP);
        return;
    }
    SendMessageW(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(Font()), FALSE);
    const auto list = FindSystemWindow<DropDownList>(m_list);
    list->SetCombo(Handle());
    list->Mark(m_selected);
    ShowWindow(m_list, SW_SHOWNOACTIVATE);
    Redraw();
}

bool ComboBox::Close(Outcome outcome) {
    if (!IsOpen()) return IsAlive();
    DestroyList();
    Redraw();
    return Notify(outcome == Outcome::Taken ? CBN_SELENDOK : CBN_SELENDCANCEL) && Notify(CBN_CLOSEUP);
}

void ComboBox::DestroyList() {
    const HWND list = m_list;
    m_list = nullptr;
    if (list) DestroyWindow(list);
}

void ComboBox::RefreshList() {
    const auto list = FindSystemWindow<DropDownList>(m_list);
    if (list) list->Mark(m_selected);
}

void ComboBox::Take(int index) {
    if (!HasItem(index)) return;
    m_selected = index;
    ShowSelection();
    if (Close(Outcome::Taken)) Notify(CBN_SELCHANGE);
}

// The pen opens and closes the list, and may move on into it without being lifted.
void ComboBox::OnPenDown() {
    SetFocus(Handle());
    if (!IsAlive() || !IsEnabled()) return;
    if (IsOpen()) {
        Close(Outcome::Cancelled);
        return;
    }
    Open();
    if (!IsOpen() || !IsAlive()) return;
    SetCapture(Handle());
    m_tracking = true;
}

void ComboBox::OnPenMove(POINT point, UINT message) {
    if (!m_tracking) return;
    const auto list = FindSystemWindow<DropDownList>(m_list);
    if (message == WM_LBUTTONUP) ReleaseCapture();
    if (!list || !IsAlive()) return;
    ClientToScreen(Handle(), &point);
    ScreenToClient(m_list, &point);
    const int item = list->ItemAt(point);
    if (item < 0) return;
    if (message == WM_LBUTTONUP)
        Take(item);
    else
        list->Mark(item);
}

KeyUse ComboBox::UseOf(UINT virtualKey) const {
    switch (virtualKey) {
        case VK_UP:
        case VK_DOWN:
        case VK_LEFT:
        case VK_RIGHT:
            return KeyUse::Own;
        case VK_RETURN:
        case VK_ESCAPE:
            return IsOpen() ? KeyUse::Own : KeyUse::Dialog;
    }
    return KeyUse::Dialog;
}

// The space bar opens the list, as handhelds have no special key for it.
void ComboBox::OnKey(UINT virtualKey) {
    switch (virtualKey) {
        case VK_UP:
        case VK_LEFT:
            return MoveTo(std::max(CurrentItem() - 1, 0));
        case VK_DOWN:
        case VK_RIGHT:
            return MoveTo(CurrentItem() + 1);
        case VK_SPACE:
            return Open();
        case VK_ESCAPE:
            Close(Outcome::Cancelled);
            return;
        case VK_RETURN: {
            const int item = CurrentItem();
            if (!IsOpen()) return;
            const bool changes = item != m_selected;
            if (changes) return Take(item);
            Close(Outcome::Taken);
            return;
        }
    }
}

void ComboBox::OnCharacter(WCHAR character) {
    if (character > u' ') MoveTo(FindByFirstLetter(character));
}

void ComboBox::MoveTo(int index) {
    if (!HasItem(index) || index == CurrentItem()) return;
    const auto list = FindSystemWindow<DropDownList>(m_list);
    if (list) return list->Mark(index);
    m_selected = index;
    ShowSelection();
    if (Notify(CBN_SELENDOK)) Notify(CBN_SELCHANGE);
}

int ComboBox::CurrentItem() const {
    const auto list = FindSystemWindow<DropDownList>(m_list);
    return list ? list->Marked() : m_selected;
}

// Searches after the current item, then from the top; -1 if there is none.
int ComboBox::FindByFirstLetter(WCHAR letter) const {
    const int count = static_cast<int>(m_items.size());
    const WCHAR wanted[] = {letter, 0};
    for (int step = 1; step <= count; ++step) {
        const int index = (CurrentItem() + step) % count;
        const WCHAR first[] = {m_items[static_cast<std::size_t>(index)].c_str()[0], 0};
        if (lstrcmpiW(first, wanted) == 0) return index;
    }
    return -1;
}

}  // namespace host
