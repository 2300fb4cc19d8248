// SPDX-License-Identifier: MIT
// The look of the controls: flat, with thin black frames, white fields and shapes that grow with the font.
#pragma once

#include <string_view>
#include <vector>

#include "windows/window.h"

namespace host {

RECT Shrink(const RECT& rectangle, int pixels);  // on every side

// Measures text in one font, without a window. All in pixels.
class FontMetrics {
public:
    explicit FontMetrics(HFONT font);  // null: the system font
    ~FontMetrics();
    FontMetrics(const FontMetrics&) = delete;
    FontMetrics& operator=(const FontMetrics&) = delete;

    int LineHeight() const { return m_lineHeight; }
    int Width(std::u16string_view text) const;
    // The thickness of a thin line at this font's size.
    int Unit() const;
    // The lines of a text: broken at "\n", and where they would be wider than this between words, or inside a
    // word that is longer than a line. The views are into the text.
    std::vector<std::u16string_view> Wrap(std::u16string_view text, int width) const;

private:
    void WrapParagraph(std::u16string_view paragraph, int width,
                       std::vector<std::u16string_view>& lines) const;

    HDC m_dc;
    HGDIOBJ m_previous;
    int m_lineHeight;
};

// One WM_PAINT of a window. Colours are indices of system colours.
class ControlPainter {
public:
    ControlPainter(HWND window, HFONT font);
    ~ControlPainter();
    ControlPainter(const ControlPainter&) = delete;
    ControlPainter& operator=(const ControlPainter&) = delete;

    // False if the window cannot be painted now.
    explicit operator bool() const { return m_dc != nullptr; }
    const FontMetrics& Metrics() const { return m_metrics; }
    const RECT& Client() const { return m_client; }

    void Fill(const RECT& area, int color);
    void Fill(const RECT& area, HBRUSH brush);
    // Inside the area's edges.
    void Frame(const RECT& area, int color, int units = 1);
    // The focus frame: every other pixel.
    void DottedFrame(const RECT& area, int color);
    // One line, clipped at the area's edges. The format is DT_LEFT, DT_CENTER or DT_RIGHT, optionally with
    // DT_VCENTER.
    void Line(std::u16string_view text, const RECT& area, UINT format, int color);
    // In the middle of the area.
    enum class Direction { Up, Down };
    void Arrow(const RECT& area, Direction direction, int color);
    void CheckMark(const RECT& area, int color);

private:
    FontMetrics m_metrics;
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
    HGDIOBJ m_previousFont = nullptr;
    RECT m_client{};
};

}  // namespace host
