// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string_view>

#include "drawing.h"

// A window of the simulator, bound to its object, which owns it and draws its text in one font.
class BoundWindow {
public:
    BoundWindow() = default;
    virtual ~BoundWindow();  // no message reaches the object afterwards
    BoundWindow(const BoundWindow&) = delete;
    BoundWindow& operator=(const BoundWindow&) = delete;

    HWND Handle() const { return m_window; }  // null if it could not be created
    void MoveTo(const RECT& bounds);          // in the parent's coordinates
    RECT ClientArea() const;

    // Is this a window of the simulator? False for null.
    static bool IsOne(HWND window);

protected:
    // The style decides whether it is a child of `parent`. Registers the class if that has not been done.
    void Create(const WCHAR* className, DWORD style, const RECT& bounds, HWND parent,
                DWORD extendedStyle = 0);
    void Invalidate() const { InvalidateRect(m_window, nullptr, FALSE); }
    void SetFont(int height, int weight) { m_font = MakeFont(height, weight); }
    // The size of the text in the window's font; (0, 0) if it cannot be measured.
    SIZE Measure(std::u16string_view text) const;

    // Overrides pass messages that they do not handle to this class.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // Draws the whole client area. The font is selected, and text has a transparent background.
    virtual void Draw(HDC dc) = 0;
    // In client coordinates. The second half of a double tap is a pen-down, too.
    virtual void OnPenDown(POINT) {}
    virtual void OnPenMove(POINT) {}
    virtual void OnPenUp(POINT) {}

private:
    static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnPaint();

    HWND m_window = nullptr;
    CFontOwner m_font;
};
