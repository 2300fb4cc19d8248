// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

// A window of the simulator's own, bound to its object. The object owns the window.
class BoundWindow {
public:
    BoundWindow() = default;
    virtual ~BoundWindow() { Destroy(); }
    BoundWindow(const BoundWindow&) = delete;
    BoundWindow& operator=(const BoundWindow&) = delete;

    HWND Handle() const { return m_window; }  // null when it could not be made
    void MoveTo(const RECT& bounds);          // in the parent's coordinates
    RECT ClientArea() const;

    // Is it a window of the simulator's own? Null is none.
    static bool IsOne(HWND window);

protected:
    // The style decides whether it is a child of `parent`. The class is registered when it is not yet.
    void Create(const WCHAR* className, DWORD style, const RECT& bounds, HWND parent,
                DWORD extendedStyle = 0);
    // From then on no message reaches the object.
    void Destroy();
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    void Invalidate() const { InvalidateRect(m_window, nullptr, FALSE); }

private:
    static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
};
