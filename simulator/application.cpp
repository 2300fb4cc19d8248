// SPDX-License-Identifier: MIT
#include "application.h"

#include <sip_layout.h>

namespace {

constexpr COLORREF lineColor = RGB(128, 128, 128);

// Sizes are those of a screen whose longer side has 320 pixels, scaled to this one.
int Scaled(SIZE screen, int size) { return size * BarHeight(screen) / 26; }

bool IsSameSize(SIZE a, SIZE b) { return a.cx == b.cx && a.cy == b.cy; }

}  // namespace

Application::Application() {
    const SIZE screen = ScreenSize();
    Create(TEXT("SimulatorApplication"), WS_POPUP | WS_CLIPCHILDREN, {0, 0, screen.cx, screen.cy}, nullptr);
    m_edit = std::make_unique<EditField>(Handle(), RECT{});
    LayOut({0, BarHeight(screen), screen.cx, screen.cy - BarHeight(screen)});
    ShowWindow(Handle(), SW_SHOW);
    SetFocus(m_edit->Handle());
}

// The edit field goes while its parent still stands.
Application::~Application() {
    m_edit.reset();
    Destroy();
}

void Application::LayOut(const RECT& visibleDesktop) {
    const SIZE screen = ScreenSize();
    const bool sameScreen = IsSameSize(screen, m_screen);
    if (sameScreen && EqualRect(&visibleDesktop, &m_visibleDesktop)) return;
    m_screen = screen;
    m_visibleDesktop = visibleDesktop;
    if (!sameScreen) {
        MoveTo({0, 0, screen.cx, screen.cy});
        m_titleFont.Create(Scaled(screen, 13), FW_BOLD);
        m_menuFont.Create(Scaled(screen, 12), FW_NORMAL);
        m_edit->SetFontHeight(Scaled(screen, 12));
        Invalidate();
    }
    m_edit->MoveTo(visibleDesktop);
}

std::u16string Application::FocusedText() const {
    return GetFocus() == m_edit->Handle() ? m_edit->Text() : std::u16string();
}

LRESULT Application::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            return OnPaint(), 0;
        case WM_ERASEBKGND:
            return 1;
        default:
            return DefWindowProcW(Handle(), message, wParam, lParam);
    }
}

void Application::OnPaint() {
    const PaintCycle paint(Handle());
    if (!paint.Get()) return;
    const RECT area = ClientArea();
    const int bar = BarHeight(m_screen);
    FillArea(paint.Get(), area, GetSysColor(COLOR_WINDOW));
    const Selection selection(paint.Get(), m_titleFont.Get());
    DrawBar(paint.Get(), {0, 0, area.right, bar}, TEXT("Notes"), GetSysColor(COLOR_ACTIVECAPTION),
            GetSysColor(COLOR_CAPTIONTEXT));
    const Selection menuSelection(paint.Get(), m_menuFont.Get());
    const RECT menu{0, area.bottom - bar, area.right, area.bottom};
    DrawBar(paint.Get(), menu, TEXT("New    Edit    Tools"), GetSysColor(COLOR_BTNFACE),
            GetSysColor(COLOR_WINDOWTEXT));
    FillArea(paint.Get(), {0, menu.top, area.right, menu.top + 1}, lineColor);
}

void Application::DrawBar(HDC dc, const RECT& bar, LPCWSTR text, COLORREF background, COLORREF color) {
    FillArea(dc, bar, background);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    RECT place{bar.left + Scaled(m_screen, 8), bar.top, bar.right, bar.bottom};
    DrawTextW(dc, text, -1, &place, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}
