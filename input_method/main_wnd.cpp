// SPDX-License-Identifier: MIT
#include "input_method/main_wnd.h"

#include "framework/handles.h"
#include "framework/screen.h"

namespace {

constexpr WCHAR kPanelClass[] = TEXT("3E8B6D14-C2A7-4F90-8B5E-71D0A9C4E26F-PanelHost");

}  // namespace

CWndClassInfo& CMainWnd::GetWndClassInfo() {
    static CWndClassInfo info = {
        {CS_HREDRAW | CS_VREDRAW, StartWindowProc, 0, 0, nullptr, nullptr, nullptr,
         reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_WINDOW + 1)), nullptr, nullptr},
        0};
    return info;
}

CMainWnd::CMainWnd() {
    CWndClassInfo& info = GetWndClassInfo();
    info.m_wc.lpszClassName = kPanelClass;
    info.m_wc.style |= CS_DBLCLKS;
}

// The keyboard may be gone already: messages during destruction must not reach it.
CMainWnd::~CMainWnd() {
    m_pKbd = nullptr;
    if (m_hWnd) DestroyWindow(m_hWnd);
}

BOOL CMainWnd::ProcessWindowMessage(HWND, UINT message, WPARAM, LPARAM lParam, LRESULT& result, DWORD map) {
    if (map != 0) return FALSE;
    switch (message) {
        case WM_PAINT:
            result = OnPaint();
            return TRUE;
        case WM_ERASEBKGND:
            result = OnEraseBkgnd();
            return TRUE;
        case WM_LBUTTONDBLCLK:
            result = OnLButtonDblClk(GetPenPoint(lParam));
            return TRUE;
        case WM_LBUTTONDOWN:
            result = OnLButtonDown(GetPenPoint(lParam));
            return TRUE;
        case WM_LBUTTONUP:
            result = OnLButtonUp(GetPenPoint(lParam));
            return TRUE;
        case WM_MOUSEMOVE:
            result = OnMouseMove(GetPenPoint(lParam));
            return TRUE;
        default:
            return FALSE;
    }
}

LRESULT CMainWnd::OnPaint() {
    const CPaintCycle paint(m_hWnd);
    if (m_pKbd && paint.Get()) m_pKbd->Paint(paint.Get(), this);
    return 0;
}

// The keyboard covers the panel: nothing to erase, and so nothing to flicker.
LRESULT CMainWnd::OnEraseBkgnd() { return 1; }

LRESULT CMainWnd::OnLButtonDblClk(POINT point) {
    if (!m_pKbd) return 0;
    if (!m_pKbd->DblPressKey(point, this)) return OnLButtonDown(point);
    m_bDblPressHandled = TRUE;
    return 0;
}

LRESULT CMainWnd::OnLButtonDown(POINT point) {
    m_bDblPressHandled = FALSE;
    if (m_pKbd) m_pKbd->PressKey(point, this, true);
    return 0;
}

LRESULT CMainWnd::OnLButtonUp(POINT point) {
    if (!m_bDblPressHandled && m_pKbd) m_pKbd->PressKey(point, this, false);
    return 0;
}

LRESULT CMainWnd::OnMouseMove(POINT point) {
    if (!m_bDblPressHandled && m_pKbd) m_pKbd->MoveMouse(point, this);
    return 0;
}
