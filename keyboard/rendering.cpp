// SPDX-License-Identifier: MIT
// Drawing: the picture through the active mask, inverted in pressed rectangles.
#include <algorithm>

#include "framework/memory.h"
#include "framework/module.h"
#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"
#include "keyboard/skin_resources.h"

namespace {

// Foreground code where the mask is 1, background code where it is 0.
constexpr DWORD kPictureRop = 0x00CC0020;  // picture, black
constexpr DWORD kPressedRop = 0xFF330008;  // inverted picture, white

constexpr UINT kSkinsNotFoundString = 103;

bool HasArea(const RECT& r) { return r.right != r.left && r.bottom != r.top; }

// All edges included, as in hit testing.
bool ContainsCorner(const RECT& r, const RECT& other) {
    return r.left <= other.left && other.left <= r.right && r.top <= other.top && other.top <= r.bottom;
}

HBITMAP SelectedBitmap(HDC dc) { return static_cast<HBITMAP>(GetCurrentObject(dc, OBJ_BITMAP)); }

// The picture being shown, drawn at the same place of the target.
struct Picture {
    HDC target;
    HDC source;
    SIZE size;

    // Rectangles come from the skin and can be anything: only the part inside the picture is drawn.
    void Draw(const RECT& r, HBITMAP mask, DWORD rop) const {
        const LONG left = std::max<LONG>(r.left, 0);
        const LONG top = std::max<LONG>(r.top, 0);
        const LONG right = std::min(r.right, size.cx);
        const LONG bottom = std::min(r.bottom, size.cy);
        if (left >= right || top >= bottom) return;
        MaskBlt(target, left, top, right - left, bottom - top, source, left, top, mask, left, top, rop);
    }
};

}  // namespace

void CKeyboard::Paint(HDC dc, CWindow* window) {
    if (m_bNoSkin) {
        if (window) DrawNoSkinMessage(dc, window);
        return;
    }
    SIZE size{};
    if (!GetBitmapSize(SelectedBitmap(m_hKbDC), size)) return;
    DrawPicture(dc, size);
    DrawPressedRects(dc, size);
}

// Is there a part of the picture that ignores caps lock?
bool CKeyboard::CapsSplitsPicture() const {
    return m_bPortrait && m_stKbStatus.m_bCAPS && !m_stKbStatus.m_bCtrl && !m_stKbStatus.m_bDigit;
}

//   +------+-------+-------+
//   |      | above |       |
//   | left +-------+ right |
//   |      |   R   |       |    R is m_CAPSRect and shows the mask that ignores caps lock.
//   |      +-------+       |
//   |      | below |       |
//   +------+-------+-------+
void CKeyboard::DrawPicture(HDC dc, SIZE size) const {
    const Picture picture{dc, m_hKbDC, size};
    const HBITMAP mask = SelectedBitmap(m_hMaskDC);
    if (!CapsSplitsPicture()) {
        picture.Draw({0, 0, size.cx, size.cy}, mask, kPictureRop);
        return;
    }
    const RECT& r = m_CAPSRect;
    picture.Draw({0, 0, r.left, size.cy}, mask, kPictureRop);
    picture.Draw({r.right, 0, size.cx, size.cy}, mask, kPictureRop);
    picture.Draw({r.left, 0, r.right, r.top}, mask, kPictureRop);
    picture.Draw({r.left, r.bottom, r.right, size.cy}, mask, kPictureRop);
    picture.Draw(r, SelectedBitmap(m_hExtMaskDC), kPictureRop);
}

void CKeyboard::DrawPressedRects(HDC dc, SIZE size) const {
    const Picture picture{dc, m_hKbDC, size};
    const HBITMAP mask = SelectedBitmap(m_hMaskDC);
    const bool split = CapsSplitsPicture() && HasArea(m_CAPSRect);
    const HBITMAP maskWithoutCaps = split ? SelectedBitmap(m_hExtMaskDC) : mask;
    for (const RECT& pressed : m_PressedRects) {
        const bool ignoresCaps = split && ContainsCorner(m_CAPSRect, pressed);
        picture.Draw(pressed, ignoresCaps ? maskWithoutCaps : mask, kPressedRop);
    }
}

void CKeyboard::DrawNoSkinMessage(HDC dc, CWindow* window) const {
    RECT client{};
    GetClientRect(window->m_hWnd, &client);
    SetTextColor(dc, GetSysColor(COLOR_ACTIVECAPTION));
    FillRect(dc, &client, GetSysColorBrush(COLOR_INACTIVECAPTION));
    SetBkColor(dc, GetSysColor(COLOR_INACTIVECAPTION));
    SetTextAlign(dc, TA_CENTER + TA_BASELINE);
    WCHAR message[64];
    const int length = LoadStringW(_Module.GetModuleInstance(), kSkinsNotFoundString, message, 64);
    ExtTextOutW(dc, (client.right - client.left) / 2, (client.bottom - client.top) / 2, ETO_CLIPPED, &client,
                message, static_cast<UINT>(length), nullptr);
}

void CKeyboard::DrawButton(CWindow* window, const KeyEntry& entry, bool bInvalidate) {
    if (!window) return;
    for (const RECT& r : entry.m_Rects) {
        if (!HasArea(r)) continue;
        TogglePressedRect(r);
        if (bInvalidate) InvalidateRect(window->m_hWnd, &r, TRUE);
    }
}

// If memory runs out, the key is merely not shown pressed.
void CKeyboard::TogglePressedRect(const RECT& r) {
    const auto found = std::find_if(m_PressedRects.begin(), m_PressedRects.end(),
                                    [&](const RECT& pressed) { return EqualRect(&pressed, &r) != FALSE; });
    if (found != m_PressedRects.end()) {
        m_PressedRects.erase(found);
        return;
    }
    EnoughMemory([&] { m_PressedRects.push_back(r); });
}

void CKeyboard::PaintStatusButtons(CWindow* window) {
    const auto toggle = [&](bool bActive, WCHAR code, bool bInvalidate) {
        if (bActive) EnoughMemory([&] { DrawButton(window, GetFunctionKeyRects(code), bInvalidate); });
    };
    toggle(m_stKbStatus.m_bShift, kShiftCode, false);
    toggle(m_stKbStatus.m_bCAPS, kCapsCode, false);
    toggle(m_stKbStatus.m_bCtrl, kControlCode, false);
    toggle(!m_stKbStatus.m_bLng1, kLanguageCode, true);
    toggle(m_stKbStatus.m_bUml, kUmlautCode, false);
}

KeyEntry CKeyboard::GetFunctionKeyRects(WCHAR code) const {
    const KeyLayout& layout = ActiveLayout();
    for (std::size_t index = 0; index < m_Charset.size(); ++index) {
        if (m_Charset[index].m_Slots[0] != code) continue;
        const auto found = layout.find(static_cast<DWORD>(index));
        if (found != layout.end()) return found->second;
    }
    KeyEntry none;
    none.m_Rects.push_back({0, 0, 0, 0});
    return none;
}
