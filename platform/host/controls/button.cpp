// SPDX-License-Identifier: MIT
#include "controls/button.h"

#include <algorithm>

#include "controls/painter.h"

namespace host {

namespace {

constexpr DWORD kTypeMask = 0x0F;

}  // namespace

bool Button::IsCheckBox() const { return (Style() & kTypeMask) == BS_AUTOCHECKBOX; }

bool Button::IsDefault() const { return (Style() & kTypeMask) == BS_DEFPUSHBUTTON; }

LRESULT Button::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return OnPenDown(PenPoint(lParam)), 0;
        case WM_MOUSEMOVE:
            if (m_tracking) Press(ContainsPoint(PenPoint(lParam)));
            return 0;
        case WM_LBUTTONUP:
            return OnPenUp(PenPoint(lParam)), 0;
        case WM_CAPTURECHANGED:
            m_tracking = false;
            return Press(false), 0;
        case WM_KEYDOWN:
            if (wParam == VK_SPACE) Press(true);
            return 0;
        case WM_KEYUP:
            if (wParam == VK_SPACE && m_pressed) Click();
            return 0;
        case WM_KILLFOCUS:
            Press(false);
            break;
        case BM_GETCHECK:
            return m_checked ? BST_CHECKED : BST_UNCHECKED;
        case BM_SETCHECK:
            if (IsCheckBox()) SetCheck(wParam != BST_UNCHECKED);
            return 0;
        case BM_CLICK:
            if (!IsEnabled()) return 0;
            SetFocus(Handle());
            if (IsAlive()) Click();
            return 0;
    }
    return Control::OnMessage(message, wParam, lParam);
}

void Button::OnPenDown(POINT point) {
    SetFocus(Handle());
    if (!IsAlive() || !IsEnabled()) return;
    SetCapture(Handle());
    m_tracking = true;
    Press(ContainsPoint(point));
}

void Button::OnPenUp(POINT point) {
    if (!m_tracking) return;
    const bool clicked = ContainsPoint(point);
    ReleaseCapture();
    if (clicked && IsAlive()) Click();
}

void Button::Press(bool pressed) {
    if (m_pressed == pressed) return;
    m_pressed = pressed;
    Redraw();
}

void Button::SetCheck(bool checked) {
    if (m_checked == checked) return;
    m_checked = checked;
    Redraw();
}

void Button::Click() {
    Press(false);
    if (IsCheckBox()) SetCheck(!m_checked);
    Notify(BN_CLICKED);
}

void Button::Paint(ControlPainter& painter) {
    if (IsCheckBox())
        PaintCheckBox(painter);
    else
        PaintPushButton(painter);
}

// A pressed button is black; the default button has a thick frame. In a small button the dotted focus frame
// touches the frame, to keep clear of the text.
void Button::PaintPushButton(ControlPainter& painter) const {
    const RECT& area = painter.Client();
    const int ink = IsEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT;
    const int unit = painter.Metrics().Unit();
    painter.Fill(area, m_pressed ? COLOR_WINDOWTEXT : COLOR_BTNFACE);
    painter.Frame(area, ink, IsDefault() ? 2 : 1);
    painter.Line(Text(), area, DT_CENTER | DT_VCENTER, m_pressed ? COLOR_WINDOW : ink);
    const int distance = area.right >= 2 * painter.Metrics().LineHeight() ? 3 * unit : unit;
    if (HasFocus() && !m_pressed) painter.DottedFrame(Shrink(area, distance), COLOR_WINDOWTEXT);
}

void Button::PaintCheckBox(ControlPainter& painter) const {
    const RECT& area = painter.Client();
    const int ink = IsEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT;
    const int unit = painter.Metrics().Unit();
    painter.Fill(area, COLOR_WINDOW);
    const LONG size = std::min<LONG>(painter.Metrics().LineHeight() - unit, area.bottom);
    const LONG top = (area.bottom - size) / 2;
    const RECT box{0, top, size, top + size};
    painter.Fill(box, m_pressed ? COLOR_BTNFACE : COLOR_WINDOW);
    painter.Frame(box, ink, m_pressed ? 2 : 1);
    if (m_checked) painter.CheckMark(Shrink(box, 2 * unit), ink);
    const std::u16string text = Text();
    const RECT label{size + 4 * unit, 0, area.right, area.bottom};
    painter.Line(text, label, DT_LEFT | DT_VCENTER, ink);
    if (!HasFocus() || text.empty()) return;
    const LONG right = std::min<LONG>(label.left + painter.Metrics().Width(text) + 2 * unit, area.right);
    painter.DottedFrame({label.left - 2 * unit, 0, right, area.bottom}, COLOR_WINDOWTEXT);
}

}  // namespace host
