// SPDX-License-Identifier: MIT
// The status machine, and the plane that it selects.
//
//   key        flag       effect on the system
//   Shift      m_bShift   VK_SHIFT down when set, up when cleared; one-shot
//   Control    m_bCtrl    VK_CONTROL down when set, up when cleared; one-shot
//   caps lock  m_bCAPS    none
//   language   m_bLng1    none
//   digits     m_bDigit   none; releases Control
//   umlaut     m_bUml     none; one-shot
#include <algorithm>
#include <iterator>

#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"

namespace {

// The sizes from which the character table counts as loaded.
constexpr std::size_t kLeastForStatus = 7;
constexpr std::size_t kLeastForClassification = 11;

void Toggle(BYTE& flag) { flag = flag ? 0 : 1; }

}  // namespace

bool CKeyboard::IsDigitalLineEntry(WCHAR code) const {
    if (m_Charset.size() < kLeastForClassification) return false;
    return (code >= '0' && code <= '9') || code == '-' || code == '=' || code == kBackspaceCode;
}

bool CKeyboard::IsStatusKeyEntry(WCHAR code) const {
    return m_Charset.size() >= kLeastForClassification && code >= kShiftCode && code <= kUmlautCode;
}

bool CKeyboard::IsFunctionalKeyEntry(WCHAR code) const {
    if (m_Charset.size() < kLeastForClassification) return false;
    if (m_nFuncFirst >= m_Charset.size() || m_nFuncLast >= m_Charset.size()) return false;
    return code >= m_Charset[m_nFuncFirst].m_Slots[0] && code <= m_Charset[m_nFuncLast].m_Slots[0];
}

HBITMAP CKeyboard::MaskOf(Plane plane) const {
    const auto* const mask = std::find_if(std::begin(kSkinBitmaps), std::end(kSkinBitmaps),
                                          [&](const SkinBitmap& bitmap) { return bitmap.plane == plane; });
    return this->*mask->field;
}

Plane CKeyboard::PlaneOfStatus(bool bWithCaps) const {
    if (m_stKbStatus.m_bCtrl) return PlaneLng1Sml;
    if (m_stKbStatus.m_bDigit) return PlaneDigit;
    const int family = m_stKbStatus.m_bLng1 ? PlaneLng1Sml : PlaneLng2Sml;
    const int umlaut = m_stKbStatus.m_bUml ? PlaneUml1Sml - PlaneLng1Sml : 0;
    const bool large = m_stKbStatus.m_bShift != (bWithCaps ? m_stKbStatus.m_bCAPS : 0);
    return static_cast<Plane>(family + umlaut + (large ? 1 : 0));
}

// If the skin lacks the plane's mask, another bitmap stays selected, and the status decides what is typed.
Plane CKeyboard::ActivePlane() const {
    const HGDIOBJ selected = GetCurrentObject(m_hMaskDC, OBJ_BITMAP);
    for (const SkinBitmap& bitmap : kSkinBitmaps)
        if (bitmap.plane != PlaneCount && selected && this->*bitmap.field == selected) return bitmap.plane;
    return PlaneOfStatus(true);
}

// Deselects both masks first: a bitmap can be selected into one context only.
void CKeyboard::GetKeyboardMask() {
    SelectObject(m_hKbDC, m_hKbBitmap);
    SelectObject(m_hMaskDC, m_hOrigMaskBmp);
    SelectObject(m_hExtMaskDC, m_hOrigExtMaskBmp);
    const Plane plane = PlaneOfStatus(true);
    if (plane == PlaneDigit) SelectObject(m_hKbDC, m_hDigitKbBitmap);
    SelectObject(m_hMaskDC, MaskOf(plane));
    if (m_stKbStatus.m_bCAPS && !m_stKbStatus.m_bCtrl && !m_stKbStatus.m_bDigit)
        SelectObject(m_hExtMaskDC, MaskOf(PlaneOfStatus(false)));
}

void CKeyboard::SetKbStatus(const WCHAR* pCode, CWindow* window) {
    if (m_Charset.size() < kLeastForStatus) return;
    PaintStatusButtons(window);  // toggles the old status off
    switch (*pCode) {
        case kShiftCode:
            ToggleShift();
            break;
        case kControlCode:
            ToggleControl();
            break;
        case kCapsCode:
            Toggle(m_stKbStatus.m_bCAPS);
            break;
        case kLanguageCode:
            Toggle(m_stKbStatus.m_bLng1);
            break;
        case kDigitCode:
            Toggle(m_stKbStatus.m_bDigit);
            // Control must not stay down in the system when the keyboard shows it released.
            if (m_stKbStatus.m_bDigit && m_stKbStatus.m_bCtrl) ToggleControl();
            break;
        case kUmlautCode:
            Toggle(m_stKbStatus.m_bUml);
            break;
        default:
            break;
    }
    GetKeyboardMask();
    PaintStatusButtons(window);
    if (window) InvalidateRect(window->m_hWnd, nullptr, TRUE);
}

// Without a caps lock key, Shift releases caps lock and does nothing else.
void CKeyboard::ToggleShift() {
    if (!m_bHasCapsKey && m_stKbStatus.m_bCAPS) {
        m_stKbStatus.m_bCAPS = 0;
        return;
    }
    SendModifier(VK_SHIFT, !m_stKbStatus.m_bShift);
    Toggle(m_stKbStatus.m_bShift);
}

void CKeyboard::ToggleControl() {
    SendModifier(VK_CONTROL, !m_stKbStatus.m_bCtrl);
    Toggle(m_stKbStatus.m_bCtrl);
}

void CKeyboard::ResetKbStatus(CWindow* window) {
    if (!m_stKbStatus.m_bShift && !m_stKbStatus.m_bCtrl && !m_stKbStatus.m_bUml) return;
    PaintStatusButtons(window);
    ReleaseModifierKeys();
    m_PressedRects.clear();
    m_stKbStatus.m_bShift = 0;
    m_stKbStatus.m_bCtrl = 0;
    m_stKbStatus.m_bUml = 0;
    GetKeyboardMask();
    PaintStatusButtons(window ? window : m_pWnd);  // toggles the locking statuses on again
    if (window) InvalidateRect(window->m_hWnd, nullptr, TRUE);
}

void CKeyboard::ReleaseModifierKeys() {
    if (m_stKbStatus.m_bShift) SendModifier(VK_SHIFT, false);
    if (m_stKbStatus.m_bCtrl) SendModifier(VK_CONTROL, false);
}

void CKeyboard::PressModifierKeys() {
    if (m_stKbStatus.m_bShift) SendModifier(VK_SHIFT, true);
    if (m_stKbStatus.m_bCtrl) SendModifier(VK_CONTROL, true);
}

void CKeyboard::SendModifier(BYTE virtualKey, bool bDown) const {
    if (m_pCallback) m_pCallback->SendVirtualKey(virtualKey, bDown ? 0 : KEYEVENTF_KEYUP);
}
