// SPDX-License-Identifier: MIT
// Finds the key under the pen, shows it pressed, and handles taps.
#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"

namespace {

// These two count as one key when the pen slides between them.
constexpr LONG kDigitNineIndex = 46;
constexpr LONG kUmlautIndex = 53;

bool IsTwinKey(LONG index) { return index == kDigitNineIndex || index == kUmlautIndex; }

// Unlike PtInRect this counts the right and the bottom edge as inside.
bool Contains(const RECT& r, LONG x, LONG y) {
    return r.left <= x && x <= r.right && r.top <= y && y <= r.bottom;
}

}  // namespace

LONG CKeyboard::FindKeyIndex(LONG x, LONG y, bool bCharLayout) const {
    for (const auto& [index, entry] : bCharLayout ? m_CharLayout : m_DigitLayout) {
        if (index >= m_Charset.size()) break;  // a key without a record counts as absent
        for (const RECT& r : entry.m_Rects)
            if (Contains(r, x, y)) return static_cast<LONG>(index);
    }
    return kNoKey;
}

void CKeyboard::PressKey(POINT point, CWindow* window, bool bDown) {
    m_pWnd = window;
    if (bDown) {
        PenDown(point, window);
    } else {
        PenUp(point, window);
        ReleaseCapture();
    }
}

void CKeyboard::PenDown(POINT point, CWindow* window) {
    m_nPressedIndex = FindKeyIndex(point.x, point.y, !m_stKbStatus.m_bDigit);
    m_ptSwipeBegin = point;
    if (m_nPressedIndex == kNoKey) return;
    if (window) SetCapture(window->m_hWnd);
    m_bPressedDrawn = 1;
    ToggleButton(window, m_nPressedIndex);
}

void CKeyboard::MoveMouse(POINT point, CWindow* window) {
    m_ptSwipeEnd = point;
    const LONG index = FindKeyIndex(point.x, point.y, !m_stKbStatus.m_bDigit);
    const LONG old = IsTwinKey(index) && IsTwinKey(m_nPressedIndex) ? index : m_nPressedIndex;
    if (index != old && m_bPressedDrawn && old != kNoKey) {
        ToggleButton(window, old);
        m_bPressedDrawn = 0;
    } else if (index == old && !m_bPressedDrawn && index != kNoKey) {
        ToggleButton(window, index);
        m_bPressedDrawn = 1;
    }
}

void CKeyboard::PenUp(POINT point, CWindow* window) {
    const LONG index = FindKeyIndex(point.x, point.y, !m_stKbStatus.m_bDigit);
    if (IsTwinKey(index) && IsTwinKey(m_nPressedIndex)) m_nPressedIndex = index;
    if (index == kNoKey || index != m_nPressedIndex) {
        FinishStroke(window);
        return;
    }
    ToggleButton(window, index);
    TypeKey(m_Charset[static_cast<std::size_t>(index)], window);
}

// Applies a status key; sends any other and releases the one-shot statuses.
void CKeyboard::TypeKey(CharsetEntry record, CWindow* window) {
    if (IsStatusKeyEntry(record.m_Slots[0])) {
        SetKbStatus(record.m_Slots, window);
        return;
    }
    SendKeyToApp(record, false);
    ResetKbStatus(window);
}

bool CKeyboard::DblPressKey(POINT point, CWindow* window) {
    if (m_bHasCapsKey) return false;
    const LONG index = FindKeyIndex(point.x, point.y, !m_stKbStatus.m_bDigit);
    if (index == kNoKey || m_Charset[static_cast<std::size_t>(index)].m_Slots[0] != kShiftCode) return false;
    SetKbStatus(&kShiftCode, window);
    SetKbStatus(&kCapsCode, window);
    return true;
}

// Does nothing if the layout has changed since the pen went down and lacks the key.
void CKeyboard::ToggleButton(CWindow* window, LONG index) {
    const KeyLayout& layout = ActiveLayout();
    const auto found = layout.find(static_cast<DWORD>(index));
    if (found != layout.end()) DrawButton(window, found->second, true);
}
