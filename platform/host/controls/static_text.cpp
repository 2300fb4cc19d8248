// SPDX-License-Identifier: MIT
#include "controls/static_text.h"

#include "controls/painter.h"

namespace host {

namespace {

constexpr DWORD kTypeMask = 0x1F;

UINT Alignment(DWORD style) {
    switch (style & kTypeMask) {
        case SS_CENTER:
            return DT_CENTER;
        case SS_RIGHT:
            return DT_RIGHT;
    }
    return DT_LEFT;
}

}  // namespace

LRESULT StaticText::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isPen = message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_LBUTTONDBLCLK ||
                       message == WM_MOUSEMOVE;
    return isPen ? PassPenOn(message, wParam, lParam) : Control::OnMessage(message, wParam, lParam);
}

LRESULT StaticText::PassPenOn(UINT message, WPARAM wParam, LPARAM lParam) const {
    const HWND parent = GetParent(Handle());
    POINT point = PenPoint(lParam);
    ClientToScreen(Handle(), &point);
    ScreenToClient(parent, &point);
    return SendMessageW(parent, message, wParam,
                        MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y)));
}

void StaticText::Paint(ControlPainter& painter) {
    RECT area = painter.Client();
    painter.Fill(area, COLOR_WINDOW);
    if (HasStyleBits(WS_BORDER)) {
        painter.Frame(area, COLOR_WINDOWFRAME);
        area = Shrink(area, 1);
    }
    const std::u16string text = Text();
    LONG top = area.top;
    for (const std::u16string_view line : painter.Metrics().Wrap(text, area.right - area.left)) {
        if (top >= area.bottom) break;
        const RECT place{area.left, top, area.right, area.bottom};
        painter.Line(line, place, Alignment(Style()), IsEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
        top += painter.Metrics().LineHeight();
    }
}

}  // namespace host
