// SPDX-License-Identifier: MIT
// The panel: the child of the SIP's window that shows the keyboard and takes the pen. It decides nothing
// about keys; it only keeps the rest of a double tap from the keyboard once the keyboard has consumed it.
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
