// SPDX-License-Identifier: MIT
// The panel: the child of the SIP's window that shows the keyboard and receives the pen. It passes everything
// on, except the rest of a double tap that the keyboard has handled.
#pragma once

#include "framework/window.h"
#include "keyboard/keyboard.h"

class CMainWnd : public CWindowImpl<CMainWnd, CWindow, CWinTraits<0x06080000, 0>> {
public:
    CMainWnd();
    ~CMainWnd() override;

    static CWndClassInfo& GetWndClassInfo();
    BOOL ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD map) override;

    BOOL m_bDblPressHandled = FALSE;  // pen-up and pen-move are ignored until the next pen-down
    CKeyboard* m_pKbd = nullptr;      // not owned; null until Select

private:
    LRESULT OnPaint();
    LRESULT OnEraseBkgnd();
    LRESULT OnLButtonDblClk(POINT point);
    LRESULT OnLButtonDown(POINT point);
    LRESULT OnLButtonUp(POINT point);
    LRESULT OnMouseMove(POINT point);
};
