// SPDX-License-Identifier: MIT
#include "help_page.h"

#include <unicode.h>

#include <cstddef>
#include <cstring>
#include <optional>
#include <string>

#include "drawing.h"
#include "keys.h"
#include "scale.h"

namespace {

constexpr COLORREF kPaper = RGB(0xFF, 0xFF, 0xE1);
constexpr COLORREF kInk = RGB(0, 0, 0);

// A bitmap to draw on, whose pixels can be read.
class Canvas {
public:
    explicit Canvas(SIZE size) : m_size(size) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.cx;
        info.bmiHeader.biHeight = -size.cy;  // rows from the top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_bitmap.Reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0));
        m_selection.emplace(m_dc.Get(), m_bitmap.Get());
    }

    HDC Get() const { return m_dc.Get(); }
    host::Picture Copy() const {
        if (!*m_selection) return {};
        const std::size_t count = static_cast<std::size_t>(m_size.cx) * static_cast<std::size_t>(m_size.cy);
        host::Picture picture{m_size.cx, m_size.cy, std::vector<DWORD>(count)};
        std::memcpy(picture.pixels.data(), m_bits, count * sizeof(DWORD));
        return picture;
    }

private:
    SIZE m_size;
    void* m_bits = nullptr;
    CBitmapOwner m_bitmap;
    CMemoryDC m_dc{CreateCompatibleDC(nullptr)};
    std::optional<CSelection> m_selection;
};

// The page from top to bottom; sizes are those for the smallest screen, times the scale.
class Page {
public:
    Page(const Canvas& canvas, SIZE size, int scale)
        : m_canvas(canvas),
          m_size(size),
          m_scale(scale),
          m_title(MakeFont(13 * scale, FW_BOLD)),
          m_normal(MakeFont(12 * scale, FW_NORMAL)) {
        FillArea(canvas.Get(), {0, 0, size.cx, size.cy}, kPaper);
        SetBkMode(canvas.Get(), TRANSPARENT);
        SetTextColor(canvas.Get(), kInk);
    }

    void Title(const std::string& text) {
        m_top += 7 * m_scale;
        Write(m_title, text, kMargin);
        m_top += 20 * m_scale;
    }
    void Line(const std::string& name, const std::string& purpose) {
        Write(m_normal, name, kMargin);
        Write(m_normal, purpose, kMargin + kColumn);
        m_top += 15 * m_scale;
    }

private:
    static constexpr int kMargin = 10;
    static constexpr int kColumn = 40;

    void Write(const CFontOwner& font, const std::string& text, int left) const {
        const CSelection selection(m_canvas.Get(), font.Get());
        const std::u16string wide = unicode::FromUtf8(text).value_or(std::u16string());
        RECT place{left * m_scale, m_top, m_size.cx, m_size.cy};
        DrawTextW(m_canvas.Get(), wide.c_str(), static_cast<int>(wide.size()), &place, DT_LEFT | DT_NOPREFIX);
    }

    const Canvas& m_canvas;
    SIZE m_size;
    int m_scale;
    int m_top = 0;
    CFontOwner m_title;
    CFontOwner m_normal;
};

}  // namespace

host::Picture DrawHelpPage(SIZE size) {
    const host::PlatformScope scope;
    const Canvas canvas(size);
    Page page(canvas, size, PictureScale(size));
    page.Title("Keys of this window");
    for (const WindowKey& key : WindowKeys())
        page.Line(key.name, key.purpose);
    page.Title("Strokes over the keyboard");
    page.Line("\u2192", "space");
    page.Line("\u2190", "Backspace");
    page.Line("\u2193", "Enter");
    page.Line("\u2191", "the key in its other case");
    page.Line("The mouse or a finger is the pen.", "");
    page.Line("Tap to go back.", "");
    return canvas.Copy();
}
