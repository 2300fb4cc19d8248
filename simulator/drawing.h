// SPDX-License-Identifier: MIT
// Owners of what drawing takes.
#pragma once

#include <host_control.h>
#include <windows.h>

// BeginPaint to EndPaint.
class PaintCycle {
public:
    explicit PaintCycle(HWND window) : m_window(window), m_dc(BeginPaint(window, &m_paint)) {}
    ~PaintCycle() {
        if (m_dc) EndPaint(m_window, &m_paint);
    }
    PaintCycle(const PaintCycle&) = delete;
    PaintCycle& operator=(const PaintCycle&) = delete;
    HDC Get() const { return m_dc; }  // null when painting is not possible

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

// The window's own context, to measure with.
class WindowContext {
public:
    explicit WindowContext(HWND window) : m_window(window), m_dc(GetDC(window)) {}
    ~WindowContext() {
        if (m_dc) ReleaseDC(m_window, m_dc);
    }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    HDC Get() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// Selects an object and puts the former one back.
class Selection {
public:
    Selection(HDC dc, HGDIOBJ object) : m_dc(dc), m_former(SelectObject(dc, object)) {}
    ~Selection() {
        if (m_former) SelectObject(m_dc, m_former);
    }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_former;
};

// A font of the platform's own.
class Font {
public:
    Font() = default;
    ~Font() { Reset(nullptr); }
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;
    HFONT Get() const { return m_font; }
    // Height of the letters' square in pixels; FW_NORMAL or FW_BOLD.
    void Create(int height, int weight);

private:
    void Reset(HFONT font) {
        if (m_font) DeleteObject(m_font);
        m_font = font;
    }

    HFONT m_font = nullptr;
};

void FillArea(HDC dc, const RECT& area, COLORREF color);
// One pixel wide, inside the area.
void DrawFrame(HDC dc, const RECT& area, COLORREF color);
// Each pixel enlarged to a square of `scale` pixels; what is transparent shows the background.
void DrawPicture(HDC dc, POINT corner, const host::Picture& picture, int scale, COLORREF background);
