// SPDX-License-Identifier: MIT
#include "help_page.h"

#include <cstddef>
#include <cstring>
#include <string>

#include "drawing.h"
#include "keys.h"
#include "text.h"

namespace {

constexpr COLORREF paper = RGB(0xFF, 0xFF, 0xE1);
constexpr COLORREF ink = RGB(0, 0, 0);

// A bitmap to draw on, whose pixels can be read.
class Canvas {
public:
    explicit Canvas(SIZE size) : m_size(size), m_dc(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.cx;
        info.bmiHeader.biHeight = -size.cy;  // rows from the top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        if (m_bitmap) m_former = SelectObject(m_dc, m_bitmap);
    }
    ~Canvas() {
        if (m_former) SelectObject(m_dc, m_former);
        if (m_bitmap) DeleteObject(m_bitmap);
        if (m_dc) DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Get() const { return m_dc; }
    host::Picture Copy() const {
        if (!m_former) return {};
        const std::size_t count = static_cast<std::size_t>(m_size.cx) * static_cast<std::size_t>(m_size.cy);
        host::Picture picture{m_size.cx, m_size.cy, std::vector<DWORD>(count)};
        std::memcpy(picture.pixels.data(), m_bits, count * sizeof(DWORD));
        return picture;
    }

private:
    SIZE m_size;
    HDC m_dc;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_former = nullptr;
    void* m_bits = nullptr;
};

void Write(HDC dc, const std::string& text, RECT place) {
    const std::u16string wide = FromUtf8(text).value_or(std::u16string());
    DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &place, DT_LEFT | DT_NOPREFIX);
}

}  // namespace

host::Picture DrawHelpPage(SIZE size, int scale) {
    const host::PlatformScope scope;
    const Canvas canvas(size);
    Font title;
    Font normal;
    title.Create(13 * scale, FW_BOLD);
    normal.Create(12 * scale, FW_NORMAL);
    const int margin = 10 * scale;
    const int line = 17 * scale;
    const int column = 40 * scale;
    FillArea(canvas.Get(), {0, 0, size.cx, size.cy}, paper);
    SetBkMode(canvas.Get(), TRANSPARENT);
    SetTextColor(canvas.Get(), ink);
    int top = margin;
    const auto write = [&](const std::string& text, int left) {
        Write(canvas.Get(), text, {left, top, size.cx, size.cy});
    };
    {
        const Selection selection(canvas.Get(), title.Get());
        write("Keys of this window", margin);
    }
    const Selection selection(canvas.Get(), normal.Get());
    top += line * 3 / 2;
    for (const WindowKey& key : WindowKeys()) {
        write(key.name, margin);
        write(key.purpose, margin + column);
        top += line;
    }
    top += line / 2;
    write("The mouse, a finger or a pen\nis the handheld's pen.\n\nTap to go back.", margin);
    return canvas.Copy();
}
