// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string_view>

#include "drawing.h"

bool Contains(const RECT& area, POINT point);

// A window of the simulator's own, bound to its object, which draws its text in one font. The object owns the
// window.
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
    void Invalidate() const { InvalidateRect(m_window, nullptr, FALSE); }
    void SetFont(int height, int weight) { m_font.Create(height, weight); }
    // Of the text in the window's font; nothing where that cannot be measured.
    SIZE Measure(std::u16string_view text) const;

    // Passes on what it does not handle to this class.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // All of the client area. The font is selected, and text leaves what is behind it.
    virtual void Draw(HDC dc) = 0;
    // In client coordinates. A double tap's second half is a pen-down too.
    virtual void OnPenDown(POINT) {}
    virtual void OnPenMove(POINT) {}
    virtual void OnPenUp(POINT) {}

private:
    static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnPaint();

    HWND m_window = nullptr;
    Font m_font;
};
