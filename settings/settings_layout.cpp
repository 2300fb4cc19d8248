// SPDX-License-Identifier: MIT
// Places the options dialog's controls. Divisions truncate.
#include <algorithm>

#include "settings/settings_dlg.h"

LONG CSettingsDlg::LongerSide() const { return std::max(m_Screen.cx, m_Screen.cy); }

RECT CSettingsDlg::ControlRect(HWND control) const {
    RECT place{};
    GetWindowRect(control, &place);
    POINT topLeft{place.left, place.top};
    POINT bottomRight{place.right, place.bottom};
    ScreenToClient(GetParent(control), &topLeft);
    ScreenToClient(GetParent(control), &bottomRight);
    return {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

void CSettingsDlg::MoveControl(HWND control, const RECT& place) const {
    MoveWindow(control, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
}

void CSettingsDlg::PlaceLine() const {
    const LONG y = LongerSide() / 13;
    MoveControl(m_hLine, {0, y, m_Screen.cx, y + 1});
}

void CSettingsDlg::WidenAboutText() const {
    RECT place = ControlRect(m_hAboutText);
    place.right = m_Screen.cx - place.left;  // as far from the right as from the left
    MoveControl(m_hAboutText, place);
}

// In landscape its top is just below "Use gestures", in portrait at half the height; its bottom stays.
void CSettingsDlg::PlaceAboutText() const {
    RECT place = ControlRect(m_hAboutText);
    if (m_Screen.cx > m_Screen.cy) {
        const RECT swipe = ControlRect(m_hSwipeCheck);
        place.top = swipe.top + 5 * (swipe.bottom - swipe.top) / 4;
    } else {
        place.top = m_Screen.cy / 2;
    }
    MoveControl(m_hAboutText, place);
}

// Adds twice the height of the drop-down list.
void CSettingsDlg::HeightenSkinCombo() const {
    RECT place = ControlRect(m_hSkinCombo);
    RECT dropped{};
    SendMessageW(m_hSkinCombo, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
    place.bottom += 2 * (dropped.bottom - dropped.top);
    MoveControl(m_hSkinCombo, place);
}
